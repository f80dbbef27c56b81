#pragma once

#include "Utilities/Color.h"
#include "Utilities/InTag.h"
#include "Utilities/OutTag.h"

#include <array>
#include <string>

/// How a value of type T is written as a child element and read back; load() throws TagError, and so does
/// save() for what OutTag refuses.
///
/// For a T that streams print and extract, such as float and bool: an element whose text is the value.
template <typename T>
class SimpleTypeHandler {
public:
    static void save(OutTag& parent, std::string const& name, T const& value)
    {
        parent.writeTag(name, [&] { parent << value; });
    }

    [[nodiscard]] static T load(InTag const& parent, std::string const& name)
    {
        InTag tag = parent.getChild(name);
        T value{};
        tag >> value;
        tag.checkEndText();
        return value;
    }
};

/// An element whose whole text is the string, blanks and emptiness included.
template <>
class SimpleTypeHandler<std::string> {
public:
    static void save(OutTag& parent, std::string const& name, std::string const& value);
    [[nodiscard]] static std::string load(InTag const& parent, std::string const& name);
};

/// An empty element with an attribute for each component.
template <>
class SimpleTypeHandler<Color> {
public:
    static constexpr std::array<char const*, 4> _attrs = {"r", "g", "b", "a"};

    static void save(OutTag& parent, std::string const& name, Color const& value);
    [[nodiscard]] static Color load(InTag const& parent, std::string const& name);
};
