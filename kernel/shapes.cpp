#include "kernel/shapes.h"

int StaircaseLength(const StaircaseVariant& variant, const EdgeMap& map, int x, int y) noexcept {
    // The trace ends where the diagonal along its direction is an edge, in the cell or in the one beside it.
    const unsigned stop = variant.step.dx == variant.step.dy ? EdgeDiagonal : EdgeAntiDiagonal;
    const int besideX = variant.required == EdgeDown ? -1 : 0;
    const int besideY = variant.required == EdgeDown ? 0 : -1;
    int cellX = x + variant.start.dx;
    int cellY = y + variant.start.dy;
    int length = 0;
    while ((map.flags(cellX, cellY) & variant.required) != 0 &&
           ((map.flags(cellX, cellY) | map.flags(cellX + besideX, cellY + besideY)) & stop) == 0) {
        ++length;
        cellX += variant.step.dx;
        cellY += variant.step.dy;
    }
    return length;
}

bool TipShape(const Neighbourhood& at) noexcept {
    const bool left = at.R(-1, 0);
    const bool right = at.R(0, 0);
    const bool top = at.D(0, -1);
    const bool bottom = at.D(0, 0);
    const int closed = int{left} + int{right} + int{top} + int{bottom};
    if (closed < 3) return false;

    const bool topLeft = at.G(-1, -1);
    const bool topRight = at.A(0, -1);
    const bool bottomLeft = at.A(-1, 0);
    const bool bottomRight = at.G(0, 0);
    if (closed == 4) return (topLeft || bottomRight) && (topRight || bottomLeft);
    if (topLeft && topRight && bottomLeft && bottomRight) return false;
    if (!left) return topRight && bottomRight;
    if (!right) return topLeft && bottomLeft;
    if (!top) return bottomLeft && bottomRight;
    return topLeft && topRight;
}

std::optional<Offset> VerticalPieceNotch(const Neighbourhood& at) noexcept {
    if (!at.D(0, -1)) return std::nullopt;
    if (at.D(-1, -1) && at.D(-1, 0) && at.R(-2, 0) && at.D(-2, -1) && at.R(-2, -1) && at.D(-2, -2) &&
        !at.G(0, 0) && !at.R(-1, 0) && !at.G(-2, -1)) {
        return Offset{-1, 0};
    }
    if (!at.R(-1, 0)) return std::nullopt;
    if (at.R(0, -1) && at.D(1, -1) && at.R(1, -1) && at.R(0, -2) && at.R(1, -3) && !at.A(0, -1) &&
        !at.D(1, -2) && !at.A(1, -3)) {
        return Offset{1, -1};
    }
    if (at.R(-1, -1) && at.D(-1, -1) && at.R(-2, -1) && at.R(-1, -2) && at.D(-1, -3) && !at.G(-1, -1) &&
        !at.D(-1, -2) && !at.G(-2, -3)) {
        return Offset{-1, -1};
    }
    return std::nullopt;
}

std::optional<Offset> HorizontalPieceNotch(const Neighbourhood& at) noexcept {
    if (at.D(0, -1) && at.R(0, -1) && at.D(1, -1) && at.D(1, -2) && at.D(-1, -1) && at.R(-2, 0) &&
        !at.A(0, -1) && !at.R(-1, 0) && !at.A(-2, 0)) {
        return Offset{0, 0};
    }
    if (!at.R(-1, 0) || !at.R(-1, -1)) return std::nullopt;
    if (at.D(0, -1) && at.D(-1, -1) && at.D(-1, -2) && at.D(-2, -1) && at.R(-3, -1) && !at.G(-1, -1) &&
        !at.R(-2, -1) && !at.G(-3, -2)) {
        return Offset{-1, -1};
    }
    if (at.R(0, -1) && at.D(0, -2) && at.R(-1, -2) && at.D(-1, -2) && at.R(-2, -2) && !at.D(0, -1) &&
        !at.G(-1, -2) && !at.G(0, 0)) {
        return Offset{0, -1};
    }
    return std::nullopt;
}

std::optional<Offset> CornerNotch(const Neighbourhood& at) noexcept {
    if (!at.R(0, -1)) return std::nullopt;
    if (at.D(0, -1) && at.D(1, -1) && at.D(1, -2) && at.R(2, -1) && at.D(2, -1) && !at.R(1, -1) &&
        !at.A(2, -2) && !at.A(0, -1)) {
        return Offset{1, -1};
    }
    if (at.R(0, -2) && at.R(-1, -1) && at.D(0, -2) && at.D(1, -2) && at.R(1, -2) && !at.D(0, -1) &&
        !at.A(0, -2) && !at.A(-1, 0)) {
        return Offset{0, -1};
    }
    return std::nullopt;
}

std::optional<Offset> TipNotch(const Neighbourhood& at) noexcept {
    const bool vertical = at.R(0, 0);
    if (vertical) {
        if (at.x() <= at.width() - 4 && at.y() >= 3 && at.D(1, -2) && at.D(2, -2) && at.R(0, -1) &&
            !at.G(0, -2) && !at.D(1, -1) && !at.R(1, -1)) {
            return Offset{1, -1};
        }
        if (at.D(-1, -1) && at.D(0, -1) && at.R(0, 1) && !at.A(0, -1) && !at.R(-1, 0) && !at.D(0, 0)) {
            return Offset{0, 0};
        }
        if (at.R(0, -1) && at.D(-1, 0) && at.D(0, 0) && !at.D(0, -1) && !at.R(-1, 0) && !at.G(0, 0)) {
            return Offset{0, 0};
        }
    } else if (at.D(0, 0)) {
        if (at.R(-1, -1) && at.R(-1, 0) && at.D(1, 0) && !at.D(0, -1) && !at.A(-1, 0)) return Offset{0, 0};
    }
    return std::nullopt;
}
