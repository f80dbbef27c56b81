#pragma once

#include "Viewer/Platform/HeadlessContext.h"

#include <memory>
#include <string>

namespace sgview {

/// What a run of the graphics diagnostic is to measure: the card that the program draws by.
struct MeasuredCard {
    std::string name;        ///< vendor / renderer / version
    std::string videoDriver; ///< SDL's, by which the program came to it
};

/// A context of the card for the diagnostic to draw in: without a screen, or else, since a system may give
/// windows to another card, in a window of the program's video driver that nobody sees.
/// \throws ContextError  every context is another card's, or cannot be read back; tells which
[[nodiscard]] std::unique_ptr<HeadlessContext> openContextOf(MeasuredCard const& card);

} // namespace sgview
