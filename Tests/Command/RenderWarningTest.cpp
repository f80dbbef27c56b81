#include "Tests/Command/Sgview.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr char const* square = "v -1 -1 0\nv 1 -1 0\nv 1 1 0\nv -1 1 0\nvt 0 0\n";

/// Models that lack a picture: "one.obj" and "two.obj".
class RenderWarning : public SgviewTest {
protected:
    RenderWarning()
    {
        for (std::string const name : {"one", "two"}) {
            writeFile(name + ".obj", "mtllib " + name + ".mtl\n" + square + "usemtl m\nf 1/1 2/1 3/1 4/1\n");
            writeFile(name + ".mtl", "newmtl m\nKd 1 0 0\nmap_Kd of-" + name + ".png\n");
        }
        writeFile("white.obj", std::string("mtllib white.mtl\n") + square + "usemtl m\nf 1 2 3 4\n");
        writeFile("white.mtl", "newmtl m\nKd 1 1 1\n");
    }

    [[nodiscard]] Outcome draw(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), "render");
        arguments.insert(arguments.end(), {"--size", "32x24"});
        Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        return outcome;
    }
};

TEST_F(RenderWarning, NamesTheModelWhereThereAreSeveral)
{
    std::string const one = draw({"one.obj", "--output", "a.png"}).errors;
    ASSERT_THAT(one, testing::StartsWith("sgview: warning: texture 'of-one.png'"));
    std::string const text = one.substr(std::string("sgview: warning: texture 'of-one.png'").size());
    EXPECT_EQ(draw({"one.obj", "white.obj", "two.obj", "--background", "#000000", "--output", "{model}.png"})
                  .errors,
              "sgview: warning: one.obj: texture 'of-one.png'" + text +
                  "sgview: warning: two.obj: texture 'of-two.png'" + text);
    std::vector<std::string> const poseless = linesOf(
        draw({"one.obj", "two.obj", "--animation", "0", "--quiet", "--json", "--output", "{model}.png"})
            .output);
    ASSERT_EQ(poseless.size(), 2U);
    EXPECT_EQ(json::parse(poseless[1])["warnings"][1], "no animation in two.obj; taken in its rest pose");
}

TEST_F(RenderWarning, AndTheTechniqueAreInTheJson)
{
    for (std::string const technique : {"plain", "vbo"}) {
        Outcome const outcome =
            run({"render", "one.obj", "white.obj", "missing.obj", "--background", "#000000", "--size", "8x8",
                 "--technique", technique, "--json", "--quiet", "--output", "{model}.png"});
        std::vector<std::string> const lines = linesOf(outcome.output);
        ASSERT_EQ(lines.size(), 3U);
        json const warned = json::parse(lines[0]);
        ASSERT_EQ(warned["warnings"].size(), 1U);
        EXPECT_THAT(warned["warnings"][0].get<std::string>(), HasSubstr("texture 'of-one.png'"));
        EXPECT_EQ(warned["technique"], technique);
        EXPECT_EQ(json::parse(lines[1])["warnings"], json::array());
        EXPECT_EQ(json::parse(lines[2])["warnings"], json::array());
        EXPECT_EQ(json::parse(lines[2])["technique"], nullptr) << "nothing was drawn";
    }
}

TEST_F(RenderWarning, OfAPictureThatShowsNothing)
{
    std::string const blank =
        "nothing of the model differs from the background, #ffffff; --background chooses "
        "another";
    EXPECT_EQ(draw({"white.obj", "--unlit", "--output", "a.png"}).errors, "sgview: warning: " + blank + "\n");
    EXPECT_EQ(draw({"white.obj", "--unlit", "--supersample", "2", "--output", "a.png"}).errors,
              "sgview: warning: " + blank + "\n");
    EXPECT_EQ(draw({"white.obj", "--unlit", "--turntable", "4", "--output", "f{frame}.png"}).errors,
              "sgview: warning: " + blank + "\n")
        << "once a film";
    json const line =
        json::parse(draw({"white.obj", "--unlit", "--quiet", "--json", "--output", "a.png"}).output);
    EXPECT_EQ(line["warnings"], json({blank}));
    EXPECT_EQ(draw({"white.obj", "--unlit", "--background", "#fefefe", "--output", "a.png"}).errors, "");
    EXPECT_EQ(draw({"white.obj", "--unlit", "--background", "transparent", "--output", "a.png"}).errors, "");
    EXPECT_EQ(draw({"white.obj", "--unlit", "--zoom", "100", "--background", "#000000", "--output", "a.png"})
                  .errors,
              "")
        << "the model fills the picture in one colour";
    writeFile("white.mtl", "newmtl m\nKd 0 0 0\n");
    EXPECT_EQ(
        draw({"white.obj", "--unlit", "--zoom", "100", "--background", "transparent", "--output", "a.png"})
            .errors,
        "")
        << "nor where that is black and all opaque";
    writeFile("white.mtl", "newmtl m\nKd 1 1 1\n");
    EXPECT_THAT(draw({"white.obj", "one.obj", "--unlit", "--output", "{model}.png"}).errors,
                HasSubstr("sgview: warning: white.obj: nothing of the model"));
}

} // namespace
