#include "Tests/Command/Sgview.h"

#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/PngReader.h"

namespace {

/// A model that nobody of this project made.
struct PublicModel {
    char const* file;
    bool animated;
};

void PrintTo(PublicModel const& model, std::ostream* stream)
{
    *stream << model.file;
}

class PublicModels : public SgviewTest, public testing::WithParamInterface<PublicModel> {
protected:
    [[nodiscard]] std::vector<std::string> arguments(std::string const& moment) const
    {
        return {path(), "--quiet", "--size", "320x240", "--animation", "0", "--time", moment};
    }
    [[nodiscard]] static std::string path()
    {
        return std::string("/usr/share/assimp/models/") + GetParam().file;
    }
};

TEST_P(PublicModels, DrawnTheSameEachTimeAndOtherwiseAtAnotherMoment)
{
    if (!std::filesystem::exists(path()))
        GTEST_SKIP() << "the package assimp-testmodels is not installed";
    std::string const first = render("a.png", arguments("0.4"));
    EXPECT_EQ(render("b.png", arguments("0.4")), first);

    sgview::Picture const picture = readPng(folder / "a.png");
    sgview::Picture blank(picture.size);
    std::fill(blank.pixels.begin(), blank.pixels.end(), std::uint8_t{255});
    EXPECT_GT(countMismatches(picture, blank), 500U);
    if (GetParam().animated) {
        static_cast<void>(render("later.png", arguments("0.7")));
        EXPECT_GT(countMismatches(picture, readPng(folder / "later.png")), 20U);
    }
}

INSTANTIATE_TEST_SUITE_P(Six, PublicModels,
                         testing::Values(PublicModel{"X/Testwuson.X", true},
                                         PublicModel{"glTF2/simple_skin/simple_skin.gltf", true},
                                         PublicModel{"FBX/animation_with_skeleton.fbx", true},
                                         PublicModel{"X/anim_test.x", true},
                                         PublicModel{"glTF2/BoxTextured-glTF-Binary/BoxTextured.glb", false},
                                         PublicModel{"Collada/duck.dae", false}));

} // namespace
