#pragma once

#include "Viewer/OffscreenRenderer.h"

#include <gtest/gtest.h>

#include <memory>

/// The real module in a headless context, loaded once for all frame tests of a program. OpenGL's errors are
/// asked for after every frame.
class FrameRenderer : public testing::Environment {
public:
    /// Of every picture drawn here, pixels a side.
    static constexpr int side = 256;

    void SetUp() override;
    void TearDown() override;

    [[nodiscard]] static sgview::Picture draw(smart_ptr<SGRootNode> const& root);

private:
    static std::unique_ptr<sgview::OffscreenRenderer> renderer;
};
