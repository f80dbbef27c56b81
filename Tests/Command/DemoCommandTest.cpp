#include "Tests/Command/Sgview.h"

#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/PngReader.h"

namespace {

class DemoCommand : public SgviewTest {
protected:
    [[nodiscard]] std::string demo(std::string const& name,
                                   std::vector<std::string> const& options = {}) const
    {
        std::vector<std::string> arguments{"demo", "--output", name};
        arguments.insert(arguments.end(), options.begin(), options.end());
        EXPECT_EQ(runWell(arguments), "");
        return contentOf(name);
    }
};

TEST_F(DemoCommand, DrawsTheSameEachTime)
{
    EXPECT_EQ(demo("a.png"), demo("b.png"));
    EXPECT_EQ(readPng(folder / "a.png").size, (sgview::PictureSize{1024, 768}));
    EXPECT_EQ(filesInFolder(), (std::vector<std::string>{"a.png", "b.png"}));
}

TEST_F(DemoCommand, MovesWithTime)
{
    static_cast<void>(demo("a.png", {"--size", "400x300"}));
    static_cast<void>(demo("b.png", {"--size", "400x300", "--time", "0.5"}));
    sgview::Picture const first = readPng(folder / "a.png");
    EXPECT_EQ(first.size, (sgview::PictureSize{400, 300}));
    EXPECT_GT(countMismatches(first, readPng(folder / "b.png")), 500U);
}

TEST_F(DemoCommand, Messages)
{
    std::string const usual = demo("a.png", {"--size", "64x48", "--quiet"});
    Outcome const logged = run({"demo", "-o", "b.png", "-s", "64x48", "--log", "opengl"});
    EXPECT_TRUE(logged.errors.starts_with("opengl: GL_VERSION: ")) << logged.errors;
    EXPECT_EQ(contentOf("b.png"), usual);
}

} // namespace
