#pragma once

#include "OpenGLRenderer/SceneSurvey.h"

#include <span>

/// A pass that works node by node, and so need only be shown the nodes that a survey has found.
class SurveyedPass {
public:
    using Findings = std::span<SceneSurvey::Finding const>;

    /// Adds what the pass looks for.
    virtual void addConditions(SceneSurvey::Conditions& conditions) const = 0;

    /// Does what a walk of the whole tree would do, where only the findings have anything for the pass.
    virtual void carryOut(SGRootNode& root, Findings findings) = 0;

    /// Whether the pass puts back what another has taken. It then needs the findings as they were before that
    /// one, whatever has been drawn since.
    [[nodiscard]] virtual bool isUndo() const { return false; }

    /// Of one that puts back: whether there is more to put back than it has been shown.
    [[nodiscard]] virtual bool hasMoreToUndo() const { return false; }

protected:
    SurveyedPass() = default;
    SurveyedPass(SurveyedPass const&) = default;
    SurveyedPass& operator=(SurveyedPass const&) = default;
    ~SurveyedPass() = default;

    /// Shows the findings to a visitor one by one, between the root's entering and leaving.
    static void show(SGNodeVisitor& pass, SGRootNode& root, Findings findings);
};
