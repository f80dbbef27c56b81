#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGRendererManager.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "Utilities/Log.h"
#include "Utilities/MemoryPrefs.h"

#include <SDL2/SDL.h>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <link.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

// The module as a host meets it: loaded into a context without a screen.

namespace {

constexpr int side = 32;

/// Keeps the driver mapped: a leak checker looks at the end of the process and takes for lost what only the
/// driver's own variables lead to.
void pinDriver()
{
    std::string driver;
    auto const find = [](dl_phdr_info* object, std::size_t, void* found) {
        if (std::string_view(object->dlpi_name).ends_with("_dri.so"))
            *static_cast<std::string*>(found) = object->dlpi_name;
        return 0;
    };
    dl_iterate_phdr(find, &driver);
    if (!driver.empty())
        static_cast<void>(dlopen(driver.c_str(), RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE));
}

/// A headless context; throws where the machine offers none.
class Context {
public:
    Context()
    {
        SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
        if (SDL_VideoInit("offscreen") != 0)
            throw std::runtime_error(SDL_GetError());
        window.reset(SDL_CreateWindow("module test", 0, 0, side, side, SDL_WINDOW_OPENGL));
        context.reset(window ? SDL_GL_CreateContext(window.get()) : nullptr);
        if (!context)
            throw std::runtime_error(SDL_GetError());
        pinDriver();
    }
    Context(Context const&) = delete;
    Context& operator=(Context const&) = delete;
    ~Context()
    {
        context.reset();
        window.reset();
        SDL_VideoQuit();
    }

    template <typename Function>
    [[nodiscard]] static Function find(char const* name)
    {
        return reinterpret_cast<Function>(SDL_GL_GetProcAddress(name));
    }

private:
    struct WindowEnd {
        void operator()(SDL_Window* ended) const { SDL_DestroyWindow(ended); }
    };
    struct ContextEnd {
        void operator()(void* ended) const { SDL_GL_DeleteContext(ended); }
    };
    std::unique_ptr<SDL_Window, WindowEnd> window;
    std::unique_ptr<void, ContextEnd> context;
};

class Module {
public:
    Module() : handle(dlopen(SG_MODULE_FILE, RTLD_NOW | RTLD_LOCAL))
    {
        if (!handle)
            throw std::runtime_error(dlerror());
    }
    Module(Module const&) = delete;
    Module& operator=(Module const&) = delete;
    ~Module() { dlclose(handle); }

private:
    void* handle;
};

bool moduleIsMapped()
{
    std::ifstream maps("/proc/self/maps");
    std::stringstream text;
    text << maps.rdbuf();
    return text.str().find("OpenGLRenderer.so") != std::string::npos;
}

/// A mirrored, skinned and tinted triangle without light that fills the picture; a record of each pass comes
/// to hang on it.
struct Scene {
    Scene()
    {
        auto const camera = make_smart<SGCameraNode>(root);
        camera->camera = make_smart<CameraBase>(Matrix(), Matrix(), quarl::Rect<int>{0, 0, side, side});
        auto const transform = make_smart<SGTransformNode>(camera);
        transform->transform = Transform(Matrix3(), Vector3(), -1.0);
        surface = make_smart<SGSurfaceGeometryReferenceNode>(transform);
        surface->unlit = true;
        surface->material.setAmbientAndDiffuse({1.0F, 1.0F, 1.0F, 1.0F});
        auto const data = make_smart<SurfaceGeometryData>();
        data->vertices = {{-4.0, -4.0, 0.5}, {4.0, -4.0, 0.5}, {0.0, 8.0, 0.5}};
        data->normals.resize(3);
        data->facets = {0, 1, 2};
        surface->setGeometry(make_smart<SharedGeometry>(data));
        surface->setNormals(make_smart<SharedSurfaceGeometry>(data));
        surface->setFacets(make_smart<SharedSurfaceGeometry>(data));
        auto const weights = make_smart<BoneWeightsData>();
        for (int vertex = 0; vertex < 3; ++vertex)
            weights->addVertex(std::array{BoneInfluence{0, 1.0}});
        surface->setBoneWeights(make_smart<SharedBoneWeights>(weights));
        surface->setBoneTransforms(make_smart<SharedBoneTransforms>(BoneTransformVector({BoneTransform()})));
        auto const coordinates = make_smart<TextureCoordsData>();
        coordinates->coordinates.resize(3);
        SGTextureLayer layer;
        layer.texture = make_smart<SharedImage>(make_smart<Image_base>(2, 2));
        layer.coordinates = make_smart<SharedTextureCoords>(coordinates);
        layer.colorize = true;
        layer.secondColor = {1.0F, 0.5F, 0.0F, 1.0F};
        surface->textureLayers.push_back(layer);
    }

