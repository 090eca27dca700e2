#include "command/sequences/name_pattern.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <system_error>

#include "command/errors.h"
#include "command/files/folder.h"

namespace nevrel {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view decimals = "0123456789";

/// Where a frame number stands in a name.
struct Place {
    std::size_t begin, end;
    int digits;
};

/// The place that begins with one of `signs` at `at`, if one does.
std::optional<Place> PlaceAt(std::string_view name, std::size_t at, std::string_view signs) {
    const char sign = name[at];
    if (signs.find(sign) == std::string_view::npos) return std::nullopt;
    if (sign == '#' || sign == '@') {
        const std::size_t end = std::min(name.find_first_not_of(sign, at), name.size());
        const auto count = static_cast<int>(end - at);
        return Place{at, end, sign == '#' && count == 1 ? 4 : count};
    }
    const std::size_t end = std::min(name.find_first_not_of(decimals, at + 1), name.size());
    if (end == name.size() || name[end] != 'd' || end - at > 3) return std::nullopt;
    int digits = 1;
    std::from_chars(name.data() + at + 1, name.data() + end, digits);
    return Place{at, end + 1, std::max(digits, 1)};
}

std::vector<Place> FindPlaces(std::string_view name, std::string_view signs) {
    std::vector<Place> places;
    for (std::size_t at = 0; at < name.size(); ++at) {
        if (name.substr(at).starts_with("%%")) {
            ++at;
        } else if (std::optional<Place> place = PlaceAt(name, at, signs)) {
            const bool bracketed = at > 0 && name[at - 1] == '[' && place->end < name.size() &&
                                   name[place->end] == ']';
            if (bracketed) *place = {place->begin - 1, place->end + 1, place->digits};
            places.push_back(*place);
            at = place->end - 1;
        }
    }
    return places;
}

/// Takes a number without leading zeros from the front of `text`; longer ones are cut.
std::string_view TakeDigits(std::string_view& text) {
    const std::size_t size = std::min(text.find_first_not_of(decimals), text.size());
    std::string_view digits = text.substr(0, size);
    text.remove_prefix(size);
    while (digits.size() > 1 && digits.front() == '0') digits.remove_prefix(1);
    return digits;
}

bool StartsWithDigit(std::string_view text) {
    return !text.empty() && decimals.find(text.front()) != std::string_view::npos;
}

}  // namespace

std::string WithoutEscapes(std::string_view name) {
    std::string text;
    for (std::size_t i = 0; i < name.size(); ++i) {
        text += name[i];
        if (name.substr(i).starts_with("%%")) ++i;
    }
    return text;
}

bool NaturallyLess(std::string_view a, std::string_view b) {
    const std::string_view wholeA = a;
    const std::string_view wholeB = b;
    while (!a.empty() && !b.empty()) {
        if (StartsWithDigit(a) && StartsWithDigit(b)) {
            const std::string_view numberA = TakeDigits(a);
            const std::string_view numberB = TakeDigits(b);
            if (numberA.size() != numberB.size()) return numberA.size() < numberB.size();
            if (numberA != numberB) return numberA < numberB;
        } else {
            if (a.front() != b.front()) return a.front() < b.front();
            a.remove_prefix(1);
            b.remove_prefix(1);
        }
    }
    return a.empty() != b.empty() ? a.empty() : wholeA < wholeB;
}

std::optional<NamePattern> NamePattern::parse(const fs::path& path) {
    const std::string name = path.filename().string();
    std::vector<Place> places = FindPlaces(name, "#%");
    if (places.empty()) places = FindPlaces(name, "@");
    if (places.empty()) return std::nullopt;
    if (places.size() > 1) {
        throw UsageError(path.string() +
                         ": has several places for a frame number; --no-pattern takes the name as "
                         "it is");
    }
    NamePattern pattern;
    pattern.path_ = path;
    pattern.before_ = WithoutEscapes(name.substr(0, places.front().begin));
    pattern.after_ = WithoutEscapes(name.substr(places.front().end));
    pattern.digits_ = places.front().digits;
    return pattern;
}

fs::path NamePattern::at(FrameNumber frame) const { return path_.parent_path() / name(frame); }

std::string NamePattern::name(FrameNumber frame) const {
    std::string digits = std::to_string(std::abs(frame));
    const std::string sign = frame < 0 ? "-" : "";
    const std::size_t width = static_cast<std::size_t>(digits_) - sign.size();
    if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
    return before_ + sign + digits + after_;
}

std::optional<FrameNumber> NamePattern::frameOf(std::string_view name) const {
    if (name.size() <= before_.size() + after_.size() || !name.starts_with(before_) ||
        !name.ends_with(after_))
        return std::nullopt;
    const std::string_view digits =
        name.substr(before_.size(), name.size() - before_.size() - after_.size());
    FrameNumber frame = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), frame);
    if (error != std::errc{} || end != digits.data() + digits.size()) return std::nullopt;
    if (frame < -largestFrame || frame > largestFrame) return std::nullopt;
    if (this->name(frame) != name) return std::nullopt;  // other digits than the pattern writes
    return frame;
}

std::vector<FrameNumber> NamePattern::find() const {
    const fs::path folder = path_.has_parent_path() ? path_.parent_path() : ".";
    std::vector<FrameNumber> frames;
    std::error_code error;
    const fs::file_status status = fs::status(folder, error);
    if (status.type() == fs::file_type::not_found) return frames;
    ForEachEntry(folder, [&](const fs::directory_entry& entry) {
        if (const auto frame = frameOf(entry.path().filename().string())) frames.push_back(*frame);
    });
    std::sort(frames.begin(), frames.end());
    return frames;
}

NamePattern NamePattern::movedTo(const fs::path& folder, const std::string& format) const {
    NamePattern moved = *this;
    moved.path_ = folder / path_.filename();
    if (!format.empty()) {
        moved.path_.replace_extension(format);
        moved.after_ = fs::path("name" + after_).replace_extension(format).string().substr(4);
    }
    return moved;
}

}  // namespace nevrel
