#include "OpenGLRenderer/Strategist.h"

#include "OpenGLRenderer/AppearanceSetter.h"
#include "OpenGLRenderer/CameraLightsTransformVisitor.h"
#include "OpenGLRenderer/ConverterToFloats.h"
#include "OpenGLRenderer/GeneralSetupVisitor.h"
#include "OpenGLRenderer/GeometryVisitor.h"
#include "OpenGLRenderer/ManualAnimator.h"
#include "OpenGLRenderer/ManualColorizer.h"
#include "OpenGLRenderer/ManualTriangleFlipper.h"
#include "OpenGLRenderer/SharedTextureTraverser.h"
#include "OpenGLRenderer/VBOCreator.h"
#include "OpenGLRenderer/VBOGeometryVisitor.h"
#include "OpenGLRenderer/VertexProgramVisitor.h"
#include "OpenGLRenderer/VertexShaderVisitor.h"
#include "SceneGraph/SGCombinationVisitor.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "SceneGraph/SGTraverser.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

#include <type_traits>
#include <typeindex>

using namespace RendererTesting;

namespace {

using Names = std::vector<std::string>;

std::map<std::type_index, std::string> const names{
    {typeid(AppearanceSetter), "AppearanceSetter"},
    {typeid(CameraLightsTransformVisitor), "CameraLightsTransformVisitor"},
    {typeid(ConverterToFloats), "ConverterToFloats"},
    {typeid(GeneralSetupVisitor), "GeneralSetupVisitor"},
    {typeid(GeometryVisitor), "GeometryVisitor"},
    {typeid(ManualAnimator), "ManualAnimator"},
    {typeid(ManualColorizer), "ManualColorizer"},
    {typeid(ManualTriangleFlipper), "ManualTriangleFlipper"},
    {typeid(ManualTriangleUnFlipper), "ManualTriangleUnFlipper"},
    {typeid(ManualUnAnimator), "ManualUnAnimator"},
    {typeid(ManualUnColorizer), "ManualUnColorizer"},
    {typeid(SharedTextureTraverser), "SharedTextureTraverser"},
    {typeid(VBOCreator), "VBOCreator"},
    {typeid(VBOGeometryVisitor), "VBOGeometryVisitor"},
    {typeid(VertexProgramVisitor), "VertexProgramVisitor"},
    {typeid(VertexShaderVisitor), "VertexShaderVisitor"},
};

smart_ptr<SGSurfaceGeometryReferenceNode> skinnedTriangle(smart_ptr<SGNode> const& parent)
{
    auto surface = triangle(parent);
    surface->setBoneWeights(sharedWeights({{}, {}, {}}));
    surface->setBoneTransforms(sharedPose({BoneTransform()}));
    return surface;
}

/// Looks for a pass's constructor flag in what it does.
class FlagProbe {
public:
    explicit FlagProbe(smart_ptr<SGNodeVisitor> probed) : pass(std::move(probed)) {}

    [[nodiscard]] std::string flag()
    {
        if (dynamic_cast<ManualTriangleFlipper*>(pass.get()))
            return text(leavesSkinnedSurfacesUnflipped());
        if (dynamic_cast<ConverterToFloats*>(pass.get()))
            return text(hangsOnBoneWeights());
        if (dynamic_cast<VBOCreator*>(pass.get())) {
            ConverterToFloats converter(true);
            show(converter, *surface);
            return text(hangsOnBoneWeights());
        }
        if (dynamic_cast<VertexProgramVisitor*>(pass.get()))
            return text(drawsSurfacesWithoutBones());
        return "";
    }

private:
    static std::string text(bool flag) { return flag ? "(true)" : "(false)"; }

    bool leavesSkinnedSurfacesUnflipped()
    {
        transform->transform = Transform(Matrix3(), {}, -1.0);
        auto const facets = surface->getFacets();
        SGTraverser traverser(pass);
        show(traverser, *root);
        return surface->getFacets() == facets;
    }

    bool hangsOnBoneWeights()
    {
        auto const recordsBefore = records();
        show(*pass, *surface);
        return records() != recordsBefore;
    }

    [[nodiscard]] int records() const
    {
        int count = 0;
        for (char const* const key :
             {"GLfloatsWeights", "GLfloatsIndices", "GLVBOBoneWeights", "GLVBOBoneIndices"})
            if (surface->getBoneWeights()->privateGetExtraData(key))
                ++count;
        return count;
    }

    bool drawsSurfacesWithoutBones()
    {
        LogCapture const quiet;
        root->acceptEnter(pass.get());
        RecordingGL& gl = RecordingGL::current();
        static_cast<void>(gl.takeCalls());
        triangle()->acceptEnter(pass.get());
        bool const drawn = gl.count("glEnable") > 0;
        root->acceptLeave(pass.get());
        return drawn;
    }

