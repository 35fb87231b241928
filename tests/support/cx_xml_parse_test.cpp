#include "TAVIX20/support/cx_xml.h"
#include "TAVIX20/support/cx_xml_scan.h"

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using tavix::XmlScan;

namespace {

/// A tree as text, from either library. Depth and the most attributes of an element on the way.
template <typename Node>
struct Dump {
    std::string text;
    std::size_t depth = 0;
    std::size_t attributes = 0;

    void Add(const Node &node, std::size_t level) {
        const bool isElement = node.ToElement() != nullptr;
        depth = std::max(depth, level + (isElement ? 1 : 0));
        text += std::string(level, ' ') + std::to_string(node.Type()) + " " + node.Value() + " " +
                std::to_string(node.Row()) + "," + std::to_string(node.Column());
        if (const auto *declaration = node.ToDeclaration())
            text += std::string("|") + declaration->Version() + "|" + declaration->Encoding() +
                    "|" + declaration->Standalone();
        if (isElement) {
            std::size_t count = 0;
            for (auto *each = node.ToElement()->FirstAttribute(); each != nullptr;
                 each = each->Next(), ++count)
                text += std::string("|") + each->Name() + "=" + each->Value() + "@" +
                        std::to_string(each->Column());
            attributes = std::max(attributes, count);
        }
        text += "\n";
        for (const Node *child = node.FirstChild(); child != nullptr; child = child->NextSibling())
            Add(*child, level + (isElement ? 1 : 0));
    }
};

/// Pieces of texts, by their kind. The last kind is the one that is read as older releases did.
const std::vector<std::string> PIECES[] = {
    {"<a>", "<b>", "<a x='1'>", "<c/>", "<a", "<b ", "/>", ">", "<"},
    {"</a>", "</b>", "</a >", "</a", "/", "_n:.-1", "text", "\xC3\xA9"},
    {"x='1'", "y=\"2\"", "z = 3 ", "x=4", "=", "'", "\""},
    {"&amp;", "&lt;", "&#65;", "&#x41;", "&#x", "&#9 x7;", "&", ";"},
    {"<!-- c -->", "<!--", "-->", "<!DOCTYPE d>", "<?xml ", "?>"},
    {"version='1.0' ", "encoding='UTF-8' ", "encoding=\"euc-kr\" ", "standalone=yes"},
    {" ", "\n", "\r\n", "\t"},
    {"\xEF\xBB\xBF", "\xEF\xBF\xBE", "\xEF", "\xE0", "\xF4", "\x80"},
    {"<![CDATA[", "]]>"},
};

std::string RandomText(std::mt19937 &random) {
    std::string text = random() % 2 == 0 ? "<?xml version=\"1.0\"?><a>" : "";
    for (std::size_t count = random() % 24; count > 0; --count) {
        const auto &kind = PIECES[random() % (std::size(PIECES) - (random() % 8 == 0 ? 0 : 1))];
        text += kind[random() % kind.size()];
    }
    return text;
}

XmlScan Scan(const std::string &padded, int encoding, std::size_t depth, std::size_t attributes) {
    const std::string_view text(padded.data(), padded.size() - tavix::XML_PADDING);
    return tavix::ScanXml(text, static_cast<TiXmlEncoding>(encoding), depth, attributes);
}

} // namespace

