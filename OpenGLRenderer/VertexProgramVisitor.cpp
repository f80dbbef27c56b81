#include "OpenGLRenderer/VertexProgramVisitor.h"

#include "Maths/UVector3.h"
#include "OpenGLRenderer/AssetText.h"
#include "OpenGLRenderer/BoneAttributes.h"
#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/GLString.h"
#include "OpenGLRenderer/Renderer.h"
#include "OpenGLRenderer/Skinning.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGRootNode.h"

namespace {

/// Where the programs look for what this pass tells them.
enum EnvironmentParameter : GLuint {
    HALF_VECTOR = 0,
    VIEW_ROTATION = 1, ///< and the next two, a row each
    UNLIT = 4,         ///< 1 in x: the current colour instead of lighting
};

void setEnvironment(GLuint index, Vector3 const& value, double w)
{
    glProgramEnvParameter4dARB(GL_VERTEX_PROGRAM_ARB, index, value.x, value.y, value.z, w);
}

void bind(GLuint program)
{
    glBindProgramARB(GL_VERTEX_PROGRAM_ARB, program);
}

void makeProgram(GLuint* name, std::string const& path, std::string const& title)
{
    glGenProgramsARB(1, name);
    std::string const text = VertexProgramVisitor::loadProgram(path);
    bind(*name);
    glProgramStringARB(GL_VERTEX_PROGRAM_ARB, GL_PROGRAM_FORMAT_ASCII_ARB, static_cast<GLsizei>(text.size()),
                       text.data());
    GLRenderer::logError(title + getGLString(GL_PROGRAM_ERROR_STRING_ARB));
}

Vector3 rowOf(Matrix3 const& matrix, int row)
{
    return {matrix[3 * row], matrix[3 * row + 1], matrix[3 * row + 2]};
}

void setViewRotation(Matrix3 const& rotation)
{
    for (int row = 0; row < 3; ++row)
        setEnvironment(VIEW_ROTATION + static_cast<GLuint>(row), rowOf(rotation, row), 0.0);
}

void setPose(std::vector<BoneTransform> const& pose)
{
    GLuint index = 0;
    for (BoneTransform const& bone : pose) {
        for (int row = 0; row < 3; ++row) {
            Vector3 const linear = rowOf(bone.rotation, row);
            glProgramLocalParameter4dARB(GL_VERTEX_PROGRAM_ARB, index++, linear.x, linear.y, linear.z,
                                         bone.translation[row]);
        }
    }
}

} // namespace

std::string VertexProgramVisitor::loadProgram(std::string const& path)
{
    return loadAssetText(path);
}

void VertexProgramVisitor::enter(SGRootNode* node)
{
    glEnable(GL_VERTEX_PROGRAM_TWO_SIDE_ARB);
    data_ = getExtraData<VertexProgramData>(*node, ExtraDataKeys::vertexProgramData);
    if (data_)
        return;
    data_ = make_smart<VertexProgramData>();
    node->setExtraData(ExtraDataKeys::vertexProgramData, data_);
    makeProgram(&data_->defaultProgram, "Shaders/defaultVertexProgram.txt", "Default: ");
    makeProgram(&data_->animationProgram, "Shaders/animationVertexProgram.txt", "Animation: ");
}

void VertexProgramVisitor::leave(SGRootNode*)
{
    data_.reset();
}

void VertexProgramVisitor::enter(SGLightsNode* node)
{
    if (node->lights.empty())
        return;
    // Halfway to a viewer on the z axis, as for every vertex where the viewer is not local.
    UVector3 const direction(node->lights.front().direction);
    setEnvironment(HALF_VECTOR, UVector3(direction + Vector3(0.0, 0.0, 1.0)), 1.0);
}

void VertexProgramVisitor::enter(SGSurfaceGeometryReferenceNode* node)
{
    bool const skinned = isSkinned(*node);
    if (!useForAll_ && !skinned) {
        bind(data_->defaultProgram);
        return;
    }
    glEnable(GL_VERTEX_PROGRAM_ARB);
    setViewRotation(viewRotation(*node));
    if (!skinned) {
        bind(data_->defaultProgram);
        return;
    }
    bind(data_->animationProgram);
    setPose(poseOf(*node));
    BoneAttributes::enable(*node->getBoneWeights());
    if (node->unlit)
        setEnvironment(UNLIT, {1.0, 0.0, 0.0}, 0.0);
}

void VertexProgramVisitor::leave(SGSurfaceGeometryReferenceNode* node)
{
    bool const skinned = isSkinned(*node);
    if (skinned) {
        if (node->unlit)
            setEnvironment(UNLIT, {}, 0.0);
        BoneAttributes::disable();
    } else if (!useForAll_) {
        return;
    }
    glDisable(GL_VERTEX_PROGRAM_ARB);
    bind(0);
}
