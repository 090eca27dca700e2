// Prints the results as Markdown tables, one for each group of benchmarks.
#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

class TableReporter : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context& context) override;
    /// Prints a row as soon as it has been measured, after the group's heading where a group
    /// begins.
    void ReportRuns(const std::vector<Run>& runs) override;

    /// Whether any benchmark reported an error.
    [[nodiscard]] bool failed() const { return failed_; }

  private:
    bool failed_ = false;
    std::string group_;
};
