#include "Viewer/Commands/TechniqueComparison.h"

#include <algorithm>

namespace sgview {

namespace {

constexpr int timedFrames = 5; // at every moment, after the one that is looked at

double median(std::vector<double> values)
{
    auto const middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

} // namespace

TechniqueResult::Verdict TechniqueResult::verdict() const
{
    if (!lacking.empty())
        return Verdict::lacking;
    if (technique == Technique::plain)
        return Verdict::reference;
    if (!std::ranges::all_of(differences, &PictureDifference::isTolerable))
        return Verdict::different;
    return std::ranges::all_of(differences, [](auto const& one) { return one.largest == 0; })
               ? Verdict::same
               : Verdict::alike;
}

PictureDifference TechniqueResult::worst() const
{
    PictureDifference worst;
    for (PictureDifference const& difference : differences) {
        worst.pixels = difference.pixels;
        worst.mismatches = std::max(worst.mismatches, difference.mismatches);
        worst.largest = std::max(worst.largest, difference.largest);
        worst.largestElsewhere = std::max(worst.largestElsewhere, difference.largestElsewhere);
    }
    return worst;
}

std::string_view nameOf(TechniqueResult::Verdict verdict)
{
    switch (verdict) {
    case TechniqueResult::Verdict::reference:
        return "reference";
    case TechniqueResult::Verdict::same:
        return "same";
    case TechniqueResult::Verdict::alike:
        return "alike";
    case TechniqueResult::Verdict::different:
        return "different";
    case TechniqueResult::Verdict::lacking:
        return "lacking";
    }
    return "unknown";
}

std::vector<TechniqueResult> compareTechniques(OffscreenRenderer& renderer, MovingScene const& scene,
                                               std::vector<double> const& moments, PictureSink const& sink)
{
    std::vector<Picture> plain;
    std::vector<TechniqueResult> results;
    for (Technique const technique : allTechniques) {
        TechniqueResult& result = results.emplace_back();
        result.technique = technique;
        result.lacking = lackingFor(technique);
        if (!result.lacking.empty())
            continue;
        renderer.use(technique);
        std::vector<double> times;
        for (std::size_t i = 0; i < moments.size(); ++i) {
            scene.pose(moments[i]);
            Picture picture = renderer.draw(scene.root);
            if (technique == Technique::plain)
                plain.push_back(picture);
            result.differences.push_back(measureDifference(picture, plain[i]));
            sink(technique, i, picture, plain[i]);
            for (int frame = 0; frame < timedFrames; ++frame)
                times.push_back(renderer.time(scene.root).count());
        }
        result.milliseconds = median(std::move(times));
    }
    return results;
}

} // namespace sgview
