#include "Tests/Command/Sgview.h"

#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/PngReader.h"
#include "Viewer/Platform/PngWriter.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace {

using nlohmann::json;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

std::vector<std::string> const techniques{"plain", "vbo", "program", "program+vbo", "shader", "shader+vbo"};

class CompareCommand : public SgviewTest {
protected:
    [[nodiscard]] json compare(std::vector<std::string> arguments,
                               Circumstances const& circumstances = {}) const
    {
        arguments.insert(arguments.begin(), "compare");
        arguments.insert(arguments.end(), {"--quiet", "--json"});
        Outcome const outcome = run(arguments, circumstances);
        EXPECT_EQ(outcome.status, 0) << testing::PrintToString(arguments);
        EXPECT_EQ(outcome.errors, "");
        return json::parse(outcome.output);
    }

    /// A shader asset that is found before the engine's own and draws everything half as large.
    [[nodiscard]] Circumstances withWrongShader() const
    {
        std::filesystem::create_directories(folder / "wrong" / "Shaders");
        writeFile("wrong/Shaders/animationVertexShader.txt",
                  "void main()\n{\n    gl_Position = ftransform() * vec4(0.5, 0.5, 1.0, 1.0);\n"
                  "    gl_FrontColor = gl_BackColor = vec4(1.0, 0.0, 0.0, 1.0);\n}\n");
        Circumstances circumstances;
        circumstances.environment["SG_ASSET_PATH"] = (folder / "wrong").string();
        return circumstances;
    }
};

/// What of a frame another technique may draw otherwise.
enum class Allowed {
    rounding, ///< one pixel in 10,000, and the others by 2 of 255
    lines,    ///< three in 1,000: where a line's end is rounded otherwise, pixels along it lie one beside
};

/// Holds every technique against the limits; buffer objects change no bit.
/// \return techniques that the driver does not offer
std::string expectWithinLimits(json const& comparison, Allowed allowed = Allowed::rounding)
{
    bool const isRough = comparison["driver"].get<std::string>().find("softpipe") != std::string::npos;
    double const pixels = comparison["width"].get<double>() * comparison["height"].get<double>();
    double const share = allowed == Allowed::lines ? 0.003 : isRough ? 0.001 : 0.0001;
    std::string lacking;
    for (json const& result : comparison["techniques"]) {
        SCOPED_TRACE(result["technique"]);
        if (!result["lacking"].is_null())
            lacking += result["technique"].get<std::string>() + " ";
        bool const isExact = result["technique"] == "vbo" || result["technique"] == "plain";
        for (json const& moment : result["moments"]) {
            EXPECT_LE(moment["mismatches"], isExact ? 0.0 : pixels * share);
            if (isExact || allowed == Allowed::rounding) {
                EXPECT_LE(moment["largestElsewhere"], isExact ? 0 : 2);
            }
        }
        EXPECT_NE(result["verdict"], "different");
    }
    return lacking;
}

TEST_F(CompareCommand, TableHasALineATechnique)
{
    std::string const table =
        runWell({"compare", creature(), "--animation", "swim", "--times", "0.2,0.5", "--size", "200x150"});
    EXPECT_THAT(table, HasSubstr(creature() + ", 'swim' at 0.2, 0.5 s\n"));
    EXPECT_THAT(table, ContainsRegex("technique +ms/frame +mismatches +largest +elsewhere +verdict\n"));
    EXPECT_THAT(table, ContainsRegex("\nplain +[0-9]+\\.[0-9][0-9] +- +- +-  reference\n"));
    EXPECT_THAT(table, ContainsRegex("\nvbo +[0-9]+\\.[0-9][0-9] +0 +0 +0  same\n"));
    for (std::string const name : {"program", "program\\+vbo", "shader", "shader\\+vbo"})
        EXPECT_THAT(table, ContainsRegex("\n" + name +
                                         " +[0-9]+\\.[0-9][0-9] +[0-9]+ +[0-9]+ +[0-9]+  (alike|same)\n"));
    EXPECT_THAT(table, HasSubstr("pixels of 200 x 150"));
    EXPECT_EQ(filesInFolder(), std::vector<std::string>{});
}

TEST_F(CompareCommand, JsonSaysTheSame)
{
    json const comparison = compare({creature(), "--times", "2", "--size", "120x90"});
    EXPECT_EQ(comparison["subject"], creature());
    EXPECT_EQ(comparison["animation"], "swim");
    EXPECT_EQ(comparison["width"], 120);
    EXPECT_EQ(comparison["height"], 90);
    EXPECT_NE(comparison["driver"], "");
    ASSERT_EQ(comparison["techniques"].size(), techniques.size());
    for (std::size_t i = 0; i < techniques.size(); ++i) {
        json const& result = comparison["techniques"][i];
        EXPECT_EQ(result["technique"], techniques[i]);
        if (!result["lacking"].is_null())
            continue;
        EXPECT_GT(result["milliseconds"], 0.0);
        EXPECT_EQ(result["moments"].size(), 2U);
    }
}

