#include "Viewer/Window/ViewerWindow.h"

#include "Utilities/MemoryPrefs.h"
#include "Utilities/PrefsFile.h"
#include "Viewer/Platform/OpenGLErrors.h"
#include "Viewer/Platform/PngWriter.h"
#include "Viewer/Platform/ScreenshotName.h"
#include "Viewer/Window/FrameReader.h"
#include "Viewer/Window/GuiStyle.h"
#include "Viewer/Window/HelpOverlay.h"
#include "Viewer/Window/OverlayTexts.h"

#include <algorithm>
#include <cmath>
#include <system_error>

namespace sgview {

namespace {

/// Widgets take this many frames to settle after anything has happened.
constexpr int framesToSettle = 3;

bool isButton(SDL_Event const& event)
{
    return event.type == SDL_MOUSEBUTTONDOWN || event.type == SDL_MOUSEBUTTONUP;
}

/// What comes next, taken or left where it is; nothing where nothing has come yet.
std::optional<SDL_Event> nextEvent(SDL_eventaction action)
{
    SDL_PumpEvents();
    SDL_Event next;
    bool const hasCome = SDL_PeepEvents(&next, 1, action, SDL_FIRSTEVENT, SDL_LASTEVENT) == 1;
    return hasCome ? std::optional(next) : std::nullopt;
}

/// What the window remembers from start to start.
smart_ptr<Prefs> windowMemory()
{
    if (std::optional<std::filesystem::path> const folder = PrefsFile::usualFolder())
        return make_smart<PrefsFile>(folder->parent_path() / "sgview");
    return make_smart<MemoryPrefs>();
}

} // namespace

ViewerWindow::ViewerWindow(WindowOptions const& options, TechniqueFinder const& findTechnique)
    : context_(options.size, options.scale),
      module_(options.module),
      session_(module_.renderer(), options, findTechnique(module_.renderer())),
      gui_(context_.window(), context_.context()),
      panel_(windowMemory()),
      controls_(session_, {[this] { isOpen_ = false; }, [this] { context_.toggleFullScreen(); },
                           [this](bool withPanel) { pictureWanted_ = withPanel; }}),
      screenshotName_(options.screenshotName)
{
    arrange();
}

void ViewerWindow::run()
{
    while (isOpen_) {
        handleEvents();
        if (session_.update(std::chrono::steady_clock::now()))
            framesWanted_ = framesToSettle;
        if (!isFrameDue())
            continue;
        context_.beginFrame();
        drawFrame();
        if (framesWanted_ > 0)
            --framesWanted_;
    }
}

bool ViewerWindow::isFrameDue() const
{
    return context_.isShown() && (framesWanted_ > 0 || session_.document.load());
}

std::chrono::milliseconds ViewerWindow::patience() const
{
    return isFrameDue() ? context_.untilNextFrame() : FileWatch::interval;
}

void ViewerWindow::handleEvents()
{
    SDL_WaitEventTimeout(nullptr, static_cast<int>(patience().count()));
    bool hasMoved = false;
    while (std::optional<SDL_Event> const next = nextEvent(SDL_PEEKEVENT)) {
        // Whom a button is meant for is known a frame after the pointer has come to its place.
        if (hasMoved && isButton(*next))
            break;
        std::optional<SDL_Event> const event = nextEvent(SDL_GETEVENT);
        handle(*event);
        if (isButton(*event))
            break;
        hasMoved = hasMoved || event->type == SDL_MOUSEMOTION;
    }
}

void ViewerWindow::handle(SDL_Event const& event)
{
    framesWanted_ = framesToSettle;
    gui_.handle(event);
    switch (event.type) {
    case SDL_QUIT:
        isOpen_ = false;
        break;
    case SDL_KEYDOWN:
        if (!gui_.wantsKeys())
            controls_.press(event.key);
        break;
    case SDL_DROPBEGIN:
    case SDL_DROPFILE:
    case SDL_DROPCOMPLETE:
        controls_.drop(event.drop);
        SDL_free(event.drop.file);
        break;
    default:
        handlePointer(event);
    }
}

void ViewerWindow::handlePointer(SDL_Event const& event)
{
    switch (event.type) {
    case SDL_MOUSEBUTTONDOWN:
        if (!gui_.wantsPointer())
            controls_.press(event.button);
        break;
    case SDL_MOUSEBUTTONUP:
        controls_.release(event.button);
        break;
    case SDL_MOUSEMOTION:
        controls_.move(event.motion);
        break;
    case SDL_MOUSEWHEEL:
        if (!gui_.wantsPointer())
            controls_.turn(event.wheel);
        break;
    default:
        break;
    }
}

void ViewerWindow::arrange()
{
    measures_ = context_.measures();
    gui_.adapt(measures_);
    auto const panel = static_cast<int>(inPixels(Panel::width));
    // A window too narrow for both shows the model.
    session_.hasRoomForPanel = measures_.pixels.width > 2 * panel;
    panelWidth_ = session_.showsPanel && session_.hasRoomForPanel ? panel : 0;
    sceneArea_ = {0, 0, std::max(measures_.pixels.width - panelWidth_, 1), measures_.pixels.height};
    double const scale = measures_.pixelsPerPoint;
    controls_.setPointsPerUnit(measures_.pointsPerUnit());
    session_.pixelsPerPoint = scale;
    session_.setArea(sceneArea_.width / scale, sceneArea_.height / scale);
}

void ViewerWindow::drawFrame()
{
    Time const start = std::chrono::steady_clock::now();
    arrange();
    bool const isTimed = panelWidth_ > 0;
    session_.renderer.passTimeSink = nullptr;
    if (isTimed)
        session_.renderer.passTimeSink = [this](std::string_view pass, std::chrono::nanoseconds time) {
            session_.passes.add(pass, time);
        };
    session_.passes.beginFrame();
    drawScene();
    checkOpenGL("while drawing");

    if (pictureWanted_ == false)
        keepPicture(false);
    buildWidgets();
    if (pictureWanted_ == true)
        keepPicture(true);
    pictureWanted_.reset();

    Time const end = std::chrono::steady_clock::now();
    session_.frames.add(end, end - start);
    if (isTimed)
        session_.passes.endFrame(end - start);
    updateTitle();
    context_.swap();
}

void ViewerWindow::drawScene()
{
    if (session_.splits && session_.document.scene()) {
        split_.draw(session_, sceneArea_);
        return;
    }
    split_.end(session_);
    ViewLayout const& layout = session_.layout();
    auto const top = static_cast<int>(std::lround(layout.top() * session_.pixelsPerPoint));
    auto const bottom = static_cast<int>(std::lround(layout.bottom() * session_.pixelsPerPoint));
    painter_.draw(session_, sceneArea_,
                  {sceneArea_.x, sceneArea_.y + bottom, sceneArea_.width,
                   std::max(sceneArea_.height - top - bottom, 1)});
}

void ViewerWindow::buildOverlays(ImVec2 area)
{
    if (!session_.document.scene())
        return;
    float const margin = inPixels(12.0F);
    buildOverlayLegend(session_, {area.x - margin, margin});
    if (split_.isSplit())
        split_.build(session_, area);
    else
        buildOverlayLabels(session_, *session_.document.scene()->cameraNode()->camera, {0.0F, 0.0F});
}

void ViewerWindow::buildWidgets()
{
    gui_.begin();
    ImVec2 const area{static_cast<float>(sceneArea_.width), static_cast<float>(sceneArea_.height)};
    buildOverlays(area);
    hud_.build(session_, area);
    if (panelWidth_ > 0)
        panel_.build(session_);
    if (session_.showsHelp)
        buildHelp(ImGui::GetIO().DisplaySize);
    gui_.end();
}

void ViewerWindow::updateTitle()
{
    std::string const file = session_.document.file().filename().string();
    std::string const title = file.empty() ? "sgview" : file + " - sgview";
    if (title != title_)
        context_.setTitle(title_ = title);
}

void ViewerWindow::keepPicture(bool withPanel)
{
    PictureSize const all = measures_.pixels;
    Picture const picture =
        readFrame(session_.renderer, withPanel ? quarl::Rect<int>{0, 0, all.width, all.height} : sceneArea_);
    std::string const model = session_.document.file().stem().string();
    try {
        std::filesystem::path const folder = picturesFolder();
        std::filesystem::path const file =
            screenshotFile(folder, screenshotName_, model.empty() ? "sgview" : model, localNow());
        std::filesystem::create_directories(file.parent_path());
        writePng(file, picture);
        session_.notices.tell("picture kept: " + file.string());
    } catch (std::exception const& error) {
        session_.notices.warn(error.what());
    }
    framesWanted_ = framesToSettle;
}

} // namespace sgview
