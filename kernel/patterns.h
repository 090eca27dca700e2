// The patterns of the smoothing pass, as formulas over the edge flags around a pixel.
#pragma once

#include "kernel/sides.h"
#include "kernel/staircases.h"
#include "kernel/step_masks.h"

/// Reads the steps off a source of flags: Flags has a Mask, answers test(dx, dy, flag) with one,
/// and stores one in the words of a StepMask. It also says whether the ramps of short runs are to
/// be settled by patterns rather than measured. It is asked for flags at most four rows and columns
/// each way.
template <typename Flags>
class Patterns {
    using Mask = typename Flags::Mask;

  public:
    explicit Patterns(const Flags& flags) : flags_(flags) {}

    /// Sets the masks of the windows that the source of flags stands for, from `window` on.
    void find(StepMasks& steps, int window) const {
        const auto setStep = [&steps, window](Step step, Mask mask) {
            return set(steps.step[static_cast<std::size_t>(step)], window, mask);
        };
        const Mask rows = setAll(steps.horizontalStaircase, window, horizontalStaircase());
        const Mask columns = setAll(steps.verticalStaircase, window, verticalStaircase());
        Lines lines{line<Side::left>(), line<Side::right>(), line<Side::up>(), line<Side::down>()};
        const Mask never = rows & ~rows;
        const Mask across = ~rows & corner();
        const Mask vertical = setRamp<Side::left>(steps, window, lines, across) |
                              setRamp<Side::right>(steps, window, lines, across);
        const Mask horizontal = setRamp<Side::up>(steps, window, lines, never) |
                                setRamp<Side::down>(steps, window, lines, never);
        const Mask ramps =
            setStep(Step::verticalRamps, vertical) | setStep(Step::horizontalRamps, horizontal);
        const Mask fixes =
            setStep(Step::verticalFixes,
                    rows | setAll(steps.verticalNotch, window, verticalNotch())) |
            setStep(Step::horizontalFixes,
                    columns | setAll(steps.horizontalNotch, window, horizontalNotch()) |
                        setAll(steps.cornerNotch, window, cornerNotch()));
        const Mask finish = setStep(Step::finish, setTips(steps, window, lines) |
                                                      setAll(steps.junction, window, junction()));
        set(steps.any, window, ramps | fixes | finish);
    }

  private:
    template <int count>
    struct Group {
        Mask mask[count];
    };

    static Mask set(StepMask& step, int window, Mask mask) {
        Flags::store(mask, step.word + window);
        return mask;
    }

    // Returns the pixels at which any of them applies.
    template <int count>
    static Mask setAll(StepMask (&steps)[count], int window, const Group<count>& group) {
        Mask any = group.mask[0];
        for (int i = 0; i < count; ++i) any = any | set(steps[i], window, group.mask[i]);
        return any;
    }

    /// By side.
    struct Lines {
        Mask mask[4];
    };

    // Returns the pixels at which the side gets a ramp. Where it has neither run nor line it may
    // get a corner.
    template <Side side>
    Mask setRamp(StepMasks& steps, int window, Lines& lines, Mask mayBeCorner) const {
        constexpr auto index = static_cast<std::size_t>(side);
        const RunPlace outer = runPlace<side, -1>();
        const RunPlace inner = runPlace<side, 0>();
        const Mask run = set(steps.run[index], window, outer.stands | inner.stands);
        lines.mask[index] = lines.mask[index] & ~run;
        const Mask longer = run | lines.mask[index];
        const Mask onlyCorner = mayBeCorner & ~longer;
        if constexpr (Flags::settlesRuns) {
            const Mask lone1 = lone<1>(outer, inner);
            const Mask lone2 = lone<2>(outer, inner);
            const Mask lone3 = lone<3>(outer, inner);
            const Mask same1 = same<side, 1>(outer, inner) & ~nearBlock<side>();
            const Mask same2 = same<side, 2>(outer, inner);
            const Mask measured = longer & ~(lone1 | lone2 | lone3 | same1 | same2);
            set(steps.rampKind[index][0], window, onlyCorner | lone2 | same1 | measured);
            set(steps.rampKind[index][1], window, lone1 | lone2 | same2 | measured);
            set(steps.rampKind[index][2], window, lone3 | same1 | same2 | measured);
        } else {
            set(steps.rampKind[index][0], window, onlyCorner | longer);
            set(steps.rampKind[index][1], window, longer);
            set(steps.rampKind[index][2], window, longer);
        }
        return longer | mayBeCorner;
    }

    // Pixels at which a thin line is blended are no tips; the lines are those that all setRamps
    // have left.
    Mask setTips(StepMasks& steps, int window, const Lines& lines) const {
        const Mask free = ~(lines.mask[0] | lines.mask[1] | lines.mask[2] | lines.mask[3]);
        return set(steps.tip, window, free & tipShape()) |
               set(steps.aboveTip, window, free & aboveTip()) |
               set(steps.besideTip, window, free & besideTip());
    }

    [[nodiscard]] Mask R(int dx, int dy) const { return flags_.test(dx, dy, EdgeRight); }
    [[nodiscard]] Mask D(int dx, int dy) const { return flags_.test(dx, dy, EdgeDown); }
    [[nodiscard]] Mask G(int dx, int dy) const { return flags_.test(dx, dy, EdgeDiagonal); }
    [[nodiscard]] Mask A(int dx, int dy) const { return flags_.test(dx, dy, EdgeAntiDiagonal); }

