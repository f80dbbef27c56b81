#pragma once

#include "SceneGraph/SGRootNode.h"
#include "Viewer/HeadlessContext.h"
#include "Viewer/Picture.h"
#include "Viewer/RendererModule.h"

namespace sgview {

/// Draws scenes into pictures, without a screen. Release the scenes first.
class OffscreenRenderer {
public:
    /// \param module  where the renderer is, if not in the usual places
    /// \throws ContextError, ModuleError
    explicit OffscreenRenderer(PictureSize size,
                               std::optional<std::filesystem::path> const& module = std::nullopt)
        : context_(size), module_(module)
    {
    }

    /// One frame.
    /// \throws OpenGLError
    [[nodiscard]] Picture draw(smart_ptr<SGRootNode> const& root);

private:
    HeadlessContext context_;
    RendererModule module_;
};

} // namespace sgview
