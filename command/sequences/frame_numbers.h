// Frame numbers as people write them.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace nevrel {

using FrameNumber = long;

/// Either sign; numbers of that size can be added and subtracted.
inline constexpr FrameNumber largestFrame = 999'999'999'999'999'999;

/// The frames of "1-240", "10-20,30", "1-100x2" or "1-100:2" (every second), "20-1" (backwards) and
/// "-10--5" (negative), in the order written, each once. Throws UsageError, naming `option`, where
/// the text says no frames or more than ten million.
[[nodiscard]] std::vector<FrameNumber> ParseFrames(std::string_view text,
                                                   const std::string& option);

/// Frames from `first` to `last`, both included.
struct FrameRange {
    FrameNumber first, last;
};

/// Ascending frames, neighbours together.
[[nodiscard]] std::vector<FrameRange> RangesOf(std::span<const FrameNumber> frames);

/// What lies between ascending frames.
[[nodiscard]] std::vector<FrameRange> GapsBetween(std::span<const FrameNumber> frames);

/// "1-3, 5", in one line: the first ten ranges and how many more there are.
[[nodiscard]] std::string RangesText(std::span<const FrameRange> ranges);

}  // namespace nevrel
