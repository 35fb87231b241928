#include "TAVIX20/containers/size_array.h"

#include "containers/array_model.h"

namespace {

using TavixArray::CSizeArray;

struct SizeTraits {
    using Array = CSizeArray;
    using Record = tagSIZE;
    static Record Random(std::mt19937 &random) {
        std::uniform_int_distribution<int> extent(-6, 6);
        const int width = extent(random);
        return {width, extent(random)};
    }
    static std::pair<int, int> Fields(const Record &size) { return {size.cx, size.cy}; }
    static void Add(Array &array, const Record &size, int) { array.Add(size.cx, size.cy); }
    static void Insert(Array &array, int index, const Record &size, int) {
        array.Insert(index, size.cx, size.cy);
    }
    static void SetAt(Array &array, int index, const Record &size, int) {
        array.SetAt(index, size.cx, size.cy);
    }
};

TEST(SizeArrayTest, ActsAsItsModel) {
    ExpectActsAsModel<SizeTraits>(41);
}

TEST(SizeArrayTest, SortsAsItsModel) {
    ExpectSortsAsModel<SizeTraits>(&CSizeArray::SortWidth, &tagSIZE::cx);
    ExpectSortsAsModel<SizeTraits>(&CSizeArray::SortHeight, &tagSIZE::cy);
}

TEST(SizeArrayTest, FindsFromTheStart) {
    CSizeArray array;
    array.Add(1, 2);
    array.Add(2, 1);
    array.Add(1, 2);
    const struct {
        int width, height, start, expected;
    } cases[] = {{1, 2, 0, 0},  {1, 2, -3, 0}, {1, 2, 1, 2},  {2, 1, 0, 1},
                 {2, 1, 2, -1}, {1, 2, 3, -1}, {1, 1, 0, -1}, {2, 2, 0, -1}};
    for (const auto &c : cases)
        EXPECT_EQ(array.Find(c.width, c.height, c.start), c.expected)
            << c.width << "x" << c.height << " from " << c.start;
}

} // namespace
