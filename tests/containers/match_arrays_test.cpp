#include "TAVIX20/containers/cycle_match_result_array.h"
#include "TAVIX20/containers/diamond_match_result_array.h"
#include "TAVIX20/containers/match_rate_item_array.h"
#include "TAVIX20/containers/match_result_array.h"
#include "TAVIX20/containers/match_src_array.h"

#include "containers/array_model.h"

#include <string>

namespace {

using Hit = _stMatchResult;
using Circle = _stCycleMatchResult;
using Diamond = _stDiamondMatchResult;
using Item = _stMatchRateItem;

// The fields in the order in which Add takes them.
using HitTraits = FieldTraits<CMatchResultArray, Hit, &Hit::flag, &Hit::left, &Hit::top,
                              &Hit::right, &Hit::bottom, &Hit::templateIndex, &Hit::blackYield,
                              &Hit::whiteYield, &Hit::pixelCount>;
using CircleTraits = FieldTraits<CCycleMatchResultArray, Circle, &Circle::centerX, &Circle::centerY,
                                 &Circle::radius, &Circle::index, &Circle::rate>;
using DiamondTraits = FieldTraits<CDiamondMatchResultArray, Diamond, &Diamond::centerX,
                                  &Diamond::centerY, &Diamond::size, &Diamond::rate>;
using ItemTraits = FieldTraits<CMatchRatetItemArray, Item, &Item::rate, &Item::index>;

struct SourceTraits {
    using Array = CMatchSrcArray;
    using Record = _stMatchSource;
    static Record Random(std::mt19937 &random) {
        return {{'s', static_cast<char>('a' + random() % 26)}, {}};
    }
    static auto Fields(const Record &m) {
        return std::tuple(std::string(m.name), m.reserved[0], m.reserved[1]);
    }
    static void Add(Array &array, const Record &m, int) { array.Add(m.name); }
};

template <typename Traits>
class MatchArrayTest : public testing::Test {};
using AllTraits = testing::Types<HitTraits, CircleTraits, DiamondTraits, ItemTraits, SourceTraits>;
TYPED_TEST_SUITE(MatchArrayTest, AllTraits);

TYPED_TEST(MatchArrayTest, GrowsByAHundredAndActsAsAVector) {
    const auto fields = [](const auto &record) { return TypeParam::Fields(record); };
    const typename TypeParam::Record none{};
    std::mt19937 random(71);
    auto [array, model] = RandomRecords<TypeParam>(random, 101);
    ExpectHolds<TypeParam>(array, model);
    for (int i = 101; i < 200; ++i)
        ASSERT_EQ(fields(array[i]), fields(none)) << i;
    for (const int at : {100, 3, 0}) {
        array.Remove(at);
        model.erase(model.begin() + at);
    }
    auto copy = array;
    EXPECT_EQ(&(array + array + copy), &array);
    ExpectHolds<TypeParam>(copy, model);
    const auto once = model;
    for (int i = 0; i < 2; ++i)
        model.insert(model.end(), once.begin(), once.end());
    ExpectHolds<TypeParam>(array, model);
    for (const int count : {30, -1, 32}) {
        array.SetCount(count);
        if (count > 0)
            model.resize(static_cast<std::size_t>(count), none);
        ExpectHolds<TypeParam>(array, model);
    }
    copy = array;
    array.RemoveAll();
    EXPECT_EQ(array.GetCount(), 0);
    for (int i = 0; i < 100; ++i)
        ASSERT_EQ(fields(array[i]), fields(none)) << i;
    ExpectHolds<TypeParam>(copy, model);
}

/// Checks the index of the highest rate as well, where there is one.
template <typename Traits>
void ExpectSortsByRate() {
    const auto sort = [](typename Traits::Array &array) {
        if constexpr (requires { array.GetMaxRateIndex(); }) {
            int best = -1;
            for (int i = 0; i < array.GetCount(); ++i)
                if (best < 0 || array[i].rate > array[best].rate)
                    best = i;
            EXPECT_EQ(array.GetMaxRateIndex(), best);
        }
        array.SortRate();
    };
    ExpectSortsAsModel<Traits>(sort, &Traits::Record::rate);
}

TEST(MatchArraysTest, SortWholeRecordsAndFindTheHighestRate) {
    ExpectSortsAsModel<HitTraits>(&CMatchResultArray::SortLeft, &Hit::left);
    ExpectSortsAsModel<HitTraits>(&CMatchResultArray::SortTop, &Hit::top);
    ExpectSortsAsModel<HitTraits>(&CMatchResultArray::SortRight, &Hit::right);
    ExpectSortsAsModel<HitTraits>(&CMatchResultArray::SortBottom, &Hit::bottom);
    ExpectSortsAsModel<HitTraits>(&CMatchResultArray::SortWhiteYield, &Hit::whiteYield);
    ExpectSortsAsModel<HitTraits>(&CMatchResultArray::SortBlackYield, &Hit::blackYield);
    ExpectSortsAsModel<HitTraits>(&CMatchResultArray::SortYieldAverage, [](const Hit &hit) {
        return (hit.blackYield + hit.whiteYield) / 2;
    });
    ExpectSortsByRate<CircleTraits>();
    ExpectSortsByRate<DiamondTraits>();
    ExpectSortsByRate<ItemTraits>();
}

TEST(MatchArraysTest, FillWhatIsNotGiven) {
    CMatchResultArray hits;
    hits.Add(1, 2, 3, 4, 5, 6, 7.0, 8.0);
    ExpectHolds<HitTraits>(hits, {{1, 2, 3, 4, 5, 6, 7.0, 8.0, 0}});
    CMatchSrcArray sources;
    for (const std::size_t length : {0, 258, 259, 260, 1000}) {
        const std::string name(length, 'n');
        sources.Add(name.c_str());
        EXPECT_EQ(sources.GetAt(sources.GetCount() - 1).name, name.substr(0, 259)) << length;
    }
    sources.Add(nullptr);
    EXPECT_STREQ(sources[5].name, "");
}

} // namespace
