#include "OpenGLRenderer/VertexShaderVisitor.h"

#include "OpenGLRenderer/AssetText.h"
#include "OpenGLRenderer/BoneAttributes.h"
#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/Skinning.h"
#include "SceneGraph/SGRootNode.h"
#include "Utilities/Log.h"

#include <vector>

namespace {

constexpr GLsizei infoLogSize = 39998;

void logInfo(char const* title, GLhandleARB object)
{
    std::vector<GLcharARB> info(infoLogSize + 1); // ends even where the driver fills it all
    glGetInfoLogARB(object, infoLogSize, nullptr, info.data());
    static LogChannel const channel("opengl");
    channel.write(title, info.data());
}

void compile(VertexShaderData& data)
{
    data.shader = glCreateShaderObjectARB(GL_VERTEX_SHADER_ARB);
    std::string const text = VertexShaderVisitor::loadShader("Shaders/animationVertexShader.txt");
    GLcharARB const* start = text.data();
    auto const length = static_cast<GLint>(text.size());
    glShaderSourceARB(data.shader, 1, &start, &length);
    glCompileShaderARB(data.shader);
    logInfo("Compiled shader: ", data.shader);
}

void link(VertexShaderData& data)
{
    data.program = glCreateProgramObjectARB();
    glAttachObjectARB(data.program, data.shader);
    glBindAttribLocationARB(data.program, BoneAttributes::indices, "boneIndices");
    glBindAttribLocationARB(data.program, BoneAttributes::weights, "boneWeights");
    glLinkProgramARB(data.program);
    logInfo("Linked program: ", data.program);
    glValidateProgramARB(data.program);
    logInfo("Validated program: ", data.program);
}

void append(std::vector<GLfloat>& elements, Matrix3 const& matrix)
{
    for (int i = 0; i < 9; ++i)
        elements.push_back(static_cast<GLfloat>(matrix[i]));
}

void append(std::vector<GLfloat>& elements, Vector3 const& vector)
{
    for (int i = 0; i < 3; ++i)
        elements.push_back(static_cast<GLfloat>(vector[i]));
}

} // namespace

std::string VertexShaderVisitor::loadShader(std::string const& path)
{
    return loadAssetText(path);
}

GLint VertexShaderVisitor::uniform(char const* name) const
{
    return glGetUniformLocationARB(data_->program, name);
}

void VertexShaderVisitor::enter(SGRootNode* node)
{
    glEnable(GL_VERTEX_PROGRAM_TWO_SIDE_ARB);
    data_ = getExtraData<VertexShaderData>(*node, ExtraDataKeys::vertexShaderData);
    if (data_)
        return;
    data_ = make_smart<VertexShaderData>();
    node->setExtraData(ExtraDataKeys::vertexShaderData, data_);
    compile(*data_);
    link(*data_);
}

void VertexShaderVisitor::leave(SGRootNode*)
{
    data_.reset();
}

void VertexShaderVisitor::enter(SGSurfaceGeometryReferenceNode* node)
{
    if (!isSkinned(*node))
        return;
    glUseProgramObjectARB(data_->program);
    setViewRotation(viewRotation(*node));
    setPose(poseOf(*node));
    BoneAttributes::enable(*node->getBoneWeights());
    if (node->unlit)
        glUniform1fARB(uniform("unlit"), 1.0F);
}

void VertexShaderVisitor::leave(SGSurfaceGeometryReferenceNode* node)
{
    if (!isSkinned(*node))
        return;
    if (node->unlit)
        glUniform1fARB(uniform("unlit"), 0.0F);
    BoneAttributes::disable();
    glUseProgramObjectARB(0);
}

void VertexShaderVisitor::setViewRotation(Matrix3 const& rotation) const
{
    std::vector<GLfloat> elements;
    append(elements, rotation);
    glUniformMatrix3fvARB(uniform("viewRotation"), 1, GL_TRUE, elements.data());
}

void VertexShaderVisitor::setPose(std::vector<BoneTransform> const& pose) const
{
    std::vector<GLfloat> rotations;
    std::vector<GLfloat> translations;
    for (BoneTransform const& bone : pose) {
        append(rotations, bone.rotation);
        append(translations, bone.translation);
    }
    auto const bones = static_cast<GLsizei>(pose.size());
    glUniformMatrix3fvARB(uniform("boneTransforms"), bones, GL_TRUE, rotations.data());
    glUniform3fvARB(uniform("boneTranslations"), bones, translations.data());
}
