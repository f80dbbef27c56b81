#include "Viewer/Window/TimingSection.h"

#include "Viewer/Window/GuiStyle.h"
#include "Viewer/Window/LabelledBar.h"
#include "Viewer/Window/Session.h"

#include <imgui.h>

#include <algorithm>
#include <array>
#include <cstdio>

namespace sgview {

namespace {

void plotFrames(RecentFrames const& frames)
{
    std::size_t const rate = frames.lastSecond(std::chrono::steady_clock::now());
    ImGui::Text("%zu frame%s in the last second", rate, rate == 1 ? "" : "s");
    auto const values = frames.milliseconds();
    ImGui::Text("the last %zu, up to %.1f ms each:", values.size(), static_cast<double>(frames.longest()));
    ImGui::PlotLines("##frames", values.data(), static_cast<int>(values.size()), 0, nullptr, 0.0F,
                     frames.longest() * 1.1F, {ImGui::GetContentRegionAvail().x, inPixels(64.0F)});
}

std::string inMilliseconds(double value)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.3f ms", value);
    return text.data();
}

} // namespace

void TimingSection::build(Session& session)
{
    plotFrames(session.frames);
    double longest = 1e-6;
    double sum = 0.0;
    for (PassTimes::Pass const& pass : session.passes.passes()) {
        longest = std::max(longest, pass.milliseconds);
        sum += pass.milliseconds;
    }
    ImGui::Spacing();
    ImGui::Text("%.2f ms to draw one", session.passes.frame());
    if (session.passes.passes().empty())
        return;
    ImGui::Text("passes: %.2f ms of that", sum);
    for (PassTimes::Pass const& pass : session.passes.passes())
        addLabelledBar(pass.name, inMilliseconds(pass.milliseconds), pass.milliseconds / longest);
}

} // namespace sgview
