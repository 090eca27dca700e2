// What the smoothing pass has to do at a pixel, as far as a fixed neighbourhood in the edge map settles it.
// Only the lengths of runs, lines and staircases are left to be measured.
#pragma once

#include <array>

#include "kernel/pixel_mask.h"
#include "kernel/sides.h"
#include "kernel/staircases.h"

/// The pixels at which each step applies. Only a run may turn out to be none when it is measured.
struct StepMasks {
    PixelMask vertical;             ///< R: the pixel has a vertical piece on its right
    PixelMask horizontal;           ///< D: the pixel has a horizontal piece below it
    std::array<PixelMask, 4> run;   ///< by side: a run meets the piece
    std::array<PixelMask, 4> line;  ///< by side: a thin line ends at the piece, if there is no run
    std::array<PixelMask, 4> horizontalStaircase;
    std::array<PixelMask, 4> verticalStaircase;
    PixelMask corner;  ///< a vertical piece without diagonals both ways
    std::array<PixelMask, 3> verticalNotch;
    std::array<PixelMask, 3> horizontalNotch;
    std::array<PixelMask, 2> cornerNotch;
    PixelMask tip;
    PixelMask aboveTip;   ///< restores the pixel above, on the right
    PixelMask besideTip;  ///< restores the pixel itself
    std::array<PixelMask, 8> junction;

    /// The pixels at which anything applies.
    [[nodiscard]] PixelMask any() const {
        PixelMask all = corner | tip | aboveTip | besideTip;
        const auto gather = [&all](const auto& masks) {
            for (const PixelMask mask : masks) all = all | mask;
        };
        gather(run);
        gather(line);
        gather(horizontalStaircase);
        gather(verticalStaircase);
        gather(verticalNotch);
        gather(horizontalNotch);
        gather(cornerNotch);
        gather(junction);
        return all;
    }
};

/// The pixel that each notch pattern restores.
inline constexpr std::array<Offset, 3> verticalNotchPixel{{{-1, 0}, {1, -1}, {-1, -1}}};
inline constexpr std::array<Offset, 3> horizontalNotchPixel{{{0, 0}, {-1, -1}, {0, -1}}};
inline constexpr std::array<Offset, 2> cornerNotchPixel{{{1, -1}, {0, -1}}};

/// From which pixel into which each junction blends.
struct Junction {
    Offset from;
    Offset into;
};
inline constexpr std::array<Junction, 8> junctions{{
    {{0, 0}, {0, -1}},
    {{1, 0}, {1, -1}},
    {{0, 0}, {0, 1}},
    {{1, 0}, {1, 1}},
    {{0, 0}, {-1, 0}},
    {{0, 1}, {-1, 1}},
    {{0, 0}, {1, 0}},
    {{0, 1}, {1, 1}},
}};

/// The patterns of the pass over any source of flags (PointFlags, WindowFlags).
template <typename Flags>
class Patterns {
  public:
    explicit Patterns(const Flags& flags) : flags_(flags) {}

    [[nodiscard]] StepMasks find() const {
        const PixelMask r = R(0, 0);
        const PixelMask d = D(0, 0);
        return {.vertical = r,
                .horizontal = d,
                .run = {run<Side::left>(), run<Side::right>(), run<Side::up>(), run<Side::down>()},
                .line = {line<Side::left>(), line<Side::right>(), line<Side::up>(), line<Side::down>()},
                .horizontalStaircase = horizontalStaircase(),
                .verticalStaircase = verticalStaircase(),
                .corner = r & ~((A(0, 0) | A(0, -1)) & (G(0, 0) | G(0, -1))),
                .verticalNotch = verticalNotch(),
                .horizontalNotch = horizontalNotch(),
                .cornerNotch = cornerNotch(),
                .tip = tip(),
                .aboveTip = aboveTip(),
                .besideTip = besideTip(),
                .junction = junction()};
    }

  private:
    [[nodiscard]] PixelMask R(int dx, int dy) const { return flags_.test(dx, dy, EdgeRight); }
    [[nodiscard]] PixelMask D(int dx, int dy) const { return flags_.test(dx, dy, EdgeDown); }
    [[nodiscard]] PixelMask G(int dx, int dy) const { return flags_.test(dx, dy, EdgeDiagonal); }
    [[nodiscard]] PixelMask A(int dx, int dy) const { return flags_.test(dx, dy, EdgeAntiDiagonal); }

