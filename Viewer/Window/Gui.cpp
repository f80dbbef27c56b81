#include "Viewer/Window/Gui.h"

#include "Viewer/Window/SystemFont.h"

#include <backends/imgui_impl_opengl2.h>
#include <backends/imgui_impl_sdl.h>
#include <epoxy/gl.h>
#include <imgui.h>

#include <algorithm>
#include <array>

namespace sgview {

namespace {

constexpr float fontSize = 16.0F; // points

void applyTheme()
{
    ImGui::StyleColorsDark();
    ImGuiStyle& style = ImGui::GetStyle();
    style.WindowRounding = 6.0F;
    style.FrameRounding = 4.0F;
    style.GrabRounding = 4.0F;
    style.WindowBorderSize = 0.0F;
    style.WindowPadding = {12.0F, 10.0F};
    style.FramePadding = {8.0F, 4.0F};
    style.ItemSpacing = {8.0F, 6.0F};
    style.IndentSpacing = 8.0F;
    ImVec4* const colors = style.Colors;
    colors[ImGuiCol_Text] = {0.93F, 0.94F, 0.95F, 1.0F};
    colors[ImGuiCol_TextDisabled] = {0.68F, 0.71F, 0.74F, 1.0F};
    colors[ImGuiCol_WindowBg] = {0.13F, 0.15F, 0.17F, 0.96F};
    colors[ImGuiCol_PopupBg] = {0.16F, 0.18F, 0.20F, 0.98F};
    colors[ImGuiCol_FrameBg] = {0.22F, 0.25F, 0.28F, 1.0F};
    colors[ImGuiCol_FrameBgHovered] = {0.28F, 0.32F, 0.36F, 1.0F};
    colors[ImGuiCol_FrameBgActive] = {0.32F, 0.37F, 0.42F, 1.0F};
    colors[ImGuiCol_Header] = {0.20F, 0.23F, 0.26F, 1.0F};
    colors[ImGuiCol_HeaderHovered] = {0.28F, 0.32F, 0.36F, 1.0F};
    colors[ImGuiCol_HeaderActive] = {0.32F, 0.37F, 0.42F, 1.0F};
    colors[ImGuiCol_Button] = {0.26F, 0.30F, 0.34F, 1.0F};
    colors[ImGuiCol_ButtonHovered] = {0.33F, 0.38F, 0.43F, 1.0F};
    colors[ImGuiCol_ButtonActive] = {0.38F, 0.44F, 0.50F, 1.0F};
    ImVec4 const accent{0.45F, 0.72F, 0.92F, 1.0F};
    for (ImGuiCol const place :
         {ImGuiCol_CheckMark, ImGuiCol_SliderGrab, ImGuiCol_SliderGrabActive, ImGuiCol_PlotLines})
        colors[place] = accent;
    colors[ImGuiCol_PlotHistogram] = {0.25F, 0.45F, 0.60F, 1.0F};
}

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

Gui::Gui(WindowContext const& context) : context_(context)
{
    IMGUI_CHECKVERSION();
    ImGui::CreateContext();
    ImGui::GetIO().IniFilename = nullptr;
    applyTheme();
    ImGui_ImplSDL2_InitForOpenGL(context.window(), context.context());
    ImGui_ImplOpenGL2_Init();
}

Gui::~Gui()
{
    ImGui_ImplOpenGL2_Shutdown();
    ImGui_ImplSDL2_Shutdown();
    ImGui::DestroyContext();
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
    if (fontRatio_ != context_.pixelsPerPoint())
        loadFont();
    ImGui_ImplOpenGL2_NewFrame();
    ImGui_ImplSDL2_NewFrame();
    // The back end asks where the pointer is by now, which on a slow frame is not where it was pressed.
    ImGuiIO& io = ImGui::GetIO();
    if (SDL_GetMouseFocus() == context_.window())
        io.MousePos = {static_cast<float>(pointer_.x), static_cast<float>(pointer_.y)};
    std::ranges::copy(pressed_, io.MouseDown);
    ImGui::NewFrame();
}

void Gui::end()
{
    ImGui::Render();
    selectFirstTextureUnit();
    ImGui_ImplOpenGL2_RenderDrawData(ImGui::GetDrawData());
}

void Gui::loadFont()
{
    fontRatio_ = context_.pixelsPerPoint();
    auto const ratio = static_cast<float>(fontRatio_);
    // Latin, Greek, Cyrillic, dashes and quotes, arrows: what file names and texts here are made of.
    static constexpr std::array<ImWchar, 9> ranges{0x20,   0x24F,  0x370,  0x52F, 0x2010,
                                                   0x2027, 0x2190, 0x21FF, 0};
    ImGuiIO& io = ImGui::GetIO();
    io.Fonts->Clear();
    std::string const file = systemFont().string();
    ImFont const* const font =
        file.empty() ? nullptr
                     : io.Fonts->AddFontFromFileTTF(file.c_str(), fontSize * ratio, nullptr, ranges.data());
    if (!font)
        io.Fonts->AddFontDefault();
    io.FontGlobalScale = font ? 1.0F / ratio : 1.0F;
    ImGui_ImplOpenGL2_DestroyDeviceObjects();
}

} // namespace sgview
