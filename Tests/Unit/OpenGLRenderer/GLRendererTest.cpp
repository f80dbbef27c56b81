#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

#include "OpenGLRenderer/GLString.h"

#include <chrono>
#include <thread>

using namespace RendererTesting;
using testing::ElementsAre;

namespace {

class Counter : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGRootNode*) override { ++entered; }
    void leave(SGRootNode*) override
    {
        ++left;
        if (atLeave)
            atLeave();
    }

    int entered = 0;
    int left = 0;
    std::function<void()> atLeave;
};

void describe(RecordingGL& gl, char const* card, char const* extensions)
{
    gl.setString(GL_VERSION, "1.4 (build 7)");
    gl.setString(GL_RENDERER, card);
    gl.setString(GL_EXTENSIONS, extensions);
    gl.setIntegers(GL_MAX_VIEWPORT_DIMS, {16384, 8192});
    gl.setIntegers(GL_MAX_MODELVIEW_STACK_DEPTH, {32});
    gl.setIntegers(GL_MAX_PROJECTION_STACK_DEPTH, {10});
    gl.setIntegers(GL_MAX_TEXTURE_UNITS_ARB, {4});
}

int unitsOf(char const* card, char const* extensions)
{
    RecordingGL gl;
    LogCapture const quiet;
    describe(gl, card, extensions);
    smart_ptr<GLRenderer> const renderer(new GLRenderer);
    GLRenderer::renderer.reset();
    return renderer->getMaxTextureUnits();
}

Calls const identityQueries{"glGetString(GL_VERSION)",
                            "glGetString(GL_RENDERER)",
                            "glGetString(GL_EXTENSIONS)",
                            "glGetIntegerv(GL_MAX_VIEWPORT_DIMS)",
                            "glGetIntegerv(GL_MAX_MODELVIEW_STACK_DEPTH)",
                            "glGetIntegerv(GL_MAX_PROJECTION_STACK_DEPTH)",
                            "glGetString(GL_EXTENSIONS)",
                            "glGetString(GL_RENDERER)",
                            "glGetIntegerv(GL_MAX_TEXTURE_UNITS_ARB)"};

std::vector<unsigned char> numbered(std::size_t count)
{
    std::vector<unsigned char> bytes(count);
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<unsigned char>(i);
    return bytes;
}

} // namespace

TEST(GLRenderer, LogsTheIdentityLetterByLetter)
{
    RecordingGL gl;
    LogCapture const log;
    describe(gl, "Card 3000", "GL_ARB_multitexture GL_EXT_other");
    smart_ptr<GLRenderer> const renderer(new GLRenderer);
    EXPECT_EQ(log.text(), "opengl: GL_VERSION: 1.4 (build 7)\n"
                          "opengl: GL_RENDERER: Card 3000\n"
                          "opengl: GL_EXTENSIONS: GL_ARB_multitexture GL_EXT_other\n"
                          "opengl: GL_MAX_VIEWPORT_DIMS: (16384, 8192)\n"
                          "opengl: GL_MAX_MODELVIEW_STACK_DEPTH: (32)\n"
                          "opengl: GL_MAX_PROJECTION_STACK_DEPTH: (10)\n");
    EXPECT_EQ(gl.calls(), identityQueries);
}

TEST(GLRenderer, QueriesWithoutWritingWhereItsChannelIsOff)
{
    RecordingGL gl;
    LogCapture const log;
    Log::getInstance().setEnabled("opengl", false);
    describe(gl, "Card 3000", "GL_ARB_multitexture");
    smart_ptr<GLRenderer> const renderer(new GLRenderer);
    EXPECT_EQ(log.text(), "");
    EXPECT_EQ(gl.calls(), identityQueries);
}

TEST(GLRenderer, ReadsNullStringsAsEmptyAndUnansweredQueriesAsZero)
{
    RecordingGL gl;
    LogCapture const log;
    smart_ptr<GLRenderer> const renderer(new GLRenderer);
    EXPECT_EQ(log.text(), "opengl: GL_VERSION: \n"
                          "opengl: GL_RENDERER: \n"
                          "opengl: GL_EXTENSIONS: \n"
                          "opengl: GL_MAX_VIEWPORT_DIMS: (0, 0)\n"
                          "opengl: GL_MAX_MODELVIEW_STACK_DEPTH: (0)\n"
                          "opengl: GL_MAX_PROJECTION_STACK_DEPTH: (0)\n");
    EXPECT_EQ(renderer->getMaxTextureUnits(), 1);
    EXPECT_EQ(getGLString(GL_VENDOR), "");
}

