#pragma once

#include "Viewer/Window/PanelSection.h"

namespace sgview {

/// The lights that shine on the model, to change, add and take away. They stay with the viewer, not with the
/// model.
class LightSection : public PanelSection {
public:
    [[nodiscard]] char const* title() const override { return "Lights"; }
    [[nodiscard]] bool isOpenAtFirst() const override { return false; }
    void build(Session& session) override;
};

} // namespace sgview
