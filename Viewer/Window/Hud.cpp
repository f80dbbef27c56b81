#include "Viewer/Window/Hud.h"

#include "Viewer/Window/GuiStyle.h"
#include "Viewer/Window/Keys.h"
#include "Viewer/Window/OverlayBox.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace sgview {

namespace {

float margin()
{
    return inPixels(12.0F);
}

void hint(Action action)
{
    if (ImGui::IsItemHovered())
        ImGui::SetTooltip("key: %s", keyFor(action).c_str());
}

std::string shortName(std::filesystem::path const& file)
{
    return file.filename().string();
}

void buildStatus(Session const& session)
{
    std::string line = shortName(session.document.file());
    FolderNeighbours::Place const place = session.neighbours.place();
    if (place.count > 1 && session.neighbours.current() == session.document.file())
        line += "   " + std::to_string(place.index + 1) + " of " + std::to_string(place.count);
    line += "   drawn by " +
            (session.splits ? "two techniques" : std::string(nameOf(session.technique.current())));
    if (session.camera.isOrthographic())
        line += "   orthographic";
    if (session.camera.up() != OrbitCamera::Up::y)
        line += session.camera.up() == OrbitCamera::Up::z ? "   z is up" : "   x is up";
    beginOverlayBox("status", {margin(), margin()}, {0.0F, 0.0F});
    ImGui::TextUnformatted(line.c_str());
    ImGui::SameLine(0.0F, inPixels(24.0F));
    ImGui::TextDisabled("%s: keys", keyFor(Action::help).c_str());
    ImGui::End();
}

char const* nameOfAnimation(Model const& model, Index animation)
{
    if (animation == none)
        return "rest pose";
    std::string const& name = model.animations[static_cast<std::size_t>(animation)].name;
    return name.empty() ? "(no name)" : name.c_str();
}

void buildAnimationChoice(Session& session)
{
    Model const& model = session.document.scene()->model();
    Index const current = session.playback.animation();
    ImGui::SetNextItemWidth(inPixels(150.0F));
    if (ImGui::BeginCombo("##animation", nameOfAnimation(model, current))) {
        auto const count = static_cast<Index>(model.animations.size());
        for (Index i = none; i < count; ++i) {
            ImGui::PushID(i);
            if (ImGui::Selectable(nameOfAnimation(model, i), i == current))
                session.choose(i);
            ImGui::PopID();
        }
        ImGui::EndCombo();
    }
    hint(Action::nextAnimation);
}

void buildScrubber(Session& session)
{
    Playback const& playback = session.playback;
    auto position = static_cast<float>(playback.position());
    char label[48];
    std::snprintf(label, sizeof label, "%.2f of %.2f s", playback.position(), playback.length());
    ImGui::SetNextItemWidth(std::max(ImGui::GetContentRegionAvail().x - inPixels(190.0F), inPixels(80.0F)));
    if (ImGui::SliderFloat("##position", &position, 0.0F, static_cast<float>(playback.length()), label))
        session.scrub(static_cast<double>(position));
}

void buildSpeed(Playback& playback)
{
    char label[16];
    std::snprintf(label, sizeof label, "%.3gx", playback.speed());
    ImGui::SetNextItemWidth(inPixels(80.0F));
    if (ImGui::BeginCombo("##speed", label, ImGuiComboFlags_HeightLarge)) {
        for (double speed = Playback::slowest; speed <= Playback::fastest; speed *= 2.0) {
            std::snprintf(label, sizeof label, "%.3gx", speed);
            if (ImGui::Selectable(label, speed == playback.speed()))
                playback.setSpeed(speed);
        }
        ImGui::EndCombo();
    }
    hint(Action::faster);
}

void buildPlayback(Session& session, ImVec2 area)
{
    Playback& playback = session.playback;
    beginOverlayBar("playback", {margin(), area.y - margin()}, std::max(area.x - 2.0F * margin(), 1.0F));
    if (ImGui::Button(playback.isPlaying() ? "Pause" : "Play", {inPixels(64.0F), 0.0F}))
        playback.playOrPause(std::chrono::steady_clock::now());
    hint(Action::playOrPause);
    ImGui::SameLine();
    buildAnimationChoice(session);
    ImGui::SameLine();
    buildScrubber(session);
    ImGui::SameLine();
    buildSpeed(playback);
    ImGui::SameLine();
    bool looping = playback.isLooping();
    if (ImGui::Checkbox("loop", &looping))
        playback.setLooping(looping);
    hint(Action::loop);
    ImGui::End();
}

void buildNotices(Notices const& notices, ImVec2 area, float bottom)
{
    if (notices.all().empty())
        return;
    ImGui::SetNextWindowSizeConstraints({0.0F, 0.0F}, {std::max(area.x - 2.0F * margin(), 1.0F), area.y});
    beginOverlayBox("notices", {margin(), bottom}, {0.0F, 1.0F});
    ImGui::PushTextWrapPos(std::max(area.x - 4.0F * margin(), 1.0F));
    for (Notices::Notice const& notice : notices.all())
        ImGui::TextUnformatted((notice.isError ? "Error: " + notice.text : notice.text).c_str());
    ImGui::PopTextWrapPos();
    ImGui::End();
}

/// How much is still to come is not known: a part of the bar moves to and fro while the file is read.
void buildProgressBar(ModelLoad const& load)
{
    float const width = inPixels(320.0F);
    float const height = inPixels(6.0F);
    float const rounding = height / 2.0F;
    constexpr float part = 0.25F;
    ImVec2 const corner = ImGui::GetCursorScreenPos();
    ImDrawList& list = *ImGui::GetWindowDrawList();
    auto const swing = static_cast<float>(0.5 - 0.5 * std::cos(2.5 * load.elapsed().count()));
    float const left = corner.x + swing * (1.0F - part) * width;
    list.AddRectFilled(corner, {corner.x + width, corner.y + height}, ImGui::GetColorU32(ImGuiCol_FrameBg),
                       rounding);
    list.AddRectFilled({left, corner.y}, {left + part * width, corner.y + height},
                       ImGui::GetColorU32(ImGuiCol_SliderGrab), rounding);
    ImGui::Dummy({width, height});
}

void buildLoading(Session& session, ImVec2 area)
{
    ModelLoad const& load = *session.document.load();
    constexpr double unnoticed = 0.15; // seconds: what is shorter would only flicker
    if (load.elapsed().count() < unnoticed)
        return;
    beginOverlayBox("loading", {area.x / 2.0F, area.y / 2.0F}, {0.5F, 0.5F});
    ImGui::Text("Loading %s", shortName(load.file()).c_str());
    buildProgressBar(load);
    if (load.received() == 0)
        ImGui::Text("reading the file, %.1f s", load.elapsed().count());
    else
        ImGui::Text("taking it over, %.1f MiB", static_cast<double>(load.received()) / (1 << 20));
    if (ImGui::Button("Cancel"))
        session.document.cancel();
    hint(Action::leave);
    ImGui::End();
}

void buildWelcome(ImVec2 area)
{
    beginOverlayBox("welcome", {area.x / 2.0F, area.y / 2.0F}, {0.5F, 0.5F});
    ImGui::TextUnformatted("Drop a model here");
    ImGui::TextDisabled("glTF 2, Collada, FBX, OBJ, X, 3DS, STL, PLY, ...");
    ImGui::TextDisabled("%s: keys", keyFor(Action::help).c_str());
    ImGui::End();
}

} // namespace

void Hud::build(Session& session, ImVec2 area)
{
    bool const hasScene = session.document.scene() != nullptr;
    bool const hasAnimations = hasScene && !session.document.scene()->model().animations.empty();
    if (hasScene)
        buildStatus(session);
    if (hasAnimations)
        buildPlayback(session, area);
    float const row = inPixels(52.0F); // that the playback bar takes
    buildNotices(session.notices, area, area.y - margin() - (hasAnimations ? row : 0.0F));
    if (session.document.load())
        buildLoading(session, area);
    else if (!hasScene)
        buildWelcome(area);
}

} // namespace sgview
