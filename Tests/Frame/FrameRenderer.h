#pragma once

#include "Viewer/Platform/OffscreenRenderer.h"

#include <gtest/gtest.h>

#include <memory>

/// The real module in a headless context, loaded once for all frame tests of a program. OpenGL's errors are
/// asked for after every frame.
class FrameRenderer : public testing::Environment {
public:
    /// Of every picture of an ordinary size, pixels a side.
    static constexpr int side = 256;

    explicit FrameRenderer(int pixelsASide = side) : side_(pixelsASide) {}

    void SetUp() override;
    void TearDown() override;

    [[nodiscard]] static sgview::Picture draw(smart_ptr<SGRootNode> const& root);

private:
    static std::unique_ptr<sgview::OffscreenRenderer> renderer;

    int side_;
};
