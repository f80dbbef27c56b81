#pragma once

#include "Utilities/Strings.h"
#include "Utilities/Tag.h"
#include "Utilities/TagError.h"

#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>

/// Writes elements, one after another and one within another, as XML text in UTF-8.
///
/// What is written must be XML's to hold: a name that is none, a text with a zero byte and a number that is
/// not finite are refused with a TagError. Bytes that are not UTF-8 are passed on as they are.
class OutTag {
public:
    OutTag();
    ~OutTag();

    OutTag(OutTag const&) = delete;
    OutTag& operator=(OutTag const&) = delete;

    /// Writes an element around what `content` writes; nothing of it is left where `content` throws.
    void writeTag(std::string const& name, std::function<void()> const& content);

    /// Writes an element that has attributes and nothing in it.
    void writeSingleTag(Tag const& tag);

    /// Adds text to the element being written.
    void writeText(std::string const& text);

    /// Adds a value to the element being written, as stringize() prints it.
    template <typename T>
    OutTag& operator<<(T const& value);

    /// All that has been written.
    [[nodiscard]] std::string getDocument() const;

private:
    struct Tree;

    [[nodiscard]] std::string getPath() const;

    std::unique_ptr<Tree> tree_;
};

/// A value's text. Throws TagError for a number that no stream would read back.
template <typename T>
[[nodiscard]] std::string tagText(T const& value, std::string const& place)
{
    std::string text = stringize(value);
    if constexpr (std::is_floating_point_v<T>)
        if (!std::isfinite(value))
            throw TagError(place, text + " is not a finite number");
    return text;
}

template <typename T>
OutTag& OutTag::operator<<(T const& value)
{
    writeText(tagText(value, getPath()));
    return *this;
}

/// Adds a value to a tag as an attribute. Throws TagError as tagText() does.
template <typename T>
void OutTag_setAttr(Tag& tag, std::string const& name, T const& value)
{
    tag.addAttr(name, tagText(value, tag.getPath() + '/' + name));
}
