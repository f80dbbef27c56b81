#include "Viewer/Window/Gui.h"

#include "Viewer/Window/GuiStyle.h"

#include <SDL2/SDL_mouse.h>
#include <backends/imgui_impl_opengl2.h>
#include <backends/imgui_impl_sdl.h>
#include <epoxy/gl.h>
#include <imgui.h>

#include <algorithm>
#include <utility>

namespace sgview {

namespace {

/// A renderer's passes leave the last texture unit selected that they drew with.
void selectFirstTextureUnit()
{
    constexpr int multitexturing = 13;
    if (epoxy_gl_version() < multitexturing)
        return;
    glActiveTexture(GL_TEXTURE0);
    glClientActiveTexture(GL_TEXTURE0);
}

} // namespace

Gui::Gui(SDL_Window* window, void* context) : window_(window)
{
    IMGUI_CHECKVERSION();
    ImGui::CreateContext();
    ImGui::GetIO().IniFilename = nullptr;
    applyGuiStyle(measures_.pixelsPerPoint);
    ImGui_ImplSDL2_InitForOpenGL(window, context);
    ImGui_ImplOpenGL2_Init();
}

Gui::~Gui()
{
    ImGui_ImplOpenGL2_Shutdown();
    ImGui_ImplSDL2_Shutdown();
    ImGui::DestroyContext();
}

void Gui::adapt(ScreenMeasures const& measures)
{
    double const before = std::exchange(measures_, measures).pixelsPerPoint;
    if (before == measures.pixelsPerPoint)
        return;
    applyGuiStyle(measures.pixelsPerPoint);
    ImGui_ImplOpenGL2_DestroyDeviceObjects();
}

void Gui::handle(SDL_Event const& event)
{
    ImGui_ImplSDL2_ProcessEvent(&event);
    follow(event);
}

void Gui::follow(SDL_Event const& event)
{
    if (event.type == SDL_MOUSEMOTION)
        pointer_ = {event.motion.x, event.motion.y};
    if (event.type != SDL_MOUSEBUTTONDOWN && event.type != SDL_MOUSEBUTTONUP)
        return;
    constexpr std::array buttons{SDL_BUTTON_LEFT, SDL_BUTTON_RIGHT, SDL_BUTTON_MIDDLE};
    pointer_ = {event.button.x, event.button.y};
    for (std::size_t i = 0; i < buttons.size(); ++i)
        if (event.button.button == buttons[i])
            pressed_[i] = event.type == SDL_MOUSEBUTTONDOWN;
}

bool Gui::wantsPointer() const
{
    return ImGui::GetIO().WantCaptureMouse;
}

bool Gui::wantsKeys() const
{
    return ImGui::GetIO().WantTextInput;
}

void Gui::begin()
{
    ImGui_ImplOpenGL2_NewFrame();
    ImGui_ImplSDL2_NewFrame();
    // The back end counts in the desktop's units, of which a pixel may be any part.
    ImGuiIO& io = ImGui::GetIO();
    io.DisplaySize = {static_cast<float>(measures_.pixels.width),
                      static_cast<float>(measures_.pixels.height)};
    io.DisplayFramebufferScale = {1.0F, 1.0F};
    placePointer();
    std::ranges::copy(pressed_, io.MouseDown);
    ImGui::NewFrame();
}

void Gui::placePointer()
{
    ImVec2& place = ImGui::GetIO().MousePos;
    // The back end asks where the pointer is by now, which on a slow frame is not where it was pressed.
    if (SDL_GetMouseFocus() == window_)
        place = {static_cast<float>(pointer_.x), static_cast<float>(pointer_.y)};
    auto const scale = static_cast<float>(measures_.pixelsPerUnit());
    if (ImGui::IsMousePosValid(&place))
        place = {place.x * scale, place.y * scale};
}

void Gui::end()
{
    ImGui::Render();
    selectFirstTextureUnit();
    ImGui_ImplOpenGL2_RenderDrawData(ImGui::GetDrawData());
}

} // namespace sgview
