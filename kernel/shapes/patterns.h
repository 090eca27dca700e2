// Finds the patterns of the smoothing pass in the edge flags, at many pixels at once.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "kernel/shapes/findings.h"
#include "kernel/shapes/pattern_table.h"
#include "kernel/shapes/runs.h"
#include "kernel/shapes/sides.h"
#include "kernel/shapes/staircases.h"

/// Every rule is a formula over masks that hold one bit a pixel. Flags gives them: it answers
/// test(dx, dy, flag) with a Mask, and stores one in the words of a PixelSet. It is asked for flags
/// at most four rows and columns each way.
template <typename Flags>
class PatternFinder {
    using Mask = typename Flags::Mask;

  public:
    explicit PatternFinder(const Flags& flags) : flags_(flags) {}

    /// Writes the findings of the windows that the flags are of, from `window` on.
    void find(Findings& found, int window) const {
        const auto setStep = [&found, window](Step step, Mask mask) {
            return set(found.step[static_cast<std::size_t>(step)], window, mask);
        };
        const Mask rows = setAll(found.horizontalStaircase, window, horizontalStaircase());
        const Mask columns = setAll(found.verticalStaircase, window, verticalStaircase());
        const Mask never = rows & ~rows;
        const Mask across = ~rows & corner();
        const Sided left = setRamp<Side::left>(found, window, across);
        const Sided right = setRamp<Side::right>(found, window, across);
        const Sided up = setRamp<Side::up>(found, window, never);
        const Sided down = setRamp<Side::down>(found, window, never);
        const Mask ramps = setStep(Step::verticalRamps, left.ramp | right.ramp) |
                           setStep(Step::horizontalRamps, up.ramp | down.ramp);
        const Mask fixes =
            setStep(Step::verticalFixes,
                    rows | setAll(found.verticalNotch, window, drawn<verticalNotches>())) |
            setStep(Step::horizontalFixes,
                    columns | setAll(found.horizontalNotch, window, drawn<horizontalNotches>()) |
                        setAll(found.cornerNotch, window, drawn<cornerNotches>()));
        const Mask lines = left.line | right.line | up.line | down.line;
        const Mask tips = set(found.tip, window, tip() & ~lines);
        const Mask finish = setTipRestores(found, window, ~lines & ~tips) |
                            setAll(found.junction, window, drawn<junctions>());
        setStep(Step::finish, tips | finish);
        const Mask besidesTips = set(found.besidesTips, window, ramps | fixes | finish);
        set(found.any, window, tips | besidesTips);
    }

  private:
    template <std::size_t count>
    using Group = std::array<Mask, count>;

    static Mask set(PixelSet& pixels, int window, Mask mask) {
        Flags::store(mask, pixels.word + window);
        return mask;
    }

    // Returns the pixels at which any of them applies.
    template <std::size_t count>
    static Mask setAll(PixelSet (&pixels)[count], int window, const Group<count>& group) {
        Mask any = group[0];
        for (std::size_t i = 0; i < count; ++i) any = any | set(pixels[i], window, group[i]);
        return any;
    }

    [[nodiscard]] Mask R(int dx, int dy) const { return flags_.test(dx, dy, EdgeRight); }
    [[nodiscard]] Mask D(int dx, int dy) const { return flags_.test(dx, dy, EdgeDown); }
    [[nodiscard]] Mask G(int dx, int dy) const { return flags_.test(dx, dy, EdgeDiagonal); }
    [[nodiscard]] Mask A(int dx, int dy) const { return flags_.test(dx, dy, EdgeAntiDiagonal); }

    // ---- Drawn patterns

    template <const auto& patterns>
    [[nodiscard]] auto drawn() const {
        constexpr std::size_t count = patterns.size();
        return [this]<std::size_t... i>(std::index_sequence<i...>) {
            return Group<count>{this->matches<patterns[i]>()...};
        }
        (std::make_index_sequence<count>());
    }

    template <Pattern pattern>
    [[nodiscard]] Mask matches() const {
        return [this]<std::size_t... i>(std::index_sequence<i...>) {
            return (this->holds<pattern.conditions[i]>() & ...);
        }
        (std::make_index_sequence<pattern.count>());
    }

    template <Condition condition>
    [[nodiscard]] Mask holds() const {
        const Mask flag = flags_.test(condition.at.dx, condition.at.dy, condition.flag);
        if constexpr (condition.set) return flag;
        return ~flag;
    }

    // ---- Ramps

    /// What one side of a piece has.
    struct Sided {
        Mask ramp;  ///< of any kind
        Mask line;  ///< a thin line's
    };

    // Where the side has neither run nor line it may get a corner.
    template <Side side>
    Sided setRamp(Findings& found, int window, Mask mayBeCorner) const {
        constexpr auto index = static_cast<std::size_t>(side);
        const Outer<side> outer(flags_);
        const Inner<side> inner(flags_);
        const Mask piece = SideView<side, Flags>(flags_).crossing(0, 0);
        const Mask run = piece & (outer.stands() | inner.stands());
        const Mask thinLine = line<side>() & ~run;
        const Mask longer = run | thinLine;
        const Mask lone[] = {piece & alone<side, 1>(), piece & alone<side, 2>(),
                             piece & alone<side, 3>()};
        const Mask same[] = {piece & sameBack<side, 1>() & ~nearBlock<side>(),
                             piece & sameBack<side, 2>()};
        const Mask settled = lone[0] | lone[1] | lone[2] | same[0] | same[1];
        set(found.run[index], window, run);
        setKinds(found.rampKind[index], window,
                 {{RampKind::corner, mayBeCorner & ~longer},
                  {RampKind::lone1, lone[0]},
                  {RampKind::lone2, lone[1]},
                  {RampKind::lone3, lone[2]},
                  {RampKind::same1, same[0]},
                  {RampKind::same2, same[1]},
                  {RampKind::measured, longer & ~settled}});
        return {longer | mayBeCorner, thinLine};
    }

