#pragma once

#include "Viewer/Window/PanelSection.h"

namespace sgview {

/// What is switched on in the view: ways of drawing, overlays, background, the bone of the influence map.
class DisplaySection : public PanelSection {
public:
    [[nodiscard]] char const* title() const override { return "View"; }
    void build(Session& session) override;
};

} // namespace sgview
