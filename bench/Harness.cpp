#include "Harness.h"
#include <windows.h>
#include <algorithm>
#include <cstdio>
#include <cstring>

namespace bench
{
namespace
{
struct Group
{
    const char* name;
    bool (*run)();
};

std::vector<Group>& Groups()
{
    static std::vector<Group> groups;
    return groups;
}

double Now()
{
    static const double nanosecondsPerTick = []
    {
        LARGE_INTEGER frequency;
        QueryPerformanceFrequency(&frequency);
        return 1e9 / static_cast<double>(frequency.QuadPart);
    }();
    LARGE_INTEGER ticks;
    QueryPerformanceCounter(&ticks);
    return static_cast<double>(ticks.QuadPart) * nanosecondsPerTick;
}

/// Nanoseconds a job, over one batch.
double Batch(const Contender& contender, int batch)
{
    const double start = Now();
    contender.run(batch);
    return (Now() - start) / batch;
}

double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}
} // namespace

bool Compare(const std::string& job, const Contender& ours, const std::vector<Comparison>& comparisons, int batch,
             int rounds)
{
    std::vector<double> ourTimes;
    std::vector<std::vector<double>> otherTimes(comparisons.size()), ratios(comparisons.size());
    ours.run(batch); // warm up
    for (const Comparison& comparison : comparisons)
        comparison.other.run(batch);
    for (int round = 0; round < rounds; ++round)
    {
        // Each comparison gets a measurement of ours beside its own, now before it, now after it.
        for (size_t i = 0; i < comparisons.size(); ++i)
        {
            double mine = 0, other = 0;
            if (round % 2 == 0)
            {
                mine = Batch(ours, batch);
                other = Batch(comparisons[i].other, batch);
            }
            else
            {
                other = Batch(comparisons[i].other, batch);
                mine = Batch(ours, batch);
            }
            ourTimes.push_back(mine);
            otherTimes[i].push_back(other);
            ratios[i].push_back(comparisons[i].goal == Goal::AtMost ? mine / other : other / mine);
        }
    }
    bool allMet = true;
    std::printf("%s\n    %-52s %12.1f ns\n", job.c_str(), ours.name.c_str(), Median(ourTimes));
    for (size_t i = 0; i < comparisons.size(); ++i)
    {
        const double ratio = Median(ratios[i]);
        const bool atMost = comparisons[i].goal == Goal::AtMost;
        const bool met = atMost ? ratio <= comparisons[i].limit : ratio >= comparisons[i].limit;
        std::printf("    %-52s %12.1f ns   %s %.2f x (goal: %s %.2f)  %s\n", comparisons[i].other.name.c_str(),
                    Median(otherTimes[i]), atMost ? "ours is" : "ours is faster", ratio,
                    atMost ? "at most" : "at least", comparisons[i].limit, met ? "met" : "MISSED");
        allMet = allMet && met;
    }
    return allMet;
}

bool CompareDifference(const std::string& job, const Contender& ours, const Contender& base, double limitNanoseconds,
                       int batch, int rounds)
{
    std::vector<double> differences;
    ours.run(batch);
    base.run(batch);
    for (int round = 0; round < rounds; ++round)
    {
        const double first = Batch(round % 2 ? base : ours, batch);
        const double second = Batch(round % 2 ? ours : base, batch);
        differences.push_back(round % 2 ? second - first : first - second);
    }
    const double difference = Median(differences);
    const bool met = difference <= limitNanoseconds;
    std::printf("%s\n    %-52s %12.1f ns   (goal: at most %.1f)  %s\n", job.c_str(),
                (ours.name + " beyond " + base.name).c_str(), difference, limitNanoseconds, met ? "met" : "MISSED");
    return met;
}

Registration::Registration(const char* name, bool (*run)())
{
    Groups().push_back({name, run});
}
} // namespace bench

int main(int argc, char** argv)
{
    bool allMet = true;
    int ran = 0;
    for (const auto& group : bench::Groups())
    {
        if (argc > 1 && !std::strstr(group.name, argv[1]))
            continue;
        std::printf("== %s\n", group.name);
        allMet = group.run() && allMet;
        std::fflush(stdout);
        ++ran;
    }
    if (ran == 0)
    {
        std::printf("no rows named %s\n", argv[1]);
        return 2;
    }
    std::printf(allMet ? "all goals met\n" : "some goals were missed\n");
    return allMet ? 0 : 1;
}
