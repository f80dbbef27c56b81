#include "Tests/Frame/Detour.h"
#include "Tests/Frame/DriverCheck.h"
#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/Technique.h"
#include "Tests/Frame/TechniqueScenes.h"

#include "OpenGLRenderer/Renderer.h"
#include "OpenGLRenderer/VertexProgramVisitor.h"
#include "SceneGraph/SGCombinationVisitor.h"
#include "SceneGraph/SGRendererManager.h"
#include "SceneGraph/SGTraverser.h"
#include "Utilities/Log.h"
#include "Viewer/Platform/HeadlessContext.h"
#include "Viewer/Platform/HostState.h"
#include "Viewer/Platform/OpenGLErrors.h"
#include "Viewer/Platform/TechniqueChoice.h"

#include <boost/core/demangle.hpp>

namespace {

using sgview::Technique;
using PassPtr = smart_ptr<SGNodeVisitor>;

/// Fails the test where OpenGL has an error to report after a pass has seen a node.
class ErrorCheck : public SGNodeVisitor {
public:
    explicit ErrorCheck(SGNodeVisitor const& pass) : pass_(boost::core::demangle(typeid(pass).name())) {}

    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGNode*) override { check("entering"); }
    void leave(SGNode*) override { check("leaving"); }

private:
    void check(char const* occasion) const
    {
        for (std::string const& error : sgview::takeOpenGLErrors())
            ADD_FAILURE() << pass_ << ", " << occasion << " a node: " << error;
    }

    std::string pass_;
};

/// A strategy's entry with each pass in it, however deep, exchanged for another.
PassPtr exchanged(PassPtr const& pass, PassPtr (*other)(PassPtr const&))
{
    if (auto const* const traverser = dynamic_cast<SGTraverser const*>(pass.get()))
        return make_smart<SGTraverser>(exchanged(traverser->getVisitor(), other));
    if (auto const* const combination = dynamic_cast<SGCombinationVisitor const*>(pass.get())) {
        std::vector<PassPtr> passes;
        for (PassPtr const& each : combination->getVisitors())
            passes.push_back(exchanged(each, other));
        return make_smart<SGCombinationVisitor>(passes);
    }
    return other(pass);
}

PassPtr withCheck(PassPtr const& pass)
{
    return make_smart<SGCombinationVisitor>(std::vector<PassPtr>{pass, make_smart<ErrorCheck>(*pass)});
}

/// Surfaces without bones through a program as well.
PassPtr withProgramForAll(PassPtr const& pass)
{
    return dynamic_cast<VertexProgramVisitor const*>(pass.get()) ? make_smart<VertexProgramVisitor>(true)
                                                                 : pass;
}

/// Without those that are unlit without bones, of which no program is told.
std::vector<TechniqueScene> litScenes()
{
    std::vector<TechniqueScene> scenes = techniqueScenes();
    std::erase_if(scenes, [](TechniqueScene const& scene) {
        return scene.name.starts_with("unlit") || scene.name == "noLights";
    });
    return scenes;
}

/// Counts the errors that anybody is told of: a pass that asks takes them away from those who ask later.
class ErrorCount {
public:
    ErrorCount() { current = this; }

    int errors = 0;

private:
    static GLenum tell()
    {
        GLenum const error = current->detour_.real()();
        current->errors += error != GL_NO_ERROR ? 1 : 0;
        return error;
    }

    static inline ErrorCount* current = nullptr;
    Detour<GLenum (*)()> detour_{"glGetError", epoxy_glGetError, &tell};
};

/// The renderer's own classes, without the module around them.
class PassFrame : public testing::TestWithParam<TechniqueScene> {
protected:
    PassFrame()
    {
        smart_ptr<GLRenderer> const renderer(new GLRenderer);
        SGRendererManager::setRenderer(renderer);
        static_cast<void>(sgview::takeOpenGLErrors());
    }
    ~PassFrame() override
    {
        SGRendererManager::setRenderer(nullptr);
        GLRenderer::renderer.reset();
    }

    static sgview::Picture draw(SGRootNode& root)
    {
        sgview::setHostState();
        GLRenderer::renderer->render(smart_ptr<SGRootNode>(&root));
        sgview::Picture picture({TechniqueStage::side, TechniqueStage::side});
        GLRenderer::renderer->readPixels(0, 0, TechniqueStage::side, TechniqueStage::side, SGRenderer::RGBA,
                                         picture.pixels.data());
        return picture;
    }

private:
    sgview::HeadlessContext context_{{TechniqueStage::side, TechniqueStage::side}};
};

TEST_P(PassFrame, NoPassLeavesAnError)
{
    std::string lacking;
    for (Technique const technique : sgview::allTechniques) {
        std::string const title(sgview::nameOf(technique));
        SCOPED_TRACE(title);
        if (std::string const extension = sgview::lackingFor(technique); !extension.empty()) {
            lacking += " " + title + ": " + extension + ".";
            continue;
        }
        ErrorCount const count;
        switchTo(technique);
        for (PassPtr& pass : GLRenderer::renderer->strategy)
            pass = exchanged(pass, withCheck);
        TechniqueStage stage;
        GetParam().fill(stage);
        static_cast<void>(draw(*stage.root));
        stage.advance();
        static_cast<void>(draw(*stage.root));
        EXPECT_EQ(count.errors, 0);
    }
    if (!lacking.empty())
        GTEST_SKIP() << "what the driver lacks for" << lacking;
}

/// Drawn by programs wherever there are triangles.
class ProgramForAll : public PassFrame {};

TEST_P(ProgramForAll, LooksLikePlain)
{
    if (std::string const extension = sgview::lackingFor(Technique::program); !extension.empty())
        GTEST_SKIP() << "the driver lacks " << extension;
    TechniqueStage plainStage;
    GetParam().fill(plainStage);
    switchTo(Technique::plain);
    sgview::Picture const plain = draw(*plainStage.root);

    TechniqueStage stage;
    GetParam().fill(stage);
    switchTo(Technique::program);
    for (PassPtr& pass : GLRenderer::renderer->strategy)
        pass = exchanged(pass, withProgramForAll);
    EXPECT_TRUE(differsLittle(draw(*stage.root), plain, plain.pixels.size() / 4 / 1000,
                              GetParam().name + "-program-for-all"));
    sgview::checkOpenGL("while drawing");
}

std::string nameOfScene(testing::TestParamInfo<TechniqueScene> const& scene)
{
    return scene.param.name;
}

INSTANTIATE_TEST_SUITE_P(Scenes, PassFrame, testing::ValuesIn(techniqueScenes()), nameOfScene);
INSTANTIATE_TEST_SUITE_P(Scenes, ProgramForAll, testing::ValuesIn(litScenes()), nameOfScene);

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    Log::getInstance().setEnabled("opengl", false);
    testing::AddGlobalTestEnvironment(new DriverCheck);
    return RUN_ALL_TESTS();
}
