#pragma once

#include "Utilities/Strings.h"
#include "Utilities/Tag.h"
#include "Utilities/TagError.h"

#include <memory>
#include <sstream>
#include <string>
#include <string_view>

namespace pugi {
class xml_document;
class xml_node;
} // namespace pugi

/// An element that has been read: its attributes, its text as a stream, its children by name.
///
/// The text is that of the element itself, children's not included, byte for byte: no blank and no line end
/// is changed. Streams read numbers as the classic locale writes them.
class InTag : public Tag {
public:
    /// Reads XML text in UTF-8. What comes back has no name; its children are the outermost elements.
    /// Document types and the entities they define are not looked at. Throws TagError.
    [[nodiscard]] static InTag parse(std::string_view document);

    /// The child of that name. Throws TagError unless there is exactly one.
    [[nodiscard]] InTag getChild(std::string const& name) const;

    /// The whole text.
    [[nodiscard]] std::string getText() const { return text_.str(); }

    /// Extracts a value from what is left of the text. Throws TagError.
    template <typename T>
    InTag& operator>>(T& value);

    /// Throws TagError if anything is left of the text, be it a blank.
    void checkEndText();

private:
    InTag(std::shared_ptr<pugi::xml_document const> document, pugi::xml_node const& node, std::string path);

    std::shared_ptr<pugi::xml_document const> document_;
    std::shared_ptr<pugi::xml_node const> node_;
    std::istringstream text_;
};

/// Extracts a value from a text. Throws TagError.
template <typename T>
void extractText(std::istringstream& text, T& value, std::string const& place)
{
    if (!(text >> value))
        throw TagError(place, inQuotes(text.str()) + " cannot be read as such a value");
}

/// Throws TagError if anything is left of a text.
void checkEndOfText(std::istringstream& text, std::string const& place);

template <typename T>
InTag& InTag::operator>>(T& value)
{
    extractText(text_, value, getPath());
    return *this;
}

/// The value of an attribute, which must hold nothing else. Throws TagError.
template <typename T>
[[nodiscard]] T InTag_readAttr(Tag const& tag, std::string const& name)
{
    std::string const place = tag.getPath() + '/' + name;
    std::istringstream text(tag.getAttr(name));
    text.imbue(std::locale::classic());
    T value{};
    extractText(text, value, place);
    checkEndOfText(text, place);
    return value;
}
