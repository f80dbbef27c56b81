#include "OpenGLRenderer/VertexProgramVisitor.h"

#include "OpenGLRenderer/ConverterToFloats.h"
#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/VBOCreator.h"
#include "OpenGLRenderer/VBOData.h"
#include "OpenGLRenderer/ViewMatrixData.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGRootNode.h"
#include "Tests/Unit/OpenGLRenderer/AssetFolder.h"
#include "Tests/Unit/OpenGLRenderer/BoneAttributeCalls.h"

using namespace RendererTesting;

namespace {

class VertexProgram : public RendererTest {
protected:
    VertexProgram()
    {
        assets.write("Shaders/defaultVertexProgram.txt", "default text");
        assets.write("Shaders/animationVertexProgram.txt", "bones");
        gl.setString(GL_PROGRAM_ERROR_STRING_ARB, "line 7");
        surface->setBoneWeights(sharedWeights({{{0, 1.0}}, {{1, 0.75}, {0, 0.25}}, {}}));
        surface->setBoneTransforms(
            sharedPose({BoneTransform{Matrix3({1, 2, 3, 4, 5, 6, 7, 8, 9}), {10.0, 11.0, 12.0}},
                        BoneTransform{Matrix3(), {0.5, 0.25, 0.125}}}));
        look(*surface, Matrix(Matrix3({1, 2, 3, 0, 1, 4, 0, 0, 1}), {7.0, 8.0, 9.0}));
        ConverterToFloats converter(true);
        show(converter, *surface);
        nameBoneArrays(gl, *surface->getBoneWeights());
    }

    static void look(SGSurfaceGeometryReferenceNode& node, Matrix const& view)
    {
        node.setExtraData(ExtraDataKeys::viewMatrix, make_smart<ViewMatrixData>(view));
    }

    AssetFolder assets;
    smart_ptr<SGRootNode> root = make_smart<SGRootNode>();
    smart_ptr<SGSurfaceGeometryReferenceNode> surface = triangle();
    VertexProgramVisitor pass{false};
    VertexProgramVisitor forAll{true};
};

std::string const twoSided = "glEnable(GL_VERTEX_PROGRAM_TWO_SIDE_ARB)";
std::string const enabling = "glEnable(GL_VERTEX_PROGRAM_ARB)";

std::string binding(int program)
{
    return "glBindProgramARB(GL_VERTEX_PROGRAM_ARB, " + std::to_string(program) + ')';
}

std::string environment(int index, std::string const& values)
{
    return "glProgramEnvParameter4dARB(GL_VERTEX_PROGRAM_ARB, " + std::to_string(index) + ", " + values + ')';
}

std::string local(int index, std::string const& values)
{
    return "glProgramLocalParameter4dARB(GL_VERTEX_PROGRAM_ARB, " + std::to_string(index) + ", " + values +
           ')';
}

Calls making(int program, std::string const& lengthAndText)
{
    return {"glGenProgramsARB(1, {" + std::to_string(program) + "})", binding(program),
            "glProgramStringARB(GL_VERTEX_PROGRAM_ARB, GL_PROGRAM_FORMAT_ASCII_ARB, " + lengthAndText + ")",
            "glGetString(GL_PROGRAM_ERROR_STRING_ARB)", "glGetError()"};
}

Calls const rotation{environment(1, "1, 2, 3, 0"), environment(2, "0, 1, 4, 0"),
                     environment(3, "0, 0, 1, 0")};
Calls const pose{local(0, "1, 2, 3, 10"),  local(1, "4, 5, 6, 11"),   local(2, "7, 8, 9, 12"),
                 local(3, "1, 0, 0, 0.5"), local(4, "0, 1, 0, 0.25"), local(5, "0, 0, 1, 0.125")};
Calls const ending{"glDisable(GL_VERTEX_PROGRAM_ARB)", binding(0)};

} // namespace

TEST_F(VertexProgram, MakesBothProgramsOfARootItHasNotSeen)
{
    EXPECT_EQ(entering(pass, *root),
              Calls{twoSided} + making(1, "12, \"default text\"") + making(2, "5, \"bones\""));
    EXPECT_EQ(leaving(pass, *root), Calls());
    auto const data = getExtraData<VertexProgramData>(*root, "GLVertexProgramData");
    ASSERT_TRUE(data);
    EXPECT_EQ(data->defaultProgram, 1U);
    EXPECT_EQ(data->animationProgram, 2U);
}