TEST(CxXmlParseTest, ReadsRandomTextsAsTinyXmlDoesAndScansThemExactly) {
    std::mt19937 random(5);
    int compared = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::string text = RandomText(random);
        const std::string padded = text + std::string(tavix::XML_PADDING, '\0');
        const int encoding = static_cast<int>(random() % 3);
        SCOPED_TRACE(text + " " + std::to_string(encoding));
        CxXmlBase::SetCondenseWhiteSpace(random() % 4 != 0);

        CxXmlDocument ours;
        const char *const end =
            ours.Parse(text.c_str(), nullptr, static_cast<CxXmlEncoding>(encoding));
        Dump<CxXmlNode> dump;
        dump.Add(ours, 0);

        // The scanner's limits are exact: one less would have stopped it.
        const XmlScan unlimited = Scan(padded, encoding, 1000, 1000);
        ASSERT_EQ(Scan(padded, encoding, dump.depth, dump.attributes).stop, unlimited.stop);
        ASSERT_TRUE(dump.depth == 0 ||
                    Scan(padded, encoding, dump.depth - 1, 1000).stop == XmlScan::Stop::TooDeep);
        ASSERT_TRUE(dump.attributes == 0 ||
                    Scan(padded, encoding, 1000, dump.attributes - 1).stop ==
                        XmlScan::Stop::TooManyAttributes);

        // These are read as older releases did.
        if (!unlimited.repairs.empty() || unlimited.stop != XmlScan::Stop::None)
            continue;
        ++compared;
        TiXmlDocument theirs;
        const char *const theirEnd =
            theirs.Parse(padded.c_str(), nullptr, static_cast<TiXmlEncoding>(encoding));
        Dump<TiXmlNode> expected;
        expected.Add(theirs, 0);
        ASSERT_EQ(dump.text, expected.text);
        ASSERT_EQ(end != nullptr ? end - text.c_str() : -1,
                  theirEnd != nullptr ? theirEnd - padded.c_str() : -1);
        ASSERT_STREQ(ours.ErrorDesc(), theirs.ErrorDesc());
        // There is one number more in the order that programs compare with: 3, out of memory.
        ASSERT_EQ(ours.ErrorId(), theirs.ErrorId() + (theirs.ErrorId() < 3 ? 0 : 1));
        ASSERT_EQ(ours.Error(), theirs.Error());
        ASSERT_EQ(ours.ErrorRow(), theirs.ErrorRow());
        ASSERT_EQ(ours.ErrorCol(), theirs.ErrorCol());
    }
    CxXmlBase::SetCondenseWhiteSpace(true);
    EXPECT_GT(compared, 14000);
}

TEST(CxXmlParseTest, ReadsAsOlderReleasesDid) {
    const struct {
        const char *text;
        int error;
        const char *tree; ///< As StreamOut writes it.
    } cases[] = {
        {"<a x='1' x='2'><b/>", 0, "<a x=\"2\" />"},
        {"<a><b x='1' y='3' x='&lt;'/></a>", 6, "<a><b x=\"&lt;\" y=\"3\" /></a>"},
        {"<a><b x=1 x=2'/></a>", 6, "<a><b x=\"2&apos;\" /></a>"},
        {"<a x=1\" y='2'><b z=don't/></a>", 0, "<a x='1&quot;' y=\"2\"><b z=\"don&apos;t\" /></a>"},
        {"<?xml version=1.0\" encoding=x ?><a/>", 0,
         "<?xml version=\"1.0\"\" encoding=\"x\" ?><a />"},
        {"<a><![CDATA[ b > <c/> ]] ]]>d</a>", 0, "<a><![CDATA[ b > <c/> ]] ]]>d</a>"},
        {"<![CDATA[x]]><a><![CDATA[]]></a>", 0, "<![CDATA[x]]><a><![CDATA[]]></a>"},
        {"<a><![CDATA[b>c</a>", 0, "<a><![CDATA[b>c</a>"},
        {"<a x=1 x=2\"", 4, "<a x=\"1\" />"},
        {"<a><![CDATA[b", 6, "<a><![CDATA[b></a>"},
        // An entity of value 0 stands for a zero, which values that are read as C strings end at.
        {"<a>x&#0;y</a>", 0, "<a>x&#x00;y</a>"},
    };
    for (const auto &each : cases) {
        SCOPED_TRACE(each.text);
        CxXmlDocument document;
        document.Parse(each.text);
        CxOStream out;
        document.StreamOut(&out);
        EXPECT_STREQ(out.c_str(), each.tree);
        EXPECT_EQ(document.ErrorId(), each.error);
        EXPECT_EQ(document.Error(), each.error != 0);
    }
    CxXmlDocument document;
    document.Parse("<a>\n <![CDATA[>]]><b x=\"' y='\" z=1'>\n</b></a>");
    const CxXmlElement *const element = document.RootElement()->FirstChildElement();
    EXPECT_EQ(document.RootElement()->FirstChild()->Type(), CxXmlNode::UNKNOWN);
    EXPECT_STREQ(document.RootElement()->FirstChild()->Value(), "![CDATA[>]]");
    EXPECT_EQ(document.RootElement()->FirstChild()->Column(), 2);
    EXPECT_EQ(element->Row(), 2);
    EXPECT_EQ(element->Column(), 15);
    EXPECT_STREQ(element->LastAttribute()->Value(), "1'");
}