    // The first pixel of a run, in one of the two places where it may lie.
    template <Side side>
    [[nodiscard]] PixelMask run() const {
        using View = SideView<side, Flags>;
        const View at(flags_);
        const PixelMask outer = ~at.outward(0, -1) & ~at.crossing(View::step, -1) & at.beside(View::step, -1);
        const PixelMask inner = ~at.inward(0, 0) & ~at.crossing(View::step, 1) & at.beside(View::step, 0);
        return at.crossing(0, 0) & ~at.crossing(View::step, 0) & (outer | inner);
    }

    // The first pixel of a thin line whose end at the piece is free.
    template <Side side>
    [[nodiscard]] PixelMask line() const {
        using View = SideView<side, Flags>;
        const View at(flags_);
        const PixelMask freeEnd = ~at.outward(0, -1) & ~at.beside(View::behind, -1) &
                                  ~at.crossing(-View::step, 0) & ~at.inward(0, 0) &
                                  ~at.beside(View::behind, 0);
        const PixelMask firstPixel = ~at.crossing(View::step, 0) & ~at.crossing(View::step, -1) &
                                     at.beside(View::step, -1) & ~at.crossing(View::step, 1) &
                                     at.beside(View::step, 0);
        return at.crossing(0, 0) & freeEnd & firstPixel;
    }

    // The first two cells of a staircase.
    template <StaircaseVariant variant>
    [[nodiscard]] PixelMask staircase() const {
        return staircaseCell<variant>(variant.start) & staircaseCell<variant>(variant.start + variant.step);
    }
    template <StaircaseVariant variant>
    [[nodiscard]] PixelMask staircaseCell(Offset cell) const {
        const Offset beside = cell + variant.besideCell();
        return flags_.test(cell.dx, cell.dy, variant.required) &
               ~flags_.test(cell.dx, cell.dy, variant.stop()) &
               ~flags_.test(beside.dx, beside.dy, variant.stop());
    }

    // The vertical piece continues one row down with nothing beside it.
    [[nodiscard]] std::array<PixelMask, 4> horizontalStaircase() const {
        const PixelMask straight = R(0, 0) & R(0, 1) & ~D(0, 0) & ~D(1, 0);
        return {
            straight & staircase<horizontalStaircases[0]>(), straight & staircase<horizontalStaircases[1]>(),
            straight & staircase<horizontalStaircases[2]>(), straight & staircase<horizontalStaircases[3]>()};
    }

    // The horizontal piece continues one column left with nothing beside it.
    [[nodiscard]] std::array<PixelMask, 4> verticalStaircase() const {
        const PixelMask straight = D(0, 0) & D(-1, 0) & ~R(-1, 0) & ~R(-1, 1);
        return {straight & staircase<verticalStaircases[0]>(), straight & staircase<verticalStaircases[1]>(),
                straight & staircase<verticalStaircases[2]>(), straight & staircase<verticalStaircases[3]>()};
    }

    [[nodiscard]] std::array<PixelMask, 3> verticalNotch() const {
        const PixelMask piece = R(0, 0) & D(0, -1);
        return {piece & D(-1, -1) & D(-1, 0) & R(-2, 0) & D(-2, -1) & R(-2, -1) & D(-2, -2) &  //
                    ~G(0, 0) & ~R(-1, 0) & ~G(-2, -1),
                piece & R(-1, 0) & R(0, -1) & D(1, -1) & R(1, -1) & R(0, -2) & R(1, -3) &  //
                    ~A(0, -1) & ~D(1, -2) & ~A(1, -3),
                piece & R(-1, 0) & R(-1, -1) & D(-1, -1) & R(-2, -1) & R(-1, -2) & D(-1, -3) &  //
                    ~G(-1, -1) & ~D(-1, -2) & ~G(-2, -3)};
    }

