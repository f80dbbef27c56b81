#pragma once

#include "Viewer/Window/PanelSection.h"

#include <cstddef>

namespace sgview {

/// The model's materials, to look at and to change.
class MaterialSection : public PanelSection {
public:
    [[nodiscard]] char const* title() const override { return "Materials"; }
    [[nodiscard]] bool isOpenAtFirst() const override { return false; }
    void build(Session& session) override;

private:
    std::size_t chosen_ = 0;
};

} // namespace sgview
