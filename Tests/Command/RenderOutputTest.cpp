#include "Tests/Command/Sgview.h"

#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/PngReader.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <png.h>

#include <algorithm>
#include <cstdio>
#include <sstream>

namespace {

using nlohmann::json;
using sgview::Picture;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr int badUsage = 2;

class RenderOutput : public SgviewTest {
protected:
    [[nodiscard]] Picture draw(std::vector<std::string> const& arguments) const
    {
        static_cast<void>(render("drawn.png", arguments));
        return readPng(folder / "drawn.png");
    }

    /// The text chunks of a PNG file, as its library reads them.
    [[nodiscard]] std::map<std::string, std::string> notesOf(std::string const& name) const
    {
        std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(std::fopen((folder / name).c_str(), "rb"),
                                                                   std::fclose);
        png_structp reader = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop info = png_create_info_struct(reader);
        png_init_io(reader, file.get());
        png_read_png(reader, info, PNG_TRANSFORM_IDENTITY, nullptr);
        png_textp texts = nullptr;
        int count = 0;
        png_get_text(reader, info, &texts, &count);
        std::map<std::string, std::string> notes;
        for (int i = 0; i < count; ++i)
            notes[texts[i].key] = texts[i].text;
        png_destroy_read_struct(&reader, &info, nullptr);
        return notes;
    }
};

TEST_F(RenderOutput, NamesHavePlaces)
{
    EXPECT_EQ(runWell({"render", creature(), "--size", "16x16", "--turntable", "3", "--frames", "1-2",
                       "--output", "{{{model}-{index:02}-{frame:04}-{frame}}.png"}),
              "");
    EXPECT_THAT(filesInFolder(),
                testing::UnorderedElementsAre("{creature-01-0001-1}.png", "{creature-01-0002-2}.png"));
    for (char const* name : {"{", "{name}.png", "{frame:}.png", "{frame:x}.png", "{model:2}.png",
                             "{frame:99}.png", "{}.png", "a{frame"})
        expectFailure({"render", creature(), "--output", name}, badUsage,
                      "--output: '" + std::string(name) +
                          "' is not a name for pictures: text with {model}, {index} and {frame} in it, as in "
                          "{model}-{frame:04}.png; {{ is a brace");
}

TEST_F(RenderOutput, SeveralModels)
{
    EXPECT_EQ(runWell({"render", testModel("rigid.gltf"), creature(), "--size", "32x24", "--output",
                       "{index}-{model}.png"}),
              "");
    EXPECT_THAT(filesInFolder(), testing::UnorderedElementsAre("1-rigid.png", "2-creature.png"));
    EXPECT_EQ(contentOf("1-rigid.png"), render("a.png", {testModel("rigid.gltf"), "--size", "32x24"}));
    EXPECT_EQ(contentOf("2-creature.png"), render("a.png", {creature(), "--size", "32x24"}));
    expectFailure({"render", creature(), testModel("rigid.gltf"), "--output", "a.png"}, badUsage,
                  "--output: names for the pictures of several models need {model} or {index}");
    expectFailure({"render", creature(), creature(), "--output", "{model}.png"}, badUsage,
                  "--output: two models would be drawn into creature.png; {index} tells them apart");
}

TEST_F(RenderOutput, OneBadModelDoesNotKeepTheOthersBack)
{
    writeFile("broken.glb", "glTF");
    Outcome const outcome =
        run({"render", testModel("rigid.gltf"), "broken.glb", "missing.obj", testModel("lines.gltf"),
             "--size", "32x24", "--output", "{model}.png", "--json"});
    EXPECT_EQ(outcome.status, 1);
    std::vector<json> lines;
    std::istringstream stream(outcome.output);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(json::parse(line));
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0]["file"], testModel("rigid.gltf"));
    EXPECT_EQ(lines[0]["outcome"], "done");
    EXPECT_EQ(lines[0]["pictures"], json({"rigid.png"}));
    EXPECT_GT(lines[0]["seconds"], 0.0);
    EXPECT_FALSE(lines[0].contains("error"));
    EXPECT_EQ(lines[1]["outcome"], "failed");
    EXPECT_EQ(lines[1]["pictures"], json::array());
    EXPECT_EQ(lines[2]["error"]["kind"], "not found");
    EXPECT_THAT(lines[2]["error"]["message"].get<std::string>(), StartsWith("missing.obj: "));
    EXPECT_EQ(lines[3]["outcome"], "done");
    EXPECT_EQ(readPng(folder / "lines.png").size, (sgview::PictureSize{32, 24}));
    EXPECT_THAT(outcome.errors, HasSubstr("sgview: missing.obj: "));
    EXPECT_THAT(outcome.errors, testing::EndsWith("sgview: 2 of 4 models could not be drawn\n"));
    EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), 3);
}

