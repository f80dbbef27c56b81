#pragma once

#include <concepts>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace sgview {

/// Writes a page that is valid HTML and well-formed XML at once, whatever its texts hold: they are escaped,
/// and what neither language allows is replaced. Element and attribute names are the caller's own.
class HtmlWriter {
public:
    struct Attribute {
        std::string_view name;
        std::string value;
    };
    using Attributes = std::vector<Attribute>;

    /// Writes the document type.
    /// \param out  outlives the writer; its errors are the caller's to look for
    explicit HtmlWriter(std::ostream& out);

    void text(std::string_view text);

    /// An element with a text in it.
    void element(std::string_view name, Attributes const& attributes, std::string_view content);

    /// An element with what `content` writes in it.
    template <std::invocable Content>
    void element(std::string_view name, Attributes const& attributes, Content const& content)
    {
        begin(name, attributes);
        content();
        end(name);
    }

    /// One that holds nothing: "img", "meta", or a shape of SVG.
    void emptyElement(std::string_view name, Attributes const& attributes);

private:
    void begin(std::string_view name, Attributes const& attributes);
    void writeTag(std::string_view name, Attributes const& attributes);
    void end(std::string_view name);

    std::ostream& out_;
};

} // namespace sgview