    smart_ptr<SGRootNode> root = make_smart<SGRootNode>();
    smart_ptr<SGSurfaceGeometryReferenceNode> surface;
};

std::array<int, 3> middlePixel(Scene const& scene)
{
    SGRenderer& renderer = *SGRendererManager::getRenderer();
    renderer.render(scene.root);
    std::array<unsigned char, 4> pixel{};
    renderer.readPixels(side / 2, side / 2, 1, 1, SGRenderer::RGBA, pixel.data());
    return {pixel[0], pixel[1], pixel[2]};
}

constexpr std::array<int, 3> orange{255, 127, 0};

/// Buffers, vertex program, vertex shader.
constexpr std::array<std::array<bool, 3>, 6> techniques{{{false, false, false},
                                                         {true, false, false},
                                                         {false, true, false},
                                                         {true, true, false},
                                                         {false, false, true},
                                                         {true, false, true}}};

/// How many of the first thousand names are in use, as an entry point such as glIsBuffer says.
int names(char const* isName)
{
    auto const inUse = Context::find<unsigned char (*)(unsigned int)>(isName);
    int count = 0;
    for (unsigned int name = 1; name <= 1000; ++name)
        count += inUse(name);
    return count;
}

class OpenGLRendererModule : public testing::Test {
protected:
    void SetUp() override
    {
        Log::getInstance().setStream(log);
        try {
            context = std::make_unique<Context>();
        } catch (std::runtime_error const& error) {
            GTEST_SKIP() << "no OpenGL context: " << error.what();
        }
    }
    ~OpenGLRendererModule() override { Log::getInstance().setStream(std::cerr); }

    std::ostringstream log;
    std::unique_ptr<Context> context;
};

} // namespace

TEST_F(OpenGLRendererModule, RegistersItsRendererWhileItIsLoaded)
{
    EXPECT_FALSE(SGRendererManager::getRenderer());
    {
        Module const module;
        ASSERT_TRUE(SGRendererManager::getRenderer());
        EXPECT_EQ(SGRendererManager::getRenderer()->referenceCount(), 2);
        EXPECT_GE(SGRendererManager::getRenderer()->getMaxTextureUnits(), 1);
        EXPECT_THAT(log.str(), testing::StartsWith("opengl: GL_VERSION: "));
    }
    EXPECT_FALSE(SGRendererManager::getRenderer());
}

TEST_F(OpenGLRendererModule, DrawsAndLeavesTheProcessForGood)
{
    Scene const scene;
    auto const tinted = scene.surface->textureLayers[0].texture;
    {
        Module const module;
        EXPECT_TRUE(moduleIsMapped());
        EXPECT_EQ(middlePixel(scene), orange);
        EXPECT_TRUE(scene.root->hasExtraData());
        EXPECT_TRUE(scene.surface->hasExtraData());
    }
    EXPECT_FALSE(moduleIsMapped());
    EXPECT_FALSE(scene.root->hasExtraData());
    EXPECT_FALSE(scene.surface->hasExtraData());
    EXPECT_FALSE(scene.surface->textureLayers[0].coordinates->hasExtraData());
    EXPECT_EQ(Context::find<unsigned int (*)()>("glGetError")(), 0U);
}

