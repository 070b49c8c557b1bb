#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// Adds a row of a table; see RatioTable for its name.
template <typename Body>
benchmark::internal::Benchmark* add(const char* name, Body&& body)
{
    return benchmark::RegisterBenchmark(name, std::forward<Body>(body));
}

template <typename Work>
void repeat(benchmark::State& state, Work&& work)
{
    for (auto _ : state)
        work();
}

/// Prints benchmarks named "group/row" as one table a group, whose first row is the
/// library: each line says how long it took and how ZelTools compares to it in the same run (below
/// 1 ZelTools is faster). Medians of interleaved repetitions, since the machines are noisy.
class RatioTable : public benchmark::BenchmarkReporter
{
public:
    static int run(int argc, char** argv)
    {
        std::vector<char*> arguments(argv, argv + argc);
        std::string defaults[]{"--benchmark_repetitions=15", "--benchmark_min_time=0.05",
                               "--benchmark_enable_random_interleaving=true",
                               "--benchmark_report_aggregates_only=true"};
        for (std::string& argument : defaults)
            arguments.insert(arguments.begin() + 1, argument.data());
        int count = static_cast<int>(arguments.size());
        benchmark::Initialize(&count, arguments.data());
        RatioTable table;
        benchmark::RunSpecifiedBenchmarks(&table);
        return table.m_hasFailed ? 1 : 0;
    }

    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.error_occurred) {
                std::fprintf(stdout, "%s: %s\n", run.benchmark_name().c_str(),
                             run.error_message.c_str());
                m_hasFailed = true;
            }
            if (run.aggregate_name != "median")
                continue;
            const std::string& name = run.run_name.function_name;
            m_rows[run.family_index] = {name, run.GetAdjustedRealTime()};
        }
    }

    void Finalize() override
    {
        std::string group;
        double ours_ns = 0; // the first row of each group
        for (const auto& [index, row] : m_rows) {
            const size_t slash = row.name.find('/');
            if (row.name.substr(0, slash) != group) {
                group = row.name.substr(0, slash);
                ours_ns = row.time_ns;
                std::printf("\n| %-44s | %12s | ZelTools/this |\n|%s:|%s:|\n", group.c_str(), "ns",
                            (std::string(46, '-') + '|' + std::string(13, '-')).c_str(),
                            std::string(14, '-').c_str());
            }
            std::printf("| %-44s | %12.1f | %13.2f |\n", row.name.c_str() + slash + 1, row.time_ns,
                        ours_ns / row.time_ns);
        }
    }

private:
    struct Row
    {
        std::string name;
        double time_ns;
    };
    bool m_hasFailed = false;
    std::map<int64_t, Row> m_rows; // in the order of registration
};
