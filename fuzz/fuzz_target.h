// What the fuzz targets share: the entry that a driver calls and the end of a run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

/// Runs one input. Called again and again in one process.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Ends the process, so that the driver keeps the input, unless `right`.
inline void Require(bool right, const std::string& what) {
    if (right) return;
    std::fprintf(stderr, "fuzz target: %s\n", what.c_str());
    std::abort();
}
