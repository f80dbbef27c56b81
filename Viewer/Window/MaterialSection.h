#pragma once

#include "Viewer/Import/Model.h"
#include "Viewer/Window/PanelSection.h"

#include <cstddef>
#include <string>
#include <vector>

namespace sgview {

/// The textures of a model's material, a line each.
[[nodiscard]] std::vector<std::string> texturesInWords(Model const& model, std::size_t material);

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