TEST(GLRenderer, UsesTheUnitsThatMultitexturingOffers)
{
    EXPECT_EQ(unitsOf("Card 3000", "GL_EXT_a GL_ARB_multitexture GL_EXT_b"), 4);
    EXPECT_EQ(unitsOf("matrox", "GL_ARB_multitexture"), 4);
}

TEST(GLRenderer, HoldsMatroxCardsToOneUnit)
{
    EXPECT_EQ(unitsOf("Matrox G400", "GL_ARB_multitexture"), 1);
    EXPECT_EQ(unitsOf("The Matrox", "GL_ARB_multitexture"), 1);
}

TEST(GLRenderer, UsesOneUnitWithoutMultitexturing)
{
    EXPECT_EQ(unitsOf("Card 3000", "GL_EXT_texture"), 1);
    EXPECT_EQ(unitsOf("Matrox G400", ""), 1);
}

TEST(GLRenderer, TakesZeroUnitsFromADriverThatDoesNotAnswer)
{
    RecordingGL gl;
    LogCapture const quiet;
    gl.setString(GL_EXTENSIONS, "GL_ARB_multitexture");
    smart_ptr<GLRenderer> const renderer(new GLRenderer);
    EXPECT_EQ(renderer->getMaxTextureUnits(), 0);
}

TEST(GLRenderer, HoldsItselfFromItsConstructionOn)
{
    RecordingGL gl;
    LogCapture const quiet;
    EXPECT_FALSE(GLRenderer::renderer);
    smart_ptr<SGRenderer> registered(new GLRenderer);
    EXPECT_EQ(GLRenderer::renderer, registered);
    EXPECT_EQ(registered->referenceCount(), 2);
    registered.reset();
    EXPECT_EQ(GLRenderer::renderer->referenceCount(), 1);
    EXPECT_TRUE(GLRenderer::renderer->strategy.empty());
}

class GLRendererFrame : public RendererTest {
protected:
    GLRenderer& renderer = *GLRenderer::renderer;
    smart_ptr<SGRootNode> root = make_smart<SGRootNode>();
};

TEST_F(GLRendererFrame, FillsAnEmptyStrategyOnceAndKeepsIt)
{
    renderer.render(root);
    auto const first = renderer.strategy;
    EXPECT_EQ(first.size(), 10U);
    renderer.render(root);
    EXPECT_EQ(renderer.strategy, first);
}

TEST_F(GLRendererFrame, RunsEveryVisitorOverTheRootOnceInListOrder)
{
    auto const a = make_smart<Counter>();
    auto const b = make_smart<Counter>();
    a->atLeave = [&] { EXPECT_EQ(b->entered, 0); };
    renderer.strategy = {a, b};
    auto const child = make_smart<SGRootNode>();
    child->reparent(root, false);
    renderer.render(root);
    EXPECT_EQ(a->entered, 1);
    EXPECT_EQ(a->left, 1);
    EXPECT_EQ(b->entered, 1);
    EXPECT_EQ(b->left, 1);
    EXPECT_THAT(gl.calls(), testing::IsEmpty());
}

TEST_F(GLRendererFrame, LooksAtTheListsSizeBeforeEachVisitor)
{
    auto const added = make_smart<Counter>();
    auto const adding = make_smart<Counter>();
    adding->atLeave = [&] { renderer.strategy.push_back(added); };
    renderer.strategy = {adding};
    renderer.render(root);
    EXPECT_EQ(added->left, 1);

    auto const dropping = make_smart<Counter>();
    auto const dropped = make_smart<Counter>();
    dropping->atLeave = [&] { renderer.strategy.clear(); };
    renderer.strategy = {dropping, dropped};
    renderer.render(root);
    EXPECT_EQ(dropped->entered, 0);
}

TEST_F(GLRendererFrame, ReadsPixelsTopRowFirst)
{
    std::vector<unsigned char> pixels(2 * 4 * 4);
    gl.namePointer(pixels.data(), "pixels");
    gl.setPixels(numbered(pixels.size()));
    renderer.readPixels(3, 5, 2, 4, SGRenderer::RGBA, pixels.data());
    EXPECT_THAT(gl.calls(),
                ElementsAre("glFlush()", "glReadPixels(3, 5, 2, 4, GL_RGBA, GL_UNSIGNED_BYTE, pixels)"));
    EXPECT_THAT(pixels, ElementsAre(24, 25, 26, 27, 28, 29, 30, 31, 16, 17, 18, 19, 20, 21, 22, 23, 8, 9, 10,
                                    11, 12, 13, 14, 15, 0, 1, 2, 3, 4, 5, 6, 7));
}

