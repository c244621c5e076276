// Measuring benchmarks as ratios, with limits.
#pragma once

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace bench {

/// Keeps the time of each benchmark's fastest repetition in seconds (processor time, or what a
/// benchmark with manual time measured itself), and its counters.
class Collector final : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      const bool isManual = run.run_name.time_type == "manual_time";
      const double total = isManual ? run.real_accumulated_time : run.cpu_accumulated_time;
      const double time = total / static_cast<double>(run.iterations);
      const std::string& arguments = run.run_name.args;
      const std::string name =
          run.run_name.function_name + (arguments.empty() ? "" : "/") + arguments;
      const auto [known, isNew] = seconds.emplace(name, time);
      if (!isNew) known->second = std::min(known->second, time);
      for (const auto& [counter, value] : run.counters)
        counters[name][counter] = value;
    }
  }

  double ratio(const std::string& a, const std::string& b) const {
    return seconds.at(a) / seconds.at(b);
  }

  std::map<std::string, double> seconds;
  std::map<std::string, std::map<std::string, double>> counters;
};

/// Runs the registered benchmarks in many rounds, in random order: a busy machine then slows all of
/// them alike, and the fastest round counts. `more` holds further arguments for the library.
inline void runInRounds(int argc, char** argv, int rounds, benchmark::BenchmarkReporter& reporter,
                        const std::vector<std::string>& more = {}) {
  std::vector<std::string> words(argv, argv + argc);
  words.push_back("--benchmark_repetitions=" + std::to_string(rounds));
  words.emplace_back("--benchmark_enable_random_interleaving=true");
  words.emplace_back("--benchmark_report_aggregates_only=false");
  words.insert(words.end(), more.begin(), more.end());
  std::vector<char*> pointers;
  for (std::string& word : words)
    pointers.push_back(word.data());
  int count = static_cast<int>(pointers.size());
  benchmark::Initialize(&count, pointers.data());
  benchmark::RunSpecifiedBenchmarks(&reporter);
}

/// Prints a figure beside its limit; true when the figure is within it and is
/// printed.
inline bool within(std::FILE* out, const std::string& what, double measured, double limit) {
  const bool good = measured <= limit;
  const bool printed = std::fprintf(out, "%-58s %7.2f  (limit %.2f)%s\n", what.c_str(), measured,
                                    limit, good ? "" : "  TOO MUCH") > 0;
  return printed && good;
}

inline bool within(const std::string& what, double measured, double limit) {
  return within(stdout, what, measured, limit);
}

}  // namespace bench