TEST_F(OpenGLRendererModule, CanBeLoadedAgain)
{
    Scene const scene;
    for (int i = 0; i < 3; ++i) {
        Module const module;
        EXPECT_EQ(middlePixel(scene), orange);
    }
    EXPECT_FALSE(moduleIsMapped());
}

TEST_F(OpenGLRendererModule, FreesItsTexturesWhenItIsUnloaded)
{
    auto const isTexture = Context::find<unsigned char (*)(unsigned int)>("glIsTexture");
    Scene const scene;
    {
        Module const module;
        static_cast<void>(middlePixel(scene));
        EXPECT_TRUE(isTexture(1));
    }
    EXPECT_FALSE(isTexture(1));
}

TEST_F(OpenGLRendererModule, LeavesNothingBehindWhateverTheVerdictItDrewBy)
{
    auto const prefs = make_smart<MemoryPrefs>();
    PrefsFactory::setMaker([&] { return smart_ptr<Prefs>(prefs); });
    for (auto const& [vbo, program, shader] : techniques) {
        prefs->setString("GL_VBO", vbo ? "True" : "False");
        prefs->setString("GL_VertexProgram", program ? "True" : "False");
        prefs->setString("GL_VertexShader", shader ? "True" : "False");
        Scene const scene;
        {
            Module const module;
            SGRendererManager::getRenderer()->readDiagnosticResults();
            EXPECT_EQ(middlePixel(scene), orange) << vbo << program << shader;
            // What the processor skins is kept off buffers.
            EXPECT_EQ(names("glIsBuffer"), vbo && (program || shader) ? 6 : 0);
            EXPECT_EQ(names("glIsProgramARB"), program ? 2 : 0);
            EXPECT_EQ(names("glIsShader"), shader ? 1 : 0);
            EXPECT_EQ(names("glIsProgram"), shader ? 1 : 0);
        }
        for (char const* const kind : {"glIsBuffer", "glIsProgramARB", "glIsShader", "glIsProgram"})
            EXPECT_EQ(names(kind), 0) << kind << ' ' << vbo << program << shader;
        EXPECT_FALSE(moduleIsMapped());
        EXPECT_FALSE(scene.root->hasExtraData());
        EXPECT_FALSE(scene.surface->hasExtraData());
        EXPECT_FALSE(scene.surface->getBoneWeights()->hasExtraData());
        EXPECT_EQ(Context::find<unsigned int (*)()>("glGetError")(), 0U) << vbo << program << shader;
    }
    PrefsFactory::setMaker({});
}

TEST_F(OpenGLRendererModule, LeavesAnotherRegisteredRendererAlone)
{
    class OtherRenderer : public SGRenderer {
        void render(smart_ptr<SGRootNode>) override {}
        void readPixels(int, int, int, int, PixelFormat, unsigned char*) override {}
    };
    auto const other = make_smart<OtherRenderer>();
    {
        Module const module;
        SGRendererManager::setRenderer(other);
    }
    EXPECT_EQ(SGRendererManager::getRenderer(), other);
    SGRendererManager::setRenderer(nullptr);
}

TEST_F(OpenGLRendererModule, OutlivesItsContextDuringShutdown)
{
    Scene const scene;
    auto module = std::make_unique<Module>();
    static_cast<void>(middlePixel(scene));
    context.reset();
    SGRendererManager::shutdown = true;
    module.reset();
    EXPECT_FALSE(moduleIsMapped());
    EXPECT_FALSE(scene.surface->hasExtraData());
}

TEST(OpenGLRendererModuleDeathTest, MayStayLoadedToTheEndOfTheProcess)
{
    EXPECT_EXIT(
        {
            try {
                static Context const context;
                static Module* const module = new Module;
                static Scene const scene;
                std::fputs(module && middlePixel(scene) == orange ? "drawn" : "wrong", stderr);
            } catch (std::runtime_error const&) {
                std::fputs("drawn, had there been a context", stderr);
            }
            SGRendererManager::shutdown = true;
            std::exit(0);
        },
        testing::ExitedWithCode(0), "drawn");
}
