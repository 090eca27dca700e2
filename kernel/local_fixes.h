// The fixes around the ramps, each tied to a small pattern of the edge map.
#pragma once

#include <optional>
#include <span>

#include "kernel/ramp.h"
#include "kernel/shapes.h"

/// Blends along one staircase. Its ramp ends within its cells, but for very long ones; those end at the
/// image's edge.
template <typename Canvas, typename Weights>
void WalkStaircase(const Canvas& canvas, const BlendWeights<Weights>& weights,
                   const StaircaseVariant& variant, int length, int x, int y) noexcept {
    auto ramp = weights.staircaseRamp(length);
    auto restoring = weights.restoringRamp(length);
    int toX = x + variant.destination.dx;
    int toY = y + variant.destination.dy;
    int fromX = x + variant.source.dx;
    int fromY = y + variant.source.dy;
    while (!ramp.done && canvas.contains(toX, toY) && canvas.contains(fromX, fromY)) {
        canvas.blendFrom(fromX, fromY, toX, toY, RampWeight(ramp));
        if (variant.restores) canvas.restorePixel(fromX, fromY, RampWeight(restoring));
        toX += variant.step.dx;
        toY += variant.step.dy;
        fromX += variant.step.dx;
        fromY += variant.step.dy;
    }
}

/// Blends along every staircase that continues the piece at (x, y); returns whether there was one.
template <typename Canvas, typename Weights>
bool StaircaseBlend(const Canvas& canvas, const EdgeMap& map, const BlendWeights<Weights>& weights,
                    std::span<const StaircaseVariant> variants, int x, int y) noexcept {
    bool applied = false;
    for (const StaircaseVariant& variant : variants) {
        const int length = StaircaseLength(variant, map, x, y);
        if (length < shortestStaircase) continue;
        WalkStaircase(canvas, weights, variant, length, x, y);
        applied = true;
    }
    return applied;
}

/// A light blend across a vertical piece, towards each side that got no ramp, unless diagonals differ both
/// ways.
template <typename Canvas, typename Weight>
void CornerBlend(const Canvas& canvas, const Neighbourhood& at, Weight cornerWeight, bool leftBlended,
                 bool rightBlended) noexcept {
    const bool rising = at.A(0, 0) || at.A(0, -1);
    const bool falling = at.G(0, 0) || at.G(0, -1);
    if (rising && falling) return;
    const int x = at.x();
    const int y = at.y();
    if (!rightBlended) canvas.blendFrom(x, y, x + 1, y, cornerWeight);
    if (!leftBlended) canvas.blendFrom(x + 1, y, x, y, cornerWeight);
}

/// Restores the pixel that a pattern has found, if it has.
template <typename Canvas, typename Weight>
void RestoreFound(const Canvas& canvas, const Neighbourhood& at, const std::optional<Offset>& found,
                  Weight weight) noexcept {
    if (found) canvas.restorePixel(at.x() + found->dx, at.y() + found->dy, weight);
}

/// Light blends at the four ends of the pixel's two pieces, where a piece meets a boundary that runs across
/// it.
template <typename Canvas, typename Weight>
void JunctionBlend(const Canvas& canvas, const Neighbourhood& at, Weight weight) noexcept {
    const int x = at.x();
    const int y = at.y();
    if (at.R(0, 0)) {
        if (at.D(0, -1) && at.D(1, -1) && !at.R(0, -1)) {
            if (!at.G(-1, -1)) canvas.blendFrom(x, y, x, y - 1, weight);
            if (!at.A(1, -1)) canvas.blendFrom(x + 1, y, x + 1, y - 1, weight);
        }
        if (at.D(0, 0) && at.D(1, 0) && !at.R(0, 1)) {
            if (!at.A(-1, 0)) canvas.blendFrom(x, y, x, y + 1, weight);
            if (!at.G(1, 0)) canvas.blendFrom(x + 1, y, x + 1, y + 1, weight);
        }
    }
    if (at.D(0, 0)) {
        if (at.R(-1, 0) && at.R(-1, 1) && !at.D(-1, 0)) {
            if (!at.G(-1, -1)) canvas.blendFrom(x, y, x - 1, y, weight);
            if (!at.A(-1, 1)) canvas.blendFrom(x, y + 1, x - 1, y + 1, weight);
        }
        if (at.R(0, 0) && at.R(0, 1) && !at.D(1, 0)) {
            if (!at.A(0, -1)) canvas.blendFrom(x, y, x + 1, y, weight);
            if (!at.G(0, 1)) canvas.blendFrom(x, y + 1, x + 1, y + 1, weight);
        }
    }
}
