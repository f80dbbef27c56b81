#include "Viewer/Bench/CrowdScene.h"

#include "Tests/Unit/Bench/SceneWalk.h"
#include "Viewer/Import/Importer.h"

#include <gmock/gmock.h>

#include <set>

namespace {

using namespace sgview;

Model creature()
{
    return importModel(SG_SOURCE_FOLDER "/Assets/creature.glb", ImportOptions());
}

TEST(CrowdScene, HasAsManyModelsAsAreWanted)
{
    std::size_t const one = SceneWalk::through(*CrowdScene(creature(), 0, 1).root())->surfaces.size();
    EXPECT_GE(one, 1U);
    for (int const count : {2, 5})
        EXPECT_EQ(SceneWalk::through(*CrowdScene(creature(), 0, count).root())->surfaces.size(),
                  one * static_cast<std::size_t>(count));
}

/// One figure of the pose of every skinned model.
std::set<double> posesIn(CrowdScene const& scene)
{
    smart_ptr<SceneWalk> const walk = SceneWalk::through(*scene.root());
    std::set<double> poses;
    for (auto const* const surface : walk->surfaces)
        if (surface->getBoneTransforms())
            poses.insert(surface->getBoneTransforms()->get().transforms.back().rotation[0]);
    return poses;
}

TEST(CrowdScene, EachIsAtItsOwnTimeOfTheAnimation)
{
    CrowdScene scene(creature(), 0, 6);
    std::set<double> const first = posesIn(scene);
    EXPECT_EQ(first.size(), 6U);
    scene.prepare(1);
    std::set<double> all = posesIn(scene);
    all.insert(first.begin(), first.end());
    EXPECT_EQ(all.size(), 12U) << "and at another one in the next frame";
}

TEST(CrowdScene, ModelAtRestStands)
{
    CrowdScene scene(creature(), none, 3);
    std::set<double> const first = posesIn(scene);
    EXPECT_EQ(first.size(), 1U);
    scene.prepare(50);
    EXPECT_EQ(posesIn(scene), first);
}

TEST(CrowdScene, TooLargeACrowdIsRefused)
{
    Model model = creature();
    std::size_t vertices = 0;
    for (ModelSurface const& surface : model.surfaces)
        vertices += surface.positions.size();
    ASSERT_GT(vertices * CrowdScene::most, CrowdScene::mostVertices) << "large enough for this test";
    EXPECT_THAT([&] { CrowdScene const scene(std::move(model), 0, CrowdScene::most); },
                testing::ThrowsMessage<CrowdTooLarge>(testing::StartsWith(
                    "a crowd of 10000 would have " + std::to_string(vertices) + " vertices")));
}

TEST(CrowdScene, NothingToDrawIsNoCrash)
{
    CrowdScene scene(Model(), none, 4);
    scene.setView(100, 100);
    scene.prepare(1);
    EXPECT_EQ(SceneWalk::through(*scene.root())->surfaces.size(), 0U);
}

} // namespace
