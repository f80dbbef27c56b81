#pragma once

#include "OpenGLRenderer/SceneSurvey.h"

#include <vector>

class SurveyedPass;

/// Shows a root to the passes of one frame, in the order in which it is given them, and leaves out the walks
/// that would find nothing to do.
class PassRunner {
public:
    using Strategy = std::vector<smart_ptr<SGNodeVisitor>>;

    /// \param survey  kept from frame to frame for its memory alone; it and the rest outlive the frame
    PassRunner(SGRootNode& root, Strategy const& strategy, SceneSurvey& survey)
        : root_(root), strategy_(strategy), survey_(survey)
    {
    }

    void run(SGNodeVisitor& pass);

    /// Puts back what passes have taken from the scene, where the frame does not come to its end.
    void putBack();

private:
    void carryOut(SurveyedPass& surveyed);
    void undo(SurveyedPass& surveyed, SGNodeVisitor& pass);
    void survey();
    void walk(SGNodeVisitor& pass);

    SGRootNode& root_;
    Strategy const& strategy_;
    SceneSurvey& survey_;
    bool surveyed_ = false; ///< in this frame
    bool upToDate_ = false; ///< no other pass has been at the scene since
};
