#include "Viewer/Commands/ComparisonTable.h"

#include "Utilities/Strings.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Report/Json.h"

#include <algorithm>
#include <iomanip>
#include <locale>
#include <ostream>
#include <sstream>

namespace sgview {

namespace {

using Verdict = TechniqueResult::Verdict;

using Row = std::vector<std::string>;

Row rowOf(TechniqueResult const& result)
{
    std::string const name(nameOf(result.technique));
    Verdict const verdict = result.verdict();
    if (verdict == Verdict::lacking)
        return {name, "-", "-", "-", "-", "no " + result.lacking};
    PictureDifference const worst = result.worst();
    if (verdict == Verdict::reference)
        return {name, inMilliseconds(result.milliseconds), "-", "-", "-", std::string(nameOf(verdict))};
    return {name,
            inMilliseconds(result.milliseconds),
            std::to_string(worst.mismatches),
            std::to_string(worst.largest),
            std::to_string(worst.largestElsewhere),
            std::string(nameOf(verdict))};
}

/// The first and the last column to the left, numbers to the right.
void writeTable(std::ostream& stream, std::vector<Row> const& rows)
{
    std::vector<std::size_t> widths(rows.front().size());
    for (Row const& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    for (Row const& row : rows) {
        for (std::size_t i = 0; i + 1 < row.size(); ++i) {
            std::string const filler(widths[i] - row[i].size(), ' ');
            stream << (i == 0 ? row[i] + filler : filler + row[i]) << "  ";
        }
        stream << row.back() << '\n';
    }
}

Json asJson(PictureDifference const& difference)
{
    return {{"mismatches", difference.mismatches},
            {"largest", difference.largest},
            {"largestElsewhere", difference.largestElsewhere}};
}

Json asJson(TechniqueResult const& result)
{
    Json json;
    json["technique"] = nameOf(result.technique);
    json["verdict"] = nameOf(result.verdict());
    json["lacking"] = result.lacking.empty() ? Json() : Json(result.lacking);
    json["milliseconds"] = result.lacking.empty() ? Json(result.milliseconds) : Json();
    json["moments"] = Json::array();
    for (PictureDifference const& difference : result.differences)
        json["moments"].push_back(asJson(difference));
    return json;
}

} // namespace

std::string momentsInWords(std::vector<double> const& moments)
{
    std::string words = "at ";
    for (std::size_t i = 0; i < moments.size(); ++i)
        words += (i > 0 ? ", " : "") + stringize(moments[i]);
    return words + " s";
}

std::string inMilliseconds(double milliseconds)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed << std::setprecision(2) << milliseconds;
    return text.str();
}

void writeText(std::ostream& stream, Comparison const& comparison)
{
    PictureSize const size = comparison.size;
    stream << oneLine(comparison.subject) << ", "
           << (comparison.animation ? "'" + oneLine(*comparison.animation) + "'" : "rest pose") << ' '
           << momentsInWords(comparison.moments) << '\n'
           << comparison.driver << "\n\n";

    std::vector<Row> rows{{"technique", "ms/frame", "mismatches", "largest", "elsewhere", "verdict"}};
    for (TechniqueResult const& result : comparison.results)
        rows.push_back(rowOf(result));
    writeTable(stream, rows);

    stream
        << "\nmismatches: pixels of " << size.width << " x " << size.height
        << " that are clearly off the plain picture's, at the worst moment\n"
           "largest: difference of a colour component, of 255; elsewhere: in pixels that do not mismatch\n";
}

void writeJson(std::ostream& stream, Comparison const& comparison)
{
    Json json;
    json["subject"] = comparison.subject;
    json["animation"] = comparison.animation ? Json(*comparison.animation) : Json();
    json["seconds"] = comparison.moments;
    json["driver"] = comparison.driver;
    json["width"] = comparison.size.width;
    json["height"] = comparison.size.height;
    json["techniques"] = Json::array();
    for (TechniqueResult const& result : comparison.results)
        json["techniques"].push_back(asJson(result));
    writeLines(stream, json);
}

} // namespace sgview