TEST_F(GLRendererFrame, LeavesTheMiddleRowOfAnOddHeightInPlace)
{
    std::vector<unsigned char> pixels(3 * 4);
    gl.setPixels(numbered(pixels.size()));
    renderer.readPixels(0, 0, 1, 3, SGRenderer::RGBA, pixels.data());
    EXPECT_THAT(pixels, ElementsAre(8, 9, 10, 11, 4, 5, 6, 7, 0, 1, 2, 3));
}

TEST_F(GLRendererFrame, ReadsASingleRowAsItIs)
{
    std::vector<unsigned char> pixels(2 * 4);
    gl.setPixels(numbered(pixels.size()));
    renderer.readPixels(0, 0, 2, 1, SGRenderer::RGBA, pixels.data());
    EXPECT_EQ(pixels, numbered(8));
    EXPECT_EQ(gl.count("glReadPixels"), 1);
}

TEST_F(GLRendererFrame, SwapsRowsOfFourBytesAPixelWhateverTheFormat)
{
    std::vector<unsigned char> pixels(1 * 2 * 4, 99);
    gl.setPixels(numbered(pixels.size()));
    renderer.readPixels(0, 0, 1, 2, SGRenderer::RGB, pixels.data());
    // OpenGL wrote two rows of three bytes, each padded to four.
    EXPECT_THAT(pixels, ElementsAre(4, 5, 6, 7, 0, 1, 2, 3));
    EXPECT_EQ(gl.calls().back(), "glReadPixels(0, 0, 1, 2, GL_RGB, GL_UNSIGNED_BYTE, array)");
}

TEST_F(GLRendererFrame, SwapsNothingOfASizeThatIsNone)
{
    std::vector<unsigned char> pixels = numbered(8);
    for (auto const& [width, height] :
         {std::pair(-1, 2), std::pair(1, -2), std::pair(0, 2), std::pair(-1, -2)})
        renderer.readPixels(0, 0, width, height, SGRenderer::RGBA, pixels.data());
    EXPECT_EQ(pixels, numbered(8));
}

TEST(GLRendererFormat, IsAlphaForWhatIsNotKnown)
{
    EXPECT_EQ(GLRenderer::getGLFormat(SGRenderer::LUMINANCE), GLenum(GL_LUMINANCE));
    EXPECT_EQ(GLRenderer::getGLFormat(SGRenderer::LUMINANCE_ALPHA), GLenum(GL_LUMINANCE_ALPHA));
    EXPECT_EQ(GLRenderer::getGLFormat(SGRenderer::RGB), GLenum(GL_RGB));
    EXPECT_EQ(GLRenderer::getGLFormat(SGRenderer::RGBA), GLenum(GL_RGBA));
    EXPECT_EQ(GLRenderer::getGLFormat(static_cast<SGRenderer::PixelFormat>(0)), GLenum(GL_ALPHA));
    EXPECT_EQ(GLRenderer::getGLFormat(static_cast<SGRenderer::PixelFormat>(5)), GLenum(GL_ALPHA));
}

TEST(GLRendererErrors, AreNotLoggedWhereThereAreNone)
{
    RecordingGL gl;
    LogCapture const log;
    GLRenderer::logError("here");
    EXPECT_EQ(log.text(), "");
    EXPECT_THAT(gl.calls(), ElementsAre("glGetError()"));
}

TEST(GLRendererErrors, AreLoggedWithPlaceAndMessage)
{
    RecordingGL gl;
    LogCapture const log;
    for (GLenum const error : {GL_INVALID_ENUM, GL_INVALID_VALUE, GL_INVALID_OPERATION, GL_STACK_OVERFLOW,
                               GL_STACK_UNDERFLOW, GL_OUT_OF_MEMORY, 0x1234}) {
        gl.queueError(error);
        GLRenderer::logError("here");
    }
    EXPECT_EQ(log.text(), "error: here GL Error: Invalid enum.\n"
                          "error: here GL Error: Invalid value.\n"
                          "error: here GL Error: Invalid operation.\n"
                          "error: here GL Error: Stack overflow.\n"
                          "error: here GL Error: Stack underflow.\n"
                          "error: here GL Error: Out of memory.\n"
                          "error: here GL Error: UNKNOWN ERROR CODE.\n");
}