TEST_F(CompareCommand, MomentsAreSpreadOrListed)
{
    std::vector<std::string> const small{creature(), "--size", "32x32", "--animation", "1"};
    auto const secondsOf = [&](std::vector<std::string> const& options) {
        std::vector<std::string> arguments = small;
        arguments.insert(arguments.end(), options.begin(), options.end());
        return compare(arguments)["seconds"].get<std::vector<double>>();
    };
    double const length = json::parse(runWell({"info", creature(), "--json"}))["animations"][1]["seconds"];
    std::vector<double> const three = secondsOf({});
    ASSERT_EQ(three.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_DOUBLE_EQ(three[i], length * (static_cast<double>(i) + 0.5) / 3.0);
    EXPECT_EQ(secondsOf({"--times", "1"}), std::vector<double>{length / 2.0});
    EXPECT_EQ(secondsOf({"--times", "0.125,0,1e-1"}), (std::vector<double>{0.125, 0.0, 0.1}));
    EXPECT_EQ(secondsOf({"--times", "2.0"}), std::vector<double>{2.0});
}

TEST_F(CompareCommand, ModelThatDoesNotMoveHasOneMoment)
{
    json const comparison = compare({testModel("unlit.gltf"), "--size", "64x64"});
    EXPECT_EQ(comparison["animation"], nullptr);
    EXPECT_EQ(comparison["seconds"], json({0.0}));
    expectFailure({"compare", testModel("unlit.gltf"), "--times", "0.5,1"}, 2,
                  "--times: " + testModel("unlit.gltf") + " has no animation");
}

/// In how many places of the sheet a picture is.
std::size_t countPlaces(sgview::Picture const& sheet, sgview::Picture const& picture)
{
    auto const isAt = [&](int left, int top) {
        for (int y = 0; y < picture.size.height; ++y)
            for (int x = 0; x < picture.size.width; ++x)
                if (pixelAt(sheet, left + x, top + y) != pixelAt(picture, x, y))
                    return false;
        return true;
    };
    std::size_t count = 0;
    for (int top = 0; top + picture.size.height <= sheet.size.height; ++top)
        for (int left = 0; left + picture.size.width <= sheet.size.width; ++left)
            count += isAt(left, top) ? 1 : 0;
    return count;
}

TEST_F(CompareCommand, SheetShowsEveryPictureBesideThePlainOne)
{
    static_cast<void>(render("plain.png", {creature(), "--animation", "swim", "--time", "0.4", "--size",
                                           "96x96", "--azimuth", "70", "--technique", "plain"}));
    EXPECT_THAT(runWell({"compare", creature(), "--animation", "swim", "--times", "0.4,0.9", "--size",
                         "96x96", "--azimuth", "70", "--output", "sheet.png"}),
                HasSubstr("reference"));
    // The plain column, and in two rows at least the technique's own picture: plain and vbo.
    EXPECT_GE(countPlaces(readPng(folder / "sheet.png"), readPng(folder / "plain.png")), 8U);
    EXPECT_EQ(filesInFolder(), (std::vector<std::string>{"plain.png", "sheet.png"}));
}

TEST_F(CompareCommand, SheetReducesLargeFrames)
{
    EXPECT_NE(runWell({"compare", creature(), "--times", "1", "--size", "1000x500", "--output", "sheet.png"}),
              "");
    EXPECT_LT(readPng(folder / "sheet.png").size.width, 300 + 3 * 270);
}

TEST_F(CompareCommand, TechniqueThatDrawsOtherwiseIsAFailedJob)
{
    Outcome const outcome =
        run({"compare", creature(), "--times", "1", "--size", "128x128", "--output", "sheet.png"},
            withWrongShader());
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors,
              "sgview: 1% of a frame or more differs from the plain picture: shader, shader+vbo\n");
    EXPECT_THAT(outcome.output, ContainsRegex("\nshader +[0-9.]+ +[0-9][0-9]+ +[0-9]+ +[0-9]+  different\n"));
    EXPECT_THAT(outcome.output, Not(ContainsRegex("program[^\n]*different")));
    EXPECT_EQ(filesInFolder(), (std::vector<std::string>{"sheet.png", "wrong"})) << "shown all the same";
}

