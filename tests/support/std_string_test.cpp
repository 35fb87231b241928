#include "TAVIX20/support/std_string.h"

#include "TAVIX20/platform/collections.h"
#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/variant_array.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

namespace {

TEST(CStdStringTest, HoldsTheTextOfWhatItIsMadeOf) {
    CStdString text(INT_MIN);
    EXPECT_EQ(text, "-2147483648");
    text = LONG_MAX;
    EXPECT_EQ(text, "9223372036854775807");
    text = 0.1;
    EXPECT_EQ(text.ToString(), "0.1");
    text = CString("a\0b", 3);
    EXPECT_EQ(text.URLEncode(), "a%00b");
    text = static_cast<const char *>(nullptr);
    EXPECT_EQ(text, "");
    EXPECT_EQ(CStdString::Format("%d,%s", 7, "x"), CStdString("7,x"));
}

TEST(CStdStringTest, DoublesReadBackExactly) {
    const struct {
        double value;
        const char *text;
    } cases[] = {
        {100000.0, "100000"}, {-2.5, "-2.5"},        {1e22, "1e+22"},
        {1e-5, "0.00001"},    {1.25e-6, "1.25e-06"}, {0.1 + 0.2, "0.30000000000000004"},
        {5e-324, "5e-324"},   {-HUGE_VAL, "-inf"},   {12345678901234567.0, "12345678901234568"}};
    for (const auto &[value, text] : cases) {
        EXPECT_EQ(CStdString(value), text);
        EXPECT_EQ(CStdString(text).ToDouble(), value) << text;
    }
}

TEST(CStdStringTest, ReadsTheNumberAtTheStart) {
    const struct {
        const char *text;
        int asInt;
        long asLong;
        double asDouble;
    } cases[] = {{"", 0, 0, 0.0},
                 {" \t\n\v\f\r+12.75x", 12, 12, 12.75},
                 {"-7,5", -7, -7, -7.0},
                 {"+-5", 0, 0, 0.0},
                 {"1e3", 1, 1, 1000.0},
                 {"2147483648", INT_MAX, 2147483648, 2147483648.0},
                 {"-99999999999999999999", INT_MIN, LONG_MIN, -1e20},
                 {"-1e999", -1, -1, -HUGE_VAL}};
    for (const auto &[text, asInt, asLong, asDouble] : cases) {
        const CStdString string(text);
        EXPECT_TRUE(string.ToInt() == asInt && string.ToBOOL() == asInt) << text;
        EXPECT_TRUE(string.ToLong() == asLong && string.ToDouble() == asDouble) << text;
    }
}

TEST(CStdStringTest, CurrencyHasCommasBeforeThePoint) {
    const char *const cases[][2] = {
        {"1234567", "1,234,567"},        {"1234.5", "1,234.5"}, {".5", ".5"},
        {"-123456", "-,123,456"},        {"123", "123"},        {"1234,56", "1,234,56"},
        {"1234.5678.9", "1,234.5678.9"}, {"1,234", "1,,234"}};
    for (const auto &[text, expected] : cases)
        EXPECT_EQ(CStdString(text).ToCurrencyString(), expected);
}

TEST(CStdStringTest, Tests) {
    const CStdString text("File.BMP");
    EXPECT_EQ(text.IsEqualNoCase("fILE.bmp"), 1);
    EXPECT_EQ(text.IsEqualNoCase("file"), 0);
    EXPECT_EQ(text.IsEqualNoCase("FILES", 4), 1);
    EXPECT_EQ(text.IsEqualNoCase("FILES", 5), 0);
    EXPECT_EQ(text.IsEqualNoCase("file.bmp", 99), 1);
    EXPECT_EQ(text.IsEqualReservedNoCase(".bmp", 4), 1);
    EXPECT_EQ(text.IsEqualReservedNoCase(".bmp", 3), 0);
    EXPECT_EQ(text.IsEqualReservedNoCase(nullptr, -1), 1);
    const struct {
        const char *text;
        int numeric;
        int alphabetic;
    } cases[] = {{"", 1, 1},     {"0189", 1, 0}, {"-1", 0, 0},   {"1.5", 0, 0},
                 {"azAZ", 0, 1}, {"a b", 0, 0},  {"\xE9", 0, 0}, {"@[`{/:", 0, 0}};
    for (const auto &[tested, numeric, alphabetic] : cases) {
        EXPECT_EQ(CStdString(tested).IsNumeric(), numeric) << tested;
        EXPECT_EQ(CStdlib::IsNumeric(tested), numeric) << tested;
        EXPECT_EQ(CStdString(tested).IsAlphabetics(), alphabetic) << tested;
    }
    CStdString spaced(" \t a b\r\n");
    EXPECT_EQ(spaced.TrimAll(), "a b");
    EXPECT_EQ(spaced, "a b");
    EXPECT_EQ(spaced.Zip() + spaced.UnZip(), 2);
    EXPECT_EQ(spaced, "a b");
}

TEST(CStdStringTest, SplitsAtAnyDelimiter) {
    const struct {
        const char *text;
        const char *delimiters;
        const char *joined;
        int count;
    } cases[] = {{"a,,b", ",", "a||b", 3},   {"a,", ",", "a|", 2},        {",", ",", "|", 2},
                 {"x", ",", "x", 1},         {"a,b;c", ";,", "a|b|c", 3}, {"a,b", "", "a,b", 1},
                 {"a,b", nullptr, "a,b", 1}, {"\xFF", "\xFF", "|", 2},    {"", ",", "", 0}};
    for (const auto &[text, delimiters, joined, count] : cases) {
        CVariantArray values;
        values.Add("before");
        EXPECT_EQ(values.Split(text, delimiters), count) << text;
        EXPECT_EQ(values.ToString('|'), joined);

        const int appended = count > 0 ? count + 2 : 0;
        values.RemoveAll();
        values.Add(1);
        values.Add(2);
        EXPECT_EQ(CStdString(text).Split(delimiters, values), appended) << text;
        EXPECT_EQ(values.ToString('|'), CString("1|2") + (count > 0 ? "|" : "") + joined);

        CStringArray strings;
        strings.SetSize(2);
        EXPECT_EQ(CStdString(text).Split(delimiters, strings), appended) << text;
        EXPECT_EQ(strings.GetSize(), count + 2);
    }
}

TEST(CStdStringTest, TakesPathsApart) {
    // Text, what stands before the last separator, behind it, and the latter's two parts.
    const char *const cases[][5] = {{"", "", "", "", ""},
                                    {"a.bmp", "a.bmp", "a.bmp", "a", "bmp"},
                                    {"C:\\x/y\\a.b.bmp", "C:\\x/y", "a.b.bmp", "a.b", "bmp"},
                                    {"C:\\x/y.z", "C:", "x/y.z", "x/y", "z"},
                                    {"/x.d/a", "/x.d", "a", "a", ""},
                                    {"x/", "x", "", "", ""},
                                    {"/h/.rc", "/h", ".rc", ".rc", ""},
                                    {"..", "..", "..", "..", ""},
                                    {"a.", "a.", "a.", "a", ""}};
    for (const auto &[text, path, name, bare, ext] : cases) {
        const CStdString string(text);
        EXPECT_EQ(string.GetPath(), path) << text;
        EXPECT_EQ(string.GetFileName(), name) << text;
        EXPECT_EQ(string.GetFileNameNoExt() + "|" + string.GetExt(), CString(bare) + "|" + ext);
        CString folder(text), splitName, splitExt;
        CStdlib::SplitPath(folder, folder, splitName, splitExt);
        EXPECT_EQ(folder, CString(path) == text ? "" : path) << text;
        EXPECT_EQ(splitName + "|" + splitExt, CString(bare) + "|" + ext) << text;
    }
    const char path[] = "/x.y/a.b.c";
    EXPECT_EQ(CStdlib::GetParsePathName(path) + " " + CStdlib::GetParseFileName(path) + " " +
                  CStdlib::GetParseFileNameNoExt(path) + " " + CStdlib::GetParseExt(path) + " " +
                  CStdlib::GetExtName(path),
              "/x.y a.b.c a.b c c");
    for (const char *const extension : {"bmp", ".bmp", "BMP"})
        EXPECT_EQ(CStdString("a.bmp").GetAddExt(extension), "a.bmp");
    EXPECT_EQ(CStdString("a.bmp").GetAddExt(".gz"), "a.bmp.gz");
    EXPECT_EQ(CStdlib::GetAddExtName("/x.bmp/a", "bmp"), "/x.bmp/a.bmp");
    EXPECT_EQ(CStdlib::GetAddExtName("a", nullptr), "a");
    EXPECT_EQ(CStdString("a\\b/c").ToUnixPath() + CStdlib::ToWindowsPath("a\\b/c"), "a/b/ca\\b\\c");
}

TEST(CStdStringTest, UrlsGoThereAndBack) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    const CStdString all{CString(bytes)};
    EXPECT_EQ(CStdString(all.URLEncode()).URLDecode(), all.ToString());
    const char *const cases[][2] = {
        {"a b/\xE9", "a%20b%2F%E9"}, {"Az09-._~", "Az09-._~"}, {"+%", "%2B%25"}};
    for (const auto &[plain, encoded] : cases) {
        EXPECT_EQ(CStdlib::URLEncode(plain), encoded);
        EXPECT_EQ(CStdlib::URLDecode(encoded), plain);
    }
    EXPECT_EQ(CStdlib::URLDecode("a+b%2%zz%-1%4g%e9%"), "a b%2%zz%-1%4g\xE9%");
}

TEST(CStdStringTest, TokensChangeTheText) {
    CStdString text("A=1;B=2");
    EXPECT_EQ(text.SetTokenValue("A", "5").GetTokenValue("A"), "5");
    EXPECT_EQ(text, "B=2;A=5");
    text.RemoveTokenValue("B");
    EXPECT_EQ(text, "A=5");
}

} // namespace
