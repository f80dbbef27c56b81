#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sgview {

/// What a name is for.
struct PictureSubject {
    std::filesystem::path model;
    std::size_t index = 1; ///< of the model among those drawn, from 1
    std::uint32_t frame = 0;
};

/// A template for the names of pictures. {model} becomes the model's name without folder and extension,
/// {index} and {frame} numbers, {frame:04} one of at least four digits; {{ is a brace. "-" and
/// "/dev/stdout" alone are standard output.
class OutputName {
public:
    /// Nothing where the text is no such template.
    [[nodiscard]] static std::optional<OutputName> parse(std::string_view text);

    [[nodiscard]] bool isStandardOutput() const { return isStandardOutput_; }
    [[nodiscard]] bool tellsModels() const { return has(Place::model) || has(Place::index); }
    [[nodiscard]] bool tellsFrames() const { return has(Place::frame); }

    /// The extension of the names, in small letters: ".png".
    [[nodiscard]] std::string extension() const;

    /// \return none for standard output
    [[nodiscard]] std::optional<std::filesystem::path> of(PictureSubject const& subject) const;

private:
    enum class Place { none, model, index, frame };
    struct Piece {
        Place place = Place::none;
        std::size_t digits = 0; ///< at least
        std::string text;       ///< where the place is none
    };

    [[nodiscard]] static std::optional<Piece> parsePlace(std::string_view text);
    [[nodiscard]] bool has(Place place) const;

    bool isStandardOutput_ = false;
    std::vector<Piece> pieces_;
};

} // namespace sgview
