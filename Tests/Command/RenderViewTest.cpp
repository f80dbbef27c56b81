#include "Tests/Command/Sgview.h"

#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/PngReader.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <functional>
#include <sstream>

namespace {

using sgview::Picture;
using Arguments = std::vector<std::string>;
using Place = std::array<double, 3>;

constexpr Rgb white{255, 255, 255};

class RenderView : public SgviewTest {
protected:
    /// The one picture that a command line draws.
    [[nodiscard]] Picture draw(Arguments arguments) const
    {
        arguments.insert(arguments.end(), {"--size", "200x150"});
        static_cast<void>(render("drawn{frame}", arguments));
        std::vector<std::string> const files = filesInFolder();
        auto const drawn =
            std::ranges::find_if(files, [](auto const& name) { return name.starts_with("drawn"); });
        Picture picture = readPng(folder / *drawn);
        std::filesystem::remove(folder / *drawn);
        return picture;
    }

    /// Writes a solid that looks different from everywhere, each of its corners mapped.
    void writeSolid(std::string const& name, std::function<Place(Place const&)> const& map) const
    {
        std::ostringstream text;
        for (Place const& corner : {Place{0, 0, 0}, Place{5, 0, 0}, Place{0, 3, 0}, Place{0, 0, 1.5}}) {
            Place const place = map(corner);
            text << "v " << place[0] << ' ' << place[1] << ' ' << place[2] << '\n';
        }
        text << "f 1 3 2\nf 1 2 4\nf 1 4 3\nf 2 3 4\n";
        writeFile(name, text.str());
    }
};

/// The columns that a row shows of a model; an empty range on white.
std::pair<int, int> columnsOf(Picture const& picture, int row)
{
    std::pair<int, int> columns{picture.size.width, -1};
    for (int x = 0; x < picture.size.width; ++x)
        if (pixelAt(picture, x, row) != white)
            columns = {std::min(columns.first, x), std::max(columns.second, x)};
    return columns;
}

/// Of the rows that show some of a model, from above: how many columns.
std::vector<int> widthsOf(Picture const& picture)
{
    std::vector<int> widths;
    for (int y = 0; y < picture.size.height; ++y)
        if (auto const [first, last] = columnsOf(picture, y); last >= first)
            widths.push_back(last - first + 1);
    return widths;
}

TEST_F(RenderView, AnAxisPointsUpAsIfTheModelWereTurned)
{
    writeSolid("file.obj", [](Place const& p) { return p; });
    writeSolid("z.obj", [](Place const& p) { return Place{p[0], p[2], -p[1]}; });
    writeSolid("x.obj", [](Place const& p) { return Place{-p[1], p[0], p[2]}; });
    Arguments const usual{"file.obj"};
    EXPECT_EQ(draw({"file.obj", "--up", "y"}).pixels, draw(usual).pixels);
    for (std::string const axis : {"z", "x"}) {
        for (Arguments const& options : {Arguments{}, Arguments{"--orthographic"}}) {
            Arguments lying{"file.obj", "--up", axis};
            Arguments turned{axis + ".obj"};
            lying.insert(lying.end(), options.begin(), options.end());
            turned.insert(turned.end(), options.begin(), options.end());
            EXPECT_LE(countMismatches(draw(lying), draw(turned)), 3U) << axis;
        }
        EXPECT_GT(countMismatches(draw({"file.obj", "--up", axis}), draw(usual)), 1000U) << axis;
    }
}

TEST_F(RenderView, ATurntableGoesAroundTheAxisThatPointsUp)
{
    writeSolid("file.obj", [](Place const& p) { return p; });
    writeSolid("z.obj", [](Place const& p) { return Place{p[0], p[2], -p[1]}; });
    Arguments const film{"--turntable", "8", "--frames", "3"};
    for (Arguments const& options : {Arguments{}, Arguments{"--orthographic"}}) {
        Arguments lying{"file.obj", "--up", "z"};
        Arguments turned{"z.obj"};
        for (Arguments* const arguments : {&lying, &turned}) {
            arguments->insert(arguments->end(), film.begin(), film.end());
            arguments->insert(arguments->end(), options.begin(), options.end());
        }
        Picture const picture = draw(lying);
        EXPECT_LE(countMismatches(picture, draw(turned)), 3U);
        EXPECT_GT(widthsOf(picture).size(), 40U);
    }
}

TEST_F(RenderView, OrthographicKeepsParallelEdgesParallel)
{
    writeFile("road.obj", "v -1 0 0\nv 1 0 0\nv 1 0 -6\nv -1 0 -6\nf 1 2 3 4\n");
    Arguments road{"road.obj", "--azimuth", "0", "--elevation", "30"};
    std::vector<int> const perspective = widthsOf(draw(road));
    ASSERT_GT(perspective.size(), 50U);
    EXPECT_GT(perspective.back(), perspective.front() + 20) << "what is near is larger";
    road.emplace_back("--orthographic");
    std::vector<int> const parallel = widthsOf(draw(road));
    ASSERT_GT(parallel.size(), 50U);
    auto const [narrowest, widest] = std::ranges::minmax(parallel);
    EXPECT_LE(widest - narrowest, 1);
    EXPECT_NEAR(static_cast<double>(parallel.size()) / widest, 6.0 * 0.5 / 2.0, 0.05) << "as drawn on paper";
}

TEST_F(RenderView, OrthographicHasAllInViewAndFillsThePicture)
{
    // A tip near the viewer, and a base far away that perspective makes smaller.
    writeFile("pyramid.obj", "v -1 0 -1\nv 1 0 -1\nv 1 0 1\nv -1 0 1\nv 0 4 0\n"
                             "f 1 2 5\nf 2 3 5\nf 3 4 5\nf 4 1 5\n");
    for (Arguments const& film : {Arguments{}, Arguments{"--frames", "0", "--turntable", "1"}}) {
        Arguments arguments{"pyramid.obj", "--azimuth", "45", "--elevation", "90", "--orthographic"};
        arguments.insert(arguments.end(), film.begin(), film.end());
        Picture const picture = draw(arguments);
        std::vector<int> const widths = widthsOf(picture);
        EXPECT_LT(widths.size(), 150U);
        EXPECT_GT(widths.size(), 138U);
        EXPECT_EQ(columnsOf(picture, 0).second, -1) << "nothing touches the edge";
    }
}

} // namespace
