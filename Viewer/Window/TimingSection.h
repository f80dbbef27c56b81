#pragma once

#include "Viewer/Window/PanelSection.h"

namespace sgview {

/// How long frames and their passes take.
class TimingSection : public PanelSection {
public:
    [[nodiscard]] char const* title() const override { return "Timing"; }
    [[nodiscard]] bool isOpenAtFirst() const override { return false; }
    void build(Session& session) override;
};

} // namespace sgview
