#include "Tests/Command/Sgview.h"

#include "Tests/Frame/PngReader.h"
#include "Viewer/Import/ImportWorker.h"
#include "Viewer/Platform/PngWriter.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace {

using nlohmann::json;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class BenchCommand : public SgviewTest {
protected:
    [[nodiscard]] json bench(std::vector<std::string> arguments,
                             Circumstances const& circumstances = {}) const
    {
        arguments.insert(arguments.begin(), "bench");
        arguments.insert(arguments.end(), {"--quiet", "--json"});
        Outcome const outcome = run(arguments, circumstances);
        EXPECT_EQ(outcome.status, 0) << testing::PrintToString(arguments) << outcome.errors;
        EXPECT_EQ(outcome.errors, "");
        return json::parse(outcome.output);
    }
};

std::vector<std::string> keysOf(json const& object)
{
    std::vector<std::string> keys;
    for (auto const& [key, value] : object.items())
        keys.push_back(key);
    return keys;
}

void expectTimes(json const& times, std::size_t frames)
{
    EXPECT_THAT(keysOf(times), testing::UnorderedElementsAre("median", "p5", "p95", "all"));
    std::vector<double> all = times["all"];
    ASSERT_EQ(all.size(), frames);
    EXPECT_EQ(std::ranges::count(all, times["median"].get<double>()) > 0, true) << "a frame's own time";
    EXPECT_LE(times["p5"], times["median"]);
    EXPECT_LE(times["median"], times["p95"]);
    EXPECT_GE(times["p5"], *std::ranges::min_element(all));
    EXPECT_LE(times["p95"], *std::ranges::max_element(all));
}

void expectCounts(json const& counts, std::size_t frames)
{
    EXPECT_THAT(keysOf(counts), testing::UnorderedElementsAre("median", "most", "all"));
    std::vector<std::int64_t> const all = counts["all"];
    ASSERT_EQ(all.size(), frames);
    EXPECT_EQ(counts["most"], *std::ranges::max_element(all));
    EXPECT_GE(counts["median"], 0);
    EXPECT_LE(counts["median"], counts["most"]);
}

TEST_F(BenchCommand, OneIsNotSeveral)
{
    auto const count = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(),
                         {"bench", "--frames", "1", "--size", "8x8", "--technique", "plain"});
        std::string const text = runWell(arguments);
        std::size_t const start = text.find(": ") + 2;
        return text.substr(start, text.find(',') - start);
    };
    EXPECT_EQ(count({"--scene", creature()}), "1 model");
    EXPECT_EQ(count({"--scene", creature(), "--count", "2"}), "2 models");
    EXPECT_EQ(count({"--scene", "many", "--count", "1"}), "1 surface");
    EXPECT_EQ(count({"--scene", "deep", "--count", "1"}), "1 nested transform");
}

TEST_F(BenchCommand, JsonHasAllFigures)
{
    json const result = bench(
        {"--scene", "deep", "--count", "50", "--frames", "7", "--technique", "plain", "--size", "96x64"});
    EXPECT_THAT(keysOf(result), testing::UnorderedElementsAre(
                                    "scene", "count", "moving", "width", "height", "driver", "discarded",
                                    "technique", "warmUpFrames", "frames", "milliseconds", "application",
                                    "passes", "allocations", "pageFaults", "peakMemory", "start"));
    EXPECT_EQ(result["scene"], "deep");
    EXPECT_EQ(result["count"], 50);
    EXPECT_EQ(result["moving"], false);
    EXPECT_EQ(result["width"], 96);
    EXPECT_EQ(result["height"], 64);
    EXPECT_NE(result["driver"], "");
    EXPECT_EQ(result["discarded"], false);
    EXPECT_EQ(result["technique"], "plain");
    EXPECT_EQ(result["warmUpFrames"], 10);
    EXPECT_EQ(result["frames"], 7);
    expectTimes(result["milliseconds"], 7);
    expectTimes(result["application"], 7);
    EXPECT_GT(result["milliseconds"]["p5"], 0.0);
    for (std::size_t i = 0; i < 7; ++i)
        EXPECT_LT(result["application"]["all"][i], result["milliseconds"]["all"][i]) << "a part of it";
    expectCounts(result["allocations"], 7);
    expectCounts(result["pageFaults"], 7);
    EXPECT_GT(result["peakMemory"], 10 << 20);
    EXPECT_THAT(keysOf(result["start"]),
                testing::UnorderedElementsAre("driver", "module", "scene", "firstFrame"));
    for (auto const& [key, milliseconds] : result["start"].items())
        EXPECT_GT(milliseconds, 0.0) << key;
    std::vector<std::string> passes;
    for (json const& pass : result["passes"]) {
        EXPECT_GE(pass["milliseconds"], 0.0);
        passes.push_back(pass["name"]);
    }
    EXPECT_EQ(passes.front(), "ManualColorizer");
    EXPECT_EQ(passes.back(), "ManualUnColorizer");
    EXPECT_THAT(passes, testing::Contains(HasSubstr("GeometryVisitor")));
}

