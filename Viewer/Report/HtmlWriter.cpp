#include "Viewer/Report/HtmlWriter.h"

#include "Viewer/Report/PlainText.h"

#include <ostream>

namespace sgview {

namespace {

/// Quotation marks are left as they are: a style sheet, which is a text, needs its own.
std::string escaped(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (char const letter : asPlainText(text)) {
        if (letter == '&')
            result += "&amp;";
        else if (letter == '<')
            result += "&lt;";
        else if (letter == '>')
            result += "&gt;";
        else
            result += letter;
    }
    return result;
}

std::string inQuotationMarks(std::string_view text)
{
    std::string result = "\"";
    for (char const letter : escaped(text)) {
        if (letter == '"')
            result += "&quot;";
        else
            result += letter;
    }
    return result + '"';
}

} // namespace

HtmlWriter::HtmlWriter(std::ostream& out) : out_(out)
{
    out_ << "<!DOCTYPE html>\n";
}

void HtmlWriter::text(std::string_view text)
{
    out_ << escaped(text);
}

void HtmlWriter::element(std::string_view name, Attributes const& attributes, std::string_view content)
{
    writeTag(name, attributes);
    out_ << '>' << escaped(content) << "</" << name << '>';
}

void HtmlWriter::emptyElement(std::string_view name, Attributes const& attributes)
{
    writeTag(name, attributes);
    out_ << " />\n";
}

void HtmlWriter::begin(std::string_view name, Attributes const& attributes)
{
    writeTag(name, attributes);
    out_ << '>';
}

void HtmlWriter::writeTag(std::string_view name, Attributes const& attributes)
{
    out_ << '<' << name;
    for (Attribute const& attribute : attributes)
        out_ << ' ' << attribute.name << '=' << inQuotationMarks(attribute.value);
}

void HtmlWriter::end(std::string_view name)
{
    out_ << "</" << name << ">\n";
}

} // namespace sgview