TEST(CxXmlParseTest, RefusesWhatWouldExhaustTheParser) {
    const auto repeat = [](const std::string &piece, std::size_t count) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i)
            text += piece;
        return text;
    };
    std::string attributes;
    for (int i = 0; i < CxXmlDocument::MAX_ATTRIBUTES; ++i)
        attributes += " a" + std::to_string(i) + "=''";
    const std::size_t most = CxXmlDocument::MAX_DEPTH;
    const struct {
        const char *name;
        std::string text;
        int error, row, column;
    } cases[] = {
        {"deepest", repeat("<a>", most) + repeat("</a>", most), 0, 1, 1},
        {"too deep", repeat("<a>\n", most) + "\t<\xC3\xA9>" + repeat("</a>", most), 15,
         static_cast<int>(most) + 1, 5},
        {"100,000 levels", repeat("<a>", 100000), 15, 1, 3 * static_cast<int>(most) + 1},
        {"never closed", repeat("<a>", most), 6, 0, 0},
        {"most attributes", "<a" + attributes + "/>", 0, 1, 1},
        {"too many attributes", "<a" + attributes + " b=''/>", 15, 1,
         static_cast<int>(attributes.size()) + 4},
        {"a name twice among many", "<a" + attributes + " a5=''/>", 0, 1, 1},
        {"deep and long", repeat("<a>", 3999) + repeat("<b/>", 150000), 15, 1,
         3 * 3999 + 4 * 123032 + 1}, // 7,994,001 around the first 3,999, then 3,999 around each
        {"many with many attributes", repeat("<a" + attributes + "/>", 11), 15, 1,
         10 * (static_cast<int>(attributes.size()) + 4) +
             static_cast<int>(attributes.find(" a4572=")) + 4}, // 9,900 squared / 2 in each of 10
        {"long attribute", "<a b='" + std::string(10 << 20, 'x') + "'/>", 0, 1, 1},
        {"many CDATA without an end", repeat("<![CDATA[>", 200000), 0, 1, 1},
        {"entities without an end", "<a>" + repeat("&#x", 200000), 6, 0, 0},
        {"ends in a character", "<a>\xF0", 6, 0, 0},
        {"ends in a tag", "<a b='\xEF", 4, 1, 4},
        {"empty", "", 13, 0, 0},
        {"no tag", "text", 13, 0, 0},
    };
    for (const auto &each : cases) {
        SCOPED_TRACE(each.name);
        CxXmlDocument document;
        document.Parse(each.text.c_str(), nullptr, CXXML_ENCODING_UTF8);
        EXPECT_EQ(document.ErrorId(), each.error) << document.ErrorDesc();
        EXPECT_EQ(document.ErrorRow(), each.row);
        EXPECT_EQ(document.ErrorCol(), each.column);
        EXPECT_EQ(document.NoChildren(), each.error >= 13);
    }
    CxXmlDocument document;
    document.Parse("<a/>");
    document.Parse(nullptr);
    EXPECT_EQ(document.ErrorId(), 13);
    EXPECT_STREQ(document.RootElement()->Value(), "a");
    document.ClearError();
    EXPECT_FALSE(document.Error());
    EXPECT_STREQ(document.ErrorDesc(), "");
}
