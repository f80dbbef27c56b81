#include "Tests/Import/GltfBuilder.h"
#include "Tests/Import/TestFolder.h"
#include "Viewer/Import/Importer.h"

#include <gtest/gtest.h>

#include <limits>

namespace sgview {

namespace {

class GltfAnimationsTest : public ::testing::Test {
protected:
    GltfAnimationsTest()
    {
        builder_.triangle();
        builder_.node({{"mesh", 0}});
    }

    void channel(std::string const& path, char const* interpolation, std::string const& type,
                 std::vector<float> const& times, std::vector<float> const& values)
    {
        nlohmann::json& animations = builder_.json["animations"];
        if (animations.empty())
            animations = {{{"name", "clip"},
                           {"channels", nlohmann::json::array()},
                           {"samplers", nlohmann::json::array()}}};
        int const input = builder_.floats("SCALAR", times);
        int const output = builder_.floats(type, values);
        nlohmann::json& animation = animations[0];
        animation["channels"].push_back(
            {{"sampler", animation["samplers"].size()}, {"target", {{"node", 0}, {"path", path}}}});
        animation["samplers"].push_back(
            {{"input", input}, {"output", output}, {"interpolation", interpolation}});
    }

    Model import() { return importModel(folder_.write("model.glb", builder_.glb()), {}); }

    TestFolder folder_;
    GltfBuilder builder_;
};

} // namespace

TEST_F(GltfAnimationsTest, ReadsEveryInterpolation)
{
    channel("translation", "STEP", "VEC3", {0, 1}, {1, 2, 3, 4, 5, 6});
    channel("rotation", "LINEAR", "VEC4", {0, 2}, {0, 0, 0, 1, 0, 0, 1, 0});
    channel("scale", "CUBICSPLINE", "VEC3", {0.5}, {0, 0, 0, 1, 2, 3, 0, 0, 1});
    Model const model = import();
    ASSERT_EQ(model.animations.size(), 1U);
    ModelAnimation const& animation = model.animations[0];
    EXPECT_EQ(animation.name, "clip");
    EXPECT_EQ(animation.length, 2.0);
    ASSERT_EQ(animation.channels.size(), 1U);
    ModelChannel const& result = animation.channels[0];
    EXPECT_EQ(result.translation.interpolation, Interpolation::step);
    EXPECT_EQ(result.translation.values[1], Vector3(4, 5, 6));
    EXPECT_EQ(result.rotation.interpolation, Interpolation::linear);
    EXPECT_EQ(result.rotation.values[1].z, 1.0);
    EXPECT_EQ(result.scale.interpolation, Interpolation::cubic);
    ASSERT_EQ(result.scale.values.size(), 3U);
    EXPECT_EQ(result.scale.values[1], Vector3(1, 2, 3));
}

TEST_F(GltfAnimationsTest, LeavesOutBrokenChannels)
{
    channel("translation", "LINEAR", "VEC3", {0, 1},
            {1, 2, 3, std::numeric_limits<float>::quiet_NaN(), 5, 6});
    channel("scale", "LINEAR", "VEC3", {0, 1}, {1, 1, 1, 2, 2, 2});
    channel("rotation", "LINEAR", "VEC3", {0, 1}, {1, 1, 1, 2, 2, 2});
    Model const model = import();
    ASSERT_EQ(model.animations[0].channels.size(), 1U);
    EXPECT_TRUE(model.animations[0].channels[0].translation.times.empty());
    EXPECT_TRUE(model.animations[0].channels[0].rotation.times.empty());
    EXPECT_EQ(model.animations[0].channels[0].scale.times.size(), 2U);
    EXPECT_EQ(model.warnings.size(), 2U);
}

TEST_F(GltfAnimationsTest, NamesMorphingThatIsNotAnimated)
{
    channel("weights", "LINEAR", "SCALAR", {0, 1}, {0, 1});
    Model const model = import();
    EXPECT_TRUE(model.animations.empty());
    EXPECT_EQ(model.warnings, std::vector<std::string>{"animation 'clip': morphing is not animated"});
}

} // namespace sgview
