#pragma once

#include "Utilities/Material.h"
#include "Viewer/Import/Model.h"

#include <vector>

namespace sgview {

/// How what is made of a material looks.
struct MaterialLook {
    Material material;
    bool blending = false;
    bool unlit = false;

    bool operator==(MaterialLook const& other) const = default;
};

/// A model's materials as a person has changed them.
class MaterialEdits {
public:
    explicit MaterialEdits(Model const& model);

    [[nodiscard]] std::size_t size() const { return looks_.size(); }
    [[nodiscard]] MaterialLook const& look(std::size_t material) const { return looks_[material]; }
    void edit(std::size_t material, MaterialLook const& look);

    /// As the file has it.
    void reset(std::size_t material) { edit(material, original_[material]); }
    [[nodiscard]] bool isChanged(std::size_t material) const;

    /// Grows with every edit.
    [[nodiscard]] int version() const { return version_; }

private:
    std::vector<MaterialLook> original_;
    std::vector<MaterialLook> looks_;
    int version_ = 0;
};

} // namespace sgview
