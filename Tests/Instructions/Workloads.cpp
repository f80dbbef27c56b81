// Runs each workload, and has callgrind write down what it took. Under valgrind with --instr-atstart=no.

#include "OpenGLRenderer/Renderer.h"
#include "OpenGLRenderer/Strategist.h"
#include "SceneGraph/SGTransformNode.h"
#include "SceneGraph/SGTraverser.h"
#include "Utilities/Log.h"
#include "Viewer/Bench/BenchSceneKind.h"

#include <valgrind/callgrind.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>

namespace {

using namespace sgview;

void count(std::string const& name, std::function<void()> const& work)
{
    CALLGRIND_START_INSTRUMENTATION;
    work();
    CALLGRIND_STOP_INSTRUMENTATION;
    CALLGRIND_DUMP_STATS_AT(name.c_str());
}

/// The second frame after everything has been made, by one technique.
void countFrame(std::string const& name, BenchSceneKind kind, int things, Capabilities const& technique)
{
    constexpr int side = 512;
    constexpr int framesBefore = 20; // more than the engine keeps what it derived and no longer uses
    smart_ptr<GLRenderer> const renderer(new GLRenderer);
    renderer->strategy = Strategist::computeStrategy(technique);
    auto const scene = makeBenchScene(kind, things, true);
    scene->setView(side, side);
    for (int frame = 0; frame < framesBefore; ++frame) {
        scene->prepare(frame);
        renderer->render(scene->root());
    }
    scene->prepare(framesBefore);
    count(name, [&] { renderer->render(scene->root()); });
    SGObject::removeExtraDataEverywhere("GL");
    GLRenderer::renderer.reset();
}

void countFrames(std::string const& name, BenchSceneKind kind, int things)
{
    countFrame(name + ", plain", kind, things, {});
    countFrame(name + ", vbo", kind, things, {.vbo = true});
}

class Record : public SGExtraData {};

void countExtraDataLookups()
{
    constexpr int lookups = 10'000;
    SGExtraDataKey const wanted("GLfloats");
    auto const node = make_smart<SGTransformNode>(nullptr);
    for (char const* const key : {"GLNoVBO", "GLUnanimatedData", "GLfloats", "GLVBO"})
        node->setExtraData(SGExtraDataKey(key), make_smart<Record>());
    int found = 0;
    count("extra-data lookup", [&] {
        for (int i = 0; i < lookups; ++i)
            found += node->findExtraData(wanted) ? 1 : 0;
    });
    if (found != lookups)
        std::abort();
}

void countEmptyWalk()
{
    auto const scene = makeBenchScene(BenchSceneKind::many, 5'000, false);
    SGTraverser traverser(make_smart<SGNodeVisitor>());
    count("empty walk", [&] {
        scene->root()->acceptEnter(&traverser);
        scene->root()->acceptLeave(&traverser);
    });
}

} // namespace

int main()
{
    std::ostream nowhere(nullptr);
    Log::getInstance().setStream(nowhere);
    countFrames("many", BenchSceneKind::many, 1'000);
    countFrames("textured", BenchSceneKind::textured, 500);
    countFrames("skinned", BenchSceneKind::skinned, 2);
    countFrames("skinned-varied", BenchSceneKind::skinnedVaried, 2);
    countFrames("deep", BenchSceneKind::deep, 2'000);
    countExtraDataLookups();
    countEmptyWalk();
    Log::getInstance().setStream(std::cerr);
}
