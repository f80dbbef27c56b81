#include "Viewer/Diagnosis/DiagnosisSummary.h"

#include "Utilities/Strings.h"
#include "Viewer/Diagnosis/DiagnosisFigures.h"
#include "Viewer/Report/NumberText.h"

#include <algorithm>
#include <cmath>
#include <ostream>

namespace sgview {

namespace {

constexpr std::size_t lineWidth = 80;
constexpr std::size_t nameWidth = 30;
constexpr std::size_t flagWidth = 20;
constexpr char const* indentation = "  ";

std::string toTheRight(std::string const& text, std::size_t width)
{
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

std::string toTheLeft(std::string_view text, std::size_t width)
{
    return std::string(text) + std::string(width - std::min(width, text.size()), ' ');
}

/// Driver's own words, without what would move a terminal's cursor.
std::string printable(std::string_view text)
{
    std::string result(text);
    std::ranges::replace_if(
        result, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }, '?');
    return result;
}

void writeRates(std::ostream& stream, Diagnosis const& diagnosis)
{
    constexpr std::size_t rateWidth = 9;
    constexpr std::size_t barWidth = lineWidth - 2 - nameWidth - rateWidth - 2;
    std::vector<RateFigure> const rates = rateFigures(diagnosis);
    if (rates.empty())
        return;
    stream << "\nFrames per second\n";
    for (RateFigure const& rate : rates) {
        auto const length = static_cast<std::size_t>(std::lround(rate.share * static_cast<double>(barWidth)));
        std::string const bar = rate.remark.empty() ? std::string(length, '#') : rate.remark;
        stream << indentation << toTheLeft(nameOf(rate.step), nameWidth) << toTheRight(rate.text, rateWidth)
               << (bar.empty() ? "" : indentation) << bar << '\n';
    }
}

void writeComparisons(std::ostream& stream, Diagnosis const& diagnosis)
{
    if (diagnosis.comparisons.empty())
        return;
    constexpr std::size_t pairWidth = 44;
    constexpr std::size_t shareWidth = 9;
    stream << "\nPixels that mismatch\n";
    for (Diagnosis::Comparison const& comparison : diagnosis.comparisons) {
        stream << indentation << toTheLeft(pairOf(comparison), pairWidth)
               << toTheRight(shareText(comparison.mismatch), shareWidth) << indentation
               << resultOf(comparison) << '\n';
    }
}

void writeRulings(std::ostream& stream, Diagnosis const& diagnosis)
{
    stream << "\nVerdict\n";
    for (Diagnosis::Ruling const& ruling : diagnosis.rulings())
        writeEntry(stream, nameOf(ruling.flag), flagWidth, inWords(ruling, diagnosis.verdict.has_value()));
}

} // namespace

void writeEntry(std::ostream& stream, std::string_view label, std::size_t labelWidth, std::string_view text)
{
    std::string line = indentation + toTheLeft(label, labelWidth);
    std::size_t const margin = line.size();
    for (std::string const& word : string_split(printable(text), ' ')) {
        if (line.size() > margin && line.size() + 1 + word.size() > lineWidth) {
            stream << line << '\n';
            line = std::string(margin, ' ');
        }
        line += (line.size() > margin ? " " : "") + word;
    }
    stream << line << '\n';
}

void writeSummary(std::ostream& stream, Diagnosis const& diagnosis)
{
    stream << "Graphics card\n";
    writeEntry(stream, "in use", flagWidth, diagnosis.card);
    if (diagnosis.claims)
        writeEntry(stream, "offers", flagWidth, inWords(*diagnosis.claims));
    writeEntry(stream, "measured with", flagWidth, sceneInWords(diagnosis));
    if (std::string const remark = remarkOnScene(diagnosis); !remark.empty())
        writeEntry(stream, "", flagWidth, remark);
    writeRates(stream, diagnosis);
    writeComparisons(stream, diagnosis);
    writeRulings(stream, diagnosis);
    if (diagnosis.verdict) {
        stream << "\nsgview draws by technique " << nameOf(bestTechnique(*diagnosis.verdict)) << ".\n";
    }
}

void writeVerdict(std::ostream& stream, StoredVerdict const& stored)
{
    stream << "Stored verdict\n";
    if (stored.isEmpty()) {
        stream << indentation << "none\n";
        return;
    }
    for (auto const& [label, entry] : stored.entries())
        writeEntry(stream, label, flagWidth, entry);
}

} // namespace sgview
