// The archives beside the standard library.

#include "comparison.h"

#include "TAVIX20/support/cx_mem_file.h"

#include <benchmark/benchmark.h>

#include <array>
#include <string>

namespace {

constexpr int WRITES = 1 << 16;
constexpr std::array<char, 1024> BLOCK{};

} // namespace

void AddFileComparisons() {
    AddComparison({"CxMemFile, 64 MB in writes of 1 KB", "std::string::append", 1.0,
                   [] {
                       CxMemFile file;
                       for (int i = 0; i < WRITES; ++i)
                           file.Write(BLOCK.data(), BLOCK.size());
                       benchmark::DoNotOptimize(file.GetDataPointer());
                   },
                   [] {
                       std::string text;
                       for (int i = 0; i < WRITES; ++i)
                           text.append(BLOCK.data(), BLOCK.size());
                       benchmark::DoNotOptimize(text.data());
                   }});
}