TEST_F(BenchCommand, TableForPeople)
{
    std::string const text =
        runWell({"bench", "--count", "20", "--frames", "5", "--technique", "vbo", "--moving"});
    EXPECT_THAT(text, StartsWith("many: 20 surfaces, every transform moving, 512 x 512, technique vbo\n"));
    EXPECT_THAT(text, HasSubstr("\na frame, of 5 timed after 10 to warm up:\n"));
    for (char const* const line :
         {"\n +[0-9]+\\.[0-9]{3} ms  #* +5th percentile\n",
          "\n +[0-9]+\\.[0-9]{3} ms  #* +median: [0-9.]+ frames a second\n",
          "\n +[0-9]+\\.[0-9]{3} ms  #{24}  95th percentile\n", "ms  #* +the application's changes\n",
          "ms  #* +VBOCreator\n", "ms  #* +OpenGL's context\n",
          "\n +[0-9]+  allocations by operator new a frame, [0-9]+ at most\n",
          "\n +[0-9]+  page faults a frame, [0-9]+ at most\n", "\n +[0-9]+\\.[0-9] MiB  at the peak\n$"})
        EXPECT_THAT(text, ContainsRegex(line));
    EXPECT_EQ(filesInFolder(), std::vector<std::string>{});
}

TEST_F(BenchCommand, UsualCounts)
{
    Circumstances quick;
    quick.environment["GALLIUM_NOOP"] = "1";
    std::vector<std::string> const small{"--frames", "1", "--size", "16x16", "--technique", "program+vbo"};
    auto const countOf = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), small.begin(), small.end());
        json const result = bench(arguments, quick);
        return std::pair(result["scene"].get<std::string>(), result["count"].get<int>());
    };
    std::vector<std::pair<std::string, int>> const counts{
        {"textured", 2000}, {"skinned", 64}, {"skinned-varied", 64}, {"deep", 2000}, {creature(), 1}};
    for (auto const& [scene, count] : counts)
        EXPECT_EQ(countOf({"--scene", scene}), std::pair(scene, count));
    EXPECT_EQ(countOf({}), std::pair(std::string("many"), 10'000));
}

/// The share of pixels that are not black, percent; no such pixel lies at the edge.
double coverage(sgview::Picture const& picture)
{
    std::size_t lit = 0;
    std::size_t atEdge = 0;
    auto const [width, height] = picture.size;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            auto const* const pixel = &picture.pixels[4 * static_cast<std::size_t>(y * width + x)];
            bool const isLit = pixel[0] + pixel[1] + pixel[2] > 0;
            lit += isLit ? 1 : 0;
            atEdge += isLit && (x == 0 || y == 0 || x == width - 1 || y == height - 1) ? 1 : 0;
        }
    }
    EXPECT_EQ(atEdge, 0U);
    return 100.0 * static_cast<double>(lit) / (width * height);
}

TEST_F(BenchCommand, PictureShowsAllOfTheScene)
{
    struct Case {
        std::vector<std::string> arguments;
        double coverage;
    };
    for (auto const& [arguments, expected] :
         std::vector<Case>{{{"--scene", "many"}, 67.5},
                           {{"--scene", "many", "--count", "2500", "--moving"}, 67.8},
                           {{"--scene", "textured", "--count", "100"}, 59.4},
                           {{"--scene", "skinned", "--count", "16"}, 45.9},
                           {{"--scene", "skinned-varied", "--count", "16"}, 45.9},
                           {{"--scene", "deep"}, 22.7},
                           {{"--scene", "deep", "--moving"}, 22.7}}) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        std::vector<std::string> all = arguments;
        all.insert(all.end(), {"--frames", "1", "--technique", "vbo", "--output", "a.png"});
        static_cast<void>(bench(all));
        EXPECT_NEAR(coverage(readPng(folder / "a.png")), expected, 0.5);
    }
}