    [[nodiscard]] std::array<PixelMask, 3> horizontalNotch() const {
        const PixelMask piece = D(0, 0);
        return {piece & D(0, -1) & R(0, -1) & D(1, -1) & D(1, -2) & D(-1, -1) & R(-2, 0) &  //
                    ~A(0, -1) & ~R(-1, 0) & ~A(-2, 0),
                piece & R(-1, 0) & D(0, -1) & D(-1, -1) & R(-1, -1) & D(-1, -2) & D(-2, -1) & R(-3, -1) &  //
                    ~G(-1, -1) & ~R(-2, -1) & ~G(-3, -2),
                piece & R(-1, 0) & R(-1, -1) & R(0, -1) & D(0, -2) & R(-1, -2) & D(-1, -2) & R(-2, -2) &  //
                    ~D(0, -1) & ~G(-1, -2) & ~G(0, 0)};
    }

    [[nodiscard]] std::array<PixelMask, 2> cornerNotch() const {
        const PixelMask pieces = R(0, 0) & D(0, 0) & R(0, -1);
        return {pieces & D(0, -1) & D(1, -1) & D(1, -2) & R(2, -1) & D(2, -1) &  //
                    ~R(1, -1) & ~A(2, -2) & ~A(0, -1),
                pieces & R(0, -2) & R(-1, -1) & D(0, -2) & D(1, -2) & R(1, -2) &  //
                    ~D(0, -1) & ~A(0, -2) & ~A(-1, 0)};
    }

    // A pixel closed on three or four sides, whose diagonal neighbours show that it stands out.
    [[nodiscard]] PixelMask tip() const {
        const PixelMask left = R(-1, 0);
        const PixelMask right = R(0, 0);
        const PixelMask top = D(0, -1);
        const PixelMask bottom = D(0, 0);
        const PixelMask topLeft = G(-1, -1);
        const PixelMask topRight = A(0, -1);
        const PixelMask bottomLeft = A(-1, 0);
        const PixelMask bottomRight = G(0, 0);
        const PixelMask isolated =
            left & right & top & bottom & (topLeft | bottomRight) & (topRight | bottomLeft);
        const PixelMask open = (~left & right & top & bottom & topRight & bottomRight) |
                               (left & ~right & top & bottom & topLeft & bottomLeft) |
                               (left & right & ~top & bottom & bottomLeft & bottomRight) |
                               (left & right & top & ~bottom & topLeft & topRight);
        return isolated | (open & ~(topLeft & topRight & bottomLeft & bottomRight));
    }

    [[nodiscard]] PixelMask aboveTip() const {
        return R(0, 0) & D(1, -2) & D(2, -2) & R(0, -1) & ~G(0, -2) & ~D(1, -1) & ~R(1, -1);
    }

    [[nodiscard]] PixelMask besideTip() const {
        const PixelMask r = R(0, 0);
        const PixelMask d = D(0, 0);
        const PixelMask under = r & D(-1, -1) & D(0, -1) & R(0, 1) & ~A(0, -1) & ~R(-1, 0) & ~d;
        const PixelMask over = r & R(0, -1) & D(-1, 0) & d & ~D(0, -1) & ~R(-1, 0) & ~G(0, 0);
        const PixelMask beside = d & ~r & R(-1, -1) & R(-1, 0) & D(1, 0) & ~D(0, -1) & ~A(-1, 0);
        return under | over | beside;
    }

    // A piece ends at a boundary that runs across it: above and below for the vertical one, left and right
    // for the horizontal one.
    [[nodiscard]] std::array<PixelMask, 8> junction() const {
        const PixelMask above = R(0, 0) & D(0, -1) & D(1, -1) & ~R(0, -1);
        const PixelMask below = R(0, 0) & D(0, 0) & D(1, 0) & ~R(0, 1);
        const PixelMask left = D(0, 0) & R(-1, 0) & R(-1, 1) & ~D(-1, 0);
        const PixelMask right = D(0, 0) & R(0, 0) & R(0, 1) & ~D(1, 0);
        return {above & ~G(-1, -1), above & ~A(1, -1), below & ~A(-1, 0), below & ~G(1, 0),
                left & ~G(-1, -1),  left & ~A(-1, 1),  right & ~A(0, -1), right & ~G(0, 1)};
    }

    Flags flags_;
};
