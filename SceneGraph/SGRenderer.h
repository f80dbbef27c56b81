#pragma once

#include "SceneGraph/SGRootNode.h"
#include "Utilities/smart_ptr.h"

#include <chrono>
#include <functional>
#include <span>
#include <string_view>

/// What a host asks of a renderer. Every operation needs the context current that the renderer was made in.
class SGRenderer : public smart_base {
public:
    /// How readPixels lays out a pixel, a byte a component.
    enum PixelFormat {
        ALPHA = 0,
        LUMINANCE = 1,
        LUMINANCE_ALPHA = 2,
        RGB = 3,
        RGBA = 4,
    };

    /// Draws one frame. Swapping buffers is the host's.
    /// \param root  not null
    virtual void render(smart_ptr<SGRootNode> root) = 0;

    /// How many texture layers a surface can show.
    [[nodiscard]] virtual int getMaxTextureUnits() const { return 0; }

    /// Reads a rectangle of the frame buffer, its top row first.
    ///
    /// Rows are put in order as rows of width * 4 bytes whatever the format, so only RGBA comes out right;
    /// and `data` holds width * height * 4 bytes.
    virtual void readPixels(int x, int y, int width, int height, PixelFormat format, unsigned char* data) = 0;

    /// Whether the graphics diagnostic must run before the stored verdict can be used.
    [[nodiscard]] virtual bool isDiagnosticNeeded() const { return false; }

    /// Draws from now on as the stored verdict says.
    virtual void readDiagnosticResults() {}

    /// Measures the graphics card, stores the verdict and draws as it says. Takes about a second, and needs a
    /// drawable of at least 512 by 512 pixels.
    virtual void runDiagnostic() {}

    /// Is shown every picture that the diagnostic reads back, in RGBA: 512 rows of 512 pixels, the bottom row
    /// first. What the picture is for, the log's lines around it tell. Must neither draw nor change what is
    /// drawn.
    std::function<void(std::span<unsigned char const>)> diagnosticImageSink;

    /// Is told after each pass of a frame which pass it was and how long it took. While it is set, every pass
    /// is waited for until the card has done with it, so that each bears its own cost. Must neither draw nor
    /// change the scene.
    std::function<void(std::string_view pass, std::chrono::nanoseconds time)> passTimeSink;
};
