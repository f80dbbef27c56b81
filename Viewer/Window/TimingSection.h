#pragma once

#include "Viewer/Window/PanelSection.h"

namespace sgview {

/// How long frames and their passes take.
class TimingSection : public PanelSection {
public:
    [[nodiscard]] char const* title() const override { return "Timing"; }
    void build(Session& session) override;
};

} // namespace sgview
