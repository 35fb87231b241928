#include "TAVIX20/platform/collections.h"

#include <gtest/gtest.h>

namespace {

CString Joined(const CStringArray &array) {
    CString text;
    for (int i = 0; i < array.GetSize(); ++i) {
        text += array[i] + ",";
    }
    return text;
}

TEST(CollectionsTest, GrowsAndShrinks) {
    CStringArray array;
    EXPECT_EQ(array.GetUpperBound(), -1);
    EXPECT_EQ(array.Add("a"), 0);
    EXPECT_EQ(array.Add("b"), 1);
    array.SetAtGrow(3, array[1]);
    array.SetAtGrow(0, "z");
    EXPECT_EQ(Joined(array), "z,b,,b,");
    array.InsertAt(1, array[3], 2);
    array.InsertAt(8, array[0], 2);
    EXPECT_EQ(Joined(array), "z,b,b,b,,b,,,z,z,");
    array.RemoveAt(1, 3);
    array.RemoveAt(3, 99);
    EXPECT_EQ(Joined(array), "z,,b,");
    array.RemoveAt(-1);
    array.RemoveAt(3);
    array.RemoveAt(0, -1);
    array.InsertAt(-1, "x");
    array.InsertAt(0, "x", 0);
    array.SetAtGrow(-1, "x");
    array.SetSize(-1);
    EXPECT_EQ(Joined(array), "z,,b,");
    array.SetSize(1, 16);
    EXPECT_EQ(Joined(array), "z,");
}

TEST(CollectionsTest, AppendsAndCopiesItself) {
    CStringArray array;
    array.Add("a string too long for the inline buffer");
    array.Add("b");
    EXPECT_EQ(array.Append(array), 2);
    EXPECT_EQ(array.GetAt(2), array.GetAt(0));
    EXPECT_EQ(array.GetAt(3), "b");
    array.Copy(array);
    CStringArray copy;
    copy.Copy(array);
    copy[0] = "c";
    EXPECT_NE(array[0], copy[0]);
}

TEST(CollectionsTest, PointersStartNull) {
    int value = 0;
    CPtrArray array;
    array.SetAtGrow(1, &value);
    EXPECT_EQ(array.GetData()[0], nullptr);
    EXPECT_EQ(array.ElementAt(1), &value);
}

} // namespace
