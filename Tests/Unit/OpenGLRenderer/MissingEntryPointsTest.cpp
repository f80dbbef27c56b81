#include "OpenGLRenderer/MissingEntryPoints.h"

#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

using namespace RendererTesting;

TEST(MissingEntryPoints, AreLoggedAndDoNothing)
{
    LogCapture const log;
    MissingEntryPoints const missing;
    auto const handler = RecordingGL::resolverFailureHandler();
    ASSERT_TRUE(handler);
    epoxy_resolver_stub_t const enable = handler("glEnable");
    epoxy_resolver_stub_t const getError = handler("glGetError");
    EXPECT_EQ(log.text(), "error: OpenGL entry point glEnable is missing\n"
                          "error: OpenGL entry point glGetError is missing\n");
    reinterpret_cast<void (*)(GLenum)>(enable)(GL_BLEND);
    EXPECT_EQ(reinterpret_cast<GLenum (*)()>(getError)(), GLenum(GL_NO_ERROR));
}

TEST(MissingEntryPoints, ReturnToTheEarlierHandler)
{
    epoxy_resolver_failure_handler_t const earlier = [](char const*) -> epoxy_resolver_stub_t {
        return nullptr;
    };
    RecordingGL::resolverFailureHandler() = earlier;
    {
        MissingEntryPoints const missing;
        EXPECT_NE(RecordingGL::resolverFailureHandler(), earlier);
    }
    EXPECT_EQ(RecordingGL::resolverFailureHandler(), earlier);
}
