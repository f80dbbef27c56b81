#include "Utilities/OutTag.h"

#include <pugixml.hpp>

#include <algorithm>
#include <new>
#include <sstream>

namespace {

bool startsName(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool continuesName(char c)
{
    return startsName(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

void checkName(std::string const& name, std::string const& place)
{
    if (name.empty() || !startsName(name.front()) || !std::ranges::all_of(name, continuesName))
        throw TagError(place, inQuotes(name) + " is no name for an element or attribute");
}

void checkText(std::string const& text, std::string const& place)
{
    if (text.find('\0') != std::string::npos)
        throw TagError(place, "the text holds a zero byte");
}

// The tree reports want of memory by a null handle or false.
template <typename Result>
Result must(Result result)
{
    if (!result)
        throw std::bad_alloc();
    return result;
}

pugi::xml_node appendElement(pugi::xml_node parent, std::string const& name)
{
    pugi::xml_node element = must(parent.append_child(pugi::node_element));
    must(element.set_name(name.c_str()));
    return element;
}

} // namespace

struct OutTag::Tree {
    pugi::xml_document document;
    pugi::xml_node current = document;
};

OutTag::OutTag() : tree_(std::make_unique<Tree>()) {}

OutTag::~OutTag() = default;

void OutTag::writeTag(std::string const& name, std::function<void()> const& content)
{
    checkName(name, getPath());
    pugi::xml_node const parent = tree_->current;
    tree_->current = appendElement(parent, name);
    try {
        content();
    } catch (...) {
        pugi::xml_node unfinished = std::exchange(tree_->current, parent);
        tree_->current.remove_child(unfinished);
        throw;
    }
    tree_->current = parent;
}

void OutTag::writeSingleTag(Tag const& tag)
{
    writeTag(tag.getName(), [this, &tag] {
        for (auto const& [name, value] : tag.getAttributes()) {
            checkName(name, getPath());
            checkText(value, getPath() + '/' + name);
            pugi::xml_attribute attribute = must(tree_->current.append_attribute(name.c_str()));
            must(attribute.set_value(value.c_str()));
        }
    });
}

void OutTag::writeText(std::string const& text)
{
    checkText(text, getPath());
    if (!text.empty())
        must(must(tree_->current.append_child(pugi::node_pcdata)).set_value(text.c_str()));
}

std::string OutTag::getDocument() const
{
    std::ostringstream stream;
    tree_->document.save(stream, "  ", pugi::format_indent | pugi::format_no_declaration,
                         pugi::encoding_utf8);
    return stream.str();
}

std::string OutTag::getPath() const
{
    std::string const path = tree_->current.path();
    return path.empty() ? path : path.substr(1);
}
