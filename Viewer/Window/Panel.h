#pragma once

#include "Viewer/Window/PanelSection.h"

#include <memory>
#include <vector>

namespace sgview {

/// What stands at the window's right edge: sections, one below the other.
class Panel {
public:
    static constexpr float width = 340.0F; ///< points

    Panel();

    /// Builds the panel with Dear ImGui.
    void build(Session& session);

private:
    void bringIntoView(PanelSection const& section);

    std::vector<std::unique_ptr<PanelSection>> sections_;
    PanelSection const* wanted_ = nullptr; ///< that is to be brought into view
    int framesToBring_ = 0;
};

} // namespace sgview
