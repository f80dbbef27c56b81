#include "Viewer/CommandLine/OptionText.h"

#include "Utilities/Strings.h"
#include "Viewer/CommandLine/UsageError.h"
#include "Viewer/Platform/ScreenshotName.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

namespace sgview {

namespace {

constexpr std::array<std::string_view, 2> channels{"opengl", "error"};

[[noreturn]] void refuse(std::string_view text, std::string const& wanted)
{
    throw UsageError("'" + std::string(text) + "' is not " + wanted);
}

/// The number that is all of the text, or nothing. No sign but a minus, no blanks.
template <typename Number, typename... Format>
std::optional<Number> read(std::string_view text, Format... format)
{
    Number value{};
    char const* const end = text.data() + text.size();
    auto const [last, error] = std::from_chars(text.data(), end, value, format...);
    if (error != std::errc() || last != end)
        return std::nullopt;
    return value;
}

std::string withoutExponent(double value)
{
    std::array<char, 32> text{};
    return {text.data(),
            std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed).ptr};
}

std::optional<int> readSide(std::string_view text)
{
    std::optional<std::uint32_t> const side = read<std::uint32_t>(text, 10);
    if (!side || *side < 1 || *side > PictureSize::largestSide)
        return std::nullopt;
    return static_cast<int>(*side);
}

std::optional<Color> readColor(std::string_view text)
{
    constexpr std::size_t length = 7;
    if (text.size() != length || text.front() != '#')
        return std::nullopt;
    std::array<float, 3> components{};
    for (std::size_t i = 0; i < components.size(); ++i) {
        std::optional<std::uint8_t> const component = read<std::uint8_t>(text.substr(1 + 2 * i, 2), 16);
        if (!component)
            return std::nullopt;
        components[i] = static_cast<float>(*component) / 255.0F;
    }
    return Color{components[0], components[1], components[2], 1.0F};
}

std::optional<FrameRange> readFrames(std::string_view text)
{
    std::size_t const dash = std::min(text.find('-'), text.size());
    std::optional<std::uint32_t> const first = read<std::uint32_t>(text.substr(0, dash), 10);
    std::optional<std::uint32_t> const last =
        dash == text.size() ? first : read<std::uint32_t>(text.substr(dash + 1), 10);
    if (!first || !last || *first > *last || *last > FrameRange::largest)
        return std::nullopt;
    return FrameRange{*first, *last};
}

std::optional<Moments> readMoments(std::string_view text)
{
    if (std::optional<std::uint32_t> const count = read<std::uint32_t>(text, 10))
        return Moments{*count, {}};
    Moments moments{0, {}};
    for (std::string const& item : string_split(text, ',')) {
        std::optional<double> const seconds = read<double>(item);
        if (!seconds || !(*seconds >= 0.0 && *seconds <= Moments::latest))
            return std::nullopt;
        moments.seconds.push_back(*seconds);
        ++moments.count;
    }
    return moments;
}

} // namespace

PictureSize parseSize(std::string_view text)
{
    std::size_t const cross = std::min(text.find('x'), text.size());
    std::optional<int> const width = readSide(text.substr(0, cross));
    std::optional<int> const height = readSide(text.substr(std::min(cross + 1, text.size())));
    if (!width || !height || std::int64_t{*width} * *height > PictureSize::mostPixels)
        refuse(text, "a picture size: width x height in pixels, 1 to " +
                         std::to_string(PictureSize::largestSide) + " each and " +
                         std::to_string(PictureSize::mostPixels) + " in all, as in 1024x768");
    return {*width, *height};
}

Color parseColor(std::string_view text)
{
    std::optional<Color> const color = readColor(text);
    if (!color)
        refuse(text, "a colour: #rrggbb, as in #ff8000");
    return *color;
}

Color parseBackground(std::string_view text)
{
    if (text == "transparent")
        return {0.0F, 0.0F, 0.0F, 0.0F};
    std::optional<Color> const color = readColor(text);
    if (!color)
        refuse(text, "a colour: #rrggbb, as in #ff8000, or transparent");
    return *color;
}

