#include "Tests/Command/Sgview.h"

#include "Utilities/Strings.h"
#include "Viewer/Platform/PngWriter.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <sstream>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

class InfoCommand : public SgviewTest {
protected:
    [[nodiscard]] json info(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), "info");
        arguments.push_back("--json");
        return json::parse(runWell(arguments));
    }
};

TEST_F(InfoCommand, CountsWhatIsInAModel)
{
    json const model = info({testModel("skinSixInfluences.gltf")});
    EXPECT_EQ(model["file"], testModel("skinSixInfluences.gltf"));
    EXPECT_THAT(model["format"].get<std::string>(), StartsWith("glTF 2.0"));
    EXPECT_EQ(model["surfaces"], 2);
    EXPECT_EQ(model["triangles"], 480);
    EXPECT_EQ(model["curves"], 0);
    EXPECT_EQ(model["bones"], 6);
    EXPECT_EQ(model["influences"], json({{"mostInFile", 6}, {"most", 4}, {"dropped", 220}}));
    EXPECT_EQ(model["materials"], json({"sleeve", "fist"}));
    EXPECT_EQ(model["textures"], json::array());
    EXPECT_EQ(model["animations"], json::parse(R"([{"name": "bend", "seconds": 1.0}])"));
    EXPECT_EQ(model["warnings"], json::array());
    EXPECT_EQ(model["pose"], json::parse(R"({"animation": null, "seconds": 0.0})"));
    EXPECT_EQ(model["bounds"].size(), 2U);
}

TEST_F(InfoCommand, TexturesHaveSizes)
{
    EXPECT_EQ(info({creature()})["textures"],
              json::parse(R"([{"name": "embedded 0", "width": 512, "height": 512}])"));
}

TEST_F(InfoCommand, CurvesAreCounted)
{
    json const model = info({testModel("lines.gltf")});
    EXPECT_EQ(model["surfaces"], 0);
    EXPECT_EQ(model["curves"].get<std::size_t>(), model["bounds"].size());
    EXPECT_GT(model["curves"], 0);
}

TEST_F(InfoCommand, BoundsOfAStaticModelAreThoseOfItsFile)
{
    writeFile("square.obj", "o square\nv 0.1 -2 0\nv 1 -2 0\nv 1 1e-7 0.30000000000000004\nf 1 2 3\n");
    json const bounds = info({"square.obj"})["bounds"];
    ASSERT_EQ(bounds.size(), 1U);
    EXPECT_EQ(bounds[0]["name"], "square");
    // What the file's library keeps in 32 bits comes out with all of them.
    EXPECT_EQ(bounds[0]["low"], json({0.1F, -2.0, 0.0}));
    EXPECT_EQ(bounds[0]["high"], json({1.0, 1e-7F, 0.30000000000000004F}));
}

TEST_F(InfoCommand, BoundsFollowThePose)
{
    json const start = info({testModel("rigid.gltf"), "--animation", "lift"});
    json const later = info({testModel("rigid.gltf"), "--animation", "0", "--time", "1.25"});
    EXPECT_EQ(later["pose"], json::parse(R"({"animation": 0, "seconds": 1.25})"));
    EXPECT_EQ(start["pose"], json::parse(R"({"animation": 0, "seconds": 0.0})"));
    ASSERT_EQ(later["bounds"].size(), 3U);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NE(later["bounds"][i], start["bounds"][i]);
}

TEST_F(InfoCommand, TextSaysTheSame)
{
    std::vector<std::string> const arguments{testModel("skin8bit.gltf"), "--animation", "wave", "--time",
                                             "0.4"};
    json const model = info(arguments);
    std::string const text =
        runWell({"info", testModel("skin8bit.gltf"), "--animation", "wave", "--time", "0.4"});
    EXPECT_THAT(text, HasSubstr("surfaces:    2\n"));
    EXPECT_THAT(text, HasSubstr("triangles:   480\n"));
    EXPECT_THAT(text, HasSubstr("bones:       4\n"));
    EXPECT_THAT(text, HasSubstr("animations:  1\n  0 'wave', 1 s\n"));
    EXPECT_THAT(text, HasSubstr("bounds:      'wave' at 0.4 s\n"));
    for (json const& surface : model["bounds"])
        for (char const* corner : {"low", "high"})
            for (json const& component : surface[corner])
                EXPECT_THAT(text, HasSubstr(stringize(component.get<double>()))) << "to six digits";
}

TEST_F(InfoCommand, DroppedInfluencesAreSaid)
{
    EXPECT_THAT(runWell({"info", testModel("skinSixInfluences.gltf")}),
                HasSubstr("influences:  4 a vertex at most (6 in the file; 220 of the weakest dropped)\n"));
    EXPECT_THAT(runWell({"info", testModel("unlit.gltf")}), HasSubstr("influences:  none\n"));
}

TEST_F(InfoCommand, SplitSurfacesAreSaid)
{
    EXPECT_EQ(info({testModel("skinManyBones.gltf")})["splits"],
              json::parse(R"([{"surface": "worm", "parts": 4}])"));
    EXPECT_EQ(info({creature()})["splits"], json::array());
    EXPECT_THAT(runWell({"info", testModel("skinManyBones.gltf")}),
                HasSubstr("splits:      1\n  'worm' into 4 parts of at most 56 bones each\n"));
}

