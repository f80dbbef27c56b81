#include "Viewer/Commands/RenderSession.h"

#include "Viewer/CommandLine/OptionText.h"
#include "Viewer/CommandLine/RenderRules.h"
#include "Viewer/Commands/MeasuredTechnique.h"
#include "Viewer/Commands/ModelLoader.h"
#include "Viewer/Commands/RenderNotes.h"
#include "Viewer/Output/FilmCamera.h"
#include "Viewer/Scene/Animation.h"

#include <array>
#include <cmath>
#include <cstring>
#include <memory>
#include <utility>

namespace sgview {

namespace {

ModelAnimation const* find(Model const& model, Index animation)
{
    return animation == none ? nullptr : &model.animations[static_cast<std::size_t>(animation)];
}

double lengthOf(Model const& model, Index animation)
{
    ModelAnimation const* const found = find(model, animation);
    return found ? found->length : 0.0;
}

/// By its name, unless that leads to another.
std::optional<std::string> wordFor(Model const& model, Index animation)
{
    ModelAnimation const* const found = find(model, animation);
    if (!found)
        return std::nullopt;
    return findAnimation(model, found->name) == animation ? found->name : std::to_string(animation);
}

SceneOptions sceneFor(RenderRequest const& request)
{
    SceneOptions scene = request.scene;
    scene.lineWidth *= request.supersample;
    return scene;
}

/// Whether all of a picture is in one opaque colour.
bool isPlain(Picture const& picture, Color const& color)
{
    std::array<std::uint8_t, 4> pixel{};
    for (auto const& [component, value] :
         {std::pair(0, color.r), std::pair(1, color.g), std::pair(2, color.b), std::pair(3, 1.0F)})
        pixel[static_cast<std::size_t>(component)] = static_cast<std::uint8_t>(std::lround(255.0F * value));
    for (std::size_t i = 0; i < picture.pixels.size(); i += pixel.size())
        if (std::memcmp(&picture.pixels[i], pixel.data(), pixel.size()) != 0)
            return false;
    return true;
}

} // namespace

RenderSession::RenderSession(RenderRequest const& request, Messages const& messages)
    : request_(request),
      messages_(messages),
      kind_{pictureSizeOf(request), request.supersample, request.isTransparent()}
{
}

void RenderSession::start()
{
    if (drawer_)
        return;
    drawer_.emplace(kind_, request_.picture.module);
    OffscreenRenderer& renderer = drawer_->renderer();
    technique_ = request_.picture.technique ? *request_.picture.technique : measure(renderer.engine());
    renderer.use(technique_);
}

Technique RenderSession::measure(SGRenderer const& renderer) const
{
    Progress progress = messages_.begin("measuring the graphics card");
    return measuredTechnique(renderer, request_.picture.module, progress, messages_).technique;
}

void RenderSession::warn(RenderOutcome& outcome, std::string const& warning) const
{
    outcome.warnings.push_back(warning);
    messages_.warn(request_.files.size() > 1 ? outcome.model.string() + ": " + warning : warning);
}

/// Never of a transparent picture, whose opacity tells what is drawn.
bool RenderSession::isBackground(Picture const& picture) const
{
    return !kind_.transparent && isPlain(picture, request_.scene.background);
}

void RenderSession::warnOfBlank(RenderOutcome& outcome) const
{
    warn(outcome, "nothing of the model differs from the background, " + inHex(request_.scene.background) +
                      "; --background chooses another");
}

void RenderSession::draw(PictureSubject const& subject, RenderOutcome& outcome)
{
    ModelRequest request = request_.model;
    request.file = subject.model;
    Model model = loadModel(request, messages_);
    for (std::string const& warning : model.warnings)
        warn(outcome, warning);
    Index const animation = findAnimation(model, request, [&](std::string const& warning) {
        outcome.warnings.push_back(warning);
        messages_.warn(warning); // which names the file
    });
    start();
    outcome.technique = technique_;

    FrameOutput const output{*request_.output,  request_.formatInUse(),
                             kind_.transparent, request_.quality.value_or(WebpEncoder::usualQuality),
                             kind_.size,        request_.film.rate.value_or(FilmOptions::usualRate)};
    std::unique_ptr<FrameWriter> const writer = makeFrameWriter(output, subject, outcome.pictures);
    ModelScene scene(std::move(model), sceneFor(request_));
    if (request_.film.isFilm())
        drawFilm(scene, animation, subject, *writer, outcome);
    else
        drawStill(scene, animation, subject, *writer, outcome);
    writer->finish();
}

void RenderSession::drawStill(ModelScene& scene, Index animation, PictureSubject subject, FrameWriter& writer,
                              RenderOutcome& outcome)
{
    bool isBlank = false;
    {
        auto const progress = messages_.begin("drawing " + subject.model.filename().string());
        scene.pose(animation, request_.model.seconds);
        scene.setView(request_.view, kind_.size.width, kind_.size.height);
        Picture const picture = drawer_->draw(scene);
        RenderNotes const notes(request_, subject.model, wordFor(scene.model(), animation),
                                lengthOf(scene.model(), animation), technique_, OffscreenRenderer::driver());
        writer.add(subject, picture, notes.of(0, 0.0));
        isBlank = isBackground(picture);
    }
    if (isBlank)
        warnOfBlank(outcome);
}

void RenderSession::drawFilm(ModelScene& scene, Index animation, PictureSubject subject, FrameWriter& writer,
                             RenderOutcome& outcome)
{
    double const length = lengthOf(scene.model(), animation);
    FrameSchedule const schedule(request_.film, request_.model.seconds, length);
    FrameRange const range = schedule.range();
    FilmCamera const camera(scene, animation, request_.view, request_.film.turntable.has_value(),
                            kind_.size.width, kind_.size.height);
    RenderNotes const notes(request_, subject.model, wordFor(scene.model(), animation), length, technique_,
                            OffscreenRenderer::driver());
    FrameProgress progress = messages_.beginFrames(subject.model.filename().string(), range.count());
    for (subject.frame = range.first; subject.frame <= range.last; ++subject.frame) {
        FrameSchedule::Moment const moment = schedule.at(subject.frame);
        scene.pose(animation, moment.seconds);
        camera.aim(scene, moment.turn);
        Picture const picture = drawer_->draw(scene);
        if (subject.frame == range.first && isBackground(picture))
            warnOfBlank(outcome);
        writer.add(subject, picture, notes.of(subject.frame, moment.turn));
        progress.advance();
    }
}

} // namespace sgview