    /// One of the two places where a run may lie beside a piece.
    struct RunPlace {
        Mask stands;     // a run begins here and counts
        Mask open[4];    // the cells that it can go through, from the piece on
        Mask barred[3];  // from the far end of a run of one, two and three cells none is seen here
    };

    // The place between c and c + 1. More than two cells count only if the boundary goes on behind
    // the piece.
    template <Side side, int c>
    [[nodiscard]] RunPlace runPlace() const {
        using View = SideView<side, Flags>;
        const View at(flags_);
        const SideView<Opposite(side), Flags> back(flags_);
        constexpr int step = View::step;
        const auto diagonal = [](const auto& view, int a) {
            return c < 0 ? view.outward(a, -1) : view.inward(a, 0);
        };
        RunPlace place;
        for (int i = 0; i < 4; ++i) place.open[i] = at.open((i + 1) * step, c);
        for (int i = 0; i < 3; ++i) place.barred[i] = diagonal(back, (i + 2) * step);
        const Mask goesOn = at.beside(View::behind, -1 - c);
        place.stands = at.crossing(0, 0) & ~diagonal(at, 0) & place.open[0] &
                       ~(place.open[1] & place.open[2] & ~goesOn);
        return place;
    }

    // A run of n cells, and nothing in the other place that could count as seen from either end.
    template <int n>
    [[nodiscard]] static Mask only(const RunPlace& place, const RunPlace& other) {
        Mask mask = place.stands & ~place.open[n] & ~other.open[0] & ~other.open[n - 1];
        for (int i = 1; i < n; ++i) mask = mask & place.open[i];
        return mask;
    }

    // A run of n cells with none from its far end.
    template <int n>
    [[nodiscard]] static Mask lone(const RunPlace& outer, const RunPlace& inner) {
        return (only<n>(outer, inner) & outer.barred[n - 1]) |
               (only<n>(inner, outer) & inner.barred[n - 1]);
    }

    // A run of n cells that is the same from its far end, where the piece shows that the image goes
    // on.
    template <Side side, int n>
    [[nodiscard]] Mask same(const RunPlace& outer, const RunPlace& inner) const {
        using View = SideView<side, Flags>;
        return View(flags_).crossing((n + 1) * View::step, 0) &
               ((only<n>(outer, inner) & ~outer.barred[n - 1]) |
                (only<n>(inner, outer) & ~inner.barred[n - 1]));
    }

    // Whether the piece may belong to an isolated block, or lie beside one: those have sides of two
    // pixels.
    template <Side side>
    [[nodiscard]] Mask nearBlock() const {
        const SideView<side, Flags> at(flags_);
        return at.crossing(0, -1) | at.crossing(0, 1);
    }

    // The first pixel of a thin line whose end at the piece is free.
    template <Side side>
    [[nodiscard]] Mask line() const {
        using View = SideView<side, Flags>;
        const View at(flags_);
        const Mask freeEnd = ~at.outward(0, -1) & ~at.beside(View::behind, -1) &
                             ~at.crossing(-View::step, 0) & ~at.inward(0, 0) &
                             ~at.beside(View::behind, 0);
        const Mask firstPixel = at.open(View::step, -1) & at.open(View::step, 0);
        return at.crossing(0, 0) & freeEnd & firstPixel;
    }

    // The first two cells of a staircase.
    template <StaircaseVariant variant>
    [[nodiscard]] Mask staircase() const {
        return staircaseCell<variant>(variant.start) &
               staircaseCell<variant>(variant.start + variant.step);
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
        return {straight & staircase<horizontalStaircases[0]>(),
                straight & staircase<horizontalStaircases[1]>(),
                straight & staircase<horizontalStaircases[2]>(),
                straight & staircase<horizontalStaircases[3]>()};
    }

    // The horizontal piece continues one column left with nothing beside it.
    [[nodiscard]] Group<4> verticalStaircase() const {
        const Mask straight = D(0, 0) & D(-1, 0) & ~R(-1, 0) & ~R(-1, 1);
        return {straight & staircase<verticalStaircases[0]>(),
                straight & staircase<verticalStaircases[1]>(),
                straight & staircase<verticalStaircases[2]>(),
                straight & staircase<verticalStaircases[3]>()};
    }

    // A vertical piece without diagonals both ways.
    [[nodiscard]] Mask corner() const {
        return R(0, 0) & ~((A(0, 0) | A(0, -1)) & (G(0, 0) | G(0, -1)));
    }

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
                piece & R(-1, 0) & D(0, -1) & D(-1, -1) & R(-1, -1) & D(-1, -2) & D(-2, -1) &
                    R(-3, -1) &  //
                    ~G(-1, -1) & ~R(-2, -1) & ~G(-3, -2),
                piece & R(-1, 0) & R(-1, -1) & R(0, -1) & D(0, -2) & R(-1, -2) & D(-1, -2) &
                    R(-2, -2) &  //
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
        const Mask isolated =
            left & right & top & bottom & (topLeft | bottomRight) & (topRight | bottomLeft);
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

    // A piece ends at a boundary that runs across it: above and below for the vertical one, left
    // and right for the horizontal one.
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
