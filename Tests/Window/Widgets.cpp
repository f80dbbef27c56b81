#include "Tests/Window/Widgets.h"

#include <imgui_internal.h>

#include <stdexcept>
#include <string>

namespace {

/// As ImGui::PushID and ImGui::GetID make it.
ImGuiID idOf(Widgets::Path path)
{
    ImGuiID id = 0;
    for (auto const& part : path) {
        if (char const* const* const text = std::get_if<char const*>(&part))
            id = ImHashStr(*text, 0, id);
        else
            id = ImHashData(&std::get<int>(part), sizeof(int), id);
    }
    return id;
}

std::string inWords(Widgets::Path path)
{
    std::string text;
    for (auto const& part : path) {
        char const* const* const word = std::get_if<char const*>(&part);
        text += (text.empty() ? "" : " / ") + (word ? *word : std::to_string(std::get<int>(part)));
    }
    return text;
}

ImVec2 const nowhere{-1.0F, -1.0F};

} // namespace

Widgets::Widgets(ImVec2 size, std::function<void()> build) : build_(std::move(build))
{
    ImGui::CreateContext();
    ImGuiIO& io = ImGui::GetIO();
    io.IniFilename = nullptr;
    io.DisplaySize = size;
    io.DeltaTime = 1.0F / 60.0F;
    unsigned char* pixels = nullptr;
    int width = 0;
    int height = 0;
    io.Fonts->GetTexDataAsAlpha8(&pixels, &width, &height);
    settle();
}

Widgets::~Widgets()
{
    ImGui::DestroyContext();
}

void Widgets::settle()
{
    for (int i = 0; i < 4; ++i)
        frame(nowhere, false);
}

void Widgets::forget()
{
    for (ImGuiWindow* const window : ImGui::GetCurrentContext()->Windows)
        window->StateStorage.Clear();
    settle();
}

bool Widgets::has(Path path)
{
    Rectangle ignored;
    return find(path, ignored);
}

void Widgets::click(Path path, float place)
{
    auto const [low, high] = rectangleOf(path);
    ImVec2 const pointer{low.x + (high.x - low.x) * place, (low.y + high.y) / 2.0F};
    frame(pointer, false);
    frame(pointer, true);
    frame(pointer, false);
    settle();
}

void Widgets::drag(Path path, float distance)
{
    auto const [low, high] = rectangleOf(path);
    ImVec2 pointer{(low.x + high.x) / 2.0F, (low.y + high.y) / 2.0F};
    frame(pointer, false);
    frame(pointer, true);
    pointer.x += distance;
    frame(pointer, true);
    frame(pointer, false);
    settle();
}

bool Widgets::hasTip(Path path)
{
    auto const [low, high] = rectangleOf(path);
    ImVec2 const pointer{(low.x + high.x) / 2.0F, (low.y + high.y) / 2.0F};
    for (int i = 0; i < 4; ++i)
        frame(pointer, false);
    ImGuiWindow const* const tip = ImGui::FindWindowByName("##Tooltip_00");
    bool const isShown = tip && tip->Active;
    settle();
    return isShown;
}

bool Widgets::find(Path path, Rectangle& found)
{
    ImGuiWindow* const window = ImGui::FindWindowByName(std::get<char const*>(*path.begin()));
    if (!window || !window->Active)
        return false;
    ImGuiContext& context = *ImGui::GetCurrentContext();
    // Keyboard navigation keeps track of where its widget is, and works without a keyboard.
    context.NavWindow = window;
    context.NavId = idOf(path);
    frame(nowhere, false);
    bool const isThere = context.NavIdIsAlive;
    ImRect const& relative = window->NavRectRel[ImGuiNavLayer_Main];
    ImVec2 const& origin = window->DC.CursorStartPos;
    found.low = {origin.x + relative.Min.x, origin.y + relative.Min.y};
    found.high = {origin.x + relative.Max.x, origin.y + relative.Max.y};
    context.NavId = 0;
    return isThere;
}

Widgets::Rectangle Widgets::rectangleOf(Path path)
{
    Rectangle found;
    if (!find(path, found))
        throw std::runtime_error("no widget " + inWords(path));
    return found;
}

void Widgets::frame(ImVec2 pointer, bool pressed)
{
    ImGuiIO& io = ImGui::GetIO();
    io.MousePos = pointer;
    io.MouseDown[0] = pressed;
    ImGui::NewFrame();
    build_();
    ImGui::Render();
}
