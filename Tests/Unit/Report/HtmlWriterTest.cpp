#include "Viewer/Report/HtmlWriter.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

TEST(HtmlWriter, NestsElements)
{
    std::ostringstream out;
    sgview::HtmlWriter html(out);
    html.element("p", {{"class", "note"}}, [&] {
        html.text("one ");
        html.element("b", {}, "two");
        html.emptyElement("br", {});
    });
    EXPECT_EQ(out.str(), "<!DOCTYPE html>\n<p class=\"note\">one <b>two</b><br />\n</p>\n");
}

TEST(HtmlWriter, EscapesTexts)
{
    std::ostringstream out;
    sgview::HtmlWriter html(out);
    html.element("p", {}, "<script> & \"it's\" ]]> \xFF");
    EXPECT_EQ(out.str(), "<!DOCTYPE html>\n<p>&lt;script&gt; &amp; \"it's\" ]]&gt; \uFFFD</p>");
}

TEST(HtmlWriter, EscapesAttributes)
{
    std::ostringstream out;
    sgview::HtmlWriter html(out);
    html.emptyElement("img", {{"alt", "\" onerror='run()' <b> &amp;"}});
    EXPECT_EQ(out.str(), "<!DOCTYPE html>\n<img alt=\"&quot; onerror='run()' &lt;b&gt; &amp;amp;\" />\n");
}

} // namespace
