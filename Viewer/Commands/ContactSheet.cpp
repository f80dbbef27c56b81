#include "Viewer/Commands/ContactSheet.h"

#include "Utilities/Strings.h"

#include <algorithm>
#include <array>

namespace sgview {

namespace {

// Pixels.
constexpr int largestCell = 256;
constexpr int gap = 8;
constexpr int labelWidth = 300;
constexpr int lineHeight = 22;
constexpr int headLines = 4;

constexpr int columns = 3;
constexpr int amplification = 32;
constexpr std::uint8_t paper = 230;

int reductionFor(PictureSize frame)
{
    return (std::max(frame.width, frame.height) + largestCell - 1) / largestCell;
}

PictureSize cellFor(PictureSize frame, int reduction)
{
    return {(frame.width + reduction - 1) / reduction, (frame.height + reduction - 1) / reduction};
}

int cellHeightWithGap(PictureSize cell)
{
    constexpr int labelLines = 5;
    return std::max(cell.height, labelLines * lineHeight) + gap;
}

PictureSize sheetFor(PictureSize cell, std::size_t moments)
{
    int const cells = columns * static_cast<int>(moments);
    return {labelWidth + cells * (cell.width + gap) + static_cast<int>(moments) * gap,
            headLines * lineHeight + static_cast<int>(allTechniques.size()) * cellHeightWithGap(cell) + gap};
}

std::uint8_t* pixelOf(Picture& picture, int x, int y)
{
    return &picture.pixels[4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.size.width) +
                                static_cast<std::size_t>(x))];
}

enum class Keep { mean, brightest };

/// One component of `reduction` by `reduction` pixels of a frame.
std::uint8_t reduced(Picture const& frame, int x, int y, int component, int reduction, Keep keep)
{
    int sum = 0;
    int brightest = 0;
    int count = 0;
    for (int row = y * reduction; row < std::min((y + 1) * reduction, frame.size.height); ++row) {
        for (int column = x * reduction; column < std::min((x + 1) * reduction, frame.size.width); ++column) {
            std::size_t const pixel =
                static_cast<std::size_t>(row) * static_cast<std::size_t>(frame.size.width) +
                static_cast<std::size_t>(column);
            int const value = frame.pixels[4 * pixel + static_cast<std::size_t>(component)];
            sum += value;
            brightest = std::max(brightest, value);
            ++count;
        }
    }
    return static_cast<std::uint8_t>(keep == Keep::mean ? sum / count : brightest);
}

void place(Picture& sheet, int left, int top, Picture const& frame, PictureSize cell, int reduction,
           Keep keep)
{
    for (int y = 0; y < cell.height; ++y) {
        for (int x = 0; x < cell.width; ++x) {
            std::uint8_t* const pixel = pixelOf(sheet, left + x, top + y);
            for (int component = 0; component < 3; ++component)
                pixel[component] = reduced(frame, x, y, component, reduction, keep);
        }
    }
}

std::vector<std::string> labelOf(TechniqueResult const& result)
{
    std::vector<std::string> lines{std::string(nameOf(result.technique))};
    if (result.verdict() == TechniqueResult::Verdict::lacking) {
        lines.emplace_back("not offered here:");
        for (std::string const& extension : string_split(result.lacking, ','))
            lines.push_back(extension.substr(extension.find_first_not_of(' ')));
        return lines;
    }
    lines.push_back(inMilliseconds(result.milliseconds) + " ms a frame");
    if (result.verdict() != TechniqueResult::Verdict::reference) {
        PictureDifference const worst = result.worst();
        lines.push_back(std::to_string(worst.mismatches) + " pixels mismatch");
        lines.push_back("largest diff. " + std::to_string(worst.largest));
    }
    lines.emplace_back(nameOf(result.verdict()));
    return lines;
}

} // namespace

ContactSheet::ContactSheet(Comparison const& comparison)
    : reduction_(reductionFor(comparison.size)),
      cell_(cellFor(comparison.size, reduction_)),
      sheet_(sheetFor(cell_, comparison.moments.size()))
{
    std::ranges::fill(sheet_.pixels, paper);
    writeHead(comparison);
}

void ContactSheet::writeHead(Comparison const& comparison)
{
    lettering_.write(sheet_, gap, gap,
                     comparison.subject + ", " + comparison.animation.value_or("rest pose") + ", " +
                         std::to_string(comparison.size.width) + "x" +
                         std::to_string(comparison.size.height) + " pixels");
    lettering_.write(sheet_, gap, gap + lineHeight, comparison.driver);
    for (std::size_t moment = 0; moment < comparison.moments.size(); ++moment) {
        int const top = gap + 2 * lineHeight;
        lettering_.write(sheet_, columnLeft(moment, 0), top,
                         "at " + stringize(comparison.moments[moment]) + " s");
        std::array<std::string, columns> const titles{"picture", "plain",
                                                      "diff. x " + std::to_string(amplification)};
        for (int column = 0; column < columns; ++column)
            lettering_.write(sheet_, columnLeft(moment, column), top + lineHeight,
                             titles[static_cast<std::size_t>(column)]);
    }
}

void ContactSheet::add(Technique technique, std::size_t moment, Picture const& picture, Picture const& plain)
{
    int const top = rowTop(technique);
    place(sheet_, columnLeft(moment, 0), top, picture, cell_, reduction_, Keep::mean);
    place(sheet_, columnLeft(moment, 1), top, plain, cell_, reduction_, Keep::mean);
    place(sheet_, columnLeft(moment, 2), top, amplifiedDifference(picture, plain, amplification), cell_,
          reduction_, Keep::brightest);
}

void ContactSheet::conclude(std::vector<TechniqueResult> const& results)
{
    for (TechniqueResult const& result : results) {
        int top = rowTop(result.technique);
        for (std::string const& line : labelOf(result)) {
            lettering_.write(sheet_, gap, top, line);
            top += lineHeight;
        }
    }
}

int ContactSheet::columnLeft(std::size_t moment, int column) const
{
    return labelWidth + (columns * static_cast<int>(moment) + column) * (cell_.width + gap) +
           static_cast<int>(moment) * gap;
}

int ContactSheet::rowTop(Technique technique) const
{
    auto const row = static_cast<int>(std::ranges::find(allTechniques, technique) - allTechniques.begin());
    return gap + headLines * lineHeight + row * cellHeightWithGap(cell_);
}

} // namespace sgview
