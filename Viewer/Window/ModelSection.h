#pragma once

#include "Viewer/Window/PanelSection.h"

namespace sgview {

/// What is in the model: its counts.
class ModelSection : public PanelSection {
public:
    [[nodiscard]] char const* title() const override { return "Model"; }
    void build(Session& session) override;
};

} // namespace sgview
