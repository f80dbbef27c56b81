#include "Viewer/Output/PictureDrawer.h"

#include "Viewer/Output/PictureResolver.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>

namespace sgview {

namespace {

/// SDL makes no larger windows.
constexpr int largestWindow = 16384;

PictureSize largestViewport()
{
    std::array<GLint, 2> largest{};
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, largest.data());
    return {largest[0], largest[1]};
}

/// What OpenGL draws at once, pixels a side. A small drawable need not be asked about.
int largestDrawable(PictureSize wanted)
{
    constexpr int small = 1024;
    if (std::max(wanted.width, wanted.height) <= small)
        return small;
    HeadlessContext const probe({8, 8});
    PictureSize const viewport = largestViewport();
    return std::min({viewport.width, viewport.height, largestWindow});
}

/// Of equal parts of a side, a multiple of the pixels that make one.
int partOf(int side, int supersample, int largest)
{
    int const most = std::max(1, largest / supersample);
    int const parts = (side + most - 1) / most;
    return (side + parts - 1) / parts * supersample;
}

PictureSize tileFor(PictureKind const& kind, std::optional<int> asked)
{
    PictureSize const whole{kind.size.width * kind.supersample, kind.size.height * kind.supersample};
    int const largest = asked ? *asked : largestDrawable(whole);
    return {partOf(kind.size.width, kind.supersample, largest),
            partOf(kind.size.height, kind.supersample, largest)};
}

/// A camera for a part of what another sees.
/// \param tile  pixels from the lower left corner of the whole
smart_ptr<CameraBase> cameraForTile(CameraBase const& whole, PictureSize size, quarl::Rect<int> const& tile)
{
    auto camera = make_smart<CameraBase>(whole);
    PictureSize const largest = largestViewport();
    if (size.width <= largest.width && size.height <= largest.height) {
        // A window onto the whole: coordinates are the same but for the offset and its rounding.
        camera->viewport = {-tile.x, -tile.y, size.width, size.height};
        return camera;
    }
    Matrix crop;
    crop(0, 0) = double(size.width) / tile.width;
    crop(1, 1) = double(size.height) / tile.height;
    crop(0, 3) = crop(0, 0) * (1.0 - (2.0 * tile.x + tile.width) / size.width);
    crop(1, 3) = crop(1, 1) * (1.0 - (2.0 * tile.y + tile.height) / size.height);
    camera->projection = crop * whole.projection;
    camera->viewport = {0, 0, tile.width, tile.height};
    return camera;
}

/// Puts a scene's camera and background back.
class SceneKeeper {
public:
    explicit SceneKeeper(ModelScene& scene)
        : scene_(scene), camera_(scene.cameraNode()->camera), background_(scene.root()->color)
    {
    }
    SceneKeeper(SceneKeeper const&) = delete;
    SceneKeeper& operator=(SceneKeeper const&) = delete;
    ~SceneKeeper()
    {
        scene_.cameraNode()->camera = camera_;
        scene_.root()->color = background_;
    }

    [[nodiscard]] CameraBase const& camera() const { return *camera_; }
    [[nodiscard]] Color const& background() const { return background_; }

private:
    ModelScene& scene_;
    smart_ptr<CameraBase> camera_;
    Color background_;
};

} // namespace

PictureDrawer::PictureDrawer(PictureKind const& kind, std::optional<std::filesystem::path> const& module,
                             std::optional<int> largest)
    : kind_(kind), tile_(tileFor(kind, largest)), renderer_(tile_, module)
{
}

Picture PictureDrawer::drawOn(ModelScene& scene, Color const& background)
{
    scene.root()->color = background;
    return renderer_.draw(scene.root());
}

Picture PictureDrawer::draw(ModelScene& scene)
{
    SceneKeeper const keeper(scene);
    int const supersample = kind_.supersample;
    PictureSize const whole{kind_.size.width * supersample, kind_.size.height * supersample};
    Picture picture(kind_.size);
    PictureResolver resolver(picture, supersample);
    for (int top = 0; top < whole.height; top += tile_.height)
        for (int left = 0; left < whole.width; left += tile_.width) {
            quarl::Rect<int> const tile{left, whole.height - top - tile_.height, tile_.width, tile_.height};
            scene.cameraNode()->camera = cameraForTile(keeper.camera(), whole, tile);
            PictureResolver::Corner const corner{left / supersample, top / supersample};
            if (kind_.transparent)
                resolver.addTransparent(corner, drawOn(scene, {0.0F, 0.0F, 0.0F, 1.0F}),
                                        drawOn(scene, {1.0F, 1.0F, 1.0F, 1.0F}));
            else
                resolver.addOpaque(corner, drawOn(scene, keeper.background()));
        }
    return picture;
}

} // namespace sgview
