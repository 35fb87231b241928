/// Slow literal models of what every array does with its records.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <utility>
#include <vector>

/// Passes over adjacent pairs, exchanging where the left key is greater, until a pass exchanges
/// nothing.
template <typename Record, typename Key, typename Exchange>
void BubbleSort(std::vector<Record> &records, Key key, Exchange exchange) {
    for (bool exchanged = true; exchanged;) {
        exchanged = false;
        for (std::size_t i = 0; i + 1 < records.size(); ++i)
            if (std::invoke(key, records[i]) > std::invoke(key, records[i + 1])) {
                exchange(records[i], records[i + 1]);
                exchanged = true;
            }
    }
}

template <typename Record, typename Key>
void BubbleSort(std::vector<Record> &records, Key key) {
    BubbleSort(records, key, [](Record &a, Record &b) { std::swap(a, b); });
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
            if (form == 0)
                array = copy;
            else
                model.push_back(record);
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
        ASSERT_EQ(array.GetElementCount(), static_cast<int>(model.size())) << step;
        for (std::size_t i = 0; i < model.size(); ++i)
            ASSERT_EQ(Traits::Fields(array[static_cast<int>(i)]), Traits::Fields(model[i]))
                << "step " << step << ", index " << i;
    }
}

/// Sorts random arrays of many sizes by the array's member and by the literal sort.
template <typename Traits, typename Key>
void ExpectSortsAsModel(void (Traits::Array::*sort)(), Key key) {
    std::mt19937 random(7);
    for (int size = 0; size < 60; ++size) {
        typename Traits::Array array;
        std::vector<typename Traits::Record> model;
        for (int i = 0; i < size; ++i) {
            model.push_back(Traits::Random(random));
            Traits::Add(array, model.back(), 1);
        }
        (array.*sort)();
        BubbleSort(model, key);
        ASSERT_EQ(array.GetElementCount(), size);
        for (int i = 0; i < size; ++i)
            ASSERT_EQ(Traits::Fields(array[i]), Traits::Fields(model[static_cast<std::size_t>(i)]))
                << "size " << size << ", index " << i;
    }
}
