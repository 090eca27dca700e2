// A position relative to the pixel at which a pattern is tested.
#pragma once

struct Offset {
    int dx;
    int dy;

    friend constexpr bool operator==(const Offset&, const Offset&) = default;
};

[[nodiscard]] constexpr Offset operator+(Offset a, Offset b) { return {a.dx + b.dx, a.dy + b.dy}; }
