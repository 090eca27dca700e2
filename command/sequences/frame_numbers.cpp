#include "command/sequences/frame_numbers.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <unordered_set>

#include "command/errors.h"

namespace nevrel {
namespace {

constexpr std::size_t mostFrames = 10'000'000;

/// Takes a number, with its sign, from the front of `text`.
std::optional<FrameNumber> TakeNumber(std::string_view& text) {
    FrameNumber number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || number < -largestFrame || number > largestFrame)
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

bool Take(std::string_view& text, std::string_view anyOf) {
    if (text.empty() || anyOf.find(text.front()) == std::string_view::npos) return false;
    text.remove_prefix(1);
    return true;
}

struct Steps {
    FrameNumber first, last, step;

    [[nodiscard]] std::size_t size() const {
        return static_cast<std::size_t>(std::abs(last - first) / step) + 1;
    }
    [[nodiscard]] FrameNumber at(std::size_t i) const {
        const FrameNumber distance = static_cast<FrameNumber>(i) * step;
        return first < last ? first + distance : first - distance;
    }
};

/// Takes FIRST, FIRST-LAST or FIRST-LASTxSTEP from the front of `text`.
std::optional<Steps> TakeSteps(std::string_view& text) {
    const auto first = TakeNumber(text);
    if (!first) return std::nullopt;
    Steps range{*first, *first, 1};
    if (!Take(text, "-")) return range;
    const auto last = TakeNumber(text);
    if (!last) return std::nullopt;
    range.last = *last;
    if (Take(text, "x:")) {
        const auto step = TakeNumber(text);
        if (!step || *step < 1) return std::nullopt;
        range.step = *step;
    }
    return range;
}

}  // namespace

std::vector<FrameNumber> ParseFrames(std::string_view text, const std::string& option) {
    const std::string given(text);
    const auto refuse = [&](const std::string& reason) {
        throw UsageError(option + ": '" + given + "' " + reason);
    };
    std::vector<FrameNumber> frames;
    std::unordered_set<FrameNumber> known;
    do {
        const auto range = TakeSteps(text);
        if (!range || (!text.empty() && text.front() != ','))
            refuse("is no list of frames such as 1-240, 10-20,30 or 1-100x2");
        if (range->size() > mostFrames - frames.size()) refuse("is more than 10000000 frames");
        for (std::size_t i = 0; i < range->size(); ++i) {
            if (known.insert(range->at(i)).second) frames.push_back(range->at(i));
        }
    } while (Take(text, ","));
    return frames;
}

std::vector<FrameRange> RangesOf(std::span<const FrameNumber> frames) {
    std::vector<FrameRange> ranges;
    for (const FrameNumber frame : frames) {
        if (ranges.empty() || frame != ranges.back().last + 1) ranges.push_back({frame, frame});
        ranges.back().last = frame;
    }
    return ranges;
}

std::vector<FrameRange> GapsBetween(std::span<const FrameNumber> frames) {
    const std::vector<FrameRange> ranges = RangesOf(frames);
    std::vector<FrameRange> gaps;
    for (std::size_t i = 1; i < ranges.size(); ++i)
        gaps.push_back({ranges[i - 1].last + 1, ranges[i].first - 1});
    return gaps;
}

std::string RangesText(std::span<const FrameRange> ranges) {
    constexpr std::size_t mostRanges = 10;
    std::string text;
    for (const FrameRange& range : ranges.first(std::min(ranges.size(), mostRanges))) {
        text.append(text.empty() ? "" : ", ").append(std::to_string(range.first));
        if (range.last > range.first) text.append("-").append(std::to_string(range.last));
    }
    if (ranges.size() > mostRanges)
        text += " and " + std::to_string(ranges.size() - mostRanges) + " more ranges";
    return text;
}

}  // namespace nevrel
