#pragma once

#include "SceneGraph/SGRenderer.h"
#include "Utilities/smart_ptr.h"

/// Where a renderer module registers its renderer and a host finds it.
class SGRendererManager {
public:
    /// Null takes the registered renderer away.
    static void setRenderer(smart_ptr<SGRenderer> renderer);

    /// The registered renderer, or null.
    [[nodiscard]] static smart_ptr<SGRenderer> const& getRenderer();

    /// Set by the host once the context is gone: records that own OpenGL names then drop them without a call.
    static bool shutdown;

private:
    static smart_ptr<SGRenderer> renderer;
};
