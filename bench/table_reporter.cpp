#include "bench/table_reporter.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <sstream>

namespace {

struct Column {
    const char* title;
    const char* counter;
    int decimals;
};

struct Group {
    const char* name;
    const char* title;
    std::vector<const char*> labels;
    std::vector<Column> columns;
};

const std::array<Group, 4> groups{{
    {"kernels",
     "The nine kernels",
     {"size", "frame", "kernel"},
     {{"edge pixels %", "edges", 1},
      {"ms", "ms", 2},
      {"megapixels/s", "rate", 1},
      {"x memcpy", "multiple", 2}}},
    {"forms",
     "Plain and vector forms, in ms",
     {"size", "frame", "kernel"},
     {{"plain", "plain", 2},
      {"SSE2", "sse2", 2},
      {"AVX2", "avx2", 2},
      {"AVX-512", "avx512", 2},
      {"plain / widest", "gain", 1}}},
    {"parts",
     "The parts of a kernel, in ms",
     {"size", "frame", "kernel"},
     {{"memcpy", "memcpy", 2}, {"copy", "first", 2}, {"scan", "scan", 2}, {"pass", "pass", 2}}},
    {"growth",
     "Growth with size, Kernel8",
     {"frame", "megapixels"},
     {{"edge pixels %", "edges", 1},
      {"ms", "ms", 2},
      {"ns/pixel", "pixel", 2},
      {"x memcpy", "multiple", 2}}},
}};

std::vector<std::string> SplitName(const std::string& name) {
    std::vector<std::string> parts;
    std::istringstream stream(name);
    for (std::string part; std::getline(stream, part, '/');) parts.push_back(part);
    return parts;
}

void PrintHeading(const Group& group) {
    std::printf("\n### %s\n\n|", group.title);
    for (const char* label : group.labels) std::printf(" %s |", label);
    for (const Column& column : group.columns) std::printf(" %s |", column.title);
    std::printf("\n|");
    for (std::size_t i = 0; i < group.labels.size(); ++i) std::printf("---|");
    for (std::size_t i = 0; i < group.columns.size(); ++i) std::printf("---:|");
    std::printf("\n");
}

void PrintRow(const Group& group, const std::vector<std::string>& name,
              const benchmark::UserCounters& counters) {
    std::printf("|");
    for (std::size_t i = 1; i < name.size(); ++i) std::printf(" %s |", name[i].c_str());
    for (const Column& column : group.columns) {
        std::printf(" %.*f |", column.decimals, counters.at(column.counter).value);
    }
    std::printf("\n");
    std::fflush(stdout);
}

}  // namespace

bool TableReporter::ReportContext(const Context& context) {
    std::printf("%d processors at %.0f MHz", context.cpu_info.num_cpus,
                context.cpu_info.cycles_per_second / 1e6);
    for (const auto& cache : context.cpu_info.caches) {
        std::printf(", L%d %s %d KiB", cache.level, cache.type.c_str(), cache.size / 1024);
    }
    std::printf("\n");
    return true;
}

void TableReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        const std::vector<std::string> name = SplitName(run.run_name.function_name);
        const auto group = std::find_if(groups.begin(), groups.end(),
                                        [&](const Group& g) { return g.name == name[0]; });
        if (group == groups.end()) continue;
        if (group_ != name[0]) PrintHeading(*group);
        group_ = name[0];
        if (run.error_occurred) {
            failed_ = true;
            std::printf("| %s: %s |\n", run.run_name.function_name.c_str(),
                        run.error_message.c_str());
        } else {
            PrintRow(*group, name, run.counters);
        }
    }
}
