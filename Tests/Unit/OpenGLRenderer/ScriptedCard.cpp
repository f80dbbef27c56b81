#include "Tests/Unit/OpenGLRenderer/ScriptedCard.h"

#include "OpenGLRenderer/Renderer.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "SceneGraph/SGTraverser.h"
#include "Utilities/Log.h"

#include <algorithm>

namespace RendererTesting {

namespace {

char const* const witnessKey = "Witness";

class FirstSurface : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    void enter(SGSurfaceGeometryReferenceNode* node) override
    {
        if (!found)
            found = node;
    }

    SGSurfaceGeometryReferenceNode* found = nullptr;
};

} // namespace

/// A pass at the end of a strategy, for one frame.
class ScriptedCard::RootFinder : public SGNodeVisitor {
public:
    explicit RootFinder(ScriptedCard& card) : card_(card) {}

    using SGNodeVisitor::enter;
    void enter(SGRootNode* node) override
    {
        card_.root_ = smart_ptr<SGRootNode>(node);
        GLRenderer::renderer->strategy.pop_back();
    }

private:
    ScriptedCard& card_;
};

/// Hangs on the scene's root and tells when it is dropped.
class ScriptedCard::Witness : public SGExtraData {
public:
    explicit Witness(ScriptedCard const& card) : card_(card) {}
    Witness(Witness const&) = delete;
    Witness& operator=(Witness const&) = delete;
    ~Witness() override
    {
        if (card_.root_.expired())
            card_.tell("scene gone");
        else if (GLRenderer::renderer->strategy == card_.lastStrategy_)
            card_.tell("cleaned under the old strategy");
        else
            card_.tell("cleaned");
    }

private:
    ScriptedCard const& card_;
};

ScriptedCard::ScriptedCard(RecordingGL& recordingGL) : gl(recordingGL)
{
    gl.keepCountsOnly();
    gl.setWatcher([this](std::string_view call) { notice(call); });
    gl.setString(GL_VENDOR, "Vendor");
    gl.setString(GL_RENDERER, "Card");
    gl.setString(GL_VERSION, "2.1 Driver 7");
    claim("GL_ARB_multitexture GL_ARB_vertex_buffer_object GL_ARB_vertex_program GL_ARB_vertex_shader ");
    for (GLenum const limit :
         {GL_MAX_PROGRAM_INSTRUCTIONS_ARB, GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB,
          GL_MAX_PROGRAM_TEMPORARIES_ARB, GL_MAX_PROGRAM_NATIVE_TEMPORARIES_ARB,
          GL_MAX_PROGRAM_PARAMETERS_ARB, GL_MAX_PROGRAM_NATIVE_PARAMETERS_ARB, GL_MAX_PROGRAM_ATTRIBS_ARB,
          GL_MAX_PROGRAM_NATIVE_ATTRIBS_ARB, GL_MAX_PROGRAM_ADDRESS_REGISTERS_ARB,
          GL_MAX_PROGRAM_NATIVE_ADDRESS_REGISTERS_ARB, GL_MAX_PROGRAM_ENV_PARAMETERS_ARB,
          GL_MAX_PROGRAM_LOCAL_PARAMETERS_ARB})
        gl.setProgramLimit(limit, 128);
    gl.setUniformLocation("viewRotation", 1);
    gl.setUniformLocation("boneTransforms", 2);
    gl.setInfoLog("fine");
    for (char const* const text :
         {"defaultVertexProgram.txt", "animationVertexProgram.txt", "animationVertexShader.txt"})
        assets_.write(std::string("Shaders/") + text, text);
}

ScriptedCard::~ScriptedCard()
{
    gl.setWatcher({});
}

std::size_t ScriptedCard::sceneObjectsLeft() const
{
    return static_cast<std::size_t>(
        std::ranges::count_if(watched_, [](weak_ptr<SGObject> const& object) { return !object.expired(); }));
}

