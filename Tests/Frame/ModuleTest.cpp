#include "Tests/Frame/DriverCheck.h"
#include "Tests/Frame/Limb.h"
#include "Tests/Frame/NameCount.h"
#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/SceneParts.h"
#include "Tests/Frame/Technique.h"
#include "Tests/Frame/TextureCount.h"
#include "Tests/Unit/Utilities/TemporaryFolder.h"

#include "SceneGraph/SGRendererInterface.h"
#include "SceneGraph/SGRendererManager.h"
#include "SceneGraph/SGRendererModule.h"
#include "Utilities/Log.h"
#include "Viewer/Platform/HeadlessContext.h"
#include "Viewer/Platform/OffscreenRenderer.h"

#include <epoxy/gl.h>
#include <gmock/gmock.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <unistd.h>

namespace {

using sgview::HeadlessContext;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr sgview::PictureSize size{256, 256};

/// Of the process, by 900 modules that came and went: less than 10 KiB for each.
#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t mostGrowth = 512 << 20; // what was freed stays in quarantine
#else
constexpr std::size_t mostGrowth = 8 << 20;
#endif

bool isModuleMapped()
{
    std::ifstream maps("/proc/self/maps");
    std::stringstream text;
    text << maps.rdbuf();
    return text.str().find("OpenGLRenderer.so") != std::string::npos;
}

std::string errorFor(std::optional<std::filesystem::path> const& named)
{
    try {
        SGRendererModule const module(named);
        return "no error";
    } catch (SGModuleError const& error) {
        return error.what();
    }
}

std::size_t residentBytes()
{
    std::size_t all = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

/// A textured surface, so that records with OpenGL names hang on the scene.
struct TexturedStage : Stage {
    TexturedStage()
    {
        surface = addSurface(lit, squareGeometry(-0.5, 0.5), matt({1.0F, 1.0F, 1.0F, 1.0F}));
        surface->textureLayers = {
            squareLayer(imageOf(4, 1, {{255, 0, 0}, {255, 0, 0}, {0, 255, 0}, {0, 255, 0}}))};
    }
    smart_ptr<SGSurfaceGeometryReferenceNode> surface;
};

class Module : public testing::Test {
protected:
    Module() { ::unsetenv("SG_MODULE_PATH"); }
    ~Module() override { ::unsetenv("SG_MODULE_PATH"); }
};

TEST_F(Module, LoadsUnloadsAndLoadsAgainUnderALivingScene)
{
    HeadlessContext const context(size);
    TexturedStage const stage;
    SharedImage const& image = *stage.surface->textureLayers[0].texture;
    for (int round = 0; round < 3; ++round) {
        SCOPED_TRACE(round);
        EXPECT_FALSE(isModuleMapped());
        {
            SGRendererModule const module;
            EXPECT_TRUE(isModuleMapped());
            module.renderer().render(stage.root);
            sgview::Picture picture(size);
            module.renderer().readPixels(0, 0, size.width, size.height, SGRenderer::RGBA,
                                         picture.pixels.data());
            EXPECT_TRUE(showsAt(picture, 96, 128, {255, 0, 0}));
            EXPECT_TRUE(showsAt(picture, 160, 128, {0, 255, 0}));
            EXPECT_TRUE(image.hasExtraData());
            EXPECT_EQ(countTextures(), 1U);
        }
        EXPECT_EQ(SGRendererManager::getRenderer(), nullptr);
        EXPECT_FALSE(image.hasExtraData());
        EXPECT_FALSE(stage.root->hasExtraData());
        EXPECT_EQ(countTextures(), 0U);
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    }
}

TEST_F(Module, ComesAndGoesAThousandTimesUnderALivingScene)
{
    HeadlessContext const context(size);
    TexturedStage const stage;
    std::size_t atFirst = 0;
    for (int round = 0; round < 1000; ++round) {
        SCOPED_TRACE(round);
        {
            SGRendererModule const module;
            module.renderer().render(stage.root);
            std::array<unsigned char, 4> pixel{};
            module.renderer().readPixels(96, 128, 1, 1, SGRenderer::RGBA, pixel.data());
            ASSERT_EQ(pixel, (std::array<unsigned char, 4>{255, 0, 0, 255}));
        }
        ASSERT_FALSE(isModuleMapped());
        ASSERT_FALSE(stage.root->hasExtraData());
        if (round == 100)
            atFirst = residentBytes();
    }
    EXPECT_EQ(countTextures(), 0U);
    EXPECT_LT(residentBytes(), atFirst + mostGrowth);
}

TEST_F(Module, UnloadingFreesTheNamesOfALivingScene)
{
    HeadlessContext const context(size);
    NameCount const count;
    Stage stage;
    Limb const limb(2, 60.0);
    limb.moveBy(*addSurface(stage.lit, limb.geometry, matt({1.0F, 1.0F, 1.0F, 1.0F})));
    for (sgview::Technique const technique : sgview::allTechniques) {
        if (!sgview::lackingFor(technique).empty())
            continue;
        SGRendererModule const module;
        switchTo(technique);
        module.renderer().render(stage.root);
    }
    EXPECT_GT(count.buffers().made + count.programs().made + count.shaderObjects().made, 0);
    for (NameCount::Kind const& kind : {count.buffers(), count.programs(), count.shaderObjects()}) {
        EXPECT_EQ(kind.left, 0);
        EXPECT_EQ(kind.wrongFrees, 0);
    }
}

TEST_F(Module, SceneMayOutliveContextAndModule)
{
    TexturedStage const stage;
    for (int round = 0; round < 2; ++round) {
        {
            sgview::OffscreenRenderer renderer(size);
            EXPECT_FALSE(SGRendererManager::shutdown);
            EXPECT_TRUE(showsAt(renderer.draw(stage.root), 96, 128, {255, 0, 0}));
        }
        EXPECT_TRUE(SGRendererManager::shutdown);
        EXPECT_FALSE(isModuleMapped());
    }
}

TEST_F(Module, NamedFileAndNamedFolder)
{
    HeadlessContext const context(size);
    EXPECT_EQ(errorFor(MODULE_FILE), "no error");
    EXPECT_EQ(errorFor(std::filesystem::path(MODULE_FILE).parent_path()), "no error");
}

TEST_F(Module, MissingFileIsTheOnlyPlaceTriedWhenNamed)
{
    ::setenv("SG_MODULE_PATH", "/usr", 1);
    EXPECT_EQ(
        errorFor("/nowhere/renderer.so"),
        "no renderer module could be loaded; tried /nowhere/renderer.so: cannot open shared object file: "
        "No such file or directory");
}

TEST_F(Module, PathVariableComesFirst)
{
    HeadlessContext const context(size);
    ::setenv("SG_MODULE_PATH", "/nowhere:/usr", 1);
    EXPECT_EQ(errorFor(std::nullopt), "no error") << "the usual place is still tried";

    ::setenv("SG_MODULE_PATH", WRONG_MODULES, 1);
    EXPECT_EQ(errorFor(std::nullopt), "no error");
}

TEST_F(Module, FileThatIsNoModule)
{
    EXPECT_THAT(errorFor(LIBRARIES_FOLDER "/libSGMaths.so"),
                EndsWith("libSGMaths.so: no renderer module: it names no interface version"));
    EXPECT_THAT(errorFor("/dev/zero"), EndsWith("/dev/zero: not a regular file"));
}

TEST_F(Module, MarkedFileThatTheLoaderRefuses)
{
    TemporaryFolder const folder;
    std::filesystem::path const forged = folder / "forged.so";
    writeFile(forged, SG_RENDERER_INTERFACE_TITLE SG_RENDERER_INTERFACE_VERSION + std::string(100, ' '));
    EXPECT_THAT(errorFor(forged), EndsWith("tried " + forged.string() + ": invalid ELF header"));
}

TEST_F(Module, EmptyNameIsAFolder)
{
    EXPECT_THAT(errorFor(""), HasSubstr("/OpenGLRenderer.so: cannot open shared object file"));
}

TEST_F(Module, ModuleThatRegistersNothing)
{
    EXPECT_THAT(errorFor(WRONG_MODULES "/RegistersNothing.so"),
                EndsWith("RegistersNothing.so: the module registers no renderer"));
}

TEST_F(Module, ModuleOfAnotherInterfaceVersionIsRefusedBeforeItsCodeRuns)
{
    EXPECT_THAT(errorFor(WRONG_MODULES "/OtherInterface.so"),
                EndsWith("OtherInterface.so: the module has interface version 2000, the "
                         "engine " SG_RENDERER_INTERFACE_VERSION));
    EXPECT_EQ(std::getenv("SG_OTHER_INTERFACE_RAN"), nullptr);
}

TEST_F(Module, OneAtATime)
{
    HeadlessContext const context(size);
    SGRendererModule const module;
    EXPECT_EQ(errorFor(std::nullopt), "no renderer module can be loaded beside the one in use");
}

TEST(HeadlessContext, HasTheSizeThatWasAskedFor)
{
    for (sgview::PictureSize const asked : {sgview::PictureSize{1, 1}, sgview::PictureSize{2500, 17}}) {
        HeadlessContext const context(asked);
        EXPECT_EQ(context.size(), asked);
        std::array<GLint, 4> viewport{};
        glGetIntegerv(GL_VIEWPORT, viewport.data());
        EXPECT_EQ(viewport, (std::array<GLint, 4>{0, 0, asked.width, asked.height}));
    }
}

TEST(HeadlessContext, HasDepthAndFixedFunction)
{
    HeadlessContext const context(size);
    GLint depthBits = 0;
    glGetIntegerv(GL_DEPTH_BITS, &depthBits);
    EXPECT_GE(depthBits, 24);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(HeadlessContext, SizeBeyondAllLimits)
{
    try {
        HeadlessContext const context({1 << 20, 1});
        FAIL() << "there is no such context";
    } catch (sgview::ContextError const& error) {
        EXPECT_THAT(error.what(), HasSubstr("Window is too large"));
    }
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    Log::getInstance().setEnabled("opengl", false);
    testing::AddGlobalTestEnvironment(new DriverCheck);
    return RUN_ALL_TESTS();
}
