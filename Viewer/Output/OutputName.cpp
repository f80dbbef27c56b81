#include "Viewer/Output/OutputName.h"

#include "Viewer/Platform/OutputFile.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace sgview {

namespace {

std::string padded(std::size_t number, std::size_t digits)
{
    std::string const text = std::to_string(number);
    return std::string(digits > text.size() ? digits - text.size() : 0, '0') + text;
}

} // namespace

std::optional<OutputName::Piece> OutputName::parsePlace(std::string_view text)
{
    constexpr std::size_t mostDigits = 20;
    std::size_t const colon = std::min(text.find(':'), text.size());
    std::string_view const name = text.substr(0, colon);
    Piece piece;
    piece.place = name == "model"   ? Place::model
                  : name == "index" ? Place::index
                  : name == "frame" ? Place::frame
                                    : Place::none;
    if (piece.place == Place::none)
        return std::nullopt;
    if (colon == text.size())
        return piece;
    char const* const end = text.data() + text.size();
    auto const [last, error] = std::from_chars(text.data() + colon + 1, end, piece.digits);
    if (error != std::errc() || last != end || piece.digits > mostDigits || piece.place == Place::model)
        return std::nullopt;
    return piece;
}

std::optional<OutputName> OutputName::parse(std::string_view text)
{
    OutputName name;
    name.isStandardOutput_ = sgview::isStandardOutput(text);
    for (std::size_t at = 0; at < text.size();) {
        std::size_t const brace = std::min(text.find('{', at), text.size());
        if (brace > at)
            name.pieces_.push_back({Place::none, 0, std::string(text.substr(at, brace - at))});
        at = brace;
        if (at == text.size())
            break;
        if (text.substr(at).starts_with("{{")) {
            name.pieces_.push_back({Place::none, 0, "{"});
            at += 2;
            continue;
        }
        std::size_t const end = text.find('}', at);
        if (end == std::string_view::npos)
            return std::nullopt;
        std::optional<Piece> piece = parsePlace(text.substr(at + 1, end - at - 1));
        if (!piece)
            return std::nullopt;
        name.pieces_.push_back(std::move(*piece));
        at = end + 1;
    }
    if (name.pieces_.empty())
        return std::nullopt;
    return name;
}

bool OutputName::has(Place place) const
{
    return std::ranges::find(pieces_, place, &Piece::place) != pieces_.end();
}

std::string OutputName::extension() const
{
    Piece const& last = pieces_.back();
    std::string extension = std::filesystem::path(last.text).extension().string();
    // After a place, a text that starts with a dot is all extension.
    if (extension.empty() && pieces_.size() > 1 && last.text.starts_with('.'))
        extension = last.text;
    std::ranges::transform(extension, extension.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return extension;
}

std::optional<std::filesystem::path> OutputName::of(PictureSubject const& subject) const
{
    if (isStandardOutput_)
        return std::nullopt;
    std::string name;
    for (Piece const& piece : pieces_) {
        switch (piece.place) {
        case Place::none:
            name += piece.text;
            break;
        case Place::model:
            name += subject.model.stem().string();
            break;
        case Place::index:
            name += padded(subject.index, piece.digits);
            break;
        case Place::frame:
            name += padded(subject.frame, piece.digits);
            break;
        }
    }
    return name;
}

} // namespace sgview
