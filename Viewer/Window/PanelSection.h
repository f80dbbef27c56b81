#pragma once

namespace sgview {

class Session;

/// A part of the panel, under a title that folds it away.
class PanelSection {
public:
    PanelSection() = default;
    PanelSection(PanelSection const&) = delete;
    PanelSection& operator=(PanelSection const&) = delete;
    virtual ~PanelSection() = default;

    /// Unique among the sections.
    [[nodiscard]] virtual char const* title() const = 0;

    [[nodiscard]] virtual bool isOpenAtFirst() const { return true; }

    /// Whether a person has just asked to see it; told once.
    [[nodiscard]] virtual bool isAskedFor(Session& /*session*/) { return false; }

    /// Puts its widgets, with Dear ImGui, into the window that is being built.
    virtual void build(Session& session) = 0;
};

} // namespace sgview
