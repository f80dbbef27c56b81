#include "Tests/Command/Sgview.h"

#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/PngReader.h"

#include <gmock/gmock.h>
#include <webp/demux.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <random>
#include <thread>

namespace {

using sgview::Picture;

constexpr Rgb white{255, 255, 255};

class RenderFilm : public SgviewTest {
protected:
    /// Draws frames of the creature, small, into files by a template.
    void film(std::string const& output, std::vector<std::string> const& options) const
    {
        std::vector<std::string> arguments{"render",   creature(), "--size",      "64x48",
                                           "--output", output,     "--technique", "plain"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        EXPECT_EQ(runWell(arguments), "");
    }
    [[nodiscard]] Picture frame(std::string const& name) const { return readPng(folder / name); }

    /// Name and content of each picture of a folder.
    [[nodiscard]] std::map<std::string, std::string> picturesIn(std::string const& name) const
    {
        std::map<std::string, std::string> pictures;
        for (auto const& entry : std::filesystem::directory_iterator(folder / name)) {
            std::string const file = entry.path().filename().string();
            pictures[file] = contentOf(name + "/" + file);
        }
        return pictures;
    }
};

/// What a process has open under a number, or nothing.
std::string openFile(pid_t process, std::string const& number)
{
    std::error_code gone;
    return std::filesystem::read_symlink("/proc/" + std::to_string(process) + "/fd/" + number, gone).string();
}

/// Waits until a process has a file open in a folder; what that is called, or nothing after a minute.
std::string waitForFileIn(std::filesystem::path const& folder, pid_t process)
{
    std::error_code gone;
    for (int tries = 0; tries < 6000; ++tries) {
        for (auto const& entry :
             std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/fd", gone))
            if (std::string name = openFile(process, entry.path().filename());
                name.starts_with(folder.string()))
                return name;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return {};
}

/// Columns and rows that a model covers on white.
struct Extent {
    int left = 1 << 30;
    int right = -1;
    int top = 1 << 30;
    int bottom = -1;
};

Extent extentOf(Picture const& picture)
{
    Extent extent;
    for (int y = 0; y < picture.size.height; ++y)
        for (int x = 0; x < picture.size.width; ++x)
            if (pixelAt(picture, x, y) != white)
                extent = {std::min(extent.left, x), std::max(extent.right, x), std::min(extent.top, y),
                          std::max(extent.bottom, y)};
    return extent;
}

TEST_F(RenderFilm, OneRunFourSharesAndAnyOrderGiveTheSameFiles)
{
    std::vector<std::string> const options{"--animation",  "swim",        "--turntable", "240",
                                           "--background", "transparent", "--fps",       "24"};
    for (char const* name : {"whole", "shares", "shuffled"})
        std::filesystem::create_directories(folder / name);
    film("whole/{frame:04}.png", options);

    auto const drawRange = [&](std::string const& name, int first, int last) {
        std::vector<std::string> arguments = options;
        arguments.insert(arguments.end(), {"--frames", std::to_string(first) + "-" + std::to_string(last)});
        film(name + "/{frame:04}.png", arguments);
    };
    for (int share = 3; share >= 0; --share)
        drawRange("shares", 60 * share, 60 * share + 59);

    std::vector<int> pieces(20);
    for (std::size_t i = 0; i < pieces.size(); ++i)
        pieces[i] = static_cast<int>(12 * i);
    std::ranges::shuffle(pieces, std::mt19937(1));
    for (int const piece : pieces)
        drawRange("shuffled", piece, piece + 11);

    auto const whole = picturesIn("whole");
    EXPECT_EQ(whole.size(), 240U);
    EXPECT_EQ(whole.begin()->first, "0000.png");
    EXPECT_TRUE(picturesIn("shares") == whole);
    EXPECT_TRUE(picturesIn("shuffled") == whole);
    std::vector<std::string> different;
    for (auto const& [name, content] : whole)
        different.push_back(content);
    std::ranges::sort(different);
    EXPECT_EQ(std::ranges::adjacent_find(different), different.end()) << "no two frames are alike";
}

TEST_F(RenderFilm, StretchedModelsToo)
{
    for (char const* model : {"rigid.gltf", "mirrored.gltf", "skinManyBones.gltf"})
        for (char const* technique : {"plain", "vbo", "shader+vbo"}) {
            std::vector<std::string> const arguments{
                "render", testModel(model), "--animation", "0",       "--frames", "0-9",
                "--size", "64x48",          "--technique", technique, "--output", "all{frame}.png"};
            EXPECT_EQ(run(arguments).status, 0);
            std::vector<std::string> alone = arguments;
            alone[5] = "7";
            alone.back() = "alone{frame}.png";
            EXPECT_EQ(run(alone).status, 0);
            EXPECT_EQ(contentOf("all7.png"), contentOf("alone7.png")) << model << ", " << technique;
        }
}

TEST_F(RenderFilm, FramesPerSecondTellTheMomentsAndTheAnimationRepeats)
{
    film("f{frame}.png", {"--animation", "swim", "--frames", "3-3", "--fps", "10"});
    film("g{frame}.png", {"--animation", "swim", "--frames", "6", "--fps", "20"});
    film("h{frame}.png", {"--animation", "swim", "--frames", "1", "--fps", "10", "--time", "0.2"});
    EXPECT_EQ(frame("f3.png").pixels, frame("g6.png").pixels);
    EXPECT_LE(largestSquaredDistance(frame("f3.png"), frame("h1.png")), 3);
    film("e{frame}.png", {"--animation", "swim", "--fps", "10"});
    std::vector<std::string> const files = filesInFolder();
    auto const count = std::ranges::count_if(files, [](auto const& name) { return name.starts_with("e"); });
    ASSERT_EQ(count, 16) << "the animation once, 1.6 seconds";
    // As many frames later, the swimmer is where it was.
    film("e{frame}.png", {"--animation", "swim", "--fps", "10", "--frames", "20"});
    EXPECT_LE(countMismatches(frame("e20.png"), frame("e4.png")), 3U);
    EXPECT_GT(countMismatches(frame("e20.png"), frame("e0.png")), 50U);
}

TEST_F(RenderFilm, TurntableGoesOnceAroundAnUprightAxis)
{
    film("t{frame}.png", {"--turntable", "8", "--elevation", "0"});
    EXPECT_EQ(filesInFolder().size(), 8U);
    EXPECT_GT(countMismatches(frame("t0.png"), frame("t2.png")), 100U);
    film("u{frame}.png", {"--turntable", "8", "--elevation", "0", "--frames", "8"});
    EXPECT_EQ(frame("u8.png").pixels, frame("t0.png").pixels) << "once around";

    // A square column far from the origin looks the same from its four sides.
    std::string column = "v 4 0 2\nv 6 0 2\nv 6 0 4\nv 4 0 4\nv 4 3 2\nv 6 3 2\nv 6 3 4\nv 4 3 4\n";
    column += "f 1 2 6 5\nf 2 3 7 6\nf 3 4 8 7\nf 4 1 5 8\nf 5 6 7 8\n";
    writeFile("column.obj", column);
    EXPECT_EQ(
        runWell({"render", "column.obj", "--turntable", "8", "--size", "64x48", "--output", "c{frame}.png"}),
        "");
    Extent const first = extentOf(frame("c1.png"));
    for (char const* name : {"c3.png", "c5.png", "c7.png"}) {
        Extent const other = extentOf(frame(name));
        EXPECT_NEAR(other.left, first.left, 1) << name;
        EXPECT_NEAR(other.right, first.right, 1) << name;
        EXPECT_NEAR(other.top, first.top, 1) << name;
        EXPECT_NEAR(other.bottom, first.bottom, 1) << name;
    }
    EXPECT_GT(first.right - first.left, 10);
}

TEST_F(RenderFilm, TheCameraStandsStillAndHasAllPosesInView)
{
    film("c{frame}.png", {"--animation", "swim", "--frames", "0-15", "--fps", "16"});
    Extent all;
    for (int i = 0; i < 16; ++i) {
        Extent const extent = extentOf(frame("c" + std::to_string(i) + ".png"));
        all = {std::min(all.left, extent.left), std::max(all.right, extent.right),
               std::min(all.top, extent.top), std::max(all.bottom, extent.bottom)};
    }
    EXPECT_GT(all.left, 0);
    EXPECT_LT(all.right, 63);
    EXPECT_LE(std::min(all.left, 63 - all.right), 4) << "and fills the picture";

    film("r{frame}.png", {"--turntable", "12"});
    for (int i = 0; i < 12; ++i) {
        Extent const extent = extentOf(frame("r" + std::to_string(i) + ".png"));
        EXPECT_GT(extent.left, 0);
        EXPECT_LT(extent.right, 63);
        EXPECT_GT(extent.top, 0);
        EXPECT_LT(extent.bottom, 47);
    }
}

/// The frames of a WebP file, with the milliseconds at which each ends.
std::vector<std::pair<int, Picture>> decodeWebp(std::string const& file)
{
    WebPData const data{reinterpret_cast<std::uint8_t const*>(file.data()), file.size()};
    WebPAnimDecoderOptions options;
    WebPAnimDecoderOptionsInit(&options);
    std::unique_ptr<WebPAnimDecoder, void (*)(WebPAnimDecoder*)> const decoder(
        WebPAnimDecoderNew(&data, &options), WebPAnimDecoderDelete);
    std::vector<std::pair<int, Picture>> frames;
    WebPAnimInfo info;
    if (!decoder || WebPAnimDecoderGetInfo(decoder.get(), &info) == 0)
        return frames;
    while (WebPAnimDecoderHasMoreFrames(decoder.get()) != 0) {
        std::uint8_t* pixels = nullptr;
        int end = 0;
        if (WebPAnimDecoderGetNext(decoder.get(), &pixels, &end) == 0)
            break;
        Picture picture({static_cast<int>(info.canvas_width), static_cast<int>(info.canvas_height)});
        std::copy_n(pixels, picture.pixels.size(), picture.pixels.begin());
        frames.emplace_back(end, picture);
    }
    return frames;
}

/// The format keeps no colours where nothing is to be seen.
Picture visiblePartOf(Picture picture)
{
    for (std::size_t i = 0; i < picture.pixels.size(); i += 4)
        if (picture.pixels[i + 3] == 0)
            std::fill_n(picture.pixels.begin() + static_cast<std::ptrdiff_t>(i), 3, std::uint8_t{0});
    return picture;
}

TEST_F(RenderFilm, WebpMoves)
{
    std::vector<std::string> const options{"--turntable", "6", "--fps", "30", "--background", "transparent"};
    film("p{frame}.png", options);
    std::vector<std::string> lossless = options;
    lossless.insert(lossless.end(), {"--quality", "100"});
    film("film.webp", lossless);
    auto const frames = decodeWebp(contentOf("film.webp"));
    ASSERT_EQ(frames.size(), 6U);
    for (std::size_t i = 0; i < 6; ++i) {
        Picture const picture = frame("p" + std::to_string(i) + ".png");
        EXPECT_TRUE(visiblePartOf(frames[i].second).pixels == picture.pixels) << i;
        EXPECT_EQ(frames[i].first, std::lround(1000.0 * static_cast<double>(i + 1) / 30.0));
    }

    film("small.webp", options);
    auto const lossy = decodeWebp(contentOf("small.webp"));
    ASSERT_EQ(lossy.size(), 6U);
    EXPECT_LT(contentOf("small.webp").size(), contentOf("film.webp").size());
    EXPECT_NE(lossy[0].second.pixels, frames[0].second.pixels);
}

TEST_F(RenderFilm, WebpStandsStill)
{
    film("a.png", {});
    film("a.webp", {"--quality", "100"});
    film("b", {"--format", "webp", "--quality", "100"});
    auto const frames = decodeWebp(contentOf("a.webp"));
    ASSERT_EQ(frames.size(), 1U);
    EXPECT_EQ(frames[0].second.pixels, frame("a.png").pixels);
    EXPECT_EQ(contentOf("b"), contentOf("a.webp"));
    film("s{frame}.webp", {"--turntable", "2"});
    EXPECT_EQ(decodeWebp(contentOf("s1.webp")).size(), 1U);
}

TEST_F(RenderFilm, RawFramesFollowEachOther)
{
    film("f{frame}.png", {"--turntable", "3"});
    film("film.rgba", {"--turntable", "3"});
    std::string expected;
    for (int i = 0; i < 3; ++i) {
        Picture const picture = frame("f" + std::to_string(i) + ".png");
        expected.append(picture.pixels.begin(), picture.pixels.end());
    }
    EXPECT_EQ(contentOf("film.rgba"), expected);
}

TEST_F(RenderFilm, Y4mHasEachFrameInBrightnessAndColour)
{
    film("f{frame}.png", {"--turntable", "2", "--max-size", "63"});
    film("film.y4m", {"--turntable", "2", "--max-size", "63", "--fps", "29.97"});
    std::string const stream = contentOf("film.y4m");
    std::string const header = "YUV4MPEG2 W63 H47 F30000:1001 Ip A1:1 C420jpeg XCOLORRANGE=LIMITED\n";
    ASSERT_EQ(stream.substr(0, header.size()), header);
    constexpr std::size_t brightness = 63 * 47; // 64 x 48, scaled down
    constexpr std::size_t colour = 32 * 24;
    ASSERT_EQ(stream.size(), header.size() + 2 * (6 + brightness + 2 * colour));
    for (int number = 0; number < 2; ++number) {
        std::size_t const start =
            header.size() + static_cast<std::size_t>(number) * (6 + brightness + 2 * colour);
        EXPECT_EQ(stream.substr(start, 6), "FRAME\n");
        auto const at = [&](std::size_t offset) {
            return static_cast<double>(static_cast<unsigned char>(stream[start + 6 + offset]));
        };
        Picture const picture = frame("f" + std::to_string(number) + ".png");
        double worst = 0.0;
        // Back to colours, by the inverse of BT.601; areas of two by two in one colour alone come back whole.
        for (int y = 0; y + 1 < 47; y += 2)
            for (int x = 0; x + 1 < 63; x += 2) {
                Rgb const pixel = pixelAt(picture, x, y);
                bool flat = true;
                for (auto const& [dx, dy] : {std::pair(1, 0), std::pair(0, 1), std::pair(1, 1)})
                    flat = flat && pixelAt(picture, x + dx, y + dy) == pixel;
                if (!flat)
                    continue;
                double const luma = 1.164384 * (at(static_cast<std::size_t>(y * 63 + x)) - 16.0);
                auto const place = static_cast<std::size_t>(y / 2 * 32 + x / 2);
                double const cb = at(brightness + place) - 128.0;
                double const cr = at(brightness + colour + place) - 128.0;
                worst = std::max({worst, std::abs(luma + 1.596027 * cr - pixel.r),
                                  std::abs(luma - 0.391762 * cb - 0.812968 * cr - pixel.g),
                                  std::abs(luma + 2.017232 * cb - pixel.b)});
            }
        EXPECT_LT(worst, 2.5);
    }
}

TEST_F(RenderFilm, KilledLeavesNothingAndClosedStreamsAreNotItsFile)
{
    Circumstances closed;
    closed.closedStreams = true;
    std::filesystem::create_directory(folder / "streams");
    std::filesystem::create_directory(folder / "films");
    pid_t const process = start({"render", creature(), "--output", "films/a.webp", "--turntable", "900000"},
                                closed, folder / "streams");
    std::string const file = waitForFileIn(folder / "films", process);
    for (char const* const stream : {"0", "1", "2"})
        EXPECT_EQ(openFile(process, stream), "/dev/null") << stream;
    ::kill(process, SIGKILL);
    EXPECT_EQ(finish(process, folder / "streams").signal, SIGKILL);
    EXPECT_NE(file, "") << "nothing was begun";
    if (!file.ends_with("(deleted)"))
        GTEST_SKIP() << "the file system knows no files without a name";
    EXPECT_TRUE(std::filesystem::is_empty(folder / "films"));
}

TEST_F(RenderFilm, WhatAFilmNeeds)
{
    auto const refuse = [this](std::vector<std::string> options, std::string const& line) {
        options.insert(options.begin(), {"render", creature()});
        expectFailure(options, 2, line);
    };
    refuse({"--frames", "0-3", "--output", "{frame}.png"}, "--frames requires --animation or --turntable");
    refuse({"--fps", "25", "--output", "{frame}.png"}, "--fps requires --animation or --turntable");
    refuse({"--turntable", "4", "--output", "a.png"},
           "--output: names for the pictures of a film need {frame}, as in walk-{frame:04}.png");
    for (char const* range : {"3-2", "a", "1-", "-1", "0-1000000", "1-2-3", "1,2"})
        refuse({"--turntable", "4", "--frames=" + std::string(range), "--output", "{frame}.png"},
               "--frames: '" + std::string(range) +
                   "' is not a range of frames: first-last, each from 0 to 999999, as in 0-239");
    refuse({"--turntable", "0", "--output", "{frame}.png"},
           "--turntable: '0' is not a whole number from 1 to 999999");
    refuse({"--turntable", "2", "--fps", "0", "--output", "{frame}.png"},
           "--fps: '0' is not a number from 0.01 to 1000");
    refuse({"--turntable", "2", "--background", "transparent", "--output", "a.y4m"},
           "--background: frames in Y4M have no opacity");
}

} // namespace
