#include "kernel/staircases.h"

#include <cassert>

int StaircaseLength(const StaircaseVariant& variant, const EdgeMap& map, int x, int y) noexcept {
    assert(x >= 0 && x < map.width() && y >= 0 && y < map.height());
    const Offset beside = variant.besideCell();
    int cellX = x + variant.start.dx;
    int cellY = y + variant.start.dy;
    int length = 0;
    while ((map.flags(cellX, cellY) & variant.required) != 0 &&
           ((map.flags(cellX, cellY) | map.flags(cellX + beside.dx, cellY + beside.dy)) &
            variant.stop()) == 0) {
        ++length;
        cellX += variant.step.dx;
        cellY += variant.step.dy;
    }
    return length;
}
