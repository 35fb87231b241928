#include "TAVIX20/containers/cycle_match_result_array.h"
#include "TAVIX20/containers/diamond_match_result_array.h"
#include "TAVIX20/containers/match_rate_item_array.h"
#include "TAVIX20/containers/match_result_array.h"
#include "TAVIX20/containers/match_src_array.h"

#include "containers/array_model.h"

#include <string>
#include <tuple>

namespace {

/// The fields in the order in which Add takes them.
auto Fields(const _stMatchResult &m) {
    return std::tuple(m.flag, m.left, m.top, m.right, m.bottom, m.templateIndex, m.blackYield,
                      m.whiteYield, m.pixelCount);
}
auto Fields(const _stCycleMatchResult &m) {
    return std::tuple(m.centerX, m.centerY, m.radius, m.index, m.rate);
}
auto Fields(const _stDiamondMatchResult &m) {
    return std::tuple(m.centerX, m.centerY, m.size, m.rate);
}
auto Fields(const _stMatchRateItem &m) {
    return std::tuple(m.rate, m.index);
}
auto Fields(const _stMatchSource &m) {
    EXPECT_EQ(m.reserved[0] | m.reserved[1], 0);
    return std::tuple(std::string(m.name));
}

/// Records of random numbers that often repeat, and the array that Add makes of them.
template <typename Record, typename Array>
std::vector<Record> FillAtRandom(Array &array, std::mt19937 &random, int count) {
    std::vector<Record> records;
    for (int i = 0; i < count; ++i) {
        const auto a = static_cast<int>(random() % 12), b = static_cast<int>(random() % 12);
        const double rate = (a * 5 % 9 - b) / 8.0;
        Record r{};
        if constexpr (std::is_same_v<Record, _stMatchResult>)
            r = {true, a, b - 6, a * 7 % 5, -a, b, rate, b / 4.0, a - 1000L};
        else if constexpr (std::is_same_v<Record, _stMatchRateItem>)
            r = {rate, a};
        else if constexpr (std::is_same_v<Record, _stDiamondMatchResult>)
            r = {a, b, a + b, rate};
        else if constexpr (std::is_same_v<Record, _stCycleMatchResult>)
            r = {a, b, a + b, i, rate};
        else
            std::snprintf(r.name, sizeof r.name, "source %d", a);
        records.push_back(r);
        if constexpr (std::is_same_v<Record, _stMatchSource>)
            array.Add(r.name);
        else
            std::apply([&array](auto... fields) { array.Add(fields...); }, Fields(r));
    }
    return records;
}

template <typename Array, typename Record>
void ExpectEqual(Array &array, const std::vector<Record> &expected) {
    ASSERT_EQ(array.GetCount(), static_cast<int>(expected.size()));
    for (std::size_t i = 0; i < expected.size(); ++i)
        ASSERT_EQ(Fields(array[static_cast<int>(i)]), Fields(expected[i])) << i;
}

template <typename ArrayAndRecord>
class MatchArrayTest : public testing::Test {};
using Arrays = testing::Types<std::pair<CMatchResultArray, _stMatchResult>,
                              std::pair<CCycleMatchResultArray, _stCycleMatchResult>,
                              std::pair<CDiamondMatchResultArray, _stDiamondMatchResult>,
                              std::pair<CMatchRatetItemArray, _stMatchRateItem>,
                              std::pair<CMatchSrcArray, _stMatchSource>>;
TYPED_TEST_SUITE(MatchArrayTest, Arrays);

TYPED_TEST(MatchArrayTest, GrowsByAHundredAndActsAsAVector) {
    using Record = typename TypeParam::second_type;
    std::mt19937 random(71);
    typename TypeParam::first_type array;
    auto model = FillAtRandom<Record>(array, random, 101);
    ExpectEqual(array, model);
    for (int i = 101; i < 200; ++i)
        ASSERT_EQ(Fields(array[i]), Fields(Record{})) << i;
    for (const int at : {100, 3, 0}) {
        array.Remove(at);
        model.erase(model.begin() + at);
    }
    auto copy = array;
    EXPECT_EQ(&(array + array + copy), &array);
    ExpectEqual(copy, model);
    const auto once = model;
    for (int i = 0; i < 2; ++i)
        model.insert(model.end(), once.begin(), once.end());
    ExpectEqual(array, model);
    for (const int count : {30, -1, 32}) {
        array.SetCount(count);
        if (count > 0)
            model.resize(static_cast<std::size_t>(count), Record{});
        ExpectEqual(array, model);
    }
    copy = array;
    array.RemoveAll();
    EXPECT_EQ(array.GetCount(), 0);
    for (int i = 0; i < 100; ++i)
        ASSERT_EQ(Fields(array[i]), Fields(Record{})) << i;
    ExpectEqual(copy, model);
}

template <typename Record, typename Array, typename Key>
void ExpectSorts(void (*sort)(Array &), Key key) {
    std::mt19937 random(73);
    for (int size = 0; size < 50; ++size) {
        Array array;
        auto model = FillAtRandom<Record>(array, random, size);
        if constexpr (requires { array.GetMaxRateIndex(); }) {
            int best = -1;
            for (int i = 0; i < size; ++i)
                if (best < 0 || array[i].rate > array[best].rate)
                    best = i;
            EXPECT_EQ(array.GetMaxRateIndex(), best) << size;
        }
        sort(array);
        BubbleSort(model, key);
        ASSERT_NO_FATAL_FAILURE(ExpectEqual(array, model)) << size;
    }
}

TEST(MatchArraysTest, SortWholeRecordsAndFindTheHighestRate) {
    using M = _stMatchResult;
    using Hits = CMatchResultArray;
    ExpectSorts<M>(
        +[](Hits &a) { a.SortLeft(); }, &M::left);
    ExpectSorts<M>(
        +[](Hits &a) { a.SortTop(); }, &M::top);
    ExpectSorts<M>(
        +[](Hits &a) { a.SortRight(); }, &M::right);
    ExpectSorts<M>(
        +[](Hits &a) { a.SortBottom(); }, &M::bottom);
    ExpectSorts<M>(
        +[](Hits &a) { a.SortWhiteYield(); }, &M::whiteYield);
    ExpectSorts<M>(
        +[](Hits &a) { a.SortBlackYield(); }, &M::blackYield);
    ExpectSorts<M>(
        +[](Hits &a) { a.SortYieldAverage(); },
        [](const M &m) { return (m.blackYield + m.whiteYield) / 2; });
    ExpectSorts<_stCycleMatchResult>(
        +[](CCycleMatchResultArray &a) { a.SortRate(); }, &_stCycleMatchResult::rate);
    ExpectSorts<_stDiamondMatchResult>(
        +[](CDiamondMatchResultArray &a) { a.SortRate(); }, &_stDiamondMatchResult::rate);
    ExpectSorts<_stMatchRateItem>(
        +[](CMatchRatetItemArray &a) { a.SortRate(); }, &_stMatchRateItem::rate);
}

TEST(MatchArraysTest, FillWhatIsNotGiven) {
    CMatchResultArray hits;
    hits.Add(1, 2, 3, 4, 5, 6, 7.0, 8.0);
    EXPECT_EQ(Fields(hits[0]), Fields(_stMatchResult{1, 2, 3, 4, 5, 6, 7.0, 8.0, 0}));
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
