#include "Viewer/Window/Session.h"

#include "Viewer/Platform/TechniqueChoice.h"
#include "Viewer/Scene/Animation.h"

#include <utility>

namespace sgview {

Session::Session(SGRenderer& renderer_, WindowOptions const& options, ChosenTechnique const& technique_)
    : renderer(renderer_),
      document(options.import, options.scene),
      camera(options.view),
      technique(renderer_, technique_),
      measurement(renderer_, options.module),
      askedAnimation_(options.animation)
{
    display.wireframe = options.scene.wireframe;
    display.unlit = options.scene.unlit;
    display.background = options.scene.background;
    if (!options.files.empty())
        open(options.files);
}

void Session::open(std::vector<std::filesystem::path> const& files)
{
    FolderNeighbours found(files);
    if (found.empty()) {
        notices.warn(files.front().string() + ": a folder without a model in it");
        return;
    }
    neighbours = std::move(found);
    pages_ = false;
    document.open(neighbours.current());
}

void Session::openNeighbour(int steps)
{
    if (neighbours.empty())
        return;
    pages_ = true;
    document.open(neighbours.move(steps));
}

bool Session::update(Playback::Time now)
{
    bool const notesChanged = notices.expire(now);
    DocumentNews const news = document.look(now);
    switch (news) {
    case DocumentNews::opened:
        welcome(now);
        break;
    case DocumentNews::reloaded:
        notices.clear();
        notices.tell("read again: " + document.file().filename().string());
        goOn();
        break;
    case DocumentNews::failed:
        notices.warn(document.failure());
        break;
    case DocumentNews::cancelled:
        notices.tell(document.failure());
        break;
    case DocumentNews::nothing:
        break;
    }
    bool const played = playback.isPlaying();
    playback.advance(now);
    if (played)
        pose();
    bool const measured = updateMeasurement();
    return played || notesChanged || measured || news != DocumentNews::nothing;
}

bool Session::updateMeasurement()
{
    MeasurementNews const news = measurement.look();
    if (news == MeasurementNews::finished) {
        if (!measurement.failure().empty())
            notices.warn("graphics diagnostic: " + measurement.failure());
        else if (!measurement.result()->endedWell())
            notices.warn("the graphics diagnostic " + measurement.result()->endInWords());
        else
            notices.tell("the graphics card is measured: the panel tells what came of it");
    }
    return news != MeasurementNews::nothing;
}

void Session::welcome(Playback::Time now)
{
    notices.clear();
    passes.clear();
    tellWarnings();
    bool const asked = askedAnimation_.has_value();
    playback.pause();
    choose(askedAnimation());
    layOut();
    if (pages_)
        camera.startOver(points());
    else
        camera.reset(points());
    if (asked)
        playback.play(now);
}

void Session::goOn()
{
    passes.clear();
    double const moment = playback.position();
    choose(playback.animation());
    scrub(moment);
    tellWarnings();
}

void Session::tellWarnings()
{
    std::vector<std::string> const& warnings = document.scene()->model().warnings;
    if (warnings.empty())
        return;
    constexpr std::chrono::seconds life{10};
    std::string const count = warnings.size() == 1
                                  ? "Warning"
                                  : std::to_string(warnings.size()) + " warnings, all of them under Model";
    notices.tell(count + ": " + warnings.front(), life);
}

Index Session::askedAnimation()
{
    Model const& model = document.scene()->model();
    std::optional<std::string> const asked = std::exchange(askedAnimation_, std::nullopt);
    if (asked) {
        if (std::optional<Index> const found = findAnimation(model, *asked))
            return *found;
        notices.warn("no animation '" + *asked + "' in " + document.file().filename().string());
    }
    return model.animations.empty() ? none : 0;
}

void Session::choose(Index animation)
{
    if (!document.scene())
        return;
    std::vector<ModelAnimation> const& animations = document.scene()->model().animations;
    if (animation != none && static_cast<std::size_t>(animation) >= animations.size())
        animation = none;
    bool const played = playback.isPlaying();
    playback.load(animation,
                  animation == none ? 0.0 : animations[static_cast<std::size_t>(animation)].length);
    document.prepare(animation);
    pose();
    if (played)
        playback.play(std::chrono::steady_clock::now());
}

void Session::chooseNeighbour(int steps)
{
    if (!document.scene())
        return;
    // The rest pose stands before the first.
    auto const count = static_cast<Index>(document.scene()->model().animations.size()) + 1;
    Index const place = (playback.animation() + 1 + steps % count + count) % count;
    choose(place - 1);
}

void Session::step(int count)
{
    playback.step(count);
    pose();
}

void Session::scrub(double seconds)
{
    playback.scrub(seconds);
    pose();
}

void Session::pose()
{
    if (document.scene())
        document.scene()->pose(playback.animation(), playback.position());
}

void Session::useTechnique(Technique wanted, std::string const& reason)
{
    try {
        technique.use(wanted, reason);
        passes.clear();
    } catch (TechniqueError const& error) {
        notices.warn(error.what());
    }
}

void Session::measureCard()
{
    playback.pause();
    measurement.start();
}

bool Session::canShowPanel()
{
    if (!hasRoomForPanel)
        notices.tell("the window is too narrow for the panel");
    return hasRoomForPanel;
}

void Session::togglePanel()
{
    if (canShowPanel())
        showsPanel = !showsPanel;
}

void Session::showDiagnostic()
{
    if (!canShowPanel())
        return;
    showsPanel = true;
    diagnosticAskedFor = true;
}

void Session::setArea(double width, double height)
{
    layout_.width = width;
    layout_.height = height;
    layOut();
}

void Session::layOut()
{
    bool const hasScene = document.scene() != nullptr;
    bool const hasAnimations = hasScene && !document.scene()->model().animations.empty();
    layout_ = layOutView(layout_.width, layout_.height, {hasScene, hasAnimations, hasScene && splits});
    camera.setArea(layout_.width, layout_.freeHeight());
}

void Session::moveTechnique(int steps)
{
    try {
        technique.move(steps, "chosen here");
        passes.clear();
    } catch (TechniqueError const& error) {
        notices.warn(error.what());
    }
}

std::vector<Vector3> Session::points() const
{
    return document.scene() ? document.scene()->posedVertices() : std::vector<Vector3>();
}

} // namespace sgview
