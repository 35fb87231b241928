// Text split into values beside the plain loop.

#include "comparison.h"

#include <TAVIX20.h>

#include <TAVIX20/support/variant_array.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace {

/// Fields of 0 to 23 characters, most of them numbers.
std::string Fields(std::size_t size) {
    std::string text;
    for (unsigned number = 1; text.size() < size; number = number * 1664525 + 1013904223) {
        text += std::to_string(number >> (number % 29));
        if (number % 16 == 0)
            text += "measured value";
        text += number % 32 == 5 ? ",," : ",";
    }
    return text;
}

std::vector<std::string> PlainSplit(const std::string &text, char delimiter) {
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    for (std::size_t end; (end = text.find(delimiter, begin)) != std::string::npos; begin = end + 1)
        pieces.push_back(text.substr(begin, end - begin));
    pieces.push_back(text.substr(begin));
    return pieces;
}

} // namespace

void AddStringComparisons() {
    const auto text = std::make_shared<std::string>(Fields(10000000));
    AddComparison({"CVariantArray::Split at \",\", 10 MB", "loop of std::string::find", 0.5,
                   [text] {
                       CVariantArray values;
                       benchmark::DoNotOptimize(values.Split(text->c_str(), ","));
                   },
                   [text] { benchmark::DoNotOptimize(PlainSplit(*text, ',')); }});
}
