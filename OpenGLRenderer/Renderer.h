#pragma once

#include "OpenGLRenderer/SceneSurvey.h"
#include "SceneGraph/SGNodeVisitor.h"
#include "SceneGraph/SGRenderer.h"

#include <epoxy/gl.h>

#include <string_view>
#include <vector>

class PassRunner;

/// Draws a scene graph with OpenGL: shows the root to every pass of its strategy, in order, once a frame.
///
/// Every operation needs the context current that the renderer was made in. OpenGL's failures are logged and
/// drawing goes on.
class GLRenderer : public SGRenderer {
public:
    /// Becomes `renderer`, logs what the OpenGL in use says of itself and settles the number of texture
    /// units.
    GLRenderer();

    /// Draws one frame: clears and draws, but does not swap buffers. Without a strategy it takes the one that
    /// is right on every card.
    void render(smart_ptr<SGRootNode> root) override;

    /// 1 on Matrox cards and where there is no multitexturing.
    [[nodiscard]] int getMaxTextureUnits() const final { return maxTextureUnits; }

    void readPixels(int x, int y, int width, int height, PixelFormat format, unsigned char* data) override;

    [[nodiscard]] bool isDiagnosticNeeded() const override;
    void readDiagnosticResults() override;
    void runDiagnostic() override;

    [[nodiscard]] static GLenum getGLFormat(PixelFormat format);

    /// Takes one error from OpenGL, if there is one, and logs it with the place where it was found.
    static void logError(std::string_view where);

    std::vector<smart_ptr<SGNodeVisitor>> strategy; ///< the passes; empty until the first frame

    /// The process's one renderer, from its construction on.
    static smart_ptr<GLRenderer> renderer;

private:
    void runStrategy(PassRunner& runner);

    int maxTextureUnits = 0;
    SceneSurvey survey; ///< its memory is kept from frame to frame
};
