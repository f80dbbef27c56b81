#include "Viewer/Diagnosis/Diagnosis.h"
#include "Viewer/Report/NumberText.h"

#include <algorithm>

namespace sgview {

namespace {

using Flag = Diagnosis::Flag;
using Step = Diagnosis::Step;
using View = Diagnosis::View;

/// Tells why each flag of a verdict is as it is. The log's own messages decide, not its figures: these are
/// rounded.
class Judge {
public:
    explicit Judge(Diagnosis const& diagnosis) : diagnosis_(diagnosis) {}

    [[nodiscard]] std::string onBuffers() const
    {
        if (!diagnosis_.verdict)
            return undecided();
        if (!diagnosis_.claims || !diagnosis_.claims->vbo)
            return "the card does not offer them";
        if (std::string const reason = whyNothingIsTrusted(); !reason.empty())
            return reason;
        if (hasBailedOut(Step::vbo))
            return "the first frame took more than a second";
        std::string const rates =
            rate(Step::vbo) + " frames per second with them, " + rate(Step::plain) + " without";
        return (said("VBO is slower -- reverting") ? "slower: " : "not slower: ") + rates;
    }

    [[nodiscard]] std::string onProgram() const
    {
        if (!diagnosis_.verdict)
            return undecided();
        if (!diagnosis_.claims || !diagnosis_.claims->vertexProgram)
            return whyNoProgram();
        return onPath("vertex program", Step::program, View::programAtRest, View::programCheck);
    }

    [[nodiscard]] std::string onShader() const
    {
        if (!diagnosis_.verdict)
            return undecided();
        if (!diagnosis_.claims || !diagnosis_.claims->vertexShader)
            return "never tried: the diagnostic leaves it out on every card";
        return onPath("vertex shader", Step::shader, View::shaderAtRest, View::shaderCheck);
    }

private:
    [[nodiscard]] static std::string undecided() { return "not decided: the run did not end well"; }

    [[nodiscard]] bool said(std::string const& line) const
    {
        return std::ranges::find(diagnosis_.log, line) != diagnosis_.log.end();
    }

    [[nodiscard]] std::string rate(Step step) const
    {
        Diagnosis::TimeTest const* const test = diagnosis_.timeTest(step);
        return test ? measureText(test->rate) : "no";
    }

    [[nodiscard]] bool hasBailedOut(Step step) const
    {
        Diagnosis::TimeTest const* const test = diagnosis_.timeTest(step);
        return test && test->bailedOut;
    }

    /// Of the picture `view`, from what it was last compared with.
    [[nodiscard]] std::string mismatch(View view) const
    {
        auto const found = std::ranges::find(diagnosis_.comparisons, view, &Diagnosis::Comparison::b);
        return found == diagnosis_.comparisons.end() ? "none" : shareText(found->mismatch);
    }

    /// Empty where nothing made the run distrust everything.
    [[nodiscard]] std::string whyNothingIsTrusted() const
    {
        if (said("Could not read image correctly--disabling vertex program and VBO")) {
            Diagnosis::PixelCount const pixels = diagnosis_.referencePixels.value_or(Diagnosis::PixelCount{});
            return "the reference picture has " + countText(pixels.white) + " white pixels and " +
                   countText(pixels.nonWhite) +
                   " others, and cannot be right with less than 2,622 of either: nothing is trusted";
        }
        if (said("Images that should differ are the same--disabling everything"))
            return "bones that bend hardly change the picture (" + shareText(leastBending()) +
                   " of the pixels, 1% is wanted): nothing is trusted";
        return {};
    }

    [[nodiscard]] double leastBending() const
    {
        double least = 1.0;
        for (Diagnosis::Comparison const& comparison : diagnosis_.comparisons)
            if (comparison.mustDiffer)
                least = std::min(least, comparison.mismatch);
        return least;
    }

    [[nodiscard]] std::string whyNoProgram() const
    {
        if (said("possibly lying ATI card detected--disabling vertex program"))
            return "the card is of a family that claims them and gets them wrong";
        auto const native = std::ranges::find(diagnosis_.limits, "GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB",
                                              &Diagnosis::Limit::name);
        if (native != diagnosis_.limits.end() && native->value == 0)
            return "the card would run them on the processor: it has 0 native instructions";
        return "the card does not offer them";
    }

    [[nodiscard]] std::string onPath(std::string const& name, Step step, View atRest, View check) const
    {
        if (std::string const reason = whyNothingIsTrusted(); !reason.empty())
            return reason;
        std::string const rates =
            rate(step) + " frames per second with it, " + rate(Step::base) + " with the processor";
        if (said("Bad " + name + " performance--disabling"))
            return hasBailedOut(step) ? "the first frame took more than a second" : "slower: " + rates;
        if (said("Images differ--disabling " + name))
            return "its picture at rest is wrong: " + mismatch(atRest) +
                   " of the pixels are off, less than 1% is wanted";
        if (said("Second images differ--disabling " + name))
            return "its picture with bent bones is wrong: " + mismatch(check) +
                   " of the pixels are off, less than 1% is wanted";
        bool const granted =
            step == Step::program ? diagnosis_.verdict->vertexProgram : diagnosis_.verdict->vertexShader;
        if (!granted)
            return "right, but the other skinning path is faster";
        return "not slower, and its pictures are right: " + rates + "; " + mismatch(atRest) +
               " of the pixels off at rest, " + mismatch(check) + " bent";
    }

    Diagnosis const& diagnosis_;
};

} // namespace

std::array<Diagnosis::Ruling, 3> Diagnosis::rulings() const
{
    Judge const judge(*this);
    TechniqueFlags const granted = verdict.value_or(TechniqueFlags{});
    return {{{Flag::vbo, granted.vbo, judge.onBuffers()},
             {Flag::vertexProgram, granted.vertexProgram, judge.onProgram()},
             {Flag::vertexShader, granted.vertexShader, judge.onShader()}}};
}

} // namespace sgview
