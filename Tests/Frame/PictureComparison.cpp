#include "Tests/Frame/PictureComparison.h"

#include "Tests/Frame/PngReader.h"
#include "Viewer/Platform/PictureDifference.h"
#include "Viewer/Platform/PngWriter.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;
using sgview::Picture;

constexpr int toleratedSquaredDistance = 100;

/// Bright enough to be seen.
constexpr int amplification = 8;

/// Leaves a picture in the build tree; returns where.
std::string leave(Picture const& picture, std::string const& name)
{
    fs::path const folder = FRAME_FAILURES;
    fs::create_directories(folder);
    fs::path const file = folder / (name + ".png");
    sgview::writePng(file, picture);
    return file.string();
}

/// Whether a pixel, or one beside it, is close to `wanted`.
bool isNear(Picture const& picture, int x, int y, Rgb const& wanted)
{
    for (int row = std::max(y - 1, 0); row <= std::min(y + 1, picture.size.height - 1); ++row)
        for (int column = std::max(x - 1, 0); column <= std::min(x + 1, picture.size.width - 1); ++column)
            if (squaredDistance(pixelAt(picture, column, row), wanted) <= toleratedSquaredDistance)
                return true;
    return false;
}

/// How many pixels of `a` are nowhere near in `b`.
std::size_t countMissing(Picture const& a, Picture const& b)
{
    std::size_t count = 0;
    for (int y = 0; y < a.size.height; ++y)
        for (int x = 0; x < a.size.width; ++x)
            count += isNear(b, x, y, pixelAt(a, x, y)) ? 0 : 1;
    return count;
}

/// Leaves two pictures and their difference in the build tree; says where.
std::string leaveAll(Picture const& picture, Picture const& expected, std::string const& name)
{
    return "see " + leave(picture, name) + ", " + leave(expected, name + "-expected") + " and " +
           leave(sgview::amplifiedDifference(picture, expected, amplification), name + "-difference");
}

testing::AssertionResult judge(std::size_t mismatches, std::size_t tolerated, Picture const& picture,
                               Picture const& expected, std::string const& name)
{
    if (mismatches <= tolerated)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << mismatches << " pixels differ, " << tolerated << " may; " << leaveAll(picture, expected, name);
}

} // namespace

std::ostream& operator<<(std::ostream& stream, Rgb const& pixel)
{
    return stream << "(" << pixel.r << ", " << pixel.g << ", " << pixel.b << ")";
}

int squaredDistance(Rgb const& a, Rgb const& b)
{
    return (a.r - b.r) * (a.r - b.r) + (a.g - b.g) * (a.g - b.g) + (a.b - b.b) * (a.b - b.b);
}

Rgb pixelAt(Picture const& picture, int x, int y)
{
    auto const at =
        std::size_t{4} * (static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.size.width) +
                          static_cast<std::size_t>(x));
    return {picture.pixels.at(at), picture.pixels.at(at + 1), picture.pixels.at(at + 2)};
}

std::size_t countMismatches(Picture const& a, Picture const& b)
{
    if (a.size != b.size)
        throw std::invalid_argument("pictures of different sizes");
    std::size_t count = 0;
    for (int y = 0; y < a.size.height; ++y)
        for (int x = 0; x < a.size.width; ++x)
            if (squaredDistance(pixelAt(a, x, y), pixelAt(b, x, y)) > toleratedSquaredDistance)
                ++count;
    return count;
}

int largestSquaredDistance(Picture const& a, Picture const& b)
{
    int largest = 0;
    for (int y = 0; y < a.size.height; ++y)
        for (int x = 0; x < a.size.width; ++x)
            largest = std::max(largest, squaredDistance(pixelAt(a, x, y), pixelAt(b, x, y)));
    return largest;
}

testing::AssertionResult showsAt(Picture const& picture, int x, int y, Rgb const& expected)
{
    constexpr int rounding = 3; // squared: one step in each component
    Rgb const pixel = pixelAt(picture, x, y);
    if (squaredDistance(pixel, expected) <= rounding)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "at column " << x << ", row " << y << " is " << pixel << ", expected " << expected;
}

testing::AssertionResult looksLike(Picture const& picture, Picture const& expected, std::string const& name)
{
    return judge(countMismatches(picture, expected), 0, picture, expected, name);
}

testing::AssertionResult isSame(Picture const& picture, Picture const& expected, std::string const& name)
{
    if (picture.pixels == expected.pixels)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "not the same; " << leaveAll(picture, expected, name);
}

testing::AssertionResult differsLittle(Picture const& picture, Picture const& expected, std::size_t tolerated,
                                       std::string const& name)
{
    constexpr int toleratedElsewhere = 2;
    auto const difference = sgview::measureDifference(picture, expected);
    if (difference.mismatches <= tolerated && difference.largestElsewhere <= toleratedElsewhere)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << difference.mismatches << " pixels mismatch, " << tolerated
           << " may; the others differ by up to " << difference.largestElsewhere << ", " << toleratedElsewhere
           << " may; " << leaveAll(picture, expected, name);
}

testing::AssertionResult looksLikeReference(Picture const& picture, std::string const& name, Allowed allowed)
{
    fs::path const file = fs::path(FRAME_REFERENCES) / (name + ".png");
    if (!fs::exists(file))
        return testing::AssertionFailure() << "there is no " << file << " yet; look at "
                                           << leave(picture, name) << " and copy it there if it is right";
    Picture const expected = readPng(file);
    if (expected.size != picture.size)
        return testing::AssertionFailure() << file << " has another size; see " << leave(picture, name);
    std::size_t const mismatches = allowed == Allowed::edges
                                       ? countMismatches(picture, expected)
                                       : countMissing(picture, expected) + countMissing(expected, picture);
    return judge(mismatches, picture.pixels.size() / 4 / 1000, picture, expected, name);
}
