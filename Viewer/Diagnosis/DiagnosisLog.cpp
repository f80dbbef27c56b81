#include "Viewer/Diagnosis/DiagnosisLog.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>

namespace sgview {

namespace {

constexpr int side = 512;
constexpr std::size_t rowBytes = std::size_t{4} * side;

using View = Diagnosis::View;

constexpr std::array programViews{View::programAtRest, View::programBent, View::programCheck};
constexpr std::array shaderViews{View::shaderAtRest, View::shaderBent, View::shaderCheck};

/// What follows a text at the front of a line, if it is there.
std::optional<std::string_view> after(std::string_view text, std::string_view line)
{
    if (!line.starts_with(text))
        return std::nullopt;
    return line.substr(text.size());
}

/// The number at the front; 0 where there is none.
template <typename Number>
Number numberAt(std::string_view text)
{
    Number number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// The number behind the first occurrence of a text.
template <typename Number>
Number numberBehind(std::string_view text, std::string_view line)
{
    auto const at = line.find(text);
    return at == std::string_view::npos ? Number{} : numberAt<Number>(line.substr(at + text.size()));
}

TechniqueFlags flagsIn(std::string_view line)
{
    auto const isYes = [line](std::string_view name) {
        return line.find(std::string(name) + " = Yes") != std::string_view::npos;
    };
    return {isYes("VBO"), isYes("vertex program"), isYes("vertex shader")};
}

Picture topRowFirst(std::span<std::uint8_t const> pixels)
{
    Picture picture({side, side});
    for (std::size_t row = 0; row < side; ++row) {
        std::span<std::uint8_t const> const from = pixels.subspan(rowBytes * (side - 1 - row), rowBytes);
        std::ranges::copy(from, picture.pixels.begin() + static_cast<std::ptrdiff_t>(rowBytes * row));
    }
    return picture;
}

} // namespace

void DiagnosisLog::addCard(std::string card)
{
    diagnosis_.card = std::move(card);
    enter(Stage::loading);
}

void DiagnosisLog::enter(Stage stage)
{
    stage_ = stage;
    timeTests_ = 0;
    pictures_ = 0;
    comparisons_ = 0;
}

void DiagnosisLog::addLine(std::string_view line)
{
    diagnosis_.log.emplace_back(line);
    if (line == "Running graphics diagnostics") {
        diagnosis_.surfaces = 1;
        enter(Stage::scene);
    } else if (auto const rate = after("Ran time test, got ", line)) {
        addTimeTest(numberAt<double>(*rate), false);
    } else if (line == "Ran time test, but first render took too long, so bailing out") {
        addTimeTest(0.0, true);
    } else if (auto const count = after("Done creating test scene -- number of surfaces = ", line)) {
        diagnosis_.surfaces = numberAt<int>(*count);
        enter(Stage::claims);
    } else if (line.starts_with("GL_MAX_PROGRAM_")) {
        addLimit(line);
    } else if (auto const claims = after("Card caps: ", line)) {
        diagnosis_.claims = flagsIn(*claims);
    } else if (line == "Checking VBO performance") {
        enter(Stage::buffers);
    } else if (line == "Checking base animation performance") {
        enter(Stage::base);
    } else if (line.starts_with("Checking test image: ")) {
        addPixelCount(line);
    } else if (line == "Checking vertex program performance") {
        enter(Stage::program);
    } else if (line == "Checking vertex shader performance") {
        enter(Stage::shader);
    } else if (auto const mismatch = after("Compared images.  Mismatch = ", line)) {
        addComparison(numberAt<double>(*mismatch));
    } else if (line.ends_with(" is faster: enabling")) {
        enter(Stage::storing);
    } else if (auto const seconds = after("Completed graphics diagnostics -- total time = ", line)) {
        diagnosis_.seconds = numberAt<double>(*seconds);
    } else if (auto const verdict = after("Final caps: ", line)) {
        diagnosis_.verdict = flagsIn(*verdict);
        enter(Stage::closing);
    } else if (line.ends_with("--disabling everything") || line.starts_with("Could not read image ") ||
               line.starts_with("Bad vertex ") ||
               line.find("--disabling vertex ") != std::string_view::npos) {
        if (stage_ != Stage::claims)
            enter(Stage::storing);
    }
}

void DiagnosisLog::addLimit(std::string_view line)
{
    // Asked before the run as well, to see whether one is needed.
    if (stage_ == Stage::claims && line.find(" = ") != std::string_view::npos)
        diagnosis_.limits.push_back(
            {std::string(line.substr(0, line.find(' '))), numberBehind<std::int64_t>(" = ", line)});
}

Diagnosis::Step DiagnosisLog::timedStep() const
{
    switch (stage_) {
    case Stage::buffers:
        return timeTests_ == 0 ? Diagnosis::Step::plain : Diagnosis::Step::vbo;
    case Stage::base:
        return Diagnosis::Step::base;
    case Stage::program:
        return Diagnosis::Step::program;
    case Stage::shader:
        return Diagnosis::Step::shader;
    default:
        return Diagnosis::Step::scene;
    }
}

void DiagnosisLog::addTimeTest(double rate, bool bailedOut)
{
    // While the scene grows, every test but the first comes after a doubling.
    if (stage_ == Stage::scene && timeTests_ > 0)
        diagnosis_.surfaces *= 2;
    diagnosis_.timeTests.push_back({timedStep(), diagnosis_.surfaces, rate, bailedOut});
    ++timeTests_;
}

void DiagnosisLog::addPixelCount(std::string_view line)
{
    diagnosis_.referencePixels = {numberBehind<int>("white = ", line),
                                  numberBehind<int>("nonWhite = ", line)};
}

void DiagnosisLog::addPicture(std::span<std::uint8_t const> pixels)
{
    if (pixels.size() != rowBytes * side)
        return;
    auto const which = static_cast<std::size_t>(pictures_++);
    if (stage_ == Stage::base && which == 0)
        diagnosis_.images.push_back({View::reference, topRowFirst(pixels)});
    else if (stage_ == Stage::program && which < programViews.size())
        diagnosis_.images.push_back({programViews[which], topRowFirst(pixels)});
    else if (stage_ == Stage::shader && which < shaderViews.size())
        diagnosis_.images.push_back({shaderViews[which], topRowFirst(pixels)});
}

void DiagnosisLog::addComparison(double mismatch)
{
    auto const which = static_cast<std::size_t>(comparisons_++);
    bool const ofShader = stage_ == Stage::shader;
    if ((stage_ != Stage::program && !ofShader) || which >= programViews.size())
        return;
    auto const& views = ofShader ? shaderViews : programViews;
    bool const isLast = which + 1 == views.size();
    diagnosis_.comparisons.push_back(
        {isLast ? views[which - 1] : View::reference, views[which], mismatch, views[which] == views[1]});
}

std::string DiagnosisLog::step() const
{
    switch (stage_) {
    case Stage::opening:
        return "opening an OpenGL context";
    case Stage::loading:
        return "loading the renderer";
    case Stage::scene:
        return "growing the test scene, surfaces: " +
               std::to_string(timeTests_ == 0 ? 1 : 2 * diagnosis_.surfaces);
    case Stage::claims:
        return "asking what the card offers";
    case Stage::buffers:
        return timeTests_ == 0 ? "timing the plain technique" : "timing buffer objects";
    case Stage::base:
        return timeTests_ == 0 ? "timing skinning on the processor" : "reading the reference picture back";
    case Stage::program:
        return skinningStep("vertex program");
    case Stage::shader:
        return skinningStep("vertex shader");
    case Stage::storing:
        return "storing the verdict";
    case Stage::closing:
        return "closing OpenGL";
    }
    return {};
}

std::string DiagnosisLog::skinningStep(std::string const& path) const
{
    if (timeTests_ == 0)
        return "timing the " + path;
    switch (comparisons_) {
    case 0:
        return "reading the " + path + "'s picture at rest";
    case 1:
        return "drawing by the " + path + ", bent";
    case 2:
        return "drawing by the plain technique, bent";
    default:
        return "storing the verdict";
    }
}

} // namespace sgview
