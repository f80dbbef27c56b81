#include "OpenGLRenderer/VertexShaderVisitor.h"

#include "OpenGLRenderer/ConverterToFloats.h"
#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/VBOCreator.h"
#include "OpenGLRenderer/ViewMatrixData.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGRootNode.h"
#include "Tests/Unit/OpenGLRenderer/AssetFolder.h"
#include "Tests/Unit/OpenGLRenderer/BoneAttributeCalls.h"

using namespace RendererTesting;

namespace {

class VertexShader : public RendererTest {
protected:
    VertexShader()
    {
        assets.write("Shaders/animationVertexShader.txt", "void main() {}");
        gl.setInfoLog("fine");
        gl.setUniformLocation("viewRotation", 5);
        gl.setUniformLocation("boneTransforms", 6);
        gl.setUniformLocation("boneTranslations", 7);
        gl.setUniformLocation("unlit", 8);
        surface->setBoneWeights(sharedWeights({{{0, 1.0}}, {{1, 0.75}, {0, 0.25}}, {}}));
        surface->setBoneTransforms(
            sharedPose({BoneTransform{Matrix3({1, 2, 3, 4, 5, 6, 7, 8, 9}), {10.0, 11.0, 12.0}},
                        BoneTransform{Matrix3(), {0.1, 0.25, 0.125}}}));
        look(Matrix(Matrix3({1, 2, 3, 0, 1, 4, 0, 0, 1}), {7.0, 8.0, 9.0}));
        ConverterToFloats converter(true);
        show(converter, *surface);
        nameBoneArrays(gl, *surface->getBoneWeights());
    }

    void look(Matrix const& view)
    {
        surface->setExtraData(ExtraDataKeys::viewMatrix, make_smart<ViewMatrixData>(view));
    }

    AssetFolder assets;
    LogCapture log;
    smart_ptr<SGRootNode> root = make_smart<SGRootNode>();
    smart_ptr<SGSurfaceGeometryReferenceNode> surface = triangle();
    VertexShaderVisitor pass;
};

std::string const twoSided = "glEnable(GL_VERTEX_PROGRAM_TWO_SIDE_ARB)";

Calls making(std::string const& text)
{
    return {"glCreateShaderObjectARB(GL_VERTEX_SHADER_ARB)",
            "glShaderSourceARB(1, 1, {\"" + text + "\"})",
            "glCompileShaderARB(1)",
            "glGetInfoLogARB(1, 39998, null, array)",
            "glCreateProgramObjectARB()",
            "glAttachObjectARB(2, 1)",
            "glBindAttribLocationARB(2, 14, \"boneIndices\")",
            "glBindAttribLocationARB(2, 15, \"boneWeights\")",
            "glLinkProgramARB(2)",
            "glGetInfoLogARB(2, 39998, null, array)",
            "glValidateProgramARB(2)",
            "glGetInfoLogARB(2, 39998, null, array)"};
}

std::string location(std::string const& name)
{
    return "glGetUniformLocationARB(2, \"" + name + "\")";
}

Calls const beginning{
    "glUseProgramObjectARB(2)",
    location("viewRotation"),
    "glUniformMatrix3fvARB(5, 1, GL_TRUE, {1, 2, 3, 0, 1, 4, 0, 0, 1})",
    location("boneTransforms"),
    "glUniformMatrix3fvARB(6, 2, GL_TRUE, {1, 2, 3, 4, 5, 6, 7, 8, 9, 1, 0, 0, 0, 1, 0, 0, 0, 1})",
    location("boneTranslations"),
    "glUniform3fvARB(7, 2, {10, 11, 12, 0.1, 0.25, 0.125})"};
Calls const ending = bonesOff + Calls{"glUseProgramObjectARB(0)"};

} // namespace

TEST_F(VertexShader, MakesTheProgramOfARootItHasNotSeen)
{
    EXPECT_EQ(entering(pass, *root), Calls{twoSided} + making("void main() {}"));
    EXPECT_EQ(leaving(pass, *root), Calls());
    EXPECT_EQ(log.text(), "opengl: Compiled shader: fine\n"
                          "opengl: Linked program: fine\n"
                          "opengl: Validated program: fine\n");
    auto const data = getExtraData<VertexShaderData>(*root, "GLVertexShaderData");
    ASSERT_TRUE(data);
    EXPECT_EQ(data->shader, 1U);
    EXPECT_EQ(data->program, 2U);
}

TEST_F(VertexShader, MakesItWithoutAWordWhereTheChannelIsOff)
{
    Log::getInstance().setEnabled("opengl", false);
    EXPECT_EQ(entering(pass, *root), Calls{twoSided} + making("void main() {}"));
    EXPECT_EQ(log.text(), "");
}

TEST_F(VertexShader, EndsAnInfoThatTheDriverDoesNotEnd)
{
    epoxy_glGetInfoLogARB = [](GLhandleARB, GLsizei size, GLsizei*, GLcharARB* info) {
        std::fill_n(info, size, 'x');
    };
    pass.enter(root.get());
    EXPECT_THAT(log.text(),
                testing::StartsWith("opengl: Compiled shader: " + std::string(39998, 'x') + "\nopengl: "));
}

TEST_F(VertexShader, LogsAsMuchOfTheInfoAsThereIsRoomFor)
{
    gl.setInfoLog(std::string(50000, 'x'));
    pass.enter(root.get());
    std::string const line(39997, 'x');
    EXPECT_EQ(log.text(), "opengl: Compiled shader: " + line + "\nopengl: Linked program: " + line +
                              "\nopengl: Validated program: " + line + '\n');
}

