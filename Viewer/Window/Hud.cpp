#include "Viewer/Window/Hud.h"

#include "Viewer/Window/GuiStyle.h"
#include "Viewer/Window/Keys.h"
#include "Viewer/Window/OverlayBox.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace sgview {

namespace {

constexpr float playWidth = 64.0F; // points, as the next
constexpr float animationWidth = 150.0F;
constexpr float speedWidth = 80.0F;

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

/// What the status says, the most important first.
std::vector<std::string> statusOf(Session const& session)
{
    std::vector<std::string> parts{shortName(session.document.file())};
    FolderNeighbours::Place const place = session.neighbours.place();
    if (place.count > 1 && session.neighbours.current() == session.document.file())
        parts.push_back(std::to_string(place.index + 1) + " of " + std::to_string(place.count));
    parts.push_back("drawn by " +
                    (session.splits ? "two techniques" : std::string(nameOf(session.technique.current()))));
    if (session.camera.isOrthographic())
        parts.emplace_back("orthographic");
    if (session.camera.up() != OrbitCamera::Up::y)
        parts.emplace_back(session.camera.up() == OrbitCamera::Up::z ? "z is up" : "x is up");
    return parts;
}

void buildStatus(Session const& session, ImVec2 area)
{
    float const widest = std::max(area.x - 2.0F * margin(), 1.0F);
    float room = widest - 2.0F * ImGui::GetStyle().WindowPadding.x;
    auto const takesRoom = [&room](float width) {
        room -= width;
        return room >= 0.0F;
    };
    std::string line;
    for (std::string const& part : statusOf(session)) {
        std::string const more = line.empty() ? part : "   " + part;
        if (!takesRoom(ImGui::CalcTextSize(more.c_str()).x) && !line.empty())
            break;
        line += more;
    }
    ImGui::SetNextWindowSizeConstraints({0.0F, 0.0F}, {widest, area.y});
    beginOverlayBox("status", {margin(), margin()}, {0.0F, 0.0F});
    ImGui::TextUnformatted(line.c_str());
    std::string const hintAtHelp = keyFor(Action::help) + ": keys";
    float const gap = inPixels(24.0F);
    if (takesRoom(gap + ImGui::CalcTextSize(hintAtHelp.c_str()).x)) {
        ImGui::SameLine(0.0F, gap);
        ImGui::TextDisabled("%s", hintAtHelp.c_str());
    }
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
    ImGui::SetNextItemWidth(inPixels(animationWidth));
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

void buildScrubber(Session& session, float width)
{
    Playback const& playback = session.playback;
    auto position = static_cast<float>(playback.position());
    char label[48];
    std::snprintf(label, sizeof label, "%.2f of %.2f s", playback.position(), playback.length());
    ImGui::SetNextItemWidth(width);
    if (ImGui::SliderFloat("##position", &position, 0.0F, static_cast<float>(playback.length()), label))
        session.scrub(static_cast<double>(position));
}

void buildSpeed(Playback& playback)
{
    char label[16];
    std::snprintf(label, sizeof label, "%.3gx", playback.speed());
    ImGui::SetNextItemWidth(inPixels(speedWidth));
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

void buildLoop(Playback& playback)
{
    bool looping = playback.isLooping();
    if (ImGui::Checkbox("loop", &looping))
        playback.setLooping(looping);
    hint(Action::loop);
}

/// What of the playback bar has room in it, beside the button and the scrubber. Keys do what the rest does.
struct PlaybackRoom {
    explicit PlaybackRoom(float width)
        : scrubber(width - 2.0F * ImGui::GetStyle().WindowPadding.x - inPixels(playWidth) - spacing()),
          hasAnimation(holds(inPixels(animationWidth))),
          hasSpeed(hasAnimation && holds(inPixels(speedWidth))),
          hasLoop(hasSpeed && holds(ImGui::GetFrameHeight() + ImGui::GetStyle().ItemInnerSpacing.x +
                                    ImGui::CalcTextSize("loop").x))
    {
        scrubber = std::max(scrubber, 1.0F);
    }

    [[nodiscard]] static float spacing() { return ImGui::GetStyle().ItemSpacing.x; }

    [[nodiscard]] bool holds(float width)
    {
        constexpr float leastScrubber = 110.0F; // points: that its text is read
        if (scrubber - width - spacing() < inPixels(leastScrubber))
            return false;
        scrubber -= width + spacing();
        return true;
    }

    float scrubber; ///< its width, what the others leave
    bool hasAnimation;
    bool hasSpeed;
    bool hasLoop;
};

void buildPlayback(Session& session, ImVec2 area)
{
    Playback& playback = session.playback;
    float const width = std::max(area.x - 2.0F * margin(), 1.0F);
    PlaybackRoom const room(width);
    beginOverlayBar("playback", {margin(), area.y - margin()}, width);
    if (ImGui::Button(playback.isPlaying() ? "Pause" : "Play", {inPixels(playWidth), 0.0F}))
        playback.playOrPause(std::chrono::steady_clock::now());
    hint(Action::playOrPause);
    ImGui::SameLine();
    if (room.hasAnimation) {
        buildAnimationChoice(session);
        ImGui::SameLine();
    }
    buildScrubber(session, room.scrubber);
    if (room.hasSpeed) {
        ImGui::SameLine();
        buildSpeed(playback);
    }
    if (room.hasLoop) {
        ImGui::SameLine();
        buildLoop(playback);
    }
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
    ViewLayout const& layout = session.layout();
    if (layout.hasStatus)
        buildStatus(session, area);
    if (layout.hasPlayback)
        buildPlayback(session, area);
    float const bottom = layout.hasPlayback ? inPixels(static_cast<float>(layout.bottom())) : margin();
    buildNotices(session.notices, area, area.y - bottom);
    if (session.document.load())
        buildLoading(session, area);
    else if (!session.document.scene())
        buildWelcome(area);
}

} // namespace sgview
