#include "OpenGLRenderer/ManualAnimator.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "SceneGraph/SGTraverser.h"
#include "Tests/Unit/Scene/PlainGltf.h"
#include "Viewer/Import/Importer.h"
#include "Viewer/Scene/ModelScene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>

namespace {

class VertexCollector : public SGNodeVisitor {
public:
    std::vector<std::vector<Vector3>> surfaces;

    using SGNodeVisitor::enter;
    void enter(SGSurfaceGeometryReferenceNode* node) override
    {
        surfaces.push_back(node->getGeometry()->get()->vertices);
    }
};

void run(smart_ptr<SGNodeVisitor> const& visitor, smart_ptr<SGRootNode> const& root)
{
    SGTraverser traverser(visitor);
    root->acceptEnter(&traverser);
    root->acceptLeave(&traverser);
}

std::vector<std::vector<Vector3>> restVertices(sgview::ModelScene const& scene)
{
    auto collector = make_smart<VertexCollector>();
    run(collector, scene.root());
    return collector->surfaces;
}

/// The vertices that the renderer would draw.
std::vector<std::vector<Vector3>> drawnVertices(sgview::ModelScene const& scene)
{
    run(make_smart<ManualAnimator>(), scene.root());
    std::vector<std::vector<Vector3>> vertices = restVertices(scene);
    run(make_smart<ManualUnAnimator>(), scene.root());
    return vertices;
}

/// Every distinct vertex of the file, by where it is at rest: importers may reorder and merge.
std::map<PlainGltf::Point, PlainGltf::Point> expectedVertices(PlainGltf const& file, double seconds)
{
    std::map<PlainGltf::Point, PlainGltf::Point> all;
    for (std::size_t primitive = 0; primitive < file.primitiveCount(); ++primitive) {
        std::vector<PlainGltf::Point> const rest = file.restVertices(primitive);
        std::vector<PlainGltf::Point> const posed = file.skinnedVertices(primitive, seconds);
        for (std::size_t i = 0; i < rest.size(); ++i)
            all.emplace(rest[i], posed[i]);
    }
    return all;
}

class SkinningAgreement : public testing::TestWithParam<char const*> {};

TEST_P(SkinningAgreement, EveryVertexAtThreeTimes)
{
    std::filesystem::path const file = std::filesystem::path(TEST_MODELS) / GetParam(); // or absolute
    if (!std::filesystem::exists(file))
        GTEST_SKIP() << file << " is not there (Debian's assimp-testmodels)";
    PlainGltf const reference(file);
    sgview::ModelScene scene(sgview::importModel(file, {}), {});
    std::vector<std::vector<Vector3>> const rest = restVertices(scene);

    double largestMove = 0.0;
    for (double const share : {0.13, 0.5, 0.91}) {
        double const seconds = share * reference.animationLength();
        SCOPED_TRACE(seconds);
        scene.pose(0, seconds);
        std::vector<std::vector<Vector3>> const drawn = drawnVertices(scene);
        std::map<PlainGltf::Point, PlainGltf::Point> const expected = expectedVertices(reference, seconds);
        double size = 0.0;
        for (auto const& [atRest, point] : expected)
            size = std::fmax(size, std::hypot(point[0], point[1], point[2]));

        std::set<PlainGltf::Point> seen;
        for (std::size_t surface = 0; surface < drawn.size(); ++surface) {
            for (std::size_t i = 0; i < drawn[surface].size(); ++i) {
                Vector3 const& r = rest[surface][i];
                auto const found = expected.find({r.x, r.y, r.z});
                ASSERT_NE(found, expected.end()) << "vertex " << i << " is not in the file";
                seen.insert(found->first);
                PlainGltf::Point const& e = found->second;
                EXPECT_LE(length(drawn[surface][i] - Vector3(e[0], e[1], e[2])), 1e-9 * size)
                    << "vertex " << i;
                largestMove = std::fmax(largestMove, length(drawn[surface][i] - r) / size);
            }
        }
        EXPECT_EQ(seen.size(), expected.size()) << "vertices of the file are missing";
    }
    EXPECT_GT(largestMove, 0.01) << "the model does not move: nothing was compared";
}

INSTANTIATE_TEST_SUITE_P(Models, SkinningAgreement,
                         testing::Values("skin8bit.gltf", "skin16bit.gltf", "skinNoInverseBind.gltf",
                                         "skinCubic.gltf", "skinManyBones.gltf",
                                         "/usr/share/assimp/models/glTF2/simple_skin/simple_skin.gltf"),
                         [](auto const& model) {
                             return std::filesystem::path(model.param).stem().string();
                         });

} // namespace
