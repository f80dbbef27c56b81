#include "Viewer/Commands/RenderNotes.h"

#include "Viewer/CommandLine/OptionText.h"
#include "Viewer/CommandLine/RenderRules.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Report/NumberText.h"

#include <algorithm>
#include <cmath>

namespace sgview {

namespace {

/// As a shell takes it for one word.
std::string quoted(std::string const& word)
{
    constexpr std::string_view plain =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+=./:,";
    if (!word.empty() && word.find_first_not_of(plain) == std::string::npos)
        return word;
    std::string text = "'";
    for (char const letter : word)
        text += letter == '\'' ? "'\\''" : std::string(1, letter);
    return text + "'";
}

/// The options of a command line.
class Words {
public:
    void add(std::string const& option) { text_ += " " + option; }
    void add(std::string const& option, std::string const& value) { add(option + " " + quoted(value)); }

    [[nodiscard]] std::string const& text() const { return text_; }

private:
    std::string text_;
};

void addMoment(Words& words, RenderRequest const& request, std::optional<std::string> const& animation,
               double length)
{
    if (animation) {
        words.add("--animation", *animation);
        words.add("--time", exactText(std::min(request.model.seconds, length)));
    }
    if (request.film.turntable)
        words.add("--turntable", std::to_string(*request.film.turntable));
    if (request.film.isFilm())
        words.add("--fps", exactText(request.film.rate.value_or(FilmOptions::usualRate)));
}

void addScene(Words& words, SceneOptions const& scene)
{
    words.add("--background", scene.background.a == 0.0F ? "transparent" : inHex(scene.background));
    if (scene.colorize)
        words.add("--colorize", inHex(scene.colorize->first) + "," + inHex(scene.colorize->second));
    if (scene.wireframe)
        words.add("--wireframe");
    if (scene.unlit)
        words.add("--unlit");
    if (scene.mirror)
        words.add("--mirror");
}

std::string commandFor(RenderRequest const& request, std::filesystem::path const& model,
                       std::optional<std::string> const& animation, double length, Technique technique)
{
    Words words;
    addMoment(words, request, animation, length);
    words.add("--azimuth", exactText(request.view.azimuth));
    words.add("--elevation", exactText(request.view.elevation));
    words.add("--zoom", exactText(request.view.zoom));
    words.add("--up", std::string(nameOf(request.view.up)));
    if (request.view.orthographic)
        words.add("--orthographic");
    PictureSize const size = pictureSizeOf(request);
    words.add("--size", std::to_string(size.width) + "x" + std::to_string(size.height));
    words.add("--supersample", std::to_string(request.supersample));
    addScene(words, request.scene);
    for (std::filesystem::path const& folder : request.model.import.folders)
        words.add("--texture-folder", folder.string());
    words.add("--technique", std::string(nameOf(technique)));
    return "sgview render " + quoted(model.filename().string()) + words.text();
}

} // namespace

RenderNotes::RenderNotes(RenderRequest const& request, std::filesystem::path const& model,
                         std::optional<std::string> const& animation, double length, Technique technique,
                         std::string const& driver)
    : common_{{"Software", "sgview " SG_VERSION},
              {"Renderer", oneLine(driver)},
              {"Technique", std::string(nameOf(technique))},
              {"Model", oneLine(model.filename().string())}},
      view_(request.view),
      isFilm_(request.film.isFilm()),
      command_(commandFor(request, model, animation, length, technique))
{
}

PictureNotes RenderNotes::of(std::uint32_t frame, double turn) const
{
    PictureNotes notes = common_;
    notes.emplace_back("Camera", "azimuth " + exactText(std::fmod(view_.azimuth + turn, 360.0)) +
                                     ", elevation " + exactText(view_.elevation) + ", zoom " +
                                     exactText(view_.zoom) + ", " + std::string(nameOf(view_.up)) + " up" +
                                     (view_.orthographic ? ", orthographic" : ""));
    std::string command = command_;
    if (isFilm_) {
        notes.emplace_back("Frame", std::to_string(frame));
        command += " --frames " + std::to_string(frame);
    }
    notes.emplace_back("Command line", command);
    return notes;
}

} // namespace sgview