TEST_F(BenchCommand, CrowdOfAFile)
{
    std::vector<std::string> const small{"--frames", "1", "--size", "200x200", "--technique", "plain"};
    auto const coverageOf = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), small.begin(), small.end());
        arguments.insert(arguments.end(), {"--output", "a.png"});
        static_cast<void>(bench(arguments));
        return coverage(readPng(folder / "a.png"));
    };
    double const one = coverageOf({"--scene", creature()});
    EXPECT_GT(one, 4.0);
    double const nine = coverageOf({"--scene", creature(), "--count", "9"});
    EXPECT_GT(nine, 0.5 * one);
    EXPECT_NE(coverageOf({"--scene", creature(), "--animation", "look"}), one);
    EXPECT_GT(coverageOf({"--scene", testModel("unlit.gltf"), "--count", "2"}), 0.5);
}

TEST_F(BenchCommand, CountsWhatTheRendererSpends)
{
    std::vector<std::string> const small{"--count", "1",           "--frames", "9",        "--size",
                                         "32x32",   "--technique", "plain",    "--module", SPENDING_MODULE};
    auto const spent = [&](std::string const& numbers) {
        Circumstances circumstances;
        circumstances.environment["SG_SPENDS"] = numbers;
        json const result = bench(small, circumstances);
        return std::pair(result["allocations"]["median"].get<int>(),
                         result["pageFaults"]["median"].get<int>());
    };
    auto const [allocations, pages] = spent("0,0");
    auto const [moreAllocations, samePages] = spent("1234,0");
    EXPECT_EQ(moreAllocations - allocations, 1234);
    if (!sgview::memoryIsWatched) { // the address sanitizer touches pages of its own
        EXPECT_NEAR(samePages, pages, 2);
    }
    auto const [sameAllocations, morePages] = spent("0,321");
    EXPECT_EQ(sameAllocations, allocations);
    EXPECT_NEAR(morePages - pages, 321, 3);
}

TEST_F(BenchCommand, DrawingThrownAwayIsSaidAndCostsNoPageFaults)
{
    Circumstances circumstances;
    circumstances.environment["GALLIUM_NOOP"] = "1";
    json const result = bench({"--count", "2000", "--frames", "20", "--technique", "vbo"}, circumstances);
    if (result["driver"] != "NOOP")
        GTEST_SKIP() << result["driver"] << " throws nothing away";
    EXPECT_EQ(result["discarded"], true);
    EXPECT_THAT(runWell({"bench", "--count", "1", "--frames", "1", "--technique", "vbo"}, circumstances),
                HasSubstr(", all drawing thrown away: the cost of application and front end\n"));
#ifndef __SANITIZE_ADDRESS__ // which has an allocator of its own
    EXPECT_LE(result["pageFaults"]["median"], 3) << "without care it would be 70 and more";
    json const skinned = bench(
        {"--scene", "skinned", "--count", "16", "--frames", "20", "--technique", "plain"}, circumstances);
    EXPECT_LE(skinned["pageFaults"]["most"], 100) << "without care it would be 900 and more in a frame";
#endif
}

TEST_F(BenchCommand, NoVerdictIsMadeOfDrawingThrownAway)
{
    Circumstances circumstances = asNewUser();
    circumstances.environment["GALLIUM_NOOP"] = "1";
    Outcome const outcome = run({"bench", "--count", "1", "--frames", "1"}, circumstances);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, HasSubstr(", technique plain\n"));
    EXPECT_EQ(outcome.errors,
              "sgview: warning: drawn by the plain technique: which is best cannot be measured while all "
              "drawing is thrown away; --technique chooses one\n");
    EXPECT_EQ(filesInFolder(), std::vector<std::string>{}) << "nothing is stored";
}

TEST_F(BenchCommand, DrawsAsTheVerdictSaysWhereNothingElseIsAskedFor)
{
    EXPECT_EQ(bench({"--count", "4", "--frames", "1", "--size", "16x16"})["technique"], "plain");
    EXPECT_EQ(bench({"--count", "4", "--frames", "1", "--size", "16x16", "--technique", "vbo"})["technique"],
              "vbo");
}

TEST_F(BenchCommand, Devices)
{
    json const result = bench({"--count", "1", "--frames", "1", "--size", "16x16", "--device", "0"});
    EXPECT_THAT(runWell({"bench", "--device", "list"}),
                StartsWith("0  " + result["driver"].get<std::string>() + "  ("));
}

TEST_F(BenchCommand, ImportsAsTold)
{
    std::vector<std::string> const small{"--frames", "1", "--size", "16x16"};
    std::vector<std::string> limited{"--scene", creature(), "--memory-limit", "2048", "--time-limit", "30"};
    limited.insert(limited.end(), small.begin(), small.end());
    EXPECT_EQ(bench(limited)["scene"], creature());

    writeFile("crate.obj", "mtllib crate.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nvt 0 0\nusemtl m\nf 1/1 2/1 3/1\n");
    writeFile("crate.mtl", "newmtl m\nmap_Kd icon.png\n");
    std::filesystem::create_directory(folder / "pictures");
    sgview::writePng(folder / "pictures/icon.png", sgview::Picture({4, 2}));
    std::vector<std::string> const crate{"bench", "--scene", "crate.obj", "--frames", "1", "--size", "16x16"};
    EXPECT_THAT(run(crate).errors, HasSubstr("icon.png"));
    std::vector<std::string> found = crate;
    found.insert(found.end(), {"--texture-folder", "pictures"});
    EXPECT_EQ(run(found).errors, "");
}