    struct KindMask {
        RampKind kind;
        Mask mask;
    };
    static void setKinds(PixelSet (&bits)[rampKindBits], int window, const KindMask (&kinds)[7]) {
        for (int bit = 0; bit < rampKindBits; ++bit) {
            Mask mask = kinds[0].mask & ~kinds[0].mask;
            for (const KindMask& kind : kinds)
                if ((static_cast<int>(kind.kind) >> bit & 1) != 0) mask = mask | kind.mask;
            set(bits[bit], window, mask);
        }
    }

    template <Side side>
    using Outer = RunPlace<side, -1, Flags>;
    template <Side side>
    using Inner = RunPlace<side, 0, Flags>;

    // A run of n cells, and nothing in the other place that could count as seen from either end.
    template <int n, typename Place, typename Other>
    [[nodiscard]] static Mask only(const Place& place, const Other& other) {
        Mask mask = place.stands() & ~place.open(n + 1) & ~other.open(1) & ~other.open(n);
        for (int i = 2; i <= n; ++i) mask = mask & place.open(i);
        return mask;
    }

    // A run of n cells with none from its far end.
    template <Side side, int n>
    [[nodiscard]] Mask alone() const {
        const Outer<side> outer(flags_);
        const Inner<side> inner(flags_);
        return (only<n>(outer, inner) & Outer<Opposite(side)>(flags_).barred(farEnd<side, n>)) |
               (only<n>(inner, outer) & Inner<Opposite(side)>(flags_).barred(farEnd<side, n>));
    }

    // A run of n cells that is the same from its far end, where the piece shows that the image goes
    // on.
    template <Side side, int n>
    [[nodiscard]] Mask sameBack() const {
        const Outer<side> outer(flags_);
        const Inner<side> inner(flags_);
        const Mask farPiece = SideView<side, Flags>(flags_).crossing(farEnd<side, n>, 0);
        return farPiece &
               ((only<n>(outer, inner) & ~Outer<Opposite(side)>(flags_).barred(farEnd<side, n>)) |
                (only<n>(inner, outer) & ~Inner<Opposite(side)>(flags_).barred(farEnd<side, n>)));
    }

    /// Along the axis, from which a run of n cells is looked at the other way.
    template <Side side, int n>
    static constexpr int farEnd = (n + 1) * StepOf(side);

    // Whether the piece may belong to an isolated block, or lie beside one: those have sides of two
    // pixels.
    template <Side side>
    [[nodiscard]] Mask nearBlock() const {
        const SideView<side, Flags> at(flags_);
        return at.crossing(0, -1) | at.crossing(0, 1);
    }

    // A thin line that ends at the piece, with nothing else beside that end.
    template <Side side>
    [[nodiscard]] Mask line() const {
        using View = SideView<side, Flags>;
        const View at(flags_);
        const Mask freeEnd = ~at.outward(0, -1) & ~at.beside(View::behind, -1) &
                             ~at.crossing(-View::step, 0) & ~at.inward(0, 0) &
                             ~at.beside(View::behind, 0);
        return at.crossing(0, 0) & freeEnd & at.onLine(View::step);
    }

    // A vertical piece, unless both diagonals, at or above it, are edges.
    [[nodiscard]] Mask corner() const {
        return R(0, 0) & ~((A(0, 0) | A(0, -1)) & (G(0, 0) | G(0, -1)));
    }

    // ---- Staircases

    template <const auto& variants>
    [[nodiscard]] Group<4> staircases(Mask straight) const {
        return [&]<std::size_t... i>(std::index_sequence<i...>) {
            return Group<4>{(straight & begins(variants[i]))...};
        }
        (std::make_index_sequence<4>());
    }
    [[nodiscard]] Mask begins(const StaircaseVariant& variant) const {
        static_assert(shortestStaircase == 2);
        return StaircaseCell(flags_, variant, variant.start) &
               StaircaseCell(flags_, variant, variant.start + variant.step);
    }
    [[nodiscard]] Group<4> horizontalStaircase() const {
        return staircases<horizontalStaircases>(matches<straightVertical>());
    }
    [[nodiscard]] Group<4> verticalStaircase() const {
        return staircases<verticalStaircases>(matches<straightHorizontal>());
    }

    // ---- Tips

    // `free` are the pixels at which neither a thin line nor a tip is blended.
    Mask setTipRestores(Findings& found, int window, Mask free) const {
        Group<4> restores = drawn<tipRestores>();
        for (Mask& restore : restores) restore = restore & free;
        return setAll(found.tipRestore, window, restores);
    }

    // A pixel closed on all four sides that differs from a diagonal neighbour on either diagonal;
    // or one closed on three that differs from both diagonal neighbours on the side across from the
    // open one, but not from all four:
    //
    //          \ - /           . - /
    //          | o |           . o |
    //          / - \           . - \            (here the signs stand for edges)
    [[nodiscard]] Mask tip() const {
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

    Flags flags_;
};