TEST(GLRendererErrors, AreTakenOneACall)
{
    RecordingGL gl;
    LogCapture const log;
    gl.queueError(GL_INVALID_ENUM);
    gl.queueError(GL_INVALID_VALUE);
    GLRenderer::logError("first");
    EXPECT_EQ(log.text(), "error: first GL Error: Invalid enum.\n");
    EXPECT_THAT(gl.calls(), ElementsAre("glGetError()"));
    EXPECT_EQ(gl.takeError(), GLenum(GL_INVALID_VALUE));
}

TEST(GLRendererErrors, AreTakenButNotWrittenWhereTheChannelIsOff)
{
    RecordingGL gl;
    LogCapture const log;
    Log::getInstance().setEnabled("error", false);
    gl.queueError(GL_OUT_OF_MEMORY);
    GLRenderer::logError("here");
    EXPECT_EQ(log.text(), "");
    EXPECT_EQ(gl.takeError(), GLenum(GL_NO_ERROR));
}

TEST(GLRendererPassTimes, AreToldPassByPass)
{
    RecordingGL gl;
    LogCapture const quiet;
    smart_ptr<GLRenderer> const renderer(new GLRenderer);
    std::vector<std::string> passes;
    renderer->passTimeSink = [&](std::string_view pass, std::chrono::nanoseconds time) {
        EXPECT_GE(time.count(), 0);
        passes.emplace_back(pass);
    };
    renderer->render(make_smart<SGRootNode>());
    EXPECT_THAT(passes, ElementsAre("ManualColorizer", "ManualTriangleFlipper", "ManualAnimator",
                                    "ConverterToFloats", "GeneralSetupVisitor", "SharedTextureTraverser",
                                    "CameraLightsTransformVisitor + AppearanceSetter + GeometryVisitor",
                                    "ManualUnAnimator", "ManualTriangleUnFlipper", "ManualUnColorizer"));
}

TEST(GLRendererPassTimes, AreOfThePassAlone)
{
    RecordingGL gl;
    LogCapture const quiet;
    smart_ptr<GLRenderer> const renderer(new GLRenderer);
    auto const slow = make_smart<Counter>();
    slow->atLeave = [] { std::this_thread::sleep_for(std::chrono::milliseconds(20)); };
    auto const fast = make_smart<Counter>();
    renderer->strategy = {slow, fast};
    std::vector<std::chrono::nanoseconds> times;
    renderer->passTimeSink = [&](std::string_view pass, std::chrono::nanoseconds time) {
        EXPECT_EQ(pass, "Counter");
        times.push_back(time);
    };
    static_cast<void>(gl.takeCalls());
    auto const start = std::chrono::steady_clock::now();
    renderer->render(make_smart<SGRootNode>());
    auto const whole = std::chrono::steady_clock::now() - start;
    ASSERT_EQ(times.size(), 2U);
    EXPECT_GE(times[0], std::chrono::milliseconds(20));
    EXPECT_LE(times[0] + times[1], whole) << "the slow one counts once";
    EXPECT_THAT(gl.calls(), ElementsAre("glFinish()", "glFinish()", "glFinish()", "glFinish()"));
    EXPECT_EQ(slow->entered + slow->left + fast->entered + fast->left, 4);
}

TEST(GLRendererPassTimes, AreToldToOneThatTakesItselfAway)
{
    RecordingGL gl;
    LogCapture const quiet;
    smart_ptr<GLRenderer> const renderer(new GLRenderer);
    std::string told;
    renderer->passTimeSink = [&renderer, &told, kept = std::string(100, 'x')](std::string_view pass, auto) {
        renderer->passTimeSink = nullptr;
        told += kept + std::string(pass);
    };
    renderer->render(make_smart<SGRootNode>());
    EXPECT_EQ(told, std::string(100, 'x') + "ManualColorizer");
}

TEST(GLRendererPassTimes, CostNothingWhereNobodyAsks)
{
    RecordingGL gl;
    LogCapture const quiet;
    smart_ptr<GLRenderer> const renderer(new GLRenderer);
    renderer->render(make_smart<SGRootNode>());
    EXPECT_THAT(gl.calls(), testing::Not(testing::Contains("glFinish()")));
}
