#include "Viewer/Diagnosis/MeasuringContext.h"

#include "Viewer/Platform/TechniqueChoice.h"

#include <functional>

namespace sgview {

namespace {

constexpr PictureSize drawable{512, 512};

using Context = std::unique_ptr<HeadlessContext>;

/// \return nothing where it is another card's, or none: then `obstacles` tells
Context attempt(std::string const& card, std::string const& way, std::function<Context()> const& open,
                std::string& obstacles)
{
    std::string obstacle;
    try {
        Context context = open();
        std::string const found = cardInUse();
        if (found == card)
            return context;
        obstacle = "the card is '" + found + "'";
    } catch (ContextError const& error) {
        obstacle = error.what();
    }
    obstacles += (obstacles.empty() ? "" : "; ") + way + ": " + obstacle;
    return nullptr;
}

} // namespace

std::unique_ptr<HeadlessContext> openContextOf(MeasuredCard const& card)
{
    std::string const& driver = card.videoDriver;
    std::string obstacles;
    Context context = attempt(
        card.name, "without a screen", [] { return std::make_unique<HeadlessContext>(drawable); }, obstacles);
    if (!context && !driver.empty() && driver != "offscreen")
        context = attempt(
            card.name, "in a hidden window (" + driver + ")",
            [&] { return std::make_unique<HeadlessContext>(drawable, driver); }, obstacles);
    if (!context)
        throw ContextError("'" + card.name + "' cannot be measured; " + obstacles);
    return context;
}

} // namespace sgview
