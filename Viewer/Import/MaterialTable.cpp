#include "Viewer/Import/MaterialTable.h"

#include "Viewer/Import/ModelCheck.h"

#include <algorithm>
#include <cmath>

namespace sgview {

namespace {

constexpr Colour white{1.0F, 1.0F, 1.0F, 1.0F};

CoordinateSet mapped(CoordinateSet const& set, std::array<double, 6> const& map)
{
    CoordinateSet result;
    result.reserve(set.size());
    for (auto const& [u, v] : set)
        result.push_back({map[0] * u + map[1] * v + map[2], map[3] * u + map[4] * v + map[5]});
    return result;
}

bool isNear(Colour const& a, Colour const& b)
{
    constexpr float oneStep = 1.0F / 255.0F;
    return std::ranges::equal(a, b, [](float x, float y) { return std::abs(x - y) <= oneStep; });
}

void multiply(Colour& colour, Colour const& factor)
{
    for (std::size_t i = 0; i < colour.size(); ++i)
        colour[i] *= factor[i];
}

} // namespace

std::size_t MaterialTable::add(MaterialPlan plan)
{
    plans_.push_back(std::move(plan));
    return plans_.size() - 1;
}

std::optional<Colour> MaterialTable::commonColour(std::vector<Colour> const& colours, bool blending,
                                                  std::string const& owner)
{
    if (colours.empty())
        return {};
    auto const counting = [blending](Colour colour) {
        colour[3] = blending ? colour[3] : 1.0F;
        return colour;
    };
    Colour common = colours.front();
    if (!std::ranges::all_of(
            colours, [&](Colour const& colour) { return isNear(counting(colour), counting(common)); })) {
        warnings_->add("'" + owner + "': vertex colours that differ are not drawn");
        return {};
    }
    for (float& c : common)
        c = c >= 0.0F ? std::min(c, 1.0F) : 0.0F;
    // Invisible everywhere: what importers leave where a file has a place for colours and none in it.
    if (common == Colour{} || (blending && common[3] == 0.0F))
        return {};
    common = counting(common);
    if (isNear(common, white))
        return {};
    return common;
}

void MaterialTable::dress(ModelSurface& surface, std::size_t plan, std::vector<CoordinateSet> const& sets,
                          std::vector<Colour> const& colours)
{
    MaterialPlan const& wanted = plans_[plan];
    std::size_t const most = surface.skin == none ? mostLayers : mostLayersOfSkinned;
    std::vector<std::size_t> layers;
    for (std::size_t layer = 0; layer < wanted.sources.size(); ++layer) {
        CoordinateSource const& source = wanted.sources[layer];
        auto const set = static_cast<std::size_t>(source.set);
        if (source.set < 0 || set >= sets.size() || sets[set].empty()) {
            warnings_->add("surface '" + surface.name + "': no coordinates for a texture of material '" +
                           wanted.material.name + "'");
        } else if (layers.size() == most) {
            warnings_->add("surface '" + surface.name + "': texture layers beyond " + std::to_string(most) +
                           " are left out");
        } else {
            layers.push_back(layer);
            surface.coordinates.push_back(mapped(sets[set], source.map));
        }
    }
    surface.material = variant(plan, layers, commonColour(colours, wanted.material.blending, surface.name));
}

Index MaterialTable::ofCurve(std::size_t plan, std::vector<Colour> const& colours)
{
    ModelMaterial const& material = plans_[plan].material;
    return variant(plan, {}, commonColour(colours, material.blending, material.name));
}

Index MaterialTable::variant(std::size_t plan, std::vector<std::size_t> const& layers,
                             std::optional<Colour> const& colour)
{
    auto const [entry, isNew] =
        variants_.try_emplace(Key{plan, layers, colour}, static_cast<Index>(materials_.size()));
    if (!isNew)
        return entry->second;
    ModelMaterial material = plans_[plan].material;
    material.textures.clear();
    for (std::size_t const layer : layers) {
        ModelTexture texture = plans_[plan].material.textures[layer];
        texture.coordinates = static_cast<Index>(material.textures.size());
        material.textures.push_back(texture);
    }
    if (colour) {
        multiply(material.ambient, *colour);
        multiply(material.diffuse, *colour);
    }
    materials_.push_back(std::move(material));
    return entry->second;
}

} // namespace sgview
