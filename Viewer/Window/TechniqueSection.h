#pragma once

#include "Viewer/Window/PanelSection.h"

namespace sgview {

/// Which technique draws, why, and which others could.
class TechniqueSection : public PanelSection {
public:
    [[nodiscard]] char const* title() const override { return "Technique"; }
    void build(Session& session) override;
};

} // namespace sgview
