#include "OpenGLRenderer/ColorizedTextureInfo.h"

#include <limits>

namespace {

std::uint32_t packed(Color const& color)
{
    auto const bits = [](float component) { return static_cast<std::uint32_t>(scaledComponent(component)); };
    return bits(color.a) << 24U | bits(color.r) << 16U | bits(color.g) << 8U | bits(color.b);
}

} // namespace

std::int32_t scaledComponent(float component)
{
    constexpr float limit = 2147483648.0F; // the first float beyond
    float const scaled = 255.0F * component;
    if (scaled > -limit && scaled < limit)
        return static_cast<std::int32_t>(scaled);
    return std::numeric_limits<std::int32_t>::min();
}

std::size_t std::hash<ColorizedTextureInfo>::operator()(ColorizedTextureInfo const& info) const noexcept
{
    auto const address = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(info.texture.get()));
    return packed(info.colorA) + address + 3U * packed(info.colorB);
}
