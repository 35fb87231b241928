#include "TAVIX20/platform/collections.h"
#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/variant.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <string>

namespace {

TEST(CStdlibTest, CalculatesFromLeftToRight) {
    const struct {
        const char *expression;
        double value;
    } cases[] = {
        {"2+3*4", 20}, {"-5+3", -2},       {"1.5 * 2", 3},       {"3-", 3},       {"abc", 0},
        {"", 0},       {"3--2", 1},        {"3*-2", 1},          {"(2+3)*4", 20}, {"1a2", 12},
        {"*5", 0},     {".", 0},           {"1.2.3", 1.2},       {"10/4/5", 0.5}, {"1e2", 12},
        {"+7", 7},     {"10/0", HUGE_VAL}, {"-10/0", -HUGE_VAL}, {nullptr, 0}};
    for (const auto &[expression, value] : cases)
        EXPECT_EQ(CStdlib::GetCalcString(expression), value) << (expression ? expression : "null");
    EXPECT_TRUE(std::isnan(CStdlib::GetCalcString("0/0")));

    std::string sum = "0";
    for (int i = 0; i < 100000; ++i)
        sum += "+1";
    EXPECT_EQ(CStdlib::GetCalcString(sum.c_str()), 100000);
    EXPECT_EQ(CStdlib::GetCalcString(std::string(1000, '9').c_str()), HUGE_VAL);
}

TEST(CStdlibTest, TokenStrings) {
    const struct {
        const char *text, *key, *value, *removed, *setTo5;
    } cases[] = {{"A=1;B=2", "A", "1", "B=2", "B=2;A=5"},
                 {"A=1;B=2", "B", "2", "A=1;", "A=1;B=5"},
                 {"A=1;B=2;", "A", "1", "B=2;", "B=2;A=5"},
                 {"", "A", "", "", "A=5"},
                 {nullptr, "A", "", "", "A=5"},
                 {"A=;B=2", "A", "", "B=2", "A=;B=2;A=5"},   // An empty value stays beside the new.
                 {"XA=1;A=2", "A", "1", "XA=2", "XA=2;A=5"}, // Found inside another name.
                 {"a=1", "A", "", "a=1", "a=1;A=5"},
                 {"B=2;A", "A", "", "B=2;", "B=2;A;A=5"},
                 {"B=2;A=", "A", "", "B=2;", "B=2;A=;A=5"},
                 {"A:1", "A", "1", "", "A=5"},
                 {"A=1;;B=2", "B", "2", "A=1;;", "A=1;;B=5"},
                 {"A=1=2;B=2", "A", "1=2", "B=2", "B=2;A=5"},
                 {"A=1;B=2", "", "=1", "B=2", "B=2;=5"}}; // The empty key is at the start.
    for (const auto &[text, key, value, removed, setTo5] : cases) {
        EXPECT_EQ(CStdlib::GetTokenValue(text, key), value) << text << " " << key;
        EXPECT_EQ(CStdlib::RemoveTokenValue(text, key), removed) << text << " " << key;
        EXPECT_EQ(CStdlib::SetTokenValue(text, key, "5"), setTo5) << text << " " << key;
    }
    EXPECT_EQ(CStdlib::SetTokenValue("A=1", "A", nullptr), "A=");
    EXPECT_EQ(CStdlib::GetTokenValue("A=1", nullptr), "=1");
}

TEST(CStdlibTest, TextIsConverted) {
    EXPECT_EQ(CStdlib::AsciiToUTF8("a\xE9"), "a\xC3\xA9");
    EXPECT_EQ(CStdlib::UTF8ToAscii("a\xC3\xA9\xE2\x82\xAC"), "a\xE9?");
    EXPECT_EQ(CStdlib::UTF8ToAscii("\xC3"), "?");
    EXPECT_EQ(CStdlib::TextToHex("AZ\xFF"), "415AFF");
    EXPECT_EQ(CStdlib::HexToText("415aFF"), "AZ\xFF");
    for (const char *const wrong : {"4", "4g", "0x41", "4 1 "})
        EXPECT_EQ(CStdlib::HexToText(wrong), "") << wrong;
    EXPECT_EQ(CStdlib::TextToNoChars("a-b_c-", "-_"), "abc");
    EXPECT_EQ(CStdlib::TextToNoSpace(" a\tb\r\nc "), "abc");
    EXPECT_EQ(CStdlib::LongToStr(LONG_MIN), "-9223372036854775808");
    EXPECT_EQ(CStdlib::ReverseFind("abab", "ab") * 10 + CStdlib::ReverseFind("abab", "c"), 19);
    const struct {
        const char *hex;
        long value;
    } cases[] = {{"fF", 255},
                 {" 0x10h", 16},
                 {"", 0},
                 {"xyz", 0},
                 {"-1", 0},
                 {"7FFFFFFFFFFFFFFF", LONG_MAX},
                 {"8000000000000000", LONG_MAX},
                 {"FFFFFFFFFFFFFFFFF", LONG_MAX}};
    for (const auto &[hex, value] : cases)
        EXPECT_EQ(CStdlib::HexStrToDecimal(hex), value) << hex;

    CStringArray arguments;
    EXPECT_EQ(CStdlib::GetParseArgs(" a  \"b c\"d \"\" \"e ", arguments), 4);
    ASSERT_EQ(arguments.GetSize(), 4);
    EXPECT_EQ(arguments[0] + "|" + arguments[1] + "|" + arguments[2] + "|" + arguments[3],
              "a|b cd||e ");
    EXPECT_EQ(CStdlib::GetParseArgs(nullptr, arguments), 0);
}

TEST(CStdlibTest, KoreanTextIsKeysAgain) {
    const char *const cases[][2] = {
        {"\uC548\uB155\uD558\uC138\uC694 1", "dkssudgktpdy 1"},
        {"\uAC12\uC758\uBDC1\uD7A3", "rkqtdmlqnpfrglg"}, // the last is the last syllable of all
        {"\u3131\u3133\u314E\u314F\u3158\u3163", "rrtgkhkl"},
        {"\u3130\u3164\uABFF\uD7A4 Az", "\u3130\u3164\uABFF\uD7A4 Az"},
        {"\xEA\xB0\xEA\xB0\x80\xB0\xED", "\xEA\xB0rk\xB0\xED"}, // no characters around one
        {nullptr, ""}};
    for (const auto &[text, keys] : cases)
        EXPECT_EQ(CStdlib::KorToEng(text), keys);
}

TEST(CStdlibTest, TimesAndBlobs) {
    const struct {
        const char *text;
        std::time_t time;
    } cases[] = {{"1970-01-02T00:00:01Z", 86401},
                 {"2000-03-01 01:00+01:00", 951868800},
                 {"2001-02-29 00:00:00", -1},
                 {"yesterday", -1},
                 {nullptr, -1}};
    for (const auto &[text, time] : cases)
        EXPECT_EQ(CStdlib::StrToTimeObj(text), time) << (text ? text : "null");
    std::tm local{};
    local.tm_year = 101;
    local.tm_mon = 6;
    local.tm_mday = 4;
    local.tm_isdst = -1;
    EXPECT_EQ(CStdlib::StrToTimeObj("2001-07-04"), std::mktime(&local));

    const CVariant variant = CStdlib::BlobToVariant("a\0b\xFF", 4);
    std::vector<unsigned char> blob(9);
    EXPECT_EQ(CStdlib::VariantToBlob(variant, blob), 4);
    EXPECT_EQ(blob, (std::vector<unsigned char>{'a', 0, 'b', 0xFF}));
    EXPECT_TRUE(CStdlib::BlobToVariant(nullptr, 4).IsEmpty());
    EXPECT_TRUE(CStdlib::BlobToVariant("x", -4).IsEmpty());
    EXPECT_EQ(CStdlib::VarToString(2.5), "2.5");
}

TEST(CStdlibTest, DecimalsAreThoseOfTheText) {
    const struct {
        double value;
        int decimals;
        double truncated;
        long front;
        long back;
    } cases[] = {{0.29, 2, 0.29, 0, 29},
                 {12.349, 2, 12.34, 12, 34},
                 {-3.057, 2, -3.05, -3, -5},
                 {-0.5, 1, -0.5, 0, -5},
                 {7.0, 3, 7.0, 7, 0},
                 {1.25, -1, 1.0, 1, 0},
                 {1e15 + 0.5, 1, 1e15 + 0.5, 1000000000000000, 5}};
    for (const auto &[value, decimals, truncated, front, back] : cases) {
        EXPECT_EQ(CStdlib::TruncateFloat(value, decimals), truncated) << value;
        EXPECT_EQ(CStdlib::FloatFrontNumber(value), front) << value;
        EXPECT_EQ(CStdlib::FloatBackNumber(value, decimals), back) << value;
        EXPECT_EQ(CStdlib::MakeFloat(front, back, decimals), truncated) << value;
    }
    EXPECT_EQ(CStdlib::TruncateFloat(5e-324, 400), 5e-324);
    EXPECT_EQ(CStdlib::FloatFrontNumber(-1e300), LONG_MIN);
    EXPECT_EQ(CStdlib::FloatFrontNumber(NAN) + CStdlib::FloatBackNumber(HUGE_VAL, 2), 0);
    EXPECT_EQ(CStdlib::MakeFloat(LONG_MIN, LONG_MIN, 0), -18446744073709551616.0);
    double a = 1, b = 2;
    CStdlib::Swap(a, b);
    EXPECT_EQ(a - b, 1);
}

} // namespace
