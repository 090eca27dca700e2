// The patterns of the smoothing pass, as formulas over the edge flags around a pixel.
#pragma once

#include "kernel/sides.h"
#include "kernel/staircases.h"
#include "kernel/step_masks.h"

/// Reads the steps off a source of flags: Flags has a Mask, answers test(dx, dy, flag) with one, and stores
/// one in the words of a StepMask. The source looks at most three rows up, two down, three columns left and
/// two right.
template <typename Flags>
class Patterns {
    using Mask = typename Flags::Mask;

  public:
    explicit Patterns(const Flags& flags) : flags_(flags) {}

    /// Sets the masks of the windows that the source of flags stands for, from `window` on.
    void find(StepMasks& steps, int window) const {
        const auto set = [window](StepMask& step, Mask mask) {
            Flags::store(mask, step.word + window);
            return mask;
        };
        const Mask rows = set(steps.anyHorizontalStaircase,
                              setAll(steps.horizontalStaircase, window, horizontalStaircase()));
        const Mask columns =
            set(steps.anyVerticalStaircase, setAll(steps.verticalStaircase, window, verticalStaircase()));
        const Mask vertical =
            set(steps.anyVertical,
                set(steps.run[0], run<Side::left>()) | set(steps.run[1], run<Side::right>()) |
                    set(steps.line[0], line<Side::left>()) | set(steps.line[1], line<Side::right>()) | rows |
                    set(steps.corner, corner()) | setAll(steps.verticalNotch, window, verticalNotch()));
        const Mask horizontal =
            set(steps.anyHorizontal,
                set(steps.run[2], run<Side::up>()) | set(steps.run[3], run<Side::down>()) |
                    set(steps.line[2], line<Side::up>()) | set(steps.line[3], line<Side::down>()) | columns |
                    setAll(steps.horizontalNotch, window, horizontalNotch()) |
                    setAll(steps.cornerNotch, window, cornerNotch()));
        const Mask tips = set(steps.anyTip, set(steps.tip, tipShape()) | set(steps.aboveTip, aboveTip()) |
                                                set(steps.besideTip, besideTip()));
        const Mask ends = set(steps.anyJunction, setAll(steps.junction, window, junction()));
        set(steps.any, vertical | horizontal | tips | ends);
    }

  private:
    template <int count>
    struct Group {
        Mask mask[count];
    };

    // Returns the pixels at which any of them applies.
    template <int count>
    static Mask setAll(StepMask (&steps)[count], int window, const Group<count>& group) {
        Mask any = group.mask[0];
        for (int i = 0; i < count; ++i) {
            Flags::store(group.mask[i], steps[i].word + window);
            any = any | group.mask[i];
        }
        return any;
    }

    [[nodiscard]] Mask R(int dx, int dy) const { return flags_.test(dx, dy, EdgeRight); }
    [[nodiscard]] Mask D(int dx, int dy) const { return flags_.test(dx, dy, EdgeDown); }
    [[nodiscard]] Mask G(int dx, int dy) const { return flags_.test(dx, dy, EdgeDiagonal); }
    [[nodiscard]] Mask A(int dx, int dy) const { return flags_.test(dx, dy, EdgeAntiDiagonal); }

    // The first pixel of a run, in one of the two places where it may lie.
    template <Side side>
    [[nodiscard]] Mask run() const {
        using View = SideView<side, Flags>;
        const View at(flags_);
        const Mask outer = ~at.outward(0, -1) & ~at.crossing(View::step, -1) & at.beside(View::step, -1);
        const Mask inner = ~at.inward(0, 0) & ~at.crossing(View::step, 1) & at.beside(View::step, 0);
        return at.crossing(0, 0) & ~at.crossing(View::step, 0) & (outer | inner);
    }

    // The first pixel of a thin line whose end at the piece is free.
    template <Side side>
    [[nodiscard]] Mask line() const {
        using View = SideView<side, Flags>;
        const View at(flags_);
        const Mask freeEnd = ~at.outward(0, -1) & ~at.beside(View::behind, -1) &
                             ~at.crossing(-View::step, 0) & ~at.inward(0, 0) & ~at.beside(View::behind, 0);
        const Mask firstPixel = ~at.crossing(View::step, 0) & ~at.crossing(View::step, -1) &
                                at.beside(View::step, -1) & ~at.crossing(View::step, 1) &
                                at.beside(View::step, 0);
        return at.crossing(0, 0) & freeEnd & firstPixel;
    }

    // The first two cells of a staircase.
    template <StaircaseVariant variant>
    [[nodiscard]] Mask staircase() const {
        return staircaseCell<variant>(variant.start) & staircaseCell<variant>(variant.start + variant.step);
    }
    template <StaircaseVariant variant>
    [[nodiscard]] Mask staircaseCell(Offset cell) const {
        const Offset beside = cell + variant.besideCell();
        return flags_.test(cell.dx, cell.dy, variant.required) &
               ~flags_.test(cell.dx, cell.dy, variant.stop()) &
               ~flags_.test(beside.dx, beside.dy, variant.stop());
    }

    // The vertical piece continues one row down with nothing beside it.
    [[nodiscard]] Group<4> horizontalStaircase() const {
        const Mask straight = R(0, 0) & R(0, 1) & ~D(0, 0) & ~D(1, 0);
        return {
            straight & staircase<horizontalStaircases[0]>(), straight & staircase<horizontalStaircases[1]>(),
            straight & staircase<horizontalStaircases[2]>(), straight & staircase<horizontalStaircases[3]>()};
    }

