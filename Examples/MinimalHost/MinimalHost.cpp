// The smallest host: a context, the renderer's module, a scene built by hand.
//   MinimalHost PICTURE.ppm    draws one frame into a picture, without a screen
//   MinimalHost --window       turns the scene in a window until that is closed
#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGRendererModule.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "Utilities/Log.h"

#include <SDL2/SDL.h>

#include <cmath>
#include <fstream>
#include <iostream>
#include <numbers>
#include <vector>

constexpr int width = 640, height = 512; // the diagnostic draws 512 x 512

// A ring around the y axis, or a ball where the radius of the ring is 0.
void addRing(smart_ptr<SGNode> const& parent, Vector3 const& place, double ring, double tube,
             Color const& color)
{
    constexpr int steps = 48;
    auto const shape = make_smart<SurfaceGeometryData>();
    for (int i = 0; i <= steps; ++i)
        for (int j = 0; j <= steps; ++j) {
            double const around = 2.0 * std::numbers::pi * i / steps;
            double const along = std::numbers::pi * (ring > 0.0 ? 2.0 * j / steps : 1.0 * j / steps - 0.5);
            Vector3 const outwards(std::sin(around), 0.0, std::cos(around));
            Vector3 const normal = outwards * std::cos(along) + Vector3(0.0, std::sin(along), 0.0);
            shape->vertices.push_back(place + outwards * ring + normal * tube);
            shape->normals.emplace_back(normal);
            int const at = i * (steps + 1) + j, next = at + steps + 1;
            if (i < steps && j < steps)
                shape->facets.insert(shape->facets.end(), {at, next, next + 1, at, next + 1, at + 1});
        }
    auto const surface = make_smart<SGSurfaceGeometryReferenceNode>(parent);
    surface->material.setAmbientAndDiffuse(color);
    surface->material.specular = Color{0.6F, 0.6F, 0.6F, 1.0F};
    surface->material.shininess = 40.0F;
    surface->setGeometry(make_smart<SharedGeometry>(shape));
    surface->setNormals(make_smart<SharedSurfaceGeometry>(shape));
    surface->setFacets(make_smart<SharedSurfaceGeometry>(shape));
}

smart_ptr<SGTransformNode> buildTurntable(smart_ptr<SGRootNode> const& root)
{
    root->color = Color{0.13F, 0.16F, 0.20F, 1.0F};
    auto const camera = make_smart<SGCameraNode>(root);
    constexpr double top = 0.35, right = top * width / height;
    Matrix const view(Matrix3::rotationMatrix(Vector3(1.0, 0.0, 0.0), 0.5), Vector3(0.0, 0.0, -6.0));
    camera->camera = make_smart<CameraBase>(view, Matrix::frustum(-right, right, -top, top, 1.0, 20.0),
                                            quarl::Rect<int>{0, 0, width, height});
    auto const lights = make_smart<SGLightsNode>(camera);
    lights->lights.push_back({.ambient = {0.25F, 0.25F, 0.25F, 1.0F}, .direction = {-1.0, 1.5, 2.0}});
    auto const turntable = make_smart<SGTransformNode>(lights);
    addRing(turntable, Vector3(), 1.4, 0.25, Color{0.95F, 0.70F, 0.20F, 1.0F});
    addRing(turntable, Vector3(), 0.0, 0.70, Color{0.85F, 0.25F, 0.20F, 1.0F});
    addRing(turntable, Vector3(1.4, 0.6, 0.0), 0.0, 0.35, Color{0.25F, 0.55F, 0.90F, 1.0F});
    return turntable;
}

void write(std::string const& file, SGRenderer& renderer)
{
    std::vector<unsigned char> pixels(std::size_t{4} * width * height);
    renderer.readPixels(0, 0, width, height, SGRenderer::RGBA, pixels.data());
    std::ofstream picture(file, std::ios::binary);
    picture << "P6 " << width << ' ' << height << " 255\n";
    for (std::size_t i = 0; i < pixels.size(); i += 4)
        picture.write(reinterpret_cast<char const*>(&pixels[i]), 3);
    if (!picture.flush())
        throw std::runtime_error(file + " cannot be written");
}

void run(SDL_Window* window, std::string const& output)
{
    Log::getInstance().setEnabled("opengl", false);
    SGRendererModule const module; // before the scene, so that the scene goes first
    SGRenderer& renderer = module.renderer();
    int size[2]{};
    SDL_PumpEvents(); // the desktop may have made the window smaller
    SDL_GL_GetDrawableSize(window, &size[0], &size[1]);
    if (size[0] < 512 || size[1] < 512)
        throw std::runtime_error("the graphics diagnostic draws 512 x 512 pixels, and the window has fewer");
    if (renderer.isDiagnosticNeeded())
        renderer.runDiagnostic();
    else
        renderer.readDiagnosticResults();
    auto const root = make_smart<SGRootNode>();
    auto const turntable = buildTurntable(root);
    renderer.render(root);
    if (output != "--window")
        write(output, renderer);
    for (double angle = 0.0; output == "--window" && !SDL_QuitRequested(); angle += 0.01) {
        turntable->transform = Transform(Vector3(0.0, 1.0, 0.0), angle);
        renderer.render(root);
        SDL_GL_SwapWindow(window);
    }
}

int main(int argc, char** argv)
try {
    std::string const output = argc == 2 ? argv[1] : throw std::runtime_error("PICTURE.ppm or --window?");
    SDL_VideoInit(output == "--window" ? nullptr : "offscreen");
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
    SDL_Window* const window = SDL_CreateWindow("MinimalHost", 0, 0, width, height, SDL_WINDOW_OPENGL);
    SDL_GLContext const context = window ? SDL_GL_CreateContext(window) : nullptr;
    if (!context)
        throw std::runtime_error(SDL_GetError());
    run(window, output); // nothing of the renderer's is left when it returns
    SDL_GL_DeleteContext(context);
    SDL_DestroyWindow(window);
    SDL_Quit();
} catch (std::exception const& error) {
    std::cerr << "MinimalHost: " << error.what() << '\n';
    return 1;
}
