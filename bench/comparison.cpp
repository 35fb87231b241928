#include "comparison.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <regex>
#include <utility>
#include <vector>

namespace {

constexpr int REPETITIONS = 11;
constexpr double SECONDS_PER_SIDE = 0.8;

const std::string OURS = "/ours";
const std::string THEIRS = "/peer";

std::vector<Comparison> &Comparisons() {
    static std::vector<Comparison> comparisons;
    return comparisons;
}

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Collects the time of every repetition by benchmark name.
class Collector : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context &) override { return true; }

    void ReportRuns(const std::vector<Run> &runs) override {
        for (const Run &run : runs)
            if (run.run_type == Run::RT_Iteration && !run.error_occurred)
                m_milliseconds[run.run_name.function_name].push_back(run.GetAdjustedRealTime());
    }

    const std::vector<double> &TimesOf(const std::string &name) const {
        return m_milliseconds.at(name);
    }

private:
    std::map<std::string, std::vector<double>> m_milliseconds;
};

void Register(const std::string &name, const std::function<void()> &work) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [&work](benchmark::State &state) {
                                     for (auto _ : state)
                                         work();
                                 })
        ->Repetitions(REPETITIONS)
        ->MinTime(SECONDS_PER_SIDE / REPETITIONS)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

Collector Measure(const Comparison &row) {
    // The first call makes what the row needs. Measured, it would pass for the cost of all, and one
    // call a repetition for enough.
    row.ours();
    row.theirs();
    Collector times;
    Register(row.operation + OURS, row.ours);
    Register(row.operation + THEIRS, row.theirs);
    benchmark::SetBenchmarkFilter("all");
    benchmark::RunSpecifiedBenchmarks(&times);
    benchmark::ClearRegisteredBenchmarks();
    return times;
}

void PrintRow(const Comparison &row, const Collector &times) {
    const double ourMedian = Median(times.TimesOf(row.operation + OURS));
    const double peerMedian = Median(times.TimesOf(row.operation + THEIRS));
    const double ratio = peerMedian / ourMedian;
    std::printf("%-46s %10.4f  %-38s %10.4f %7.2f %7.2f  %s\n", row.operation.c_str(), ourMedian,
                row.peer.c_str(), peerMedian, ratio, row.target,
                ratio >= row.target ? "met" : "MISSED");
    const double rate = 1000.0 / ourMedian;
    if (row.rate > 0.0)
        std::printf("%46s %10.1f a second, at least %.1f  %s\n", "", rate, row.rate,
                    rate >= row.rate ? "met" : "MISSED");
}

} // namespace

void AddComparison(Comparison comparison) {
    Comparisons().push_back(std::move(comparison));
}

int RunComparisons(int argc, char **argv) {
    // Given first, so that the command line can override them.
    std::vector<std::string> arguments{argv[0], "--benchmark_enable_random_interleaving=true"};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    std::vector<char *> pointers;
    for (std::string &argument : arguments)
        pointers.push_back(argument.data());
    int count = static_cast<int>(pointers.size());
    benchmark::Initialize(&count, pointers.data());
    if (benchmark::ReportUnrecognizedArguments(count, pointers.data()))
        return 2;

    std::printf("Medians of %d interleaved runs in milliseconds; ratio = peer / ours.\n\n",
                REPETITIONS);
    std::printf("%-46s %10s  %-38s %10s %7s %7s\n", "operation", "ours", "peer", "peer's", "ratio",
                "target");
    const std::regex filter(benchmark::GetBenchmarkFilter());
    for (Comparison &each : Comparisons()) {
        // Each row goes with what it keeps alive: the windows of one row, and memory that it
        // holds, slow the next ones down.
        const Comparison row = std::exchange(each, {});
        if (std::regex_search(row.operation, filter))
            PrintRow(row, Measure(row));
    }
    return 0;
}