TEST_F(RenderOutput, JsonNeedsStandardOutput)
{
    expectFailure({"render", creature(), "--output", "-", "--json"}, badUsage,
                  "--json: standard output takes the pictures already");
    Circumstances full;
    full.output = "/dev/full";
    Outcome const outcome =
        run({"render", creature(), "--size", "16x16", "--output", "a.png", "--json"}, full);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "sgview: standard output cannot be written\n");
    Outcome const failed = run({"render", "missing.obj", "--output", "a.png", "--json"});
    EXPECT_EQ(json::parse(failed.output)["outcome"], "failed");
    EXPECT_EQ(failed.errors,
              "sgview: " + json::parse(failed.output)["error"]["message"].get<std::string>() + "\n");
}

TEST_F(RenderOutput, SupersampledPicturesAreMeansOfLargerOnes)
{
    Picture const large = draw({creature(), "--size", "240x180"});
    Picture const smooth = draw({creature(), "--size", "80x60", "--supersample", "3"});
    ASSERT_EQ(smooth.size, (sgview::PictureSize{80, 60}));
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 80; ++x) {
            int sum = 0;
            for (int i = 0; i < 9; ++i)
                sum += pixelAt(large, 3 * x + i % 3, 3 * y + i / 3).g;
            ASSERT_EQ(pixelAt(smooth, x, y).g, (sum + 4) / 9) << x << ", " << y;
        }
    EXPECT_GT(countMismatches(smooth, draw({creature(), "--size", "80x60"})), 50U);
    expectFailure({"render", creature(), "--output", "a.png", "--supersample", "17"}, badUsage,
                  "--supersample: '17' is not a whole number from 1 to 16");
}

TEST_F(RenderOutput, SupersampledLinesKeepTheirWidth)
{
    auto const ink = [](Picture const& picture) {
        double sum = 0.0;
        for (std::size_t i = 0; i < picture.pixels.size(); i += 4)
            sum += 255 - picture.pixels[i + 1];
        return sum;
    };
    std::vector<std::string> arguments{testModel("rigid.gltf"), "--wireframe", "--unlit", "--size",
                                       "200x150"};
    double const usual = ink(draw(arguments));
    arguments.insert(arguments.end(), {"--supersample", "3"});
    EXPECT_NEAR(ink(draw(arguments)) / usual, 1.0, 0.15);
}

TEST_F(RenderOutput, LargestSideKeepsTheShape)
{
    EXPECT_EQ(draw({creature(), "--max-size", "128"}).size, (sgview::PictureSize{128, 96}));
    EXPECT_EQ(draw({creature(), "--size", "90x300", "--max-size", "100"}).size,
              (sgview::PictureSize{30, 100}));
    EXPECT_EQ(draw({creature(), "--size", "64x48", "--max-size", "512"}).size, (sgview::PictureSize{64, 48}));
    EXPECT_EQ(draw({creature(), "--size", "1000x1", "--max-size", "10"}).size, (sgview::PictureSize{10, 1}));
    expectFailure({"render", creature(), "--output", "a.png", "--max-size", "0"}, badUsage,
                  "--max-size: '0' is not a whole number from 1 to 65536");
}

TEST_F(RenderOutput, LargerThanOpenGLDraws)
{
    // 20000 pixels in tiles, against as much drawn at once in half the size.
    writeFile("square.obj", "v -1 -1 0\nv 1 -1 0\nv 1 1 0\nv -1 1 0\nf 1 2 3 4\n");
    std::vector<std::string> const view{"square.obj", "--azimuth", "0", "--elevation", "0", "--zoom", "400"};
    auto const sized = [&](std::string const& size) {
        std::vector<std::string> arguments = view;
        arguments.insert(arguments.end(), {"--size", size});
        return draw(arguments);
    };
    Picture const large = sized("20000x40");
    Picture const half = sized("10000x20");
    ASSERT_EQ(large.size, (sgview::PictureSize{20000, 40}));
    int different = 0;
    int drawn = 0;
    for (int x = 0; x < 10000; ++x) {
        different += squaredDistance(pixelAt(large, 2 * x, 20), pixelAt(half, x, 10)) > 100 ? 1 : 0;
        drawn += pixelAt(half, x, 10) != Rgb{255, 255, 255} ? 1 : 0;
    }
    EXPECT_LE(different, 2);
    EXPECT_GT(drawn, 6000);
    EXPECT_LT(drawn, 10000);
}

TEST_F(RenderOutput, TransparentBackground)
{
    Picture const picture = draw({creature(), "--size", "80x60", "--background", "transparent"});
    EXPECT_EQ(picture.pixels[3], 0);
    Picture const usual = draw({creature(), "--size", "80x60"});
    for (std::size_t i = 0; i < usual.pixels.size(); i += 4) {
        ASSERT_EQ(usual.pixels[i + 3], 255);
        if (picture.pixels[i + 3] == 255) {
            ASSERT_TRUE(std::equal(&usual.pixels[i], &usual.pixels[i] + 3, &picture.pixels[i]));
        }
    }
}

