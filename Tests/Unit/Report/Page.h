#pragma once

#include <pugixml.hpp>

#include <string>
#include <string_view>
#include <vector>

/// A written page, to be asked what is in it.
class Page {
public:
    /// Fails the test if the page is not well-formed XML.
    explicit Page(std::string source);

    [[nodiscard]] std::string const& source() const { return source_; }

    /// All elements with a name, or of any name for "*", in the page's order.
    [[nodiscard]] std::vector<pugi::xml_node> elements(std::string_view name) const&;
    std::vector<pugi::xml_node>
    elements(std::string_view name) && = delete; ///< they live as long as the page

    /// Of the whole page, or of an element: its texts without tags.
    [[nodiscard]] std::string text() const;
    [[nodiscard]] static std::string textOf(pugi::xml_node element);

private:
    std::string source_;
    pugi::xml_document document_;
};
