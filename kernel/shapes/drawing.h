// Patterns of edge flags as drawings in the source, read while compiling.
//
// A drawing shows pixels, and between them what the flags say of those next to each other:
//
//      .   o   .         . pixels; o is the one at which the pattern is tested
//      . | . ~ .         | these two differ (R is set)   ~ these two are alike (R is clear)
//      .   .   .
//      -   :             - those above and below differ (D is set)   : they are alike
//      .   .   .
//        \   /           \ those at its ends are alike (G is clear)   / likewise (A is clear)
//      .   .   .
//
// What stands beside no sign may be either way. The effect of the pattern is a blend of the input
// pixel s (S where it is the tested pixel) into the output pixel t, or of one pixel x (X) into
// itself, which moves it back towards its input value.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "kernel/edges/edge_map.h"
#include "kernel/pixels/image_view.h"

/// A flag that has to be set or clear, by the offset of its pixel from the tested one.
struct Condition {
    Offset at{};
    EdgeFlag flag{};
    bool set = false;
};

/// A drawing's conditions, all of which have to hold, and its effect.
struct Pattern {
    static constexpr std::size_t mostConditions = 12;

    std::array<Condition, mostConditions> conditions{};
    std::size_t count = 0;
    Offset source{};
    Offset target{};
};

namespace drawing {

/// Pixels stand four columns and two lines apart, with the signs halfway between them.
inline constexpr int columns = 4;
inline constexpr int lines = 2;

struct Place {
    int column;
    int line;
};

/// Calls visit(sign, place) for everything that is drawn.
template <typename Visit>
constexpr void VisitSigns(std::string_view text, Visit visit) {
    Place place{0, 0};
    for (const char sign : text) {
        if (sign == '\n') {
            place = {0, place.line + 1};
        } else {
            if (sign != ' ') visit(sign, place);
            ++place.column;
        }
    }
}

constexpr Place TestedPixel(std::string_view text) {
    Place tested{-1, -1};
    VisitSigns(text, [&tested](char sign, Place place) {
        if (std::string_view("oSX").find(sign) == std::string_view::npos) return;
        if (tested.line >= 0) throw "two pixels are marked as the tested one";
        tested = place;
    });
    if (tested.line < 0) throw "no pixel is marked as the tested one";
    return tested;
}

/// How many whole cells a distance spans, and what is left of it.
struct Cells {
    int whole;
    int rest;
};
constexpr Cells CellsIn(int distance, int size) {
    const int whole = (distance + 64 * size) / size - 64;
    return {whole, distance - whole * size};
}

constexpr Condition ConditionOf(char sign, Offset at, bool right, bool below) {
    const auto drawn = [=](char set, char clear, EdgeFlag flag) {
        if (sign != set && sign != clear) throw "a sign that means nothing here";
        return Condition{at, flag, sign == set};
    };
    if (right && below)
        return drawn(0, sign == '/' ? '/' : '\\', sign == '/' ? EdgeAntiDiagonal : EdgeDiagonal);
    return right ? drawn('|', '~', EdgeRight) : drawn('-', ':', EdgeDown);
}

}  // namespace drawing

/// Reads a drawing; one that means nothing does not compile.
consteval Pattern Draw(std::string_view text) {
    using namespace drawing;
    Pattern pattern;
    const Place tested = TestedPixel(text);
    VisitSigns(text, [&](char sign, Place place) {
        const Cells x = CellsIn(place.column - tested.column, columns);
        const Cells y = CellsIn(place.line - tested.line, lines);
        const Offset at{x.whole, y.whole};
        if (x.rest % (columns / 2) != 0) throw "a sign between the places";
        if (x.rest != 0 || y.rest != 0) {
            pattern.conditions[pattern.count++] = ConditionOf(sign, at, x.rest != 0, y.rest != 0);
            return;
        }
        if (std::string_view(".osStxX").find(sign) == std::string_view::npos) throw "not a pixel";
        if (std::string_view("sSxX").find(sign) != std::string_view::npos) pattern.source = at;
        if (std::string_view("txX").find(sign) != std::string_view::npos) pattern.target = at;
    });
    return pattern;
}

/// Reads drawings that are separated by blank lines.
template <std::size_t count>
consteval std::array<Pattern, count> DrawAll(std::string_view text) {
    constexpr std::string_view blankLine = "\n\n";
    std::array<Pattern, count> patterns{};
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t end = text.find(blankLine);
        if ((end == std::string_view::npos) != (i + 1 == count)) throw "another number of drawings";
        patterns[i] = Draw(text.substr(0, end));
        if (i + 1 < count) text.remove_prefix(end + blankLine.size() - 1);
    }
    return patterns;
}
