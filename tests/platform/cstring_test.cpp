#include "TAVIX20/platform/cstring.h"

#include <gtest/gtest.h>

namespace {

TEST(CStringTest, IsMadeFromAnyTextAndItself) {
    CString text('x', 3);
    text = nullptr;
    text += "hello";
    text = text.GetString() + 1;
    text += text;
    for (const int index : {-1, 7, 8})
        text.SetAt(index, 'z');
    EXPECT_EQ("(" + text + '|' + ('<' + text.Left(1)) + ")", "(elloellz|<e)");
    EXPECT_EQ(text[-1] + text[8], 0);
}

TEST(CStringTest, Compares) {
    const CString a("abc"), b("abd");
    EXPECT_TRUE(a == "abc" && a != b && "ab" != a && a < b && a >= "abc" && "b" > a);
    EXPECT_NE(CString("a\0b", 3), CString("a\0c", 3));
    EXPECT_TRUE(CString() == nullptr);
    EXPECT_GT(CString("\xE9").Compare("z"), 0);
    EXPECT_GT(CString("Z").CompareNoCase("a"), 0);
    EXPECT_EQ(CString("aBc\xC9").CompareNoCase("AbC\xC9"), 0);
}

TEST(CStringTest, PartsAreClamped) {
    const CString text("abcdef");
    const auto parts = [&text](int first, int count) {
        return text.Left(count) + "|" + text.Right(count) + "|" + text.Mid(first) + "|" +
               text.Mid(first, count);
    };
    EXPECT_EQ(parts(1, 2), "ab|ef|bcdef|bc");
    EXPECT_EQ(parts(4, 9), "abcdef|abcdef|ef|ef");
    EXPECT_EQ(parts(6, -1), "|||");
    EXPECT_EQ(parts(9, 1), "a|f||");
    EXPECT_EQ(parts(-2, 1), "a|f|abcdef|a");
    EXPECT_EQ(text.SpanIncluding("cab") + "|" + text.SpanExcluding("ed"), "abc|abc");
}

TEST(CStringTest, CaseOrderAndTrimming) {
    EXPECT_EQ(CString("aZ[`{\xE9").MakeUpper(), "AZ[`{\xE9");
    EXPECT_EQ(CString("aZ[@{\xC9").MakeLower(), "az[@{\xC9");
    EXPECT_EQ(CString(" \t\r\n\v\fa b ").TrimLeft(), "a b ");
    EXPECT_EQ(CString(" \t ").Trim(), "");
    EXPECT_EQ(CString("--a-b-").Trim('-'), "a-b");
    EXPECT_EQ(CString("xyaxy").Trim("yx"), "a");
}

TEST(CStringTest, Finds) {
    const CString text("abcabc");
    EXPECT_EQ(text.Find('c', 3), 5);
    EXPECT_EQ(text.Find("ab", 1), 3);
    for (const int start : {-1, 7}) {
        EXPECT_EQ(text.Find('a', start), -1) << start;
        EXPECT_EQ(text.Find("", start), -1) << start;
    }
    EXPECT_EQ(text.ReverseFind('a'), 3);
    EXPECT_EQ(text.FindOneOf("xcb"), 1);
}

TEST(CStringTest, Edits) {
    CString text("aXbXX");
    EXPECT_EQ(text.Replace('X', 'X'), 0);
    EXPECT_EQ(text.Replace("X", "XX"), 3);
    EXPECT_EQ(text, "aXXbXXXX");
    EXPECT_EQ(text.Replace("XX", nullptr), 3);
    EXPECT_EQ(text.Replace("", "z"), 0);
    EXPECT_EQ(text.Replace('a', 'b'), 1);
    EXPECT_EQ(text, "bb");
    EXPECT_EQ(text.Replace("b", text), 2);
    EXPECT_EQ(text.Remove('b'), 4);
    EXPECT_EQ(text.Insert(5, "bd"), 2);
    EXPECT_EQ(text.Insert(-1, 'a'), 3);
    EXPECT_EQ(text.Insert(2, text), 6);
    EXPECT_EQ(text, "ababdd");
    EXPECT_EQ(text.Delete(1), 5);
    EXPECT_EQ(text.Delete(9, 2), 5);
    EXPECT_EQ(text.Delete(3, 9), 3);
    EXPECT_EQ(text, "aab");
}

TEST(CStringTest, FormatsItsOwnTextAtAnyLength) {
    CString text;
    text.Format("%03d-%.2f%%", 7, 1.5);
    text.Format("[%s]", text.GetString());
    text.AppendFormat("%s", text.GetString());
    EXPECT_EQ(text, "[007-1.50%][007-1.50%]");
    text.Format("%*d", 5000, 1);
    EXPECT_EQ(text.GetLength(), 5000);
}

TEST(CStringTest, Tokenizes) {
    const auto split = [](const CString &text, const char *separators) {
        CString joined;
        int start = 0;
        for (CString token = text.Tokenize(separators, start); start != -1;
             token = text.Tokenize(separators, start))
            joined += "<" + token + ">";
        return joined;
    };
    EXPECT_EQ(split("%First Second#Third", "% #"), "<First><Second><Third>");
    EXPECT_EQ(split(",,a,b,,", ","), "<a><b>");
    EXPECT_EQ(split("a b", ""), "<a b>");
}

TEST(CStringTest, BufferIsWritable) {
    CString text("abc");
    text.GetBuffer(40)[39] = 'z';
    text.ReleaseBuffer(99);
    EXPECT_EQ(text[39], 'z');
    text.GetBuffer()[1] = '\0';
    text.ReleaseBuffer();
    EXPECT_EQ(text, "a");
}

} // namespace
