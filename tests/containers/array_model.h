/// Slow literal models of what every array does with its records.
#pragma once

#include <gtest/gtest.h>

#include <concepts>
#include <functional>
#include <random>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

/// Passes over adjacent pairs, exchanging where the left key is greater, until a pass exchanges
/// nothing.
template <typename Record, typename Key, typename Exchange = decltype(std::ranges::swap)>
void BubbleSort(std::vector<Record> &records, Key key, Exchange exchange = std::ranges::swap) {
    for (bool exchanged = true; exchanged;) {
        exchanged = false;
        for (std::size_t i = 0; i + 1 < records.size(); ++i)
            if (std::invoke(key, records[i]) > std::invoke(key, records[i + 1])) {
                exchange(records[i], records[i + 1]);
                exchanged = true;
            }
    }
}

/// Insertion as the arrays do it: the record at the index is overwritten, not moved.
template <typename Record>
void InsertByModel(std::vector<Record> &records, std::size_t index, const Record &record) {
    const std::size_t count = records.size();
    records.push_back(index + 1 == count ? records[index] : record);
    for (std::size_t k = count; k-- > index + 1;)
        records[k + 1] = records[k];
    records[index] = record;
}

/// Traits of an array whose records consist of numbers: the members named are the parameters of the
/// overloads that take a record in parts, in their order.
template <typename ArrayType, typename RecordType, auto... members>
struct FieldTraits {
    using Array = ArrayType;
    using Record = RecordType;
    static Record Random(std::mt19937 &random) {
        Record record{};
        (Randomize(record.*members, random), ...);
        return record;
    }
    static auto Fields(const Record &record) { return std::tuple(record.*members...); }
    static void Add(Array &array, const Record &record, int form) {
        Give(record, form,
             [&](const auto &...given) -> decltype(array.Add(given...)) { array.Add(given...); });
    }
    static void Insert(Array &array, int at, const Record &record, int form) {
        Give(record, form, [&](const auto &...given) -> decltype(array.Insert(at, given...)) {
            array.Insert(at, given...);
        });
    }
    static void SetAt(Array &array, int at, const Record &record, int form) {
        Give(record, form, [&](const auto &...given) -> decltype(array.SetAt(at, given...)) {
            array.SetAt(at, given...);
        });
    }

private:
    /// One of a few values, so that keys repeat.
    template <typename Field>
    static void Randomize(Field &field, std::mt19937 &random) {
        const int value =
            std::uniform_int_distribution(std::is_unsigned_v<Field> ? 0 : -5, 9)(random);
        field = static_cast<Field>(std::is_floating_point_v<Field> ? value / 4.0 : value);
    }

    /// Calls the overload that the form chooses, or the only one there is.
    static void Give(const Record &record, int form, auto call) {
        constexpr bool takesParts =
            std::is_invocable_v<decltype(call), decltype(record.*members)...>;
        if constexpr (std::is_invocable_v<decltype(call), const Record &>)
            if (form != 0 || !takesParts)
                return call(record);
        if constexpr (takesParts)
            call(record.*members...);
    }
};

template <typename Traits>
void ExpectHolds(typename Traits::Array &array,
                 const std::vector<typename Traits::Record> &expected) {
    if constexpr (requires { array.GetCount(); })
        ASSERT_EQ(array.GetCount(), static_cast<int>(expected.size()));
    else
        ASSERT_EQ(array.GetElementCount(), static_cast<int>(expected.size()));
    for (std::size_t i = 0; i < expected.size(); ++i)
        ASSERT_EQ(Traits::Fields(array[static_cast<int>(i)]), Traits::Fields(expected[i]))
            << "index " << i;
}

/// Runs random operations on an array and on a vector and compares them after each. Traits names
/// the Array and the Record and has the static members Random(engine), Fields(record) (something
/// comparable), Add(array, record, form), Insert(array, index, record, form) and
/// SetAt(array, index, record, form); form (0 or 1) chooses between overloads.
template <typename Traits>
void ExpectActsAsModel(unsigned seed) {
    using Record = typename Traits::Record;
    std::mt19937 random(seed);
    typename Traits::Array array;
    std::vector<Record> model;
    for (int step = 0; step < 1500; ++step) {
        const auto count = static_cast<int>(model.size());
        const auto at = static_cast<int>(random() % static_cast<unsigned>(count + 1));
        const int form = static_cast<int>(random() % 2);
        const Record record = Traits::Random(random);
        const unsigned operation = random() % 16;
        if (operation < 6) {
            Traits::Add(array, record, form);
            model.push_back(record);
        } else if (operation < 8) {
            Traits::Insert(array, at, record, form);
            InsertByModel(model, static_cast<std::size_t>(at), record);
        } else if (operation < 11 && at < count) {
            array.Remove(at);
            model.erase(model.begin() + at);
        } else if (operation == 11 && at < count) {
            Traits::SetAt(array, at, record, form);
            model[static_cast<std::size_t>(at)] = record;
        } else if (operation == 12) {
            const typename Traits::Array copy = array;
            array.SetSize(count + 3);
            array[count] = record;
            array.SetElementIndex(count + 1);
            array[0] = record;
            if (form == 0) {
                array = copy;
            } else {
                model.push_back(record);
                model[0] = record;
            }
        } else if (operation == 13 && random() % 16 == 0) {
            array.RemoveAll();
            model.clear();
        } else if (operation == 14 && at < count) {
            // The record added lies in the array itself.
            Traits::Add(array, array[at], form);
            model.push_back(model[static_cast<std::size_t>(at)]);
        } else if (operation == 15 && at < count) {
            Traits::Insert(array, 0, array[at], form);
            InsertByModel(model, 0, Record(model[static_cast<std::size_t>(at)]));
        }
        ASSERT_NO_FATAL_FAILURE(ExpectHolds<Traits>(array, model)) << "step " << step;
    }
}

/// An array of random records and a vector of the same.
template <typename Traits>
auto RandomRecords(std::mt19937 &random, int count) {
    std::pair<typename Traits::Array, std::vector<typename Traits::Record>> both;
    for (int i = 0; i < count; ++i) {
        both.second.push_back(Traits::Random(random));
        Traits::Add(both.first, both.second.back(), 1);
    }
    return both;
}

/// Sorts random arrays of many sizes by the array's member and by the literal sort.
template <typename Traits, typename Sort, typename Key,
          typename Exchange = decltype(std::ranges::swap)>
void ExpectSortsAsModel(Sort sort, Key key, Exchange exchange = std::ranges::swap) {
    std::mt19937 random(7);
    for (int size = 0; size < 60; ++size) {
        auto [array, model] = RandomRecords<Traits>(random, size);
        std::invoke(sort, array);
        BubbleSort(model, key, exchange);
        ASSERT_NO_FATAL_FAILURE(ExpectHolds<Traits>(array, model)) << "size " << size;
    }
}
