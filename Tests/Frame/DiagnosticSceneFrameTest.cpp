#include "Tests/Frame/DiagnosticRecord.h"

#include "OpenGLRenderer/Renderer.h"
#include "SceneGraph/SGRendererManager.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "SceneGraph/SGTraverser.h"
#include "Utilities/MemoryPrefs.h"
#include "Viewer/Platform/HeadlessContext.h"
#include "Viewer/Platform/OpenGLErrors.h"

#include <boost/core/demangle.hpp>
#include <gtest/gtest.h>

namespace {

/// Watches the objects of a scene without keeping them.
class Watch : public SGNodeVisitor {
public:
    explicit Watch(std::vector<weak_ptr<SGObject>>& objects) : objects_(objects) {}

    using SGNodeVisitor::enter;
    void enter(SGNode* node) override { add(smart_ptr<SGObject>(node)); }
    void enter(SGSurfaceGeometryReferenceNode* node) override
    {
        add(node->getGeometry());
        add(node->getNormals());
        add(node->getFacets());
        add(node->getBoneWeights());
        if (node->getBoneTransforms())
            add(node->getBoneTransforms());
        SGNodeVisitor::enter(node);
    }

private:
    void add(smart_ptr<SGObject> const& object) { objects_.emplace_back(object); }

    std::vector<weak_ptr<SGObject>>& objects_;
};

/// Asks OpenGL for errors after a pass.
class ErrorCheck : public SGNodeVisitor {
public:
    explicit ErrorCheck(smart_ptr<SGNodeVisitor> pass) : pass_(std::move(pass)) {}

    using SGNodeVisitor::leave;
    void leave(SGRootNode*) override
    {
        for (std::string const& error : sgview::takeOpenGLErrors())
            ADD_FAILURE() << boost::core::demangle(typeid(*pass_).name()) << ": " << error;
    }

private:
    smart_ptr<SGNodeVisitor> pass_;
};

/// A renderer that looks closely at every frame it draws.
class WatchingRenderer : public GLRenderer {
public:
    void render(smart_ptr<SGRootNode> root) override
    {
        SGTraverser watch(make_smart<Watch>(objects));
        root->acceptEnter(&watch);
        root->acceptLeave(&watch);
        auto const passes = strategy;
        strategy.clear();
        for (smart_ptr<SGNodeVisitor> const& pass : passes)
            strategy.insert(strategy.end(), {pass, make_smart<ErrorCheck>(pass)});
        GLRenderer::render(root);
        strategy = passes;
        ++frames;
    }

    std::vector<weak_ptr<SGObject>> objects; ///< of all frames
    int frames = 0;
};

} // namespace

TEST(DiagnosticScene, IsGoneAfterTheRunAndLeftNoErrors)
{
    PrefsFactory::setMaker([] { return make_smart<MemoryPrefs>(); });
    LogRecord log;
    sgview::HeadlessContext const context({512, 512});
    auto const renderer = make_smart<WatchingRenderer>();
    SGRendererManager::setRenderer(renderer);
    DiagnosticRecord const run = runScriptedDiagnostic(log);
    SGRendererManager::setRenderer(nullptr);
    GLRenderer::renderer.reset();

    // Five for each measurement, and two for the bent pictures.
    EXPECT_EQ(renderer->frames, 5 * static_cast<int>(scriptedRates.size()) + 2);
    EXPECT_EQ(run.images.size(), 4U);
    EXPECT_TRUE(run.log.empty()) << "a pass found an error: " << run.log.front();
    int alive = 0;
    for (weak_ptr<SGObject> const& object : renderer->objects)
        alive += object.expired() ? 0 : 1;
    EXPECT_EQ(alive, 0) << "of " << renderer->objects.size();
    EXPECT_GT(renderer->objects.size(), 500U) << "seen again each frame";
}