    smart_ptr<SGNodeVisitor> pass;
    smart_ptr<SGRootNode> root = make_smart<SGRootNode>();
    smart_ptr<SGTransformNode> transform = make_smart<SGTransformNode>(root);
    smart_ptr<SGSurfaceGeometryReferenceNode> surface = skinnedTriangle(transform);
};

std::string describe(smart_ptr<SGNodeVisitor> const& pass)
{
    SGNodeVisitor const& visitor = *pass;
    if (auto const* const traverser = dynamic_cast<SGTraverser const*>(&visitor))
        return "walk: " + describe(traverser->getVisitor());
    if (auto const* const combination = dynamic_cast<SGCombinationVisitor const*>(&visitor)) {
        std::string list;
        for (smart_ptr<SGNodeVisitor> const& held : combination->getVisitors())
            list += (list.empty() ? "" : ", ") + describe(held);
        return list;
    }
    return names.at(typeid(visitor)) + FlagProbe(pass).flag();
}

Names describe(std::vector<smart_ptr<SGNodeVisitor>> const& strategy)
{
    Names result;
    for (smart_ptr<SGNodeVisitor> const& pass : strategy)
        result.push_back(describe(pass));
    return result;
}

std::string const drawing = "walk: CameraLightsTransformVisitor, AppearanceSetter, ";
Names const plain{"walk: ManualColorizer",         "walk: ManualTriangleFlipper(false)",
                  "walk: ManualAnimator",          "walk: ConverterToFloats(false)",
                  "GeneralSetupVisitor",           "SharedTextureTraverser",
                  drawing + "GeometryVisitor",     "walk: ManualUnAnimator",
                  "walk: ManualTriangleUnFlipper", "walk: ManualUnColorizer"};
Names const vbo{"walk: ManualColorizer",  "walk: ManualTriangleFlipper(false)",
                "walk: ManualAnimator",   "walk: ConverterToFloats(false)",
                "GeneralSetupVisitor",    "walk: VBOCreator(false)",
                "SharedTextureTraverser", drawing + "VBOGeometryVisitor",
                "walk: ManualUnAnimator", "walk: ManualTriangleUnFlipper",
                "walk: ManualUnColorizer"};

Names skinningOnTheCard(std::string const& skinning)
{
    return {"walk: ManualColorizer",         "walk: ManualTriangleFlipper(true)",
            "walk: ConverterToFloats(true)", "GeneralSetupVisitor",
            "SharedTextureTraverser",        drawing + skinning + ", GeometryVisitor",
            "walk: ManualTriangleUnFlipper", "walk: ManualUnColorizer"};
}

Names skinningOnTheCardFromBuffers(std::string const& skinning)
{
    return {"walk: ManualColorizer",
            "walk: ManualTriangleFlipper(true)",
            "walk: ConverterToFloats(true)",
            "GeneralSetupVisitor",
            "walk: VBOCreator(true)",
            "SharedTextureTraverser",
            drawing + skinning + ", VBOGeometryVisitor",
            "walk: ManualTriangleUnFlipper",
            "walk: ManualUnColorizer"};
}

std::string const program = "VertexProgramVisitor(false)";
std::string const shader = "VertexShaderVisitor";

struct Row {
    Capabilities caps;
    Names passes;
};

Row const table[]{
    {{false, false, false}, plain},
    {{false, false, true}, skinningOnTheCard(shader)},
    {{false, true, false}, skinningOnTheCard(program)},
    {{false, true, true}, skinningOnTheCard(program)},
    {{true, false, false}, vbo},
    {{true, false, true}, skinningOnTheCardFromBuffers(shader)},
    {{true, true, false}, skinningOnTheCardFromBuffers(program)},
    {{true, true, true}, skinningOnTheCardFromBuffers(program)},
};

class Strategy : public RendererTest {};

} // namespace

static_assert(sizeof(Capabilities) == 3, "three flags and nothing else");
static_assert(std::is_trivially_copyable_v<Capabilities>);
static_assert(Capabilities() == Capabilities{false, false, false});

TEST_F(Strategy, IsTheOneInTheTableForEveryRecord)
{
    for (Row const& row : table) {
        LogCapture const log;
        auto const strategy = Strategist::computeStrategy(row.caps);
        EXPECT_EQ(log.text(), "");
        EXPECT_THAT(gl.calls(), testing::IsEmpty());
        EXPECT_EQ(describe(strategy), row.passes)
            << row.caps.vbo << row.caps.vertexProgram << row.caps.vertexShader;
        static_cast<void>(gl.takeCalls());
    }
}

TEST_F(Strategy, IsMadeOfNewVisitorsThatNobodyElseHolds)
{
    for (Row const& row : table) {
        auto const first = Strategist::computeStrategy(row.caps);
        auto const second = Strategist::computeStrategy(row.caps);
        ASSERT_EQ(first.size(), second.size());
        for (std::size_t i = 0; i < first.size(); ++i) {
            EXPECT_NE(first[i], second[i]);
            EXPECT_EQ(first[i]->referenceCount(), 1);
        }
    }
}
