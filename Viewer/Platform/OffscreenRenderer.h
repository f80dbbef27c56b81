#pragma once

#include "SceneGraph/SGRendererModule.h"
#include "SceneGraph/SGRootNode.h"
#include "Viewer/Platform/HeadlessContext.h"
#include "Viewer/Platform/Picture.h"
#include "Viewer/Platform/TechniqueChoice.h"

#include <chrono>
#include <optional>
#include <string>

namespace sgview {

/// Draws scenes into pictures, without a screen. Release the scenes first.
class OffscreenRenderer {
public:
    /// \param module  where the renderer is, if not in the usual places
    /// \throws ContextError, SGModuleError
    explicit OffscreenRenderer(PictureSize size,
                               std::optional<std::filesystem::path> const& module = std::nullopt)
        : context_(size), module_(module)
    {
    }

    /// Draws by a technique from now on.
    /// \throws TechniqueError
    void use(Technique technique) { choose(module_.renderer(), technique); }

    /// What the renderer says of the card and of the user's stored verdict.
    [[nodiscard]] SGRenderer const& engine() const { return module_.renderer(); }
    [[nodiscard]] SGRenderer& engine() { return module_.renderer(); }

    /// When the context was there, and the module not yet.
    [[nodiscard]] std::chrono::steady_clock::time_point contextReady() const { return contextReady_; }

    /// What draws, in OpenGL's words: "llvmpipe (LLVM 15.0.6, 256 bits)".
    [[nodiscard]] static std::string driver();

    /// One frame.
    /// \throws OpenGLError
    [[nodiscard]] Picture draw(smart_ptr<SGRootNode> const& root);

    /// How long one frame takes until OpenGL is done with it.
    /// \throws OpenGLError
    [[nodiscard]] std::chrono::duration<double, std::milli> time(smart_ptr<SGRootNode> const& root);

private:
    void drawFrame(smart_ptr<SGRootNode> const& root);

    HeadlessContext context_;
    std::chrono::steady_clock::time_point contextReady_ = std::chrono::steady_clock::now();
    SGRendererModule module_;
};

} // namespace sgview
