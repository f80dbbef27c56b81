#pragma once

#include "Viewer/Platform/GraphicsLimits.h"
#include "Viewer/Platform/Technique.h"

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

namespace sgview {

/// What `sgview info --gpu` says.
struct GraphicsSummary {
    GraphicsReport card;
    std::vector<std::pair<std::string, std::string>> verdict; ///< as stored, key and value
    bool verdictHolds = false;                                ///< for the card in use
    Technique technique = Technique::plain; ///< that sgview draws by where none is asked for
};

/// For people, and as one JSON object.
void writeText(std::ostream& stream, GraphicsSummary const& summary);
void writeJson(std::ostream& stream, GraphicsSummary const& summary);

} // namespace sgview