TEST_F(InfoCommand, WarningsArePartOfTheAnswer)
{
    writeFile("square.obj",
              "mtllib square.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nvt 0 0\nusemtl m\nf 1/1 2/1 3/1\n");
    writeFile("square.mtl", "newmtl m\nmap_Kd missing.png\n");
    json const model = info({"square.obj"});
    ASSERT_EQ(model["warnings"].size(), 1U);
    EXPECT_THAT(model["warnings"][0].get<std::string>(), HasSubstr("missing.png"));
    EXPECT_THAT(runWell({"info", "square.obj", "--quiet"}), HasSubstr("warnings:    1\n  "));
}

TEST_F(InfoCommand, LooksForTexturesInNamedFolders)
{
    writeFile("crate.obj", "mtllib crate.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nvt 0 0\nusemtl m\nf 1/1 2/1 3/1\n");
    writeFile("crate.mtl", "newmtl m\nmap_Kd icon.png\n");
    std::filesystem::create_directory(folder / "pictures");
    sgview::writePng(folder / "pictures/icon.png", sgview::Picture({4, 2}));
    json const model = info({"crate.obj", "--texture-folder", "pictures"});
    EXPECT_EQ(model["warnings"], json::array());
    EXPECT_EQ(model["textures"][0]["width"], 4);
}

TEST_F(InfoCommand, LimitsOfTheImport)
{
    EXPECT_EQ(info({creature(), "--memory-limit", "2048", "--time-limit", "30"}), info({creature()}));
    expectFailure({"info", creature(), "--time-limit", "0"}, 2,
                  "--time-limit: '0' is not a whole number from 1 to 86400");
}

TEST_F(InfoCommand, NamesThatAreNoTextStillMakeWellFormedJson)
{
    writeFile("strange\x01.obj", "o caf\xe9 \\\"x\nv 0 0 0\nv 1 0 0\nv 1 1 0\nf 1 2 3\n");
    json const model = info({"strange\x01.obj"});
    EXPECT_EQ(model["file"], "strange\x01.obj");
    EXPECT_THAT(model["bounds"][0]["name"].get<std::string>(), StartsWith("caf\xef\xbf\xbd"));
}

TEST_F(InfoCommand, NamesSteerNoTerminal)
{
    std::string const name = "a\u009B31mz\u202E\x1B[2Jb";
    writeFile("a.obj", "mtllib a.mtl\no a\nusemtl " + name + "\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    writeFile("a.mtl", "newmtl " + name + "\nKd 1 0 0\n");
    EXPECT_THAT(runWell({"info", "a.obj"}), HasSubstr("'a 31mz [2Jb'"));
    std::string const text = runWell({"info", "a.obj", "--json"});
    EXPECT_TRUE(std::ranges::all_of(text, [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); }))
        << text;
    EXPECT_EQ(json::parse(text)["materials"], json({name}));
}

TEST_F(InfoCommand, SeveralModels)
{
    std::string const rigid = testModel("rigid.gltf");
    EXPECT_EQ(runWell({"info", rigid, creature()}),
              runWell({"info", rigid}) + "\n" + runWell({"info", creature()}));
    std::string const lines = runWell({"info", rigid, creature(), "--json"});
    std::size_t const end = lines.find('\n');
    EXPECT_EQ(json::parse(lines.substr(0, end)), info({rigid})) << "an object a line";
    EXPECT_EQ(json::parse(lines.substr(end + 1)), info({creature()}));
    EXPECT_EQ(std::ranges::count(lines, '\n'), 2);
}

TEST_F(InfoCommand, OneBadModelDoesNotKeepTheOthersBack)
{
    std::vector<std::string> arguments{
        "info", "missing.obj", testModel("rigid.gltf"), testModel("lines.gltf"), "--animation", "7"};
    std::string const errors = "sgview: missing.obj: there is no such file\n"
                               "sgview: --animation: " +
                               testModel("rigid.gltf") +
                               " has no animation '7'; it has 0 'lift'\n"
                               "sgview: warning: no animation in " +
                               testModel("lines.gltf") +
                               "; taken in its rest pose\n"
                               "sgview: 2 of 3 models could not be described\n";
    Outcome const text = run(arguments);
    EXPECT_EQ(text.status, 1);
    EXPECT_EQ(text.errors, errors);
    EXPECT_THAT(text.output, StartsWith("file:        " + testModel("lines.gltf") + "\n"));
    arguments.emplace_back("--json");
    Outcome const asJson = run(arguments);
    EXPECT_EQ(asJson.status, 1);
    EXPECT_EQ(asJson.errors, errors);
    std::istringstream stream(asJson.output);
    std::vector<json> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(json::parse(line));
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0], json::parse(R"({"file": "missing.obj", "error": {"kind": "not found",
                                        "message": "missing.obj: there is no such file"}})"));
    EXPECT_EQ(lines[1]["error"]["kind"], "usage");
    EXPECT_EQ(lines[2]["file"], testModel("lines.gltf"));
}

TEST_F(InfoCommand, FullStandardOutput)
{
    Circumstances full;
    full.output = "/dev/full";
    expectFailure({"info", creature()}, 1, "standard output cannot be written", full);
}

} // namespace
