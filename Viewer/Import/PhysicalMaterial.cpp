#include "Viewer/Import/PhysicalMaterial.h"

#include <algorithm>

namespace sgview {

namespace {

constexpr double largestShininess = 128.0;

/// Reflectance at normal incidence of what is no metal.
constexpr double dielectric = 0.04;

} // namespace

float fraction(double number)
{
    return number > 0.0 ? static_cast<float>(std::min(number, 1.0)) : 0.0F;
}

void setGlossy(ModelMaterial& material, Colour const& diffuse, Colour const& specular, double glossiness)
{
    double const gloss = fraction(glossiness);
    double const alpha = std::max((1.0 - gloss) * (1.0 - gloss), 1e-3);
    material.ambient = diffuse;
    material.diffuse = diffuse;
    // Fixed-function highlights are not normalised: without this a rough surface would shine all over.
    for (std::size_t i = 0; i < 3; ++i)
        material.specular[i] = fraction(static_cast<double>(specular[i]) * gloss);
    material.specular[3] = 1.0F;
    material.shininess = static_cast<float>(std::clamp(2.0 / (alpha * alpha) - 2.0, 0.0, largestShininess));
}

void setMetallic(ModelMaterial& material, Colour const& base, double metallic, double roughness)
{
    double const metal = fraction(metallic);
    Colour specular{};
    for (std::size_t i = 0; i < 3; ++i)
        specular[i] = fraction(dielectric + (static_cast<double>(base[i]) - dielectric) * metal);
    setGlossy(material, base, specular, 1.0 - fraction(roughness));
}

} // namespace sgview
