#include "Viewer/Window/TechniqueSwitch.h"

#include <algorithm>
#include <utility>

namespace sgview {

TechniqueSwitch::TechniqueSwitch(SGRenderer& renderer, ChosenTechnique first) : renderer_(renderer)
{
    for (Technique const technique : allTechniques)
        candidates_.push_back({technique, lackingFor(technique)});
    use(first.technique, std::move(first.reason));
}

void TechniqueSwitch::use(Technique technique, std::string reason)
{
    choose(renderer_, technique);
    current_ = technique;
    reason_ = std::move(reason);
}

void TechniqueSwitch::move(int steps, std::string reason)
{
    std::vector<Technique> usable;
    for (Candidate const& candidate : candidates_)
        if (candidate.lacking.empty())
            usable.push_back(candidate.technique);
    auto const count = static_cast<std::ptrdiff_t>(usable.size());
    std::ptrdiff_t const at = std::ranges::find(usable, current_) - usable.begin() + steps;
    use(usable[static_cast<std::size_t>((at % count + count) % count)], std::move(reason));
}

} // namespace sgview