TEST_F(CompareCommand, TechniqueThatTheCardLacksIsNoFailure)
{
    Circumstances old;
    old.environment["MESA_EXTENSION_MAX_YEAR"] = "2002"; // before buffer objects
    json const comparison = compare({creature(), "--times", "1", "--size", "64x64"}, old);
    json const& results = comparison["techniques"];
    for (std::size_t i : {1U, 3U, 5U}) {
        EXPECT_EQ(results[i]["lacking"], "GL_ARB_vertex_buffer_object") << techniques[i];
        EXPECT_EQ(results[i]["verdict"], "lacking");
        EXPECT_EQ(results[i]["milliseconds"], nullptr);
        EXPECT_EQ(results[i]["moments"], json::array());
    }
    for (std::size_t i : {2U, 4U})
        EXPECT_EQ(results[i]["lacking"], nullptr) << techniques[i];

    old.environment["MESA_EXTENSION_MAX_YEAR"] = "2001";
    Outcome const outcome =
        run({"compare", creature(), "--times", "1", "--size", "64x64", "--output", "sheet.png"}, old);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, ContainsRegex("\nprogram +- +- +- +-  no GL_ARB_vertex_program\n"));
    EXPECT_THAT(outcome.output,
                ContainsRegex("\nshader +- +- +- +-  no GL_ARB_shader_objects, GL_ARB_vertex_shader\n"));
    EXPECT_TRUE(std::filesystem::exists(folder / "sheet.png"));
}

TEST_F(CompareCommand, Failures)
{
    expectFailure({"compare"}, 2, "FILE is required, or --demo");
    expectFailure({"compare", creature(), "--demo"}, 2, "FILE excludes --demo");
    expectFailure({"compare", "--demo", "--wireframe"}, 2, "--wireframe excludes --demo");
    expectFailure({"compare", creature(), "--output", "-"}, 2,
                  "--output: standard output takes the table already");
    expectFailure({"compare", creature(), "--technique", "vbo"}, 2,
                  "unknown option --technique; see sgview compare --help");
    expectFailure({"compare", creature(), "--time", "1"}, 2,
                  "unknown option --time; see sgview compare --help");
    for (char const* times : {"0", "17", "", ",", "1,", "-1", "0.5,-1", "nan", "1e7,", "one",
                              "1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17"}) {
        expectFailure(
            {"compare", creature(), "--times", times}, 2,
            "--times: '" + std::string(times) +
                "' is not moments: how many, 1 to 16, or as many seconds with commas between, as in "
                "0.1,0.25");
    }
    expectFailure({"compare", "missing.glb"}, 1, "missing.glb: there is no such file");
    expectFailure({"compare", creature(), "--animation", "fly"}, 2,
                  "--animation: " + creature() + " has no animation 'fly'; it has 0 'swim', 1 'look'");
    expectFailure({"compare", creature(), "--times", "1", "--size", "32x32", "--output", "no/a.png"}, 1,
                  "no/a.png: there is no such folder");
    Circumstances full;
    full.output = "/dev/full";
    expectFailure({"compare", creature(), "--times", "1", "--size", "32x32"}, 1,
                  "standard output cannot be written", full);
}

/// What is compared, and how.
struct Subject {
    std::string name;
    std::vector<std::string> arguments;
    Allowed allowed = Allowed::rounding;
};

void PrintTo(Subject const& subject, std::ostream* stream)
{
    *stream << subject.name;
}

class Agreement : public CompareCommand, public testing::WithParamInterface<Subject> {};

TEST_P(Agreement, WithinLimitsAtThreeMoments)
{
    std::string const& first = GetParam().arguments.front();
    if (first.starts_with('/') && !std::filesystem::exists(first))
        GTEST_SKIP() << first << " is not there (Debian's assimp-testmodels)";
    std::string const lacking = expectWithinLimits(compare(GetParam().arguments), GetParam().allowed);
    if (!lacking.empty())
        GTEST_SKIP() << "the driver does not offer: " << lacking;
}

std::vector<Subject> ownSubjects()
{
    std::string const worm = testModel("skinManyBones.gltf");
    std::vector<Subject> subjects{
        {"demonstration", {"--demo"}},
        {"creature", {creature()}},
        {"creatureMirrored", {creature(), "--mirror"}},
        {"creatureUnlit", {creature(), "--unlit"}},
        {"creatureTinted", {creature(), "--colorize", "#ffd070,#a01810"}},
        {"creatureTintedMirrored", {creature(), "--mirror", "--colorize", "#ffd070,#a01810"}},
        {"creatureAsWireframe", {creature(), "--wireframe"}, Allowed::lines},
        {"manyBonesMirrored", {worm, "--mirror"}},
        {"manyBonesUnlit", {worm, "--unlit"}},
        {"manyBonesAsWireframe", {worm, "--wireframe"}, Allowed::lines}};
    for (char const* model : {"lines", "mirrored", "rigid", "skin16bit", "skin8bit", "skinCubic",
                              "skinManyBones", "skinNoInverseBind", "skinSixInfluences", "unlit"})
        subjects.push_back({model, {testModel(std::string(model) + ".gltf")}});
    return subjects;
}