    // The horizontal piece continues one column left with nothing beside it.
    [[nodiscard]] Group<4> verticalStaircase() const {
        const Mask straight = D(0, 0) & D(-1, 0) & ~R(-1, 0) & ~R(-1, 1);
        return {straight & staircase<verticalStaircases[0]>(), straight & staircase<verticalStaircases[1]>(),
                straight & staircase<verticalStaircases[2]>(), straight & staircase<verticalStaircases[3]>()};
    }

    // A vertical piece without diagonals both ways.
    [[nodiscard]] Mask corner() const { return R(0, 0) & ~((A(0, 0) | A(0, -1)) & (G(0, 0) | G(0, -1))); }

    [[nodiscard]] Group<3> verticalNotch() const {
        const Mask piece = R(0, 0) & D(0, -1);
        return {piece & D(-1, -1) & D(-1, 0) & R(-2, 0) & D(-2, -1) & R(-2, -1) & D(-2, -2) &  //
                    ~G(0, 0) & ~R(-1, 0) & ~G(-2, -1),
                piece & R(-1, 0) & R(0, -1) & D(1, -1) & R(1, -1) & R(0, -2) & R(1, -3) &  //
                    ~A(0, -1) & ~D(1, -2) & ~A(1, -3),
                piece & R(-1, 0) & R(-1, -1) & D(-1, -1) & R(-2, -1) & R(-1, -2) & D(-1, -3) &  //
                    ~G(-1, -1) & ~D(-1, -2) & ~G(-2, -3)};
    }

    [[nodiscard]] Group<3> horizontalNotch() const {
        const Mask piece = D(0, 0);
        return {piece & D(0, -1) & R(0, -1) & D(1, -1) & D(1, -2) & D(-1, -1) & R(-2, 0) &  //
                    ~A(0, -1) & ~R(-1, 0) & ~A(-2, 0),
                piece & R(-1, 0) & D(0, -1) & D(-1, -1) & R(-1, -1) & D(-1, -2) & D(-2, -1) & R(-3, -1) &  //
                    ~G(-1, -1) & ~R(-2, -1) & ~G(-3, -2),
                piece & R(-1, 0) & R(-1, -1) & R(0, -1) & D(0, -2) & R(-1, -2) & D(-1, -2) & R(-2, -2) &  //
                    ~D(0, -1) & ~G(-1, -2) & ~G(0, 0)};
    }

    [[nodiscard]] Group<2> cornerNotch() const {
        const Mask pieces = R(0, 0) & D(0, 0) & R(0, -1);
        return {pieces & D(0, -1) & D(1, -1) & D(1, -2) & R(2, -1) & D(2, -1) &  //
                    ~R(1, -1) & ~A(2, -2) & ~A(0, -1),
                pieces & R(0, -2) & R(-1, -1) & D(0, -2) & D(1, -2) & R(1, -2) &  //
                    ~D(0, -1) & ~A(0, -2) & ~A(-1, 0)};
    }

    // A pixel closed on three or four sides, whose diagonal neighbours show that it stands out.
    [[nodiscard]] Mask tipShape() const {
        const Mask left = R(-1, 0);
        const Mask right = R(0, 0);
        const Mask top = D(0, -1);
        const Mask bottom = D(0, 0);
        const Mask topLeft = G(-1, -1);
        const Mask topRight = A(0, -1);
        const Mask bottomLeft = A(-1, 0);
        const Mask bottomRight = G(0, 0);
        const Mask isolated = left & right & top & bottom & (topLeft | bottomRight) & (topRight | bottomLeft);
        const Mask open = (~left & right & top & bottom & topRight & bottomRight) |
                          (left & ~right & top & bottom & topLeft & bottomLeft) |
                          (left & right & ~top & bottom & bottomLeft & bottomRight) |
                          (left & right & top & ~bottom & topLeft & topRight);
        return isolated | (open & ~(topLeft & topRight & bottomLeft & bottomRight));
    }

    [[nodiscard]] Mask aboveTip() const {
        return R(0, 0) & D(1, -2) & D(2, -2) & R(0, -1) & ~G(0, -2) & ~D(1, -1) & ~R(1, -1);
    }

    [[nodiscard]] Mask besideTip() const {
        const Mask r = R(0, 0);
        const Mask d = D(0, 0);
        const Mask under = r & D(-1, -1) & D(0, -1) & R(0, 1) & ~A(0, -1) & ~R(-1, 0) & ~d;
        const Mask over = r & R(0, -1) & D(-1, 0) & d & ~D(0, -1) & ~R(-1, 0) & ~G(0, 0);
        const Mask beside = d & ~r & R(-1, -1) & R(-1, 0) & D(1, 0) & ~D(0, -1) & ~A(-1, 0);
        return under | over | beside;
    }

    // A piece ends at a boundary that runs across it: above and below for the vertical one, left and right
    // for the horizontal one.
    [[nodiscard]] Group<8> junction() const {
        const Mask above = R(0, 0) & D(0, -1) & D(1, -1) & ~R(0, -1);
        const Mask below = R(0, 0) & D(0, 0) & D(1, 0) & ~R(0, 1);
        const Mask left = D(0, 0) & R(-1, 0) & R(-1, 1) & ~D(-1, 0);
        const Mask right = D(0, 0) & R(0, 0) & R(0, 1) & ~D(1, 0);
        return {above & ~G(-1, -1), above & ~A(1, -1), below & ~A(-1, 0), below & ~G(1, 0),
                left & ~G(-1, -1),  left & ~A(-1, 1),  right & ~A(0, -1), right & ~G(0, 1)};
    }

    Flags flags_;
};
