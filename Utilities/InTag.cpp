#include "Utilities/InTag.h"

#include <pugixml.hpp>

#include <algorithm>

namespace {

// Line ends stay as they are, and blanks are text: what was written as a string must come back whole.
constexpr unsigned int parseFlags = pugi::parse_escapes | pugi::parse_cdata | pugi::parse_ws_pcdata;

std::string lineOf(std::string_view document, std::ptrdiff_t offset)
{
    auto const before = document.substr(0, static_cast<std::size_t>(std::max<std::ptrdiff_t>(offset, 0)));
    return "line " + std::to_string(1 + std::ranges::count(before, '\n'));
}

std::string textOf(pugi::xml_node const& node)
{
    std::string text;
    for (pugi::xml_node const& child : node.children())
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata)
            text += child.value();
    return text;
}

std::string pathOf(Tag const& parent, std::string const& name)
{
    return parent.getPath().empty() ? name : parent.getPath() + '/' + name;
}

} // namespace

InTag InTag::parse(std::string_view document)
{
    auto const zero = document.find('\0');
    if (zero != std::string_view::npos)
        throw TagError(lineOf(document, static_cast<std::ptrdiff_t>(zero)), "a zero byte is no text");
    auto tree = std::make_shared<pugi::xml_document>();
    pugi::xml_parse_result const result =
        tree->load_buffer(document.data(), document.size(), parseFlags, pugi::encoding_utf8);
    if (!result)
        throw TagError(lineOf(document, result.offset), result.description());
    return InTag(tree, *tree, "");
}

InTag::InTag(std::shared_ptr<pugi::xml_document const> document, pugi::xml_node const& node, std::string path)
    : Tag(node.name(), std::move(path)),
      document_(std::move(document)),
      node_(std::make_shared<pugi::xml_node const>(node)),
      text_(textOf(node))
{
    text_.imbue(std::locale::classic());
    for (pugi::xml_attribute const& attribute : node.attributes())
        addAttr(attribute.name(), attribute.value());
}

InTag InTag::getChild(std::string const& name) const
{
    auto const children = node_->children(name.c_str());
    auto const count = std::distance(children.begin(), children.end());
    if (count != 1)
        throw TagError(pathOf(*this, name), count == 0 ? "no such element" : "more than one such element");
    return InTag(document_, *children.begin(), pathOf(*this, name));
}

void InTag::checkEndText()
{
    checkEndOfText(text_, getPath());
}

void checkEndOfText(std::istringstream& text, std::string const& place)
{
    if (text.peek() != std::istringstream::traits_type::eof())
        throw TagError(place, inQuotes(text.str()) + " goes on after the value");
}
