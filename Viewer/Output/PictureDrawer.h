#pragma once

#include "Viewer/Platform/OffscreenRenderer.h"
#include "Viewer/Platform/Picture.h"
#include "Viewer/Scene/ModelScene.h"

#include <optional>

namespace sgview {

/// What a picture is to be like.
struct PictureKind {
    static constexpr int mostSupersample = 16;

    PictureSize size;
    int supersample = 1;      ///< pixels drawn along each side of one of the picture
    bool transparent = false; ///< where nothing is drawn, in place of a background

    constexpr bool operator==(PictureKind const&) const = default;
};

/// Draws pictures of a model. What OpenGL can draw at once, it does; larger pictures are put together from
/// tiles. Tiles differ from a drawing at once in single pixels at edges, where rounding decides; lines do a
/// little more, since a card may start each anew at a tile's edge.
class PictureDrawer {
public:
    /// \param module   where the renderer is, if not in the usual places
    /// \param largest  sides of what is drawn at once, pixels; what OpenGL draws at most where nothing is
    ///                 said
    /// \throws ContextError, SGModuleError
    PictureDrawer(PictureKind const& kind, std::optional<std::filesystem::path> const& module,
                  std::optional<int> largest = std::nullopt);

    [[nodiscard]] OffscreenRenderer& renderer() { return renderer_; }

    /// The scene as its camera sees it; what camera and background there are is as before afterwards. RGBA,
    /// colours not multiplied by the opacity.
    /// \throws OpenGLError
    [[nodiscard]] Picture draw(ModelScene& scene);

private:
    [[nodiscard]] Picture drawOn(ModelScene& scene, Color const& background);

    PictureKind kind_;
    PictureSize tile_; ///< what is drawn at once
    OffscreenRenderer renderer_;
};

} // namespace sgview
