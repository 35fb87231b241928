#include "support/xml_text.h"

#include <gtest/gtest.h>

namespace {

const std::string DECLARED = "<?xml version=\"1.0\" encoding=\"euc-kr\" ?>\r\n";

} // namespace

TEST(CxXmlPrintTest, WritesDocumentsToTheByte) {
    const struct {
        const char *text;
        std::string printed;
        const char *streamed;
    } cases[] = {
        {"<a/>", DECLARED + "<a />\r\n", "<a />"},
        {"<?xml version='1.0'?><a/>", "<?xml version=\"1.0\" ?>\r\n<a />\r\n",
         "<?xml version=\"1.0\" ?><a />"},
        {"<?xml standalone='yes' encoding='x'?>", "<?xml encoding=\"x\" standalone=\"yes\" ?>\r\n",
         "<?xml encoding=\"x\" standalone=\"yes\" ?>"},
        {"<!--c--><?xml?><a/>", DECLARED + "<!--c-->\r\n<?xml ?>\r\n<a />\r\n",
         "<!--c--><?xml ?><a />"},
        {"\xEF\xBB\xBF<a>t</a>", DECLARED + "<a>t</a>\r\n", "<a>t</a>"},
        {"<a><b>t</b>u<c><d/></c></a>",
         DECLARED + "<a>\r\n    <b>t</b>u\r\n    <c>\r\n        <d />\r\n    </c>\r\n</a>\r\n",
         "<a><b>t</b>u<c><d /></c></a>"},
        {"<a>t<b/></a>", DECLARED + "<a>t\r\n    <b />\r\n</a>\r\n", "<a>t<b /></a>"},
        {"<a><!-- c --></a><!D d>", DECLARED + "<a>\r\n    <!-- c -->\r\n</a>\r\n<!D d>\r\n",
         "<a><!-- c --></a><!D d>"},
        {"<a><b><!D d></b></a>",
         DECLARED + "<a>\r\n    <b>\r\n        <!D d>\r\n    </b>\r\n</a>\r\n",
         "<a><b><!D d></b></a>"},
        {"<a x='1' y='\"'/>", DECLARED + "<a x=\"1\" y='&quot;' />\r\n",
         "<a x=\"1\" y='&quot;' />"},
        {"<a x='&amp;&lt;&gt;&#9;'>'\"&amp;#x41;&#31;</a>",
         DECLARED + "<a x=\"&amp;&lt;&gt;&#x09;\">&apos;&quot;&amp;#x41;&#x1F;</a>\r\n",
         "<a x=\"&amp;&lt;&gt;&#x09;\">&apos;&quot;&amp;#x41;&#x1F;</a>"},
        {"<?xml encoding='UTF-8'?><a>\xC3\xA9\x7F</a>",
         "<?xml encoding=\"UTF-8\" ?>\r\n<a>\xC3\xA9\x7F</a>\r\n",
         "<?xml encoding=\"UTF-8\" ?><a>\xC3\xA9\x7F</a>"},
    };
    for (const auto &each : cases) {
        SCOPED_TRACE(each.text);
        CxXmlDocument document;
        document.Parse(each.text);
        EXPECT_EQ(Printed(document), each.printed);
        EXPECT_EQ(Streamed(document), each.streamed);
        // What is written reads back as the same.
        CxXmlDocument again;
        again.Parse(each.printed.c_str());
        EXPECT_EQ(Printed(again), each.printed);
    }
    EXPECT_EQ(DECLARED.size(), 42U);
    EXPECT_EQ(Printed(CxXmlDocument()), "");
}

TEST(CxXmlPrintTest, WritesSingleNodesAtADepth) {
    CxXmlDocument document;
    document.Parse("<a><b x='1'>t</b><!--c--><!D d><?xml version='1.0'?>u</a>");
    const CxXmlElement *const root = document.RootElement();
    const char *const printed[] = {"        <b x=\"1\">t</b>", "        <!--c-->", "        <!D d>",
                                   "<?xml version=\"1.0\" ?>", "u"};
    const CxXmlNode *child = nullptr;
    for (const char *const each : printed) {
        child = root->IterateChildren(child);
        EXPECT_EQ(Printed(*child, 2), each);
        EXPECT_EQ(Printed(*child, -1), Streamed(*child));
    }
    EXPECT_EQ(Printed(*root->FirstChildElement()->FirstAttribute(), 2), "x=\"1\"");
    EXPECT_EQ(Printed(document, 1), DECLARED + "    " + Printed(*root, 1).substr(4) + "\r\n");
    document.Print();
}

TEST(CxXmlPrintTest, LetsDerivedNodesPrintThemselves) {
    struct Raw : CxXmlText {
        using CxXmlText::CxXmlText;
        void Print(CxArchive &archive, int) const override { archive.Write("<&>", 3); }
        void StreamOut(CxOStream *stream) const override { *stream << "<&>"; }
        CxXmlNode *Clone() const override { return new Raw(*this); }
    };
    CxXmlDocument document;
    CxXmlNode *const root = document.InsertEndChild(CxXmlElement("a"));
    root->LinkEndChild(new Raw(""));
    const CxXmlDocument copy(document);
    EXPECT_EQ(Printed(copy), DECLARED + "<a><&></a>\r\n");
    root->InsertEndChild(CxXmlElement("b"));
    EXPECT_EQ(Printed(document), DECLARED + "<a><&>\r\n    <b />\r\n</a>\r\n");
    EXPECT_EQ(Streamed(document), "<a><&><b /></a>");
}
