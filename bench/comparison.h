/// An operation measured beside a peer that does the same work in the same run.
#pragma once

#include <functional>
#include <string>

/// One row of the table.
struct Comparison {
    std::string operation; ///< What is measured, with its size.
    std::string peer;      ///< What it is measured against.
    double target;         ///< The peer's time divided by ours is to be at least this.
    std::function<void()> ours;
    std::function<void()> theirs;
    double rate = 0.0; ///< Unless 0: so many calls a second, or frames, are to be reached.
};

/// Adds a row. Both functions do the whole work once a call and keep their data alive.
void AddComparison(Comparison comparison);

/// Measures all rows that the command line selects and prints the table: medians of interleaved
/// runs. Returns the exit code.
int RunComparisons(int argc, char **argv);

/// The rows of each subject.
void AddAnalysisComparisons();
void AddBlobComparisons();
void AddContainerComparisons();
void AddDisplayComparisons();
void AddFileComparisons();
void AddImageComparisons();
void AddStringComparisons();
void AddOverlayComparisons();
void AddRoiComparisons();
void AddTransformComparisons();
void AddXmlComparisons();