std::string inHex(Color const& color)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = "#";
    for (float const component : {color.r, color.g, color.b}) {
        auto const byte = static_cast<std::size_t>(std::lround(255.0F * component));
        text += {digits[byte / 16], digits[byte % 16]};
    }
    return text;
}

std::pair<Color, Color> parseColorPair(std::string_view text)
{
    std::size_t const comma = std::min(text.find(','), text.size());
    std::optional<Color> const first = readColor(text.substr(0, comma));
    std::optional<Color> const second = readColor(text.substr(std::min(comma + 1, text.size())));
    if (!first || !second)
        refuse(text, "a pair of colours: #rrggbb,#rrggbb, as in #ffeecc,#301000");
    return {*first, *second};
}

double parseNumber(std::string_view text, double least, double most)
{
    std::optional<double> const value = read<double>(text);
    if (!value || !(*value >= least && *value <= most))
        refuse(text, "a number from " + withoutExponent(least) + " to " + withoutExponent(most));
    return *value;
}

std::uint32_t parseWhole(std::string_view text, std::uint32_t least, std::uint32_t most)
{
    std::optional<std::uint32_t> const value = read<std::uint32_t>(text, 10);
    if (!value || *value < least || *value > most)
        refuse(text, "a whole number from " + std::to_string(least) + " to " + std::to_string(most));
    return *value;
}

std::optional<Technique> parseTechnique(std::string_view text)
{
    if (text == "auto")
        return std::nullopt;
    auto const* const found =
        std::ranges::find(allTechniques, text, [](Technique technique) { return nameOf(technique); });
    if (found == allTechniques.end())
        refuse(text, "a technique: auto, plain, vbo, program, program+vbo, shader or shader+vbo");
    return *found;
}

std::string parseScreenshotName(std::string_view text)
{
    if (!isScreenshotTemplate(text))
        refuse(text, "a template for names: text with {model}, {date}, {time} and {number} in it");
    return std::string(text);
}

FrameRange parseFrames(std::string_view text)
{
    std::optional<FrameRange> const frames = readFrames(text);
    if (!frames)
        refuse(text, "a range of frames: first-last, each from 0 to " + std::to_string(FrameRange::largest) +
                         ", as in 0-239");
    return *frames;
}

OutputName parseOutputName(std::string_view text)
{
    if (text.empty())
        throw UsageError("no file is named");
    std::optional<OutputName> const name = OutputName::parse(text);
    if (!name)
        refuse(text, "a name for pictures: text with {model}, {index} and {frame} in it, as in "
                     "{model}-{frame:04}.png; {{ is a brace");
    return *name;
}

PictureFormat parsePictureFormat(std::string_view text)
{
    auto const* const found =
        std::ranges::find(allPictureFormats, text, [](PictureFormat format) { return nameOf(format); });
    if (found == allPictureFormats.end())
        refuse(text, "a picture format: png, webp, rgba or y4m");
    return *found;
}

CameraView::Up parseUp(std::string_view text)
{
    auto const* const found =
        std::ranges::find(allUpAxes, text, [](CameraView::Up up) { return nameOf(up); });
    if (found == allUpAxes.end())
        refuse(text, "an axis: y, z or x");
    return *found;
}

Moments parseMoments(std::string_view text)
{
    std::optional<Moments> const moments = readMoments(text);
    if (!moments || moments->count < 1 || moments->count > Moments::most)
        refuse(text, "moments: how many, 1 to " + std::to_string(Moments::most) +
                         ", or as many seconds with commas between, as in 0.1,0.25");
    return *moments;
}

Shell parseShell(std::string_view text)
{
    auto const* const found = std::ranges::find(allShells, text, [](Shell shell) { return nameOf(shell); });
    if (found == allShells.end())
        refuse(text, "a shell: bash, zsh or fish");
    return *found;
}

std::vector<std::string> parseChannels(std::string_view text)
{
    std::vector<std::string> const names = string_split(text, ',');
    for (std::string const& name : names)
        if (std::find(channels.begin(), channels.end(), name) == channels.end())
            refuse(name, "a log channel: opengl or error");
    return names;
}

} // namespace sgview
