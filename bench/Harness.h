// Benchmarks as ratios: the contenders of a row run interleaved in one process, a round gives each one batch, and the
// figure of a row is the median over the rounds of (ours / other) measured in the same round. So a slow moment of the
// machine hits both sides, and a figure means the same on every machine.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench
{
/// One contender: `run` does the job `count` times.
struct Contender
{
    std::string name;
    std::function<void(int count)> run;
};

/// A contender that does a job of one call.
template <class F>
Contender Repeated(const char* name, F job)
{
    return {name, [job](int count)
            {
                for (int i = 0; i < count; ++i)
                    job();
            }};
}

/// What a ratio is held against.
enum class Goal
{
    AtMost,  ///< ours / other must not exceed the limit
    AtLeast, ///< other / ours must reach the limit: "so many times faster"
};

/// One comparison of a row.
struct Comparison
{
    Contender other;
    Goal goal;
    double limit;
};

/// Measures `ours` against every comparison and prints a line for each. `batch` is the number of jobs in a batch;
/// choose it so that a batch takes about a millisecond or more. Returns whether all goals were met.
bool Compare(const std::string& job, const Contender& ours, const std::vector<Comparison>& comparisons, int batch,
             int rounds = 61);

/// Measures the cost of `ours` beyond `base` in nanoseconds a job (median of differences) and holds it against a limit.
bool CompareDifference(const std::string& job, const Contender& ours, const Contender& base, double limitNanoseconds,
                       int batch, int rounds = 61);

/// A row group registers itself; the main program runs the groups whose name contains the first argument.
struct Registration
{
    Registration(const char* name, bool (*run)());
};
} // namespace bench
