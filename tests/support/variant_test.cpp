#include "TAVIX20/support/variant_array.h"

#include "TAVIX20/support/std_string.h"

#include <gtest/gtest.h>

#include <climits>
#include <stdexcept>

namespace {

TEST(CVariantTest, TruthIsTheOtherWayRound) {
    const struct {
        const char *text;
        bool isTrue;
    } cases[] = {{"0", true}, {"5", false},  {"abc", true},
                 {"", true},  {"0.9", true}, {"-1", false}};
    for (const auto &[text, isTrue] : cases) {
        EXPECT_EQ(CVariant(text).ToBool(), isTrue) << text;
        EXPECT_EQ(CVariant(text).ToBOOL(), isTrue ? 1 : 0) << text;
    }
}

TEST(CVariantTest, ConvertsAndCompares) {
    CVariant value("65537.5x");
    const int asInt = value;
    const short asShort = value;
    const long asLong = value;
    const double asDouble = value;
    const CString asText = value;
    EXPECT_EQ(asInt, 65537);
    EXPECT_EQ(asShort, 1);
    EXPECT_EQ(asLong, 65537);
    EXPECT_EQ(asDouble, 65537.5);
    EXPECT_EQ(asText + CString(value), "65537.5x65537.5x");
    EXPECT_EQ(value.ToStdString(), "65537.5x");
    EXPECT_TRUE(value == 65537 && 65537L == value && value == 65537.5 && value == short{1});
    EXPECT_TRUE(value == "65537.5x" && value == asText && value != "65537.5" && value != 65538);

    value = short{-3};
    EXPECT_TRUE(value == "-3" && !value.IsEmpty());
    value = 2.5;
    EXPECT_TRUE(value == "2.5");
    value = LONG_MIN;
    EXPECT_TRUE(value == LONG_MIN && value == INT_MIN);
    value = CString();
    EXPECT_TRUE(value.IsEmpty() && value == 0);
    EXPECT_FALSE(CVariant("a").Equals("A") || CVariant("1.0").Equals(1));
}

TEST(CVariantArrayTest, HoldsValuesOfAllKinds) {
    CVariantArray values;
    values.Add(short{1});
    values.Add(2);
    values.Add(3L);
    values.Add(4.5);
    values.Add("2");
    values.Add(CString("x"));
    EXPECT_EQ(values.ToString(' '), "1 2 3 4.5 2 x");
    EXPECT_EQ(values.Find(2) + values.Find("2") + values.Find(CString("2")) + values.Find(2L), 4);
    EXPECT_EQ(values.Find(4.5) * 10 + values.Find(CVariant("x")), 35);
    EXPECT_EQ(values.Find("X") + values.Find(7), -2);

    values.RemoveAt(0);
    values[0] = "y";
    EXPECT_EQ(values.ToString(';'), "y;3;4.5;2;x");
    for (const int index : {-1, 5, INT_MIN, INT_MAX}) {
        EXPECT_THROW(values[index], std::out_of_range) << index;
        EXPECT_THROW(values.RemoveAt(index), std::out_of_range) << index;
    }
    values.SetSize(-1);
    values.SetSize(6);
    EXPECT_TRUE(values.GetCount() == 6 && values[5].IsEmpty());
    EXPECT_EQ(values.Split(values[0].ToString(), "y"), 2); // Its own text.
    values.RemoveAll();
    EXPECT_EQ(values.ToString(';'), "");
    EXPECT_EQ(values.GetCount(), 0);
}

} // namespace
