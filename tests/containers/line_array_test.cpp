#include "TAVIX20/containers/line_array.h"
#include "TAVIX20/image/tavix_image.h"

#include "containers/array_model.h"

#include <cmath>
#include <limits>
#include <tuple>

namespace {

using TavixArray::_stLine;
using TavixArray::CLineArray;

struct LineTraits {
    using Array = CLineArray;
    using Record = _stLine;
    static Record Random(std::mt19937 &random) {
        std::uniform_int_distribution<int> coordinate(-4, 4);
        Record line{};
        for (std::int32_t *field : {&line.x1, &line.y1, &line.x2, &line.y2})
            *field = coordinate(random);
        line.distance = CTavixImage::Distance(line.x1, line.y1, line.x2, line.y2);
        line.angle = CTavixImage::GetAngle(line.x1, line.y1, line.x2, line.y2);
        return line;
    }
    static auto Fields(const Record &l) {
        return std::tuple(l.x1, l.y1, l.x2, l.y2, l.distance, l.angle);
    }
    static void Add(Array &array, const Record &l, int form) {
        form == 0 ? array.Add(l.x1, l.y1, l.x2, l.y2) : array.Add(l);
    }
    static void Insert(Array &array, int index, const Record &l, int form) {
        form == 0 ? array.Insert(index, l.x1, l.y1, l.x2, l.y2) : array.Insert(index, l);
    }
    static void SetAt(Array &array, int index, const Record &l, int) { array.SetAt(index, l); }
};

TEST(LineArrayTest, ActsAsItsModel) {
    ExpectActsAsModel<LineTraits>(31);
}

TEST(LineArrayTest, SortsAsItsModel) {
    ExpectSortsAsModel<LineTraits>(&CLineArray::SortX1, &_stLine::x1);
    ExpectSortsAsModel<LineTraits>(&CLineArray::SortY1, &_stLine::y1);
    ExpectSortsAsModel<LineTraits>(&CLineArray::SortX2, &_stLine::x2);
    ExpectSortsAsModel<LineTraits>(&CLineArray::SortY2, &_stLine::y2);
    ExpectSortsAsModel<LineTraits>(&CLineArray::SortDistance, &_stLine::distance);
    ExpectSortsAsModel<LineTraits>(&CLineArray::SortAngle, &_stLine::angle);
}

TEST(LineArrayTest, KeysThatAreNoNumbersStayInPlace) {
    std::mt19937 random(32);
    for (int round = 0; round < 200; ++round) {
        CLineArray array;
        std::vector<_stLine> model;
        for (int i = 0; i < round % 14; ++i) {
            const double key = random() % 4 == 0 ? std::numeric_limits<double>::quiet_NaN()
                                                 : static_cast<double>(random() % 5);
            model.push_back({i, 0, 0, 0, key, 0});
            array.Add(model.back());
        }
        array.SortDistance();
        BubbleSort(model, &_stLine::distance);
        for (int i = 0; i < array.GetElementCount(); ++i)
            ASSERT_EQ(array[i].x1, model[static_cast<std::size_t>(i)].x1) << round;
    }
}

TEST(LineArrayTest, MeasuresTheLinesItMakes) {
    CLineArray array;
    array.Add(1, 2, 4, 6);
    array.Add(0, 0, 0, -7);
    array.Insert(1, 5, 5, 4, 5);
    EXPECT_DOUBLE_EQ(array[0].distance, 5.0);
    EXPECT_NEAR(array[0].angle, 306.86989764584405, 1e-12);
    EXPECT_DOUBLE_EQ(array[1].distance, 1.0);
    EXPECT_DOUBLE_EQ(array[1].angle, 180.0);
    EXPECT_DOUBLE_EQ(array[2].distance, 7.0);
    EXPECT_DOUBLE_EQ(array[2].angle, 90.0);
}

TEST(LineArrayTest, BoundsExtremesAndAverages) {
    CLineArray array;
    EXPECT_EQ(array.GetBounds(), CRect());
    for (const auto member :
         {&CLineArray::GetMinDistance, &CLineArray::GetMaxDistance, &CLineArray::GetAvgDistance,
          &CLineArray::GetMinAngle, &CLineArray::GetMaxAngle, &CLineArray::GetAvgAngle})
        EXPECT_EQ((array.*member)(), 0.0);

    array.Add(9, -3, 9, -7);
    EXPECT_EQ(array.GetBounds(), CRect(9, -7, 9, -3));
    array.Add(12, -20, 5, -20);
    EXPECT_EQ(array.GetBounds(), CRect(5, -20, 12, -3));
    array.Add(6, -4, 6, -2);
    EXPECT_EQ(array.GetBounds(), CRect(5, -20, 12, -2));
    EXPECT_DOUBLE_EQ(array.GetMinDistance(), 2.0);
    EXPECT_DOUBLE_EQ(array.GetMaxDistance(), 7.0);
    EXPECT_DOUBLE_EQ(array.GetAvgDistance(), 13.0 / 3);
    EXPECT_DOUBLE_EQ(array.GetMinAngle(), 90.0);
    EXPECT_DOUBLE_EQ(array.GetMaxAngle(), 270.0);
    EXPECT_DOUBLE_EQ(array.GetAvgAngle(), 180.0);

    CLineArray negative;
    negative.Add({0, 0, 0, 0, -2.5, -30.0});
    negative.Add({0, 0, 0, 0, -1.5, -10.0});
    EXPECT_EQ(negative.GetMaxDistance(), -1.5);
    EXPECT_EQ(negative.GetMaxAngle(), -10.0);
    EXPECT_EQ(negative.GetMinAngle(), -30.0);
}

} // namespace