TEST_F(VertexProgram, LogsWhatTheCardSaysOnlyWhereAnErrorIsPending)
{
    LogCapture const log;
    pass.enter(root.get());
    EXPECT_EQ(log.text(), "");
    gl.queueError(GL_INVALID_OPERATION);
    gl.queueError(GL_INVALID_VALUE);
    auto const second = make_smart<SGRootNode>();
    pass.enter(second.get());
    EXPECT_EQ(log.text(), "error: Default: line 7 GL Error: Invalid operation.\n"
                          "error: Animation: line 7 GL Error: Invalid value.\n");
}

TEST_F(VertexProgram, ReusesTheProgramsOfARoot)
{
    show(pass, *root);
    EXPECT_EQ(entering(pass, *root), Calls{twoSided});
    EXPECT_EQ(leaving(pass, *root), Calls());
    EXPECT_EQ(gl.programs().generated, 2);
    VertexProgramVisitor another(false);
    EXPECT_EQ(entering(another, *root), Calls{twoSided});
}

TEST_F(VertexProgram, GoesOnWithoutATextWhereAnAssetIsEmpty)
{
    assets.write("Shaders/animationVertexProgram.txt", "");
    EXPECT_EQ(entering(pass, *root),
              Calls{twoSided} + making(1, "12, \"default text\"") + making(2, "0, \"\""));
}

TEST_F(VertexProgram, HoldsTheProgramsDuringTheWalkAlone)
{
    pass.enter(root.get());
    auto const data = root->privateGetExtraData("GLVertexProgramData");
    EXPECT_EQ(data->referenceCount(), 3);
    pass.leave(root.get());
    EXPECT_EQ(data->referenceCount(), 2);
}

TEST_F(VertexProgram, FreesTheProgramsWithTheRoot)
{
    show(pass, *root);
    static_cast<void>(gl.takeCalls());
    root = nullptr;
    EXPECT_EQ(gl.takeCalls(), (Calls{"glDeleteProgramsARB(1, {1})", "glDeleteProgramsARB(1, {2})"}));
    EXPECT_TRUE(gl.programs().live.empty());
    static_cast<void>(make_smart<VertexProgramData>());
    EXPECT_EQ(gl.takeCalls(), Calls());
}

TEST_F(VertexProgram, DeletesNothingDuringShutdown)
{
    show(pass, *root);
    static_cast<void>(gl.takeCalls());
    SGRendererManager::shutdown = true;
    root = nullptr;
    SGRendererManager::shutdown = false;
    EXPECT_EQ(gl.takeCalls(), Calls());
}

TEST_F(VertexProgram, IsToldTheFirstLightsHalfVector)
{
    auto const lights = make_smart<SGLightsNode>(nullptr);
    lights->lights.resize(2);
    lights->lights[0].direction = {0.0, 0.0, 5.0};
    lights->lights[1].direction = {1.0, 0.0, 0.0};
    EXPECT_EQ(entering(pass, *lights), Calls{environment(0, "0, 0, 1, 1")});
    EXPECT_EQ(leaving(pass, *lights), Calls());

    lights->lights[0].direction = {3.0, 0.0, 4.0};
    UVector3 const unit(3.0, 0.0, 4.0);
    UVector3 const half(unit.x, unit.y, unit.z + 1.0);
    EXPECT_EQ(entering(pass, *lights),
              Calls{environment(0, numberText(half.x) + ", 0, " + numberText(half.z) + ", 1")});
    EXPECT_NEAR(half.x / half.z, 1.0 / 3.0, 1e-15);
}

TEST_F(VertexProgram, IsToldNothingWhereThereAreNoLights)
{
    auto const lights = make_smart<SGLightsNode>(nullptr);
    EXPECT_EQ(entering(pass, *lights), Calls());
    EXPECT_EQ(leaving(pass, *lights), Calls());
}

TEST_F(VertexProgram, DrawsASkinnedSurface)
{
    pass.enter(root.get());
    EXPECT_EQ(entering(pass, *surface),
              Calls{enabling} + rotation + Calls{binding(2)} + pose + bonesFromMemory);
    EXPECT_EQ(leaving(pass, *surface), bonesOff + ending);
    EXPECT_TRUE(gl.enabledAttributes.empty());
    EXPECT_EQ(entering(forAll, *root), Calls{twoSided});
    EXPECT_EQ(entering(forAll, *surface),
              Calls{enabling} + rotation + Calls{binding(2)} + pose + bonesFromMemory);
    EXPECT_EQ(leaving(forAll, *surface), bonesOff + ending);
}

