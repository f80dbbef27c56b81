#include "Viewer/Import/TextEncoding.h"

#include <optional>

namespace sgview {

namespace {

constexpr std::uint32_t replacement = 0xFFFD;

struct Encoding {
    std::size_t unit = 2; ///< bytes
    bool bigEndian = false;
};

std::optional<Encoding> encodingOf(Bytes const& c)
{
    if (c.size() >= 4 && c[0] == 0xFF && c[1] == 0xFE && c[2] == 0 && c[3] == 0)
        return Encoding{4, false};
    if (c.size() >= 4 && c[0] == 0 && c[1] == 0 && c[2] == 0xFE && c[3] == 0xFF)
        return Encoding{4, true};
    if (c.size() >= 2 && c[0] == 0xFF && c[1] == 0xFE)
        return Encoding{2, false};
    if (c.size() >= 2 && c[0] == 0xFE && c[1] == 0xFF)
        return Encoding{2, true};
    return {};
}

class Units {
public:
    Units(Bytes const& content, Encoding const& encoding)
        : content_(content), encoding_(encoding), at_(encoding.unit)
    {
    }

    [[nodiscard]] bool atEnd() const { return at_ + encoding_.unit > content_.size(); }
    std::uint32_t next()
    {
        std::uint32_t const unit = peek();
        at_ += encoding_.unit;
        return unit;
    }
    [[nodiscard]] std::uint32_t peek() const
    {
        std::uint32_t unit = 0;
        for (std::size_t i = 0; i < encoding_.unit; ++i)
            unit = unit << 8 | content_[at_ + (encoding_.bigEndian ? i : encoding_.unit - 1 - i)];
        return unit;
    }

private:
    Bytes const& content_;
    Encoding encoding_;
    std::size_t at_;
};

std::uint32_t nextCode(Units& units)
{
    std::uint32_t const first = units.next();
    bool const isHigh = first >= 0xD800 && first < 0xDC00;
    if (isHigh && !units.atEnd() && units.peek() >= 0xDC00 && units.peek() < 0xE000)
        return 0x10000 + ((first - 0xD800) << 10) + (units.next() - 0xDC00);
    return first > 0x10FFFF || (first >= 0xD800 && first < 0xE000) ? replacement : first;
}

void append(Bytes& text, std::uint32_t code)
{
    auto const put = [&](std::uint32_t byte) { text.push_back(static_cast<std::uint8_t>(byte)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | code >> 6);
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | code >> 12);
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | code >> 18);
        put(0x80 | (code >> 12 & 0x3F));
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    }
}

} // namespace

Bytes asUtf8(Bytes content)
{
    std::optional<Encoding> const encoding = encodingOf(content);
    if (!encoding)
        return content;
    Bytes text;
    text.reserve(content.size());
    for (Units units(content, *encoding); !units.atEnd();)
        append(text, nextCode(units));
    return text;
}

} // namespace sgview