TEST_F(VertexShader, ReusesTheProgramOfARoot)
{
    show(pass, *root);
    std::string const logged = log.text();
    EXPECT_EQ(entering(pass, *root), Calls{twoSided});
    EXPECT_EQ(leaving(pass, *root), Calls());
    EXPECT_EQ(log.text(), logged);
    EXPECT_EQ(gl.shaderObjects().generated, 2);
}

TEST_F(VertexShader, GoesOnWithoutATextWhereTheAssetIsEmpty)
{
    assets.write("Shaders/animationVertexShader.txt", "");
    EXPECT_EQ(entering(pass, *root), Calls{twoSided} + making(""));
    EXPECT_EQ(entering(pass, *surface), beginning + bonesFromMemory);
}

TEST_F(VertexShader, HoldsTheProgramDuringTheWalkAlone)
{
    pass.enter(root.get());
    auto const data = root->privateGetExtraData("GLVertexShaderData");
    EXPECT_EQ(data->referenceCount(), 3);
    pass.leave(root.get());
    EXPECT_EQ(data->referenceCount(), 2);
}

TEST_F(VertexShader, FreesItWithTheRoot)
{
    show(pass, *root);
    static_cast<void>(gl.takeCalls());
    root = nullptr;
    EXPECT_EQ(gl.takeCalls(), (Calls{"glDeleteObjectARB(1)", "glDeleteObjectARB(2)"}));
    EXPECT_TRUE(gl.shaderObjects().live.empty());
    static_cast<void>(make_smart<VertexShaderData>());
    EXPECT_EQ(gl.takeCalls(), Calls());
}

TEST_F(VertexShader, DeletesNothingDuringShutdown)
{
    show(pass, *root);
    static_cast<void>(gl.takeCalls());
    SGRendererManager::shutdown = true;
    root = nullptr;
    SGRendererManager::shutdown = false;
    EXPECT_EQ(gl.takeCalls(), Calls());
}

TEST_F(VertexShader, DrawsASkinnedSurface)
{
    pass.enter(root.get());
    EXPECT_EQ(entering(pass, *surface), beginning + bonesFromMemory);
    EXPECT_EQ(leaving(pass, *surface), ending);
    EXPECT_TRUE(gl.enabledAttributes.empty());
    EXPECT_EQ(entering(pass, *surface), beginning + bonesFromMemory) << "looked up every time";
}

TEST_F(VertexShader, ReadsBonesFromBuffersWhereBothExist)
{
    VBOCreator creator(true);
    show(creator, *surface);
    show(creator, *root);
    pass.enter(root.get());
    EXPECT_EQ(entering(pass, *surface), beginning + bonesFromBuffers);
    surface->getBoneWeights()->setExtraData("GLVBOBoneIndices", nullptr);
    EXPECT_EQ(entering(pass, *surface), beginning + bonesFromMemory);
}

TEST_F(VertexShader, IsToldAMirroringViewNegated)
{
    look(Matrix(Matrix3({1, 0, 0, 0, 1, 0, 0, 0, -1}), {}));
    pass.enter(root.get());
    EXPECT_THAT(
        entering(pass, *surface),
        testing::Contains("glUniformMatrix3fvARB(5, 1, GL_TRUE, {-1, -0, -0, -0, -1, -0, -0, -0, 1})"));
}

TEST_F(VertexShader, SendsAMatrixAndATranslationABone)
{
    surface->setBoneTransforms(sharedPose(std::vector<BoneTransform>(100)));
    pass.enter(root.get());
    EXPECT_THAT(entering(pass, *surface),
                testing::IsSupersetOf<testing::Matcher<std::string>>(
                    {testing::StartsWith("glUniformMatrix3fvARB(6, 100, GL_TRUE, {1, 0, "),
                     testing::StartsWith("glUniform3fvARB(7, 100, {0, 0, ")}));
}

TEST_F(VertexShader, LeavesSurfacesWithoutBonesAlone)
{
    pass.enter(root.get());
    auto const other = triangle();
    other->unlit = true;
    auto const expectUntouched = [&] {
        EXPECT_EQ(entering(pass, *other), Calls());
        EXPECT_EQ(leaving(pass, *other), Calls());
    };
    expectUntouched();
    other->setBoneTransforms(sharedPose({BoneTransform()}));
    expectUntouched();
    other->setBoneWeights(surface->getBoneWeights());
    other->setBoneTransforms(sharedPose({}));
    expectUntouched();
    other->setBoneTransforms(nullptr);
    expectUntouched();
}

TEST_F(VertexShader, IsToldOfUnlitSkinnedSurfacesAndThatTheyEnd)
{
    surface->unlit = true;
    pass.enter(root.get());
    EXPECT_EQ(entering(pass, *surface),
              beginning + bonesFromMemory + Calls({location("unlit"), "glUniform1fARB(8, 1)"}));
    EXPECT_EQ(leaving(pass, *surface), Calls({location("unlit"), "glUniform1fARB(8, 0)"}) + ending);
}

TEST_F(VertexShader, LeavesLightsAndQuadsAlone)
{
    pass.enter(root.get());
    auto const lights = make_smart<SGLightsNode>(nullptr);
    lights->lights.resize(1);
    EXPECT_EQ(entering(pass, *lights), Calls());
    SGQuadNode quad(nullptr);
    EXPECT_EQ(entering(pass, quad), Calls());
    EXPECT_EQ(leaving(pass, quad), Calls());
}
