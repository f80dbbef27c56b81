#include "Tests/Unit/Report/Page.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace {

/// By a strict reader: pugixml passes over much.
void expectWellFormed(std::string const& source)
{
    std::string const command =
        std::string(PYTHON) + " -c 'import sys, xml.etree.ElementTree as E; E.parse(sys.stdin.buffer)'";
    std::FILE* const reader = ::popen(command.c_str(), "w");
    ASSERT_TRUE(reader);
    EXPECT_EQ(std::fwrite(source.data(), 1, source.size(), reader), source.size());
    EXPECT_EQ(::pclose(reader), 0) << "not well-formed, see above";
}

/// Calls `found` for each node below one, in the document's order.
template <typename Found>
void forEachBelow(pugi::xml_node parent, Found const& found)
{
    for (pugi::xml_node const node : parent.children()) {
        found(node);
        forEachBelow(node, found);
    }
}

} // namespace

Page::Page(std::string source) : source_(std::move(source))
{
    expectWellFormed(source_);
    EXPECT_TRUE(document_.load_string(source_.c_str(), pugi::parse_default | pugi::parse_ws_pcdata));
}

std::vector<pugi::xml_node> Page::elements(std::string_view name) const&
{
    std::vector<pugi::xml_node> elements;
    forEachBelow(document_, [&](pugi::xml_node node) {
        if (node.type() == pugi::node_element && (name == "*" || name == node.name()))
            elements.push_back(node);
    });
    return elements;
}

std::string Page::text() const
{
    return textOf(document_.child("html").child("body"));
}

std::string Page::textOf(pugi::xml_node element)
{
    std::string text;
    forEachBelow(element, [&](pugi::xml_node node) {
        if (node.type() == pugi::node_pcdata)
            text += node.value();
    });
    return text;
}
