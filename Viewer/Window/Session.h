#pragma once

#include "SceneGraph/SGRenderer.h"
#include "Viewer/Overlay/DisplayOptions.h"
#include "Viewer/Window/CardMeasurement.h"
#include "Viewer/Window/Document.h"
#include "Viewer/Window/FolderNeighbours.h"
#include "Viewer/Window/Notices.h"
#include "Viewer/Window/OrbitCamera.h"
#include "Viewer/Window/PassTimes.h"
#include "Viewer/Window/Playback.h"
#include "Viewer/Window/RecentFrames.h"
#include "Viewer/Window/TechniqueSwitch.h"
#include "Viewer/Window/ViewLayout.h"
#include "Viewer/Window/WindowOptions.h"

namespace sgview {

/// All that a window shows and a person can change, whatever it is changed by: keys, pointer, panel.
class Session {
public:
    /// \throws TechniqueError
    Session(SGRenderer& renderer, WindowOptions const& options, ChosenTechnique const& technique);

    /// The first is opened; all of them are what "next" and "previous" lead through. A folder stands for the
    /// models in it.
    void open(std::vector<std::filesystem::path> const& files);
    void openNeighbour(int steps);

    /// Moves everything on to `now`: loads that are done, the file watched, the animation.
    /// \return whether there is something new to draw
    bool update(Playback::Time now);

    /// Shows another animation from its start, playing if the last one did; `none` is the rest pose.
    void choose(Index animation);

    /// So many animations further, or back below 0; the rest pose is one of them.
    void chooseNeighbour(int steps);

    /// Stands so many frames further on or, below 0, back.
    void step(int count);

    /// Goes to a moment of the animation, seconds.
    void scrub(double seconds);

    /// The next technique that the card offers, or one before.
    void moveTechnique(int steps);

    /// Draws by another technique from now on, or says why not.
    void useTechnique(Technique wanted, std::string const& reason);

    /// Measures the graphics card, with nothing playing: drawing would slow what is measured.
    void measureCard();

    /// Brings the graphics diagnostic into view.
    void showDiagnostic();

    /// Size of the part of the window that shows the model, points.
    void setArea(double width, double height);
    [[nodiscard]] ViewLayout const& layout() const { return layout_; }

    /// Shows or hides the panel, or says why it cannot be shown.
    void togglePanel();

    /// Every vertex as posed; empty without a scene.
    [[nodiscard]] std::vector<Vector3> points() const;

    SGRenderer& renderer;
    Document document;
    FolderNeighbours neighbours;
    OrbitCamera camera;
    Playback playback;
    DisplayOptions display;
    TechniqueSwitch technique;
    RecentFrames frames;
    PassTimes passes;
    Notices notices;
    CardMeasurement measurement;
    bool showsPanel = true;
    bool hasRoomForPanel = true;
    bool diagnosticAskedFor = false; ///< and not yet in view
    bool showsHelp = false;
    bool splits = false; ///< the window between two techniques
    double pixelsPerPoint = 1.0;

private:
    void layOut();
    void welcome(Playback::Time now);

    /// Shows the same moment of what has been read again.
    void goOn();
    void tellWarnings();
    void pose();
    bool updateMeasurement();
    [[nodiscard]] Index askedAnimation();

    [[nodiscard]] bool canShowPanel();

    std::optional<std::string> askedAnimation_; ///< until the first model is there
    ViewLayout layout_;
    bool pages_ = false; ///< whether the model opened last is a neighbour of the one before
};

} // namespace sgview