TEST_F(BenchCommand, ModuleLogAndConfiguration)
{
    EXPECT_THAT(run({"bench", "--module", "nowhere"}).errors, HasSubstr("nowhere"));
    Outcome const logged = run({"bench", "--count", "1", "--frames", "1", "--log", "opengl"});
    EXPECT_EQ(logged.status, 0);
    EXPECT_THAT(logged.errors, HasSubstr("opengl: GL_VERSION: "));

    writeFile("settings", "[bench]\nframes = 3\nsize = 40x30\ntechnique = vbo\n");
    json const set = bench({"--count", "1", "--config", "settings"});
    EXPECT_EQ(set["frames"], 3);
    EXPECT_EQ(set["width"], 40);
    EXPECT_EQ(set["technique"], "vbo");
    EXPECT_EQ(bench({"--count", "1", "--size", "16x16", "--no-config"})["frames"], 60);
}

TEST_F(BenchCommand, BadUsage)
{
    for (char const* const scene : {"", "mnay", "Many", "missing.glb", "many,deep", "\x1b[31m"})
        EXPECT_EQ(run({"bench", "--scene", scene}).status, 2) << scene;
    expectFailure(
        {"bench", "--scene", "mnay"}, 2,
        "--scene: 'mnay' is neither a file nor one of many, textured, skinned, skinned-varied, deep");
    for (char const* const count : {"0", "-1", "1000000000", "1e3", "", "1.5", "99999999999999999999", "x"})
        expectFailure({"bench", "--count", count}, 2,
                      "--count: '" + std::string(count) + "' is not a whole number from 1 to 1000000");
    for (char const* const frames : {"0", "-1", "100001", "1e2", "", "NaN"})
        expectFailure({"bench", "--frames", frames}, 2,
                      "--frames: '" + std::string(frames) + "' is not a whole number from 1 to 100000");
    expectFailure({"bench", "--scene", "skinned", "--count", "2001"}, 2,
                  "--count: 2001 is more than the 2000 that this scene can have");
    expectFailure({"bench", "--count", "10001", "--scene", creature()}, 2,
                  "--count: 10001 is more than the 10000 that this scene can have");
    expectFailure({"bench", "--scene", creature(), "--moving"}, 2,
                  "--moving is for the built-in scenes; a model moves by its animation");
    expectFailure({"bench", "--animation", "swim"}, 2, "--animation is for models; the scene is many");
    expectFailure({"bench", "--scene", creature(), "--animation", "fly"}, 2,
                  "--animation: " + creature() + " has no animation 'fly'; it has 0 'swim', 1 'look'");
    expectFailure({"bench", creature()}, 2,
                  "unexpected argument " + creature() + "; see sgview bench --help");
    EXPECT_EQ(run({"bench", "--size", "0x5"}).errors, run({"compare", "--demo", "--size", "0x5"}).errors);
    expectFailure({"bench", "--output", ""}, 2, "--output: no file is named");
}

TEST_F(BenchCommand, FailedJobs)
{
    writeFile("broken.glb", "glTF but not really");
    Outcome const broken = run({"bench", "--scene", "broken.glb"});
    EXPECT_EQ(broken.status, 1);
    EXPECT_EQ(broken.output, "");
    EXPECT_THAT(broken.errors, StartsWith("sgview: broken.glb: "));
    EXPECT_EQ(std::ranges::count(broken.errors, '\n'), 1);

    EXPECT_THAT(run({"bench", "--scene", "."}).errors, StartsWith("sgview: .: "));
    EXPECT_EQ(run({"bench", "--scene", "/dev/null"}).status, 1);
    Outcome const crowd = run({"bench", "--scene", creature(), "--count", "10000"});
    EXPECT_EQ(crowd.status, 1);
    EXPECT_THAT(crowd.errors, StartsWith("sgview: a crowd of 10000 would have "));
    expectFailure({"bench", "--count", "1", "--frames", "1", "--output", "no/a.png"}, 1,
                  "no/a.png: there is no such folder");
    Circumstances full;
    full.output = "/dev/full";
    expectFailure({"bench", "--count", "1", "--frames", "1"}, 1, "standard output cannot be written", full);
}

} // namespace
