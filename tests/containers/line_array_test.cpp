#include "TAVIX20/containers/line_array.h"
#include "TAVIX20/image/tavix_image.h"

#include "containers/array_model.h"

#include <limits>

namespace {

using TavixArray::_stLine;
using TavixArray::CLineArray;

struct LineTraits
    : FieldTraits<CLineArray, _stLine, &_stLine::x1, &_stLine::y1, &_stLine::x2, &_stLine::y2> {
    static _stLine Random(std::mt19937 &random) {
        _stLine line = FieldTraits::Random(random);
        line.distance = CTavixImage::Distance(line.x1, line.y1, line.x2, line.y2);
        line.angle = CTavixImage::GetAngle(line.x1, line.y1, line.x2, line.y2);
        return line;
    }
    static auto Fields(const _stLine &line) {
        return std::tuple(FieldTraits::Fields(line), line.distance, line.angle);
    }
};

/// Lines some of whose distances are no numbers.
struct OddLineTraits : LineTraits {
    static _stLine Random(std::mt19937 &random) {
        _stLine line = LineTraits::Random(random);
        if (random() % 4 == 0)
            line.distance = std::numeric_limits<double>::quiet_NaN();
        return line;
    }
    static auto Fields(const _stLine &line) { return FieldTraits::Fields(line); }
};

TEST(LineArrayTest, ActsAndSortsAsItsModel) {
    ExpectActsAsModel<LineTraits>(31);
    ExpectSortsAsModel<LineTraits>(&CLineArray::SortX1, &_stLine::x1);
    ExpectSortsAsModel<LineTraits>(&CLineArray::SortY1, &_stLine::y1);
    ExpectSortsAsModel<LineTraits>(&CLineArray::SortX2, &_stLine::x2);
    ExpectSortsAsModel<LineTraits>(&CLineArray::SortY2, &_stLine::y2);
    ExpectSortsAsModel<LineTraits>(&CLineArray::SortDistance, &_stLine::distance);
    ExpectSortsAsModel<LineTraits>(&CLineArray::SortAngle, &_stLine::angle);
    ExpectSortsAsModel<OddLineTraits>(&CLineArray::SortDistance, &_stLine::distance);
}

TEST(LineArrayTest, BoundsExtremesAndAverages) {
    const struct {
        std::vector<_stLine> lines;
        CRect bounds;
        std::vector<double> extremesAndAverages;
    } cases[] = {
        {{}, {0, 0, 0, 0}, {0, 0, 0, 0, 0, 0}},
        {{{9, -3, 9, -7, 4, 90}, {12, -20, 5, -20, 7, 180}, {6, -4, 6, -2, 2, 270}},
         {5, -20, 12, -2},
         {2, 7, 13.0 / 3, 90, 270, 180}},
        {{{9, -3, 9, -7, -2.5, -30}, {9, -4, 9, -4, -1.5, -10}},
         {9, -7, 9, -3},
         {-2.5, -1.5, -2, -30, -10, -20}},
    };
    for (const auto &c : cases) {
        CLineArray array;
        for (const _stLine &line : c.lines)
            array.Add(line);
        EXPECT_EQ(array.GetBounds(), c.bounds);
        EXPECT_EQ(
            (std::vector{array.GetMinDistance(), array.GetMaxDistance(), array.GetAvgDistance(),
                         array.GetMinAngle(), array.GetMaxAngle(), array.GetAvgAngle()}),
            c.extremesAndAverages);
    }
}

} // namespace