void ScriptedCard::notice(std::string_view call)
{
    if (call == "glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT)")
        frame_ = {};
    else if (call == "glEnable(GL_VERTEX_PROGRAM_ARB)")
        frame_.program = true;
    else if (call.starts_with("glUseProgramObjectARB(") && call != "glUseProgramObjectARB(0)")
        frame_.shader = true;
    else if (call.starts_with("glProgramLocalParameter4dARB(GL_VERTEX_PROGRAM_ARB, 0, -0.95") ||
             call.starts_with("glUniformMatrix3fvARB(2, 2, GL_TRUE, {-0.95"))
        frame_.bent = true;
    else if (call.starts_with("glDrawElements("))
        noticeDraw();
    else if (call == "glFinish()")
        finish();
    else if (call.starts_with("glReadPixels("))
        read();
}

void ScriptedCard::noticeDraw()
{
    ++frame_.surfaces;
    frame_.buffers = frame_.buffers || gl.positionSource.buffer != 0;
    // At rest the first vertex is on the left.
    auto const* const positions = static_cast<float const*>(gl.read(gl.positionSource));
    frame_.bent = frame_.bent || positions[0] > 0.0F;
}

void ScriptedCard::finish()
{
    Path const& drawn = path();
    auto& strategy = GLRenderer::renderer->strategy;
    bool const isFirst = strategy != lastStrategy_;
    clock.time += isFirst ? drawn.first.value_or(drawn.frame) : drawn.frame;
    clock.time += perSurface * frame_.surfaces;
    lastStrategy_ = strategy;
    tellFrame();
    tell("finished");
    if (root_.expired())
        strategy.push_back(make_smart<RootFinder>(*this));
    watchScene();
}

void ScriptedCard::read()
{
    Path const& drawn = path();
    gl.setPixels(frame_.bent ? drawn.bent : drawn.rest);
    lastStrategy_ = GLRenderer::renderer->strategy;
    tellFrame();
    tell("read");
    watchScene();
}

void ScriptedCard::tell(std::string const& line) const
{
    if (narrates)
        Log::getInstance().getStream() << "- " << line << '\n';
}

void ScriptedCard::tellFrame()
{
    if (frame_.told)
        return;
    tell("drew " + std::to_string(frame_.surfaces) + " by " + path().name +
         (frame_.buffers ? ", buffered" : "") + (frame_.bent ? ", bent" : ""));
    frame_.told = true;
}

void ScriptedCard::watchScene()
{
    smart_ptr<SGRootNode> const root = root_.lock();
    if (!root || root->privateGetExtraData(witnessKey))
        return;
    root->setExtraData(witnessKey, make_smart<Witness>(*this));
    SGSurfaceGeometryReferenceNode& surface = *firstSurface();
    watched_.emplace_back(smart_ptr<SGObject>(root));
    watched_.emplace_back(smart_ptr<SGObject>(&surface));
    watched_.emplace_back(smart_ptr<SGObject>(surface.getGeometry()));
    watched_.emplace_back(smart_ptr<SGObject>(surface.getNormals()));
    watched_.emplace_back(smart_ptr<SGObject>(surface.getFacets()));
    watched_.emplace_back(smart_ptr<SGObject>(surface.getBoneWeights()));
    if (surface.getBoneTransforms())
        watched_.emplace_back(smart_ptr<SGObject>(surface.getBoneTransforms()));
}

ScriptedCard::Path const& ScriptedCard::path() const
{
    if (frame_.program)
        return program;
    if (frame_.shader)
        return shader;
    SGSurfaceGeometryReferenceNode const* const surface = firstSurface();
    if (surface && surface->getBoneTransforms())
        return processor;
    return frame_.buffers ? buffers : plain;
}

SGSurfaceGeometryReferenceNode* ScriptedCard::firstSurface() const
{
    smart_ptr<SGRootNode> const root = root_.lock();
    if (!root)
        return nullptr;
    auto const surface = make_smart<FirstSurface>();
    SGTraverser traverser(surface);
    root->acceptEnter(&traverser);
    return surface->found;
}

} // namespace RendererTesting
