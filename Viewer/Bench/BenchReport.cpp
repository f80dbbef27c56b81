#include "Viewer/Bench/BenchReport.h"

#include "Viewer/Bench/Quantile.h"
#include "Viewer/Bench/WarmUp.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Report/Json.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <locale>
#include <ostream>
#include <sstream>

namespace sgview {

namespace {

constexpr double lowShare = 0.05;
constexpr double middleShare = 0.5;
constexpr double highShare = 0.95;

std::string withDecimals(double value, int decimals)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed << std::setprecision(decimals) << value;
    return text.str();
}

std::string inMilliseconds(double milliseconds)
{
    return withDecimals(milliseconds, 3) + " ms";
}

std::string inMebibytes(std::int64_t bytes)
{
    constexpr double bytesAMebibyte = 1U << 20;
    return withDecimals(static_cast<double>(bytes) / bytesAMebibyte, 1) + " MiB";
}

/// "64 surfaces", "1 model"
std::string countInWords(BenchResult const& result)
{
    std::string things = result.things;
    if (result.count == 1)
        things.pop_back();
    return std::to_string(result.count) + " " + things;
}

double largestOf(std::vector<double> const& values)
{
    return *std::ranges::max_element(values);
}

/// A line of the table: a figure with its unit to the right of its column, then what it is.
void writeRow(std::ostream& stream, std::string const& figure, std::string const& meaning)
{
    constexpr int width = 14;
    stream << std::setw(width) << figure << "  " << meaning << '\n';
}

/// The same with a bar between, whose full length stands for `whole`.
void writeBar(std::ostream& stream, double milliseconds, double whole, std::string const& meaning)
{
    constexpr std::size_t fullLength = 24;
    double const share = whole > 0.0 ? std::min(milliseconds / whole, 1.0) : 0.0;
    std::string bar(static_cast<std::size_t>(std::lround(share * fullLength)), '#');
    bar.resize(fullLength, ' ');
    writeRow(stream, inMilliseconds(milliseconds), bar + "  " + meaning);
}

void writeFrames(std::ostream& stream, FrameFigures const& frames)
{
    double const median = quantile(frames.milliseconds, middleShare);
    double const high = quantile(frames.milliseconds, highShare);
    constexpr double millisecondsASecond = 1000.0;
    std::string const rate = withDecimals(millisecondsASecond / median, median < 10.0 ? 0 : 1);
    stream << "a frame, of " << frames.milliseconds.size() << " timed after " << warmUpFrames
           << " to warm up:\n";
    writeBar(stream, quantile(frames.milliseconds, lowShare), high, "5th percentile");
    writeBar(stream, median, high, "median: " + rate + " frames a second");
    writeBar(stream, high, high, "95th percentile");
}

void writeParts(std::ostream& stream, FrameFigures const& frames)
{
    double const application = quantile(frames.application, middleShare);
    double whole = application;
    for (PassFigure const& pass : frames.passes)
        whole = std::max(whole, pass.milliseconds);
    stream << "its parts, each waited for until OpenGL is done:\n";
    writeBar(stream, application, whole, "the application's changes");
    for (PassFigure const& pass : frames.passes)
        writeBar(stream, pass.milliseconds, whole, pass.name);
}

void writeCount(std::ostream& stream, std::vector<double> const& counts, std::string const& what)
{
    writeRow(stream, withDecimals(quantile(counts, middleShare), 0),
             what + " a frame, " + withDecimals(largestOf(counts), 0) + " at most");
}

void writeStart(std::ostream& stream, StartFigures const& start)
{
    stream << "until the first frame:\n";
    double const whole = std::max({start.driver, start.module, start.scene, start.firstFrame});
    writeBar(stream, start.driver, whole, "OpenGL's context");
    writeBar(stream, start.module, whole, "the renderer's module and its technique");
    writeBar(stream, start.scene, whole, "the scene");
    writeBar(stream, start.firstFrame, whole, "the frame");
}

Json asJson(std::vector<double> const& values)
{
    return {{"median", quantile(values, middleShare)},
            {"p5", quantile(values, lowShare)},
            {"p95", quantile(values, highShare)},
            {"all", values}};
}

Json countsAsJson(std::vector<double> const& counts)
{
    std::vector<std::int64_t> all(counts.size());
    std::ranges::transform(counts, all.begin(),
                           [](double count) { return static_cast<std::int64_t>(count); });
    return {{"median", static_cast<std::int64_t>(quantile(counts, middleShare))},
            {"most", static_cast<std::int64_t>(largestOf(counts))},
            {"all", all}};
}

} // namespace

void writeText(std::ostream& stream, BenchResult const& result)
{
    stream << oneLine(result.scene) << ": " << countInWords(result)
           << (result.moving ? ", every transform moving" : "") << ", " << result.size.width << " x "
           << result.size.height << ", technique " << nameOf(result.technique) << '\n'
           << result.driver
           << (result.discarded ? ", all drawing thrown away: the cost of application and front end" : "")
           << "\n\n";
    writeFrames(stream, result.frames);
    stream << '\n';
    writeParts(stream, result.frames);
    stream << '\n';
    writeStart(stream, result.start);
    stream << "\nmemory:\n";
    writeCount(stream, result.frames.allocations, "allocations by operator new");
    writeCount(stream, result.frames.pageFaults, "page faults");
    writeRow(stream, inMebibytes(result.peakMemory),
             result.discarded ? "at the peak, up to the first frame" : "at the peak");
}

void writeJson(std::ostream& stream, BenchResult const& result)
{
    Json json;
    json["scene"] = result.scene;
    json["count"] = result.count;
    json["moving"] = result.moving;
    json["width"] = result.size.width;
    json["height"] = result.size.height;
    json["driver"] = result.driver;
    json["discarded"] = result.discarded;
    json["technique"] = nameOf(result.technique);
    json["warmUpFrames"] = warmUpFrames;
    json["frames"] = result.frames.milliseconds.size();
    json["milliseconds"] = asJson(result.frames.milliseconds);
    json["application"] = asJson(result.frames.application);
    json["passes"] = Json::array();
    for (auto const& [name, milliseconds] : result.frames.passes)
        json["passes"].push_back({{"name", name}, {"milliseconds", milliseconds}});
    json["allocations"] = countsAsJson(result.frames.allocations);
    json["pageFaults"] = countsAsJson(result.frames.pageFaults);
    json["peakMemory"] = result.peakMemory;
    json["start"] = {{"driver", result.start.driver},
                     {"module", result.start.module},
                     {"scene", result.start.scene},
                     {"firstFrame", result.start.firstFrame}};
    writeLines(stream, json);
}

} // namespace sgview
