#include "Viewer/Overlay/MaterialEdits.h"

#include "Viewer/Scene/ModelResources.h"

namespace sgview {

MaterialEdits::MaterialEdits(Model const& model)
{
    for (ModelMaterial const& material : model.materials)
        original_.push_back({makeMaterial(material), material.blending, material.unlit});
    looks_ = original_;
}

void MaterialEdits::edit(std::size_t material, MaterialLook const& look)
{
    looks_[material] = look;
    ++version_;
}

bool MaterialEdits::isChanged(std::size_t material) const
{
    return !(looks_[material] == original_[material]);
}

} // namespace sgview