TEST_F(VertexProgram, ReadsBonesFromBuffersWhereBothExist)
{
    VBOCreator creator(true);
    show(creator, *surface);
    pass.enter(root.get());
    EXPECT_EQ(entering(pass, *surface),
              Calls{enabling} + rotation + Calls{binding(2)} + pose + bonesFromBuffers);
    EXPECT_EQ(leaving(pass, *surface), bonesOff + ending);
}

TEST_F(VertexProgram, ReadsBonesFromMemoryWhereOneBufferIsMissing)
{
    VBOCreator creator(true);
    show(creator, *surface);
    show(creator, *root);
    SharedBoneWeights& weights = *surface->getBoneWeights();
    pass.enter(root.get());
    for (char const* const key : {"GLVBOBoneWeights", "GLVBOBoneIndices"}) {
        auto const buffer = weights.privateGetExtraData(key);
        for (smart_ptr<VBOData> const& lack : {smart_ptr<VBOData>(), make_smart<VBOData>()}) {
            weights.setExtraData(key, lack);
            EXPECT_EQ(entering(pass, *surface),
                      Calls{enabling} + rotation + Calls{binding(2)} + pose + bonesFromMemory);
        }
        weights.setExtraData(key, buffer);
    }
}

TEST_F(VertexProgram, IsToldAMirroringViewNegated)
{
    pass.enter(root.get());
    look(*surface, Matrix(Matrix3({1, 0, 0, 0, 1, 0, 0, 0, -1}), {}));
    EXPECT_THAT(entering(pass, *surface),
                testing::IsSupersetOf({environment(1, "-1, -0, -0, 0"), environment(2, "-0, -1, -0, 0"),
                                       environment(3, "-0, -0, 1, 0")}));
}

TEST_F(VertexProgram, TakesAnyNumberOfBones)
{
    pass.enter(root.get());
    surface->setBoneTransforms(sharedPose(std::vector<BoneTransform>(100)));
    static_cast<void>(gl.takeCalls());
    surface->acceptEnter(&pass);
    EXPECT_EQ(gl.count("glProgramLocalParameter4dARB"), 300);
}

TEST_F(VertexProgram, LeavesSurfacesWithoutBonesToTheFixedFunctions)
{
    auto const plain = triangle();
    plain->unlit = true;
    pass.enter(root.get());
    EXPECT_EQ(entering(pass, *plain), Calls{binding(1)});
    EXPECT_EQ(leaving(pass, *plain), Calls());
}

TEST_F(VertexProgram, TakesSurfacesThatLackWeightsOrAPoseForOnesWithoutBones)
{
    auto const half = triangle();
    pass.enter(root.get());
    forAll.enter(root.get());
    auto const expectPlain = [&] {
        EXPECT_EQ(entering(pass, *half), Calls{binding(1)});
        EXPECT_EQ(leaving(pass, *half), Calls());
        EXPECT_EQ(entering(forAll, *half),
                  Calls({enabling, environment(1, "1, 0, 0, 0"), environment(2, "0, 1, 0, 0"),
                         environment(3, "0, 0, 1, 0"), binding(1)}));
        EXPECT_EQ(leaving(forAll, *half), ending);
    };
    half->setBoneTransforms(sharedPose({BoneTransform()}));
    expectPlain();
    half->setBoneWeights(surface->getBoneWeights());
    half->setBoneTransforms(sharedPose({}));
    expectPlain();
    half->setBoneTransforms(nullptr);
    expectPlain();
}

TEST_F(VertexProgram, DrawsSurfacesWithoutBonesToo)
{
    auto const plain = triangle();
    look(*plain, Matrix(Matrix3({1, 2, 3, 0, 1, 4, 0, 0, 1}), {}));
    plain->unlit = true;
    forAll.enter(root.get());
    EXPECT_EQ(entering(forAll, *plain), Calls{enabling} + rotation + Calls{binding(1)});
    EXPECT_EQ(leaving(forAll, *plain), ending);
}

TEST_F(VertexProgram, IsToldOfUnlitSkinnedSurfacesAndThatTheyEnd)
{
    surface->unlit = true;
    pass.enter(root.get());
    EXPECT_EQ(entering(pass, *surface), Calls{enabling} + rotation + Calls{binding(2)} + pose +
                                            bonesFromMemory + Calls{environment(4, "1, 0, 0, 0")});
    EXPECT_EQ(leaving(pass, *surface), Calls{environment(4, "0, 0, 0, 0")} + bonesOff + ending);
}

TEST_F(VertexProgram, LeavesQuadsAlone)
{
    SGQuadNode quad(nullptr);
    pass.enter(root.get());
    EXPECT_EQ(entering(pass, quad), Calls());
    EXPECT_EQ(leaving(pass, quad), Calls());
}