std::vector<Subject> publicSubjects()
{
    std::vector<Subject> subjects;
    for (std::string const file :
         {"3DS/RotatingCube.3DS", "ASE/MotionCaptureROM.ase", "ASE/anim2.ASE",
          "Collada/anims_with_full_rotations_between_keys.DAE", "Collada/box_nested_animation.dae",
          "FBX/animation_with_skeleton.fbx", "FBX/huesitos.fbx", "LWS/move_xz_spline.lws",
          "MD5/SimpleCube.md5mesh", "SMD/WusonSMD.smd", "SMD/holy_grailref.smd", "SMD/triangle.smd",
          "X/BCN_Epileptic.X", "X/Testwuson.X", "X/anim_test.x", "X/test_cube_binary.x", "X/test_cube_text.x",
          "glTF2/simple_skin/simple_skin.gltf"}) {
        std::string name = std::filesystem::path(file).filename().string();
        std::ranges::replace(name, '.', '_');
        subjects.push_back({name, {"/usr/share/assimp/models/" + file}});
    }
    return subjects;
}

std::string nameOfSubject(testing::TestParamInfo<Subject> const& subject)
{
    return subject.param.name;
}

INSTANTIATE_TEST_SUITE_P(Own, Agreement, testing::ValuesIn(ownSubjects()), nameOfSubject);
INSTANTIATE_TEST_SUITE_P(Public, Agreement, testing::ValuesIn(publicSubjects()), nameOfSubject);

/// skinManyBones with a see-through material: its parts are drawn in the order of the triangles.
TEST_F(CompareCommand, SplitAndBlendedSurfaceAgrees)
{
    json model = json::parse(contentOf(testModel("skinManyBones.gltf")));
    model["materials"][0]["alphaMode"] = "BLEND";
    model["materials"][0]["pbrMetallicRoughness"]["baseColorFactor"] = {0.2, 0.5, 0.9, 0.5};
    writeFile("blended.gltf", model.dump());
    EXPECT_EQ(expectWithinLimits(compare({"blended.gltf"})), "");
}

TEST_F(CompareCommand, SheetsShowWhatIsAskedFor)
{
    std::vector<std::string> const usual{creature(), "--times",  "1",        "--size",
                                         "64x48",    "--output", "usual.png"};
    static_cast<void>(compare(usual));
    for (std::vector<std::string> const& options :
         std::vector<std::vector<std::string>>{{"--background", "#204060"},
                                               {"--colorize", "#ff0000,#00ff00"},
                                               {"--azimuth", "120"},
                                               {"--elevation", "60"},
                                               {"--zoom", "0.5"},
                                               {"--up", "z"},
                                               {"--orthographic"},
                                               {"--unlit"},
                                               {"--mirror"},
                                               {"--wireframe"}}) {
        std::vector<std::string> arguments = usual;
        arguments.back() = "other.png";
        arguments.insert(arguments.end(), options.begin(), options.end());
        static_cast<void>(compare(arguments));
        EXPECT_GT(countMismatches(readPng(folder / "usual.png"), readPng(folder / "other.png")), 200U)
            << options.front();
    }
}

TEST_F(CompareCommand, ImportsAsTold)
{
    std::vector<std::string> const usual{"--times", "1", "--size", "32x24"};
    std::vector<std::string> arguments{creature(), "--memory-limit", "2048", "--time-limit", "30"};
    arguments.insert(arguments.end(), usual.begin(), usual.end());
    EXPECT_EQ(compare(arguments)["subject"], creature());

    writeFile("crate.obj", "mtllib crate.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nvt 0 0\nusemtl m\nf 1/1 2/1 3/1\n");
    writeFile("crate.mtl", "newmtl m\nmap_Kd icon.png\n");
    std::filesystem::create_directory(folder / "pictures");
    sgview::writePng(folder / "pictures/icon.png", sgview::Picture({4, 2}));
    std::vector<std::string> const crate{"compare", "crate.obj", "--size", "32x24"};
    EXPECT_THAT(run(crate).errors, HasSubstr("icon.png"));
    std::vector<std::string> found = crate;
    found.insert(found.end(), {"--texture-folder", "pictures"});
    EXPECT_THAT(run(found).errors, Not(HasSubstr("icon.png")));
}

TEST_F(CompareCommand, ModuleAndLog)
{
    Outcome const lost = run({"compare", "--demo", "--module", "nowhere"});
    EXPECT_EQ(lost.status, 1);
    EXPECT_THAT(lost.errors, HasSubstr("nowhere"));
    Outcome const logged = run({"compare", "--demo", "--size", "32x24", "--log", "opengl"});
    EXPECT_EQ(logged.status, 0);
    EXPECT_THAT(logged.errors, HasSubstr("opengl: GL_VERSION: "));
}

} // namespace