TEST_F(RenderOutput, PicturesSayWhatTheyAre)
{
    static_cast<void>(render("a.png", {creature(), "--size", "40x30", "--azimuth", "15", "--turntable", "8",
                                       "--frames", "3", "--technique", "vbo", "--animation", "0"}));
    auto const notes = notesOf("a.png");
    EXPECT_EQ(notes.at("Software"), "sgview " SG_VERSION);
    EXPECT_NE(notes.at("Renderer"), "");
    EXPECT_EQ(notes.at("Technique"), "vbo");
    EXPECT_EQ(notes.at("Model"), "creature.glb");
    EXPECT_EQ(notes.at("Camera"), "azimuth 150, elevation 20, zoom 1, y up");
    EXPECT_EQ(notes.at("Frame"), "3");
    EXPECT_EQ(notes.at("Command line"),
              "sgview render creature.glb --animation swim --time 0 --turntable 8 --fps 25 --azimuth 15 "
              "--elevation 20 --zoom 1 --up y --size 40x30 --supersample 1 --background '#ffffff' "
              "--technique vbo --frames 3");
    static_cast<void>(render("b.png", {creature()}));
    EXPECT_FALSE(notesOf("b.png").contains("Frame"));
    static_cast<void>(render("c.png", {creature(), "--up", "z", "--orthographic"}));
    EXPECT_EQ(notesOf("c.png").at("Camera"), "azimuth 30, elevation 20, zoom 1, z up, orthographic");
}

TEST_F(RenderOutput, TheCommandLineDrawsThePictureAgain)
{
    std::filesystem::copy_file(creature(), folder / "sea 'creature'.glb");
    static_cast<void>(
        render("a.png", {"sea 'creature'.glb", "--animation", "look", "--time", "0.25", "--max-size", "60",
                         "--colorize", "#ff0000,#400000", "--mirror", "--background", "transparent", "--zoom",
                         "1.5", "--up", "x", "--orthographic"}));
    std::string const command = notesOf("a.png").at("Command line");
    EXPECT_THAT(command,
                StartsWith("sgview render 'sea '\\''creature'\\''.glb' --animation look --time 0.25 "));
    std::string const again =
        "cd '" + folder.string() + "' && " SGVIEW + command.substr(command.find(' ')) + " --output b.png";
    ASSERT_EQ(std::system(again.c_str()), 0);
    EXPECT_EQ(contentOf("b.png"), contentOf("a.png"));
}

TEST_F(RenderOutput, NamesOfTheGreatestLength)
{
    std::string const name = std::string(251, 'n') + ".png";
    static_cast<void>(render(name, {creature(), "--size", "16x16"}));
    EXPECT_EQ(filesInFolder(), std::vector{name});
}

TEST_F(RenderOutput, NamesInNotesAreText)
{
    std::filesystem::copy_file(creature(), folder / "caf\xc3\xa9\xff.glb");
    static_cast<void>(render("a.png", {"caf\xc3\xa9\xff.glb", "--size", "16x16"}));
    EXPECT_EQ(notesOf("a.png").at("Model"), "caf\xc3\xa9\xef\xbf\xbd.glb");
    std::filesystem::copy_file(creature(), folder / "red\x1b[31m.glb");
    static_cast<void>(render("b.png", {"red\x1b[31m.glb", "--size", "16x16"}));
    EXPECT_THAT(notesOf("b.png").at("Command line"), StartsWith("sgview render 'red\xef\xbf\xbd[31m.glb' "));
}

TEST_F(RenderOutput, Formats)
{
    expectFailure({"render", creature(), "--output", "a.png", "--format", "jpeg"}, badUsage,
                  "--format: 'jpeg' is not a picture format: png, webp, rgba or y4m");
    expectFailure({"render", creature(), "--output", "a.png", "--quality", "50"}, badUsage,
                  "--quality is for WebP");
    expectFailure({"render", creature(), "--output", "a.webp", "--size", "16384x1"}, badUsage,
                  "--size: no side of a WebP picture is longer than 16383 pixels");
    expectFailure({"render", creature(), "--output", "{model}.JPG"}, badUsage,
                  "--output: .jpg is not written; .png, .webp, .rgba and .y4m are");
    EXPECT_EQ(render("a.jpg", {creature(), "--size", "16x16", "--format", "webp"}).substr(0, 4), "RIFF");
    expectFailure({"demo", "--output", "a.gif"}, badUsage, "--output: .gif is not written; .png is");
    EXPECT_EQ(render("A.WEBP", {creature(), "--size", "16x16"}).substr(0, 4), "RIFF");
}

} // namespace
