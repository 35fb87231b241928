#include "TAVIX20/platform/collections.h"

#include <gtest/gtest.h>

namespace {

CString Joined(const CStringArray &array) {
    CString text;
    for (int i = 0; i < array.GetSize(); ++i)
        text += array[i] + ",";
    return text;
}

TEST(CollectionsTest, GrowsAndShrinks) {
    CStringArray array;
    EXPECT_EQ(array.GetUpperBound(), -1);
    EXPECT_EQ(array.Add("a"), 0);
    EXPECT_EQ(array.Add("a string too long for the inline buffer"), 1);
    EXPECT_EQ(array.Append(array), 2);
    EXPECT_EQ(array[3], array[1]);
    array.Copy(array);
    array.RemoveAt(1);
    array.SetAtGrow(1, "b");
    array.SetAtGrow(3, array[1]);
    array[2] = "";
    array.InsertAt(1, array[3], 2);
    array.InsertAt(8, array[0], 2);
    EXPECT_EQ(Joined(array), "a,b,b,b,,b,,,a,a,");
    array.RemoveAt(1, 3);
    array.RemoveAt(3, 99);
    EXPECT_EQ(Joined(array), "a,,b,");
    array.RemoveAt(-1);
    array.RemoveAt(3);
    array.RemoveAt(0, -1);
    array.InsertAt(-1, "x");
    array.InsertAt(0, "x", 0);
    array.SetAtGrow(-1, "x");
    array.SetSize(-1);
    EXPECT_EQ(Joined(array), "a,,b,");
}

TEST(CollectionsTest, PointersStartNull) {
    CPtrArray array;
    array.SetAtGrow(1, &array);
    EXPECT_EQ(array[0], nullptr);
    EXPECT_EQ(array[1], &array);
}

} // namespace
