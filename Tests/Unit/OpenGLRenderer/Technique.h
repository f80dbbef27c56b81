#pragma once

#include "OpenGLRenderer/Strategist.h"
#include "Tests/Unit/OpenGLRenderer/AssetFolder.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

#include <ostream>

namespace RendererTesting {

/// One of the six ways in which a scene can be drawn.
struct Technique {
    char const* name;
    Capabilities caps;

    [[nodiscard]] bool skinsOnTheCard() const { return caps.vertexProgram || caps.vertexShader; }
};

inline std::ostream& operator<<(std::ostream& stream, Technique const& technique)
{
    return stream << technique.name;
}

inline Technique const techniques[]{{"plain", {false, false, false}},  {"vbo", {true, false, false}},
                                    {"program", {false, true, false}}, {"programVbo", {true, true, false}},
                                    {"shader", {false, false, true}},  {"shaderVbo", {true, false, true}}};

/// Draws by one technique, with made-up program texts.
class TechniqueTest : public RendererTest, public testing::WithParamInterface<Technique> {
protected:
    TechniqueTest()
    {
        assets.write("Shaders/defaultVertexProgram.txt", "default");
        assets.write("Shaders/animationVertexProgram.txt", "animation");
        assets.write("Shaders/animationVertexShader.txt", "shader");
    }

    /// Has the renderer draw by this technique from now on.
    static void choose(Technique const& technique)
    {
        GLRenderer::renderer->strategy = Strategist::computeStrategy(technique.caps);
    }

    Calls render(smart_ptr<SGRootNode> const& root)
    {
        LogCapture const quiet;
        static_cast<void>(gl.takeCalls());
        GLRenderer::renderer->render(root);
        return gl.takeCalls();
    }

    AssetFolder assets;
};

inline std::string nameOf(testing::TestParamInfo<Technique> const& info)
{
    return info.param.name;
}

} // namespace RendererTesting
