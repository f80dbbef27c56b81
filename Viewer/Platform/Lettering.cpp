#include "Viewer/Platform/Lettering.h"

#include <algorithm>
#include <array>
#include <string>

namespace sgview {

namespace {

constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 .,:'-+=_/()%?";
constexpr std::size_t lettersAStrip = 17;

// Strips of letters, as they look.
// clang-format off
constexpr std::array<std::string_view, 21> strips{
    ".###. ####. .###. ####. ##### ##### .###. #...# .###. ....# #...# #.... #...# #...# .###. ####. .###.",
    "#...# #...# #...# #...# #.... #.... #...# #...# ..#.. ....# #..#. #.... ##.## ##..# #...# #...# #...#",
    "#...# #...# #.... #...# #.... #.... #.... #...# ..#.. ....# #.#.. #.... #.#.# ##..# #...# #...# #...#",
    "##### ####. #.... #...# ####. ####. #.### ##### ..#.. ....# ##... #.... #.#.# #.#.# #...# ####. #...#",
    "#...# #...# #.... #...# #.... #.... #...# #...# ..#.. #...# #.#.. #.... #...# #..## #...# #.... #.#.#",
    "#...# #...# #...# #...# #.... #.... #...# #...# ..#.. #...# #..#. #.... #...# #..## #...# #.... #..#.",
    "#...# ####. .###. ####. ##### #.... .###. #...# .###. .###. #...# ##### #...# #...# .###. #.... .##.#",
    "####. .#### ##### #...# #...# #...# #...# #...# ##### .###. ..#.. .###. .###. ...#. ##### .###. #####",
    "#...# #.... ..#.. #...# #...# #...# #...# #...# ....# #...# .##.. #...# #...# ..##. #.... #.... ....#",
    "#...# #.... ..#.. #...# #...# #...# .#.#. .#.#. ...#. #..## #.#.. ....# ....# .#.#. ####. #.... ....#",
    "####. .###. ..#.. #...# #...# #.#.# ..#.. ..#.. ..#.. #.#.# ..#.. ...#. ..##. #..#. ....# ####. ...#.",
    "#.#.. ....# ..#.. #...# .#.#. #.#.# .#.#. ..#.. .#... ##..# ..#.. ..#.. ....# ##### ....# #...# ..#..",
    "#..#. ....# ..#.. #...# .#.#. ##.## #...# ..#.. #.... #...# ..#.. .#... #...# ...#. #...# #...# ..#..",
    "#...# ####. ..#.. .###. ..#.. #...# #...# ..#.. ##### .###. ##### ##### .###. ...#. .###. .###. ..#..",
    ".###. .###. ..... ..... ..... ..... ..#.. ..... ..... ..... ..... ....# ...#. .#... ##..# .###.",
    "#...# #...# ..... ..... ..... .##.. ..#.. ..... ..#.. ..... ..... ....# ..#.. ..#.. ##..# #...#",
    "#...# #...# ..... ..... ..... .##.. .#... ..... ..#.. ##### ..... ...#. .#... ...#. ...#. ....#",
    ".###. .#### ..... ..... ..... ..... ..... .###. ##### ..... ..... ..#.. .#... ...#. ..#.. ...#.",
    "#...# ....# ..... ..... .##.. .##.. ..... ..... ..#.. ##### ..... .#... .#... ...#. .#... ..#..",
    "#...# ....# ..... .##.. ..#.. .##.. ..... ..... ..#.. ..... ..... #.... ..#.. ..#.. #..## .....",
    ".###. .###. ..... .##.. .#... ..... ..... ..... ..... ..... ##### #.... ...#. .#... #..## ..#..",
};
// clang-format on

/// Where a letter stands in `letters`.
std::size_t placeOf(char character)
{
    bool const isSmall = character >= 'a' && character <= 'z';
    std::size_t const place = letters.find(isSmall ? static_cast<char>(character - 'a' + 'A') : character);
    return std::min(place, letters.size() - 1);
}

void blacken(Picture& picture, int left, int top, int side)
{
    constexpr std::size_t components = 4;
    auto const width = static_cast<std::size_t>(picture.size.width);
    for (int y = std::max(top, 0); y < std::min(top + side, picture.size.height); ++y) {
        for (int x = std::max(left, 0); x < std::min(left + side, picture.size.width); ++x) {
            std::size_t const pixel = static_cast<std::size_t>(y) * width + static_cast<std::size_t>(x);
            std::fill_n(&picture.pixels[components * pixel], components - 1, std::uint8_t{0});
        }
    }
}

} // namespace

void Lettering::write(Picture& picture, int x, int y, std::string_view text) const
{
    for (char const character : text) {
        std::size_t const place = placeOf(character);
        for (int row = 0; row < dotsHigh; ++row) {
            std::string_view const strip =
                strips[place / lettersAStrip * dotsHigh + static_cast<std::size_t>(row)];
            for (int column = 0; column < dotsWide; ++column)
                if (strip[place % lettersAStrip * (dotsWide + gap) + static_cast<std::size_t>(column)] == '#')
                    blacken(picture, x + column * dot, y + row * dot, dot);
        }
        x += (dotsWide + gap) * dot;
    }
}

} // namespace sgview
