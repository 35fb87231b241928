#include "TAVIX20/platform/cstring.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace {

TEST(CStringTest, ConstructsAndAssigns) {
    const char *null = nullptr;
    EXPECT_TRUE(CString(null).IsEmpty());
    EXPECT_TRUE(CString(null, 4).IsEmpty());
    EXPECT_EQ(CString('x', 3), "xxx");
    CString text = std::string("hello");
    text = text.GetString() + 1;
    EXPECT_EQ(text, "ello");
    text += text;
    EXPECT_EQ("(" + text + '|' + text.Left(1) + ")", "(elloello|e)");
    EXPECT_EQ('<' + CString("hi"), "<hi");
    text = null;
    EXPECT_TRUE(text.IsEmpty());
}

TEST(CStringTest, AccessOutsideTheStringIsHarmless) {
    CString text("abc");
    for (const int index : {-1, 3, 100}) {
        text.SetAt(index, 'x');
        EXPECT_EQ(text.GetAt(index), '\0') << index;
    }
    text.SetAt(2, 'z');
    EXPECT_EQ(text, "abz");
    EXPECT_EQ(text[2], 'z');
}

TEST(CStringTest, Compares) {
    const CString a("abc");
    const CString b("abd");
    EXPECT_TRUE(a == "abc" && "abc" == a && a != b && a != "abcd" && "ab" != a);
    EXPECT_TRUE(a < b && b > a && a <= "abc" && a >= "abc" && "abb" < a && "b" > a);
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
    EXPECT_EQ(text.SpanIncluding("cab") + "|" + text.SpanIncluding(""), "abc|");
    EXPECT_EQ(text.SpanExcluding("ed") + "|" + text.SpanExcluding("x"), "abc|abcdef");
}

TEST(CStringTest, CaseOrderAndTrimming) {
    EXPECT_EQ(CString("aZ[`{\xE9").MakeUpper(), "AZ[`{\xE9");
    EXPECT_EQ(CString("aZ[@{\xC9").MakeLower(), "az[@{\xC9");
    EXPECT_EQ(CString("abc").MakeReverse(), "cba");
    EXPECT_EQ(CString(" \t\r\n\v\fa b ").TrimLeft(), "a b ");
    EXPECT_EQ(CString(" \t ").Trim(), "");
    EXPECT_EQ(CString("--a-b-").Trim('-'), "a-b");
    EXPECT_EQ(CString("xyaxy").Trim("yx"), "a");
    EXPECT_EQ(CString("xa").Trim(""), "xa");
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
    EXPECT_EQ(text.ReverseFind('x'), -1);
    EXPECT_EQ(text.FindOneOf("xcb"), 1);
    EXPECT_EQ(text.FindOneOf(""), -1);
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
    text.Truncate(9);
    EXPECT_EQ(text, "aab");
    text.Truncate(1);
    EXPECT_EQ(text, "a");
}

TEST(CStringTest, FormatsItsOwnTextAtAnyLength) {
    CString text;
    text.Format("%03d-%.2f%%", 7, 1.5);
    EXPECT_EQ(text, "007-1.50%");
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
             token = text.Tokenize(separators, start)) {
            joined += "<" + token + ">";
        }
        return joined;
    };
    EXPECT_EQ(split("%First Second#Third", "% #"), "<First><Second><Third>");
    EXPECT_EQ(split(",,a,b,,", ","), "<a><b>");
    EXPECT_EQ(split("a b", ""), "<a b>");
    EXPECT_EQ(split(",,", ","), "");
}

TEST(CStringTest, BufferIsWritable) {
    CString text("abc");
    char *buffer = text.GetBuffer(10);
    EXPECT_STREQ(buffer, "abc");
    buffer[1] = '\0';
    text.ReleaseBuffer();
    EXPECT_EQ(text, "a");
    text.GetBuffer(4)[1] = 'z';
    text.ReleaseBuffer(2);
    EXPECT_EQ(text, "az");
    std::fill_n(text.GetBuffer(40), 40, 'q');
    text.ReleaseBuffer(99);
    EXPECT_EQ(text, CString('q', 40));
}

} // namespace
