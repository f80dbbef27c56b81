#include "Viewer/CommandLine/RenderRules.h"

#include "Viewer/CommandLine/UsageError.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace sgview {

namespace {

void require(bool holds, std::string const& otherwise)
{
    if (!holds)
        throw UsageError(otherwise);
}

bool isOnePicture(FilmOptions const& film)
{
    return !film.isFilm() || (film.frames && film.frames->count() == 1);
}

/// No picture may take another's place.
void checkNames(RenderRequest const& request)
{
    OutputName const& name = *request.output;
    require(request.files.size() == 1 || name.tellsModels(),
            "--output: names for the pictures of several models need {model} or {index}");
    require(isOnePicture(request.film) || name.tellsFrames() || name.isStandardOutput() ||
                holdsFilms(request.formatInUse()),
            "--output: names for the pictures of a film need {frame}, as in walk-{frame:04}.png");
    std::set<std::filesystem::path> taken;
    for (std::size_t i = 0; i < request.files.size() && !name.isStandardOutput(); ++i) {
        std::filesystem::path const file = *name.of({request.files[i], i + 1, 0});
        require(taken.insert(file).second,
                "--output: two models would be drawn into " + file.string() + "; {index} tells them apart");
    }
}

void checkFormat(RenderRequest const& request)
{
    PictureFormat const format = request.formatInUse();
    std::string const extension = request.output->extension();
    require(request.format || !isForeignExtension(extension),
            "--output: " + extension + " is not written; .png, .webp, .rgba and .y4m are");
    require(format == PictureFormat::webp || !request.quality, "--quality is for WebP");
    require(format != PictureFormat::y4m || !request.isTransparent(),
            "--background: frames in Y4M have no opacity");
    PictureSize const size = pictureSizeOf(request);
    require(format != PictureFormat::webp || std::max(size.width, size.height) <= WebpEncoder::largestSide,
            "--size: no side of a WebP picture is longer than " + std::to_string(WebpEncoder::largestSide) +
                " pixels");
}

} // namespace

PictureSize pictureSizeOf(RenderRequest const& request)
{
    PictureSize const size = request.picture.size;
    int const longer = std::max(size.width, size.height);
    if (!request.largestSide || longer <= *request.largestSide)
        return size;
    double const scale = double(*request.largestSide) / longer;
    auto const scaled = [scale](int side) {
        return std::max(1, static_cast<int>(std::lround(side * scale)));
    };
    return {scaled(size.width), scaled(size.height)};
}

void checkRules(RenderRequest const& request)
{
    if (request.picture.device.list)
        return;
    require(!request.files.empty(), "FILE is required");
    require(request.output.has_value(), "--output is required");
    FilmOptions const& film = request.film;
    require(!film.isFilm() || film.turntable || request.model.animation,
            std::string(film.frames ? "--frames" : "--fps") + " requires --animation or --turntable");
    require(!request.json || !request.output->isStandardOutput(),
            "--json: standard output takes the pictures already");
    checkNames(request);
    checkFormat(request);
}

} // namespace sgview
