#include "Viewer/Import/PictureReader.h"

#include "Viewer/Import/FileNames.h"
#include "Viewer/Import/PictureHeader.h"
#include "Viewer/Import/PictureScaler.h"

#include <SDL2/SDL.h>
#include <SDL2/SDL_image.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <memory>

namespace sgview {

namespace {

constexpr std::int64_t largestPictureSide = 16384;
constexpr std::int64_t largestPicture = std::int64_t{256} << 20;
constexpr int bytesPerPixel = 4;

struct FreeSurface {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
using Surface = std::unique_ptr<SDL_Surface, FreeSurface>;

void checkSize(std::int64_t width, std::int64_t height)
{
    if (width <= 0 || height <= 0)
        throw PictureError("the picture's size cannot be read");
    if (width > largestPictureSide || height > largestPictureSide ||
        width * height * bytesPerPixel > largestPicture)
        throw PictureError("the picture is too big: " + std::to_string(width) + " by " +
                           std::to_string(height) + " pixels");
}

Pixels copyOf(SDL_Surface const& surface)
{
    Pixels pixels{surface.w, surface.h, {}};
    std::size_t const rowBytes = static_cast<std::size_t>(surface.w) * bytesPerPixel;
    pixels.rgba.resize(rowBytes * static_cast<std::size_t>(surface.h));
    auto const* row = static_cast<std::uint8_t const*>(surface.pixels);
    for (int y = 0; y < surface.h; ++y, row += surface.pitch)
        std::memcpy(pixels.rgba.data() + static_cast<std::size_t>(y) * rowBytes, row, rowBytes);
    return pixels;
}

std::int32_t nearestPowerOfTwo(std::int32_t side, std::int32_t largest)
{
    auto const below = std::bit_floor(static_cast<std::uint32_t>(side));
    auto const value = static_cast<std::uint32_t>(side);
    std::uint32_t const nearest = value - below < 2 * below - value ? below : 2 * below;
    return static_cast<std::int32_t>(std::min(nearest, static_cast<std::uint32_t>(largest)));
}

bool needsAlpha(Pixels const& pixels)
{
    bool anyOpen = false;
    bool anyVisible = false;
    for (std::size_t i = 3; i < pixels.rgba.size(); i += bytesPerPixel) {
        anyOpen = anyOpen || pixels.rgba[i] != 255;
        anyVisible = anyVisible || pixels.rgba[i] != 0;
    }
    return anyOpen && anyVisible;
}

void makeOpaque(Pixels& pixels)
{
    for (std::size_t i = 3; i < pixels.rgba.size(); i += bytesPerPixel)
        pixels.rgba[i] = 255;
}

} // namespace

Pixels decodePicture(std::span<std::uint8_t const> content, std::string_view name)
{
    if (content.empty())
        throw PictureError("the picture is empty");
    std::optional<PictureHeader> const header = readPictureHeader(content, extensionOf(name));
    if (!header || *header->type == '\0')
        throw PictureError("a picture format that is not read");
    checkSize(header->width, header->height);
    if (content.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw PictureError("the picture's file is too big");

    SDL_RWops* const stream = SDL_RWFromConstMem(content.data(), static_cast<int>(content.size()));
    if (stream == nullptr)
        throw PictureError(SDL_GetError());
    Surface decoded(IMG_LoadTyped_RW(stream, 1, header->type));
    if (!decoded)
        throw PictureError(SDL_GetError());
    checkSize(decoded->w, decoded->h);
    Surface const converted(SDL_ConvertSurfaceFormat(decoded.get(), SDL_PIXELFORMAT_RGBA32, 0));
    if (!converted)
        throw PictureError(SDL_GetError());
    decoded.reset();
    return copyOf(*converted);
}

ModelImage makeTexture(std::string name, Pixels pixels, FirstRow firstRow, std::int32_t largestSide)
{
    if (pixels.width <= 0 || pixels.height <= 0 ||
        pixels.rgba.size() !=
            static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(pixels.height) * bytesPerPixel)
        throw PictureError("the picture has no pixels");

    ModelImage image;
    image.name = std::move(name);
    image.alpha = needsAlpha(pixels);
    if (!image.alpha)
        makeOpaque(pixels);
    image.width = nearestPowerOfTwo(pixels.width, largestSide);
    image.height = nearestPowerOfTwo(pixels.height, largestSide);
    if (image.width != pixels.width || image.height != pixels.height)
        pixels = resampled(pixels, image.width, image.height);

    std::size_t const components = image.alpha ? 4 : 3;
    auto const width = static_cast<std::size_t>(image.width);
    auto const height = static_cast<std::size_t>(image.height);
    std::size_t const rowBytes = (width * components + 3) / 4 * 4;
    image.rows.resize(rowBytes * height);
    for (std::size_t y = 0; y < height; ++y) {
        std::size_t const source = firstRow == FirstRow::top ? y : height - 1 - y;
        for (std::size_t x = 0; x < width; ++x)
            std::memcpy(image.rows.data() + y * rowBytes + x * components,
                        pixels.rgba.data() + (source * width + x) * bytesPerPixel, components);
    }
    return image;
}

} // namespace sgview
