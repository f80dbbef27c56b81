#pragma once

#include "Utilities/Prefs.h"
#include "Viewer/Window/PanelSection.h"

#include <memory>
#include <vector>

namespace sgview {

/// What stands at the window's right edge: sections, one below the other.
class Panel {
public:
    static constexpr float width = 340.0F; ///< points

    /// \param memory  where it is kept which sections a person has unfolded and folded
    explicit Panel(smart_ptr<Prefs> memory);

    /// Builds the panel with Dear ImGui.
    void build(Session& session);

private:
    [[nodiscard]] bool isOpenAtFirst(PanelSection const& section) const;
    void bringIntoView(PanelSection const& section);
    bool buildHeader(PanelSection const& section);

    smart_ptr<Prefs> memory_;
    std::vector<std::unique_ptr<PanelSection>> sections_;
    PanelSection const* wanted_ = nullptr; ///< that is to be brought into view
    int framesToBring_ = 0;
};

} // namespace sgview
