// The smoothing pass with its local fixes, and the frame around it.
#include "tests/judge/judge.h"

#include <span>

#include "tests/judge/depths.h"
#include "tests/judge/measures.h"

namespace judge {
namespace {

/// One pass over one picture. `input` already carries the colour key, since every read of the input
/// goes through it.
template <typename P>
class Pass : Measures {
    using Depth = DepthOf<P>;
    using Weight = typename Depth::Weight;
    using RampOf = Ramp<Depth>;

  public:
    Pass(const Values& values, const Measures& measures, const Picture<P>& input)
        : Measures(measures),
          softness_(values.softness),
          ramps_{values.softness, values.bias},
          in_(input),
          out_(input) {}

    /// Visits every pixel once, rows from top to bottom, each from left to right, and returns the
    /// output.
    Picture<P> smooth() {
        for (int y = 0; y < height(); ++y)
            for (int x = 0; x < width(); ++x) visit(x, y);
        return out_;
    }

  private:
    enum class Blended { nothing, run, thinLine };

    void blend(int dstX, int dstY, int srcX, int srcY, Weight w) {
        Depth::blend(out_.at(dstX, dstY), in_.at(srcX, srcY), w);
    }
    void restore(int x, int y, Weight w) { blend(x, y, x, y, w); }

    void visit(int x, int y) {
        bool thinBlended = false;
        if (R(x, y)) {
            const Blended onLeft = blendSide(left, x, y);
            const Blended onRight = blendSide(right, x, y);
            thinBlended = onLeft == Blended::thinLine || onRight == Blended::thinLine;
            const bool tried = R(x, y + 1) && !D(x, y) && !D(x + 1, y);
            if (!tried || !blendStaircases(horizontalStaircases, x, y))
                blendCorners(onLeft != Blended::nothing, onRight != Blended::nothing, x, y);
            restoreNotchOfVertical(x, y);
        }
        if (D(x, y)) {
            const Blended above = blendSide(up, x, y);
            const Blended below = blendSide(down, x, y);
            thinBlended = thinBlended || above == Blended::thinLine || below == Blended::thinLine;
            if (D(x - 1, y) && !R(x - 1, y) && !R(x - 1, y + 1))
                blendStaircases(verticalStaircases, x, y);
            restoreFirstNotchOfHorizontal(x, y);
            if (R(x, y)) restoreSecondNotchOfHorizontal(x, y);
        }
        if (!R(x, y) && !D(x, y)) return;
        if (!thinBlended) {
            if (tipShape(x, y))
                averageTip(x, y);
            else
                restoreTip(x, y);
        }
        blendJunctions(x, y);
    }

    Blended blendSide(Side side, int x, int y) {
        if (const int n = run(side, x, y); n > 0) {
            walkRamp(side, ramps_.run(n, lengthFactor(side, n, x, y, softness_)), x, y);
            return Blended::run;
        }
        if (const int j = thinLineLength(side, x, y); j > 0) {
            walkRamp(side, ramps_.thinLine(j), x, y);
            return Blended::thinLine;
        }
        return Blended::nothing;
    }

    /// Away from the piece on that side, from the pixel next to it on; blended with the one across
    /// the piece.
    void walkRamp(Side side, RampOf ramp, int x, int y) {
        const Offset step = side < up ? Offset{1, 0} : Offset{0, 1};
        const Offset beyond = {x + step.x, y + step.y};
        const bool back = side == left || side == up;
        const int sign = back ? -1 : 1;
        Offset at = back ? Offset{x, y} : beyond;
        const Offset source = back ? beyond : Offset{x, y};
        for (; in_.holds(at.x, at.y) && !ramp.done;
             at = {at.x + sign * step.x, at.y + sign * step.y})
            blend(at.x, at.y, source.x, source.y, ramp.next());
    }

    bool blendStaircases(std::span<const Staircase> variants, int x, int y) {
        bool applied = false;
        for (const Staircase& variant : variants) {
            const int q = staircaseLength(variant, x, y);
            if (q < 2) continue;
            walkStaircase(variant, q, x, y);
            applied = true;
        }
        return applied;
    }

    /// A ramp that outlasts its cells, as very long staircases have, ends at the picture's edge.
    void walkStaircase(const Staircase& v, int q, int x, int y) {
        RampOf main = ramps_.staircase(q);
        RampOf restoring = ramps_.staircaseRestore(q);
        for (int i = 0; !main.done; ++i) {
            const Offset dst = {x + v.destination.x + i * v.step.x,
                                y + v.destination.y + i * v.step.y};
            const Offset src = {x + v.source.x + i * v.step.x, y + v.source.y + i * v.step.y};
            if (!in_.holds(dst.x, dst.y) || !in_.holds(src.x, src.y)) return;
            blend(dst.x, dst.y, src.x, src.y, main.next());
            if (v.restores) restore(src.x, src.y, restoring.next());
        }
    }

    void blendCorners(bool leftBlended, bool rightBlended, int x, int y) {
        if ((A(x, y) || A(x, y - 1)) && (G(x, y) || G(x, y - 1))) return;
        if (!rightBlended) blend(x + 1, y, x, y, Depth::corner(softness_));
        if (!leftBlended) blend(x, y, x + 1, y, Depth::corner(softness_));
    }

    void restoreNotchOfVertical(int x, int y) {
        if (D(x, y - 1) && D(x - 1, y - 1) && D(x - 1, y) && R(x - 2, y) && D(x - 2, y - 1) &&
            R(x - 2, y - 1) && D(x - 2, y - 2) && !G(x, y) && !R(x - 1, y) && !G(x - 2, y - 1))
            restore(x - 1, y, Depth::half);
        else if (R(x - 1, y) && D(x, y - 1) && R(x, y - 1) && D(x + 1, y - 1) && R(x + 1, y - 1) &&
                 R(x, y - 2) && R(x + 1, y - 3) && !A(x, y - 1) && !D(x + 1, y - 2) &&
                 !A(x + 1, y - 3))
            restore(x + 1, y - 1, Depth::half);
        else if (R(x - 1, y) && D(x, y - 1) && R(x - 1, y - 1) && D(x - 1, y - 1) &&
                 R(x - 2, y - 1) && R(x - 1, y - 2) && D(x - 1, y - 3) && !G(x - 1, y - 1) &&
                 !D(x - 1, y - 2) && !G(x - 2, y - 3))
            restore(x - 1, y - 1, Depth::half);
    }

    void restoreFirstNotchOfHorizontal(int x, int y) {
        if (D(x, y - 1) && R(x, y - 1) && D(x + 1, y - 1) && D(x + 1, y - 2) && D(x - 1, y - 1) &&
            R(x - 2, y) && !A(x, y - 1) && !R(x - 1, y) && !A(x - 2, y))
            restore(x, y, Depth::half);
        else if (R(x - 1, y) && D(x, y - 1) && D(x - 1, y - 1) && R(x - 1, y - 1) &&
                 D(x - 1, y - 2) && D(x - 2, y - 1) && R(x - 3, y - 1) && !G(x - 1, y - 1) &&
                 !R(x - 2, y - 1) && !G(x - 3, y - 2))
            restore(x - 1, y - 1, Depth::half);
        else if (R(x - 1, y) && R(x - 1, y - 1) && R(x, y - 1) && D(x, y - 2) && R(x - 1, y - 2) &&
                 D(x - 1, y - 2) && R(x - 2, y - 2) && !D(x, y - 1) && !G(x - 1, y - 2) && !G(x, y))
            restore(x, y - 1, Depth::half);
    }

    void restoreSecondNotchOfHorizontal(int x, int y) {
        if (R(x, y - 1) && D(x, y - 1) && D(x + 1, y - 1) && D(x + 1, y - 2) && R(x + 2, y - 1) &&
            D(x + 2, y - 1) && !R(x + 1, y - 1) && !A(x + 2, y - 2) && !A(x, y - 1))
            restore(x + 1, y - 1, Depth::half);
        else if (R(x, y - 1) && R(x, y - 2) && R(x - 1, y - 1) && D(x, y - 2) && D(x + 1, y - 2) &&
                 R(x + 1, y - 2) && !D(x, y - 1) && !A(x, y - 2) && !A(x - 1, y))
            restore(x, y - 1, Depth::half);
    }

    void averageTip(int x, int y) {
        std::vector<P> neighbours;
        for (const Offset at :
             {Offset{x - 1, y}, Offset{x + 1, y}, Offset{x, y - 1}, Offset{x, y + 1}})
            if (in_.holds(at.x, at.y)) neighbours.push_back(in_.at(at.x, at.y));
        Depth::tipAverage(out_.at(x, y), neighbours, Depth::tip(softness_));
    }

    void restoreTip(int x, int y) {
        const auto restoreUnlessInColumn0 = [&](int rx, int ry) {
            if (rx != 0) restore(rx, ry, Depth::threeQuarters);
        };
        if (R(x, y) && x <= width() - 4 && y >= 3 && D(x + 1, y - 2) && D(x + 2, y - 2) &&
            R(x, y - 1) && !G(x, y - 2) && !D(x + 1, y - 1) && !R(x + 1, y - 1))
            restoreUnlessInColumn0(x + 1, y - 1);
        else if (R(x, y) && D(x - 1, y - 1) && D(x, y - 1) && R(x, y + 1) && !A(x, y - 1) &&
                 !R(x - 1, y) && !D(x, y))
            restoreUnlessInColumn0(x, y);
        else if (R(x, y) && R(x, y - 1) && D(x - 1, y) && D(x, y) && !D(x, y - 1) && !R(x - 1, y) &&
                 !G(x, y))
            restoreUnlessInColumn0(x, y);
        else if (D(x, y) && !R(x, y) && R(x - 1, y - 1) && R(x - 1, y) && D(x + 1, y) &&
                 !D(x, y - 1) && !A(x - 1, y))
            restoreUnlessInColumn0(x, y);
    }

    void blendJunctions(int x, int y) {
        if (R(x, y) && D(x, y - 1) && D(x + 1, y - 1) && !R(x, y - 1)) {
            if (!G(x - 1, y - 1)) blend(x, y - 1, x, y, Depth::sixth);
            if (!A(x + 1, y - 1)) blend(x + 1, y - 1, x + 1, y, Depth::sixth);
        }
        if (R(x, y) && D(x, y) && D(x + 1, y) && !R(x, y + 1)) {
            if (!A(x - 1, y)) blend(x, y + 1, x, y, Depth::sixth);
            if (!G(x + 1, y)) blend(x + 1, y + 1, x + 1, y, Depth::sixth);
        }
        if (D(x, y) && R(x - 1, y) && R(x - 1, y + 1) && !D(x - 1, y)) {
            if (!G(x - 1, y - 1)) blend(x - 1, y, x, y, Depth::sixth);
            if (!A(x - 1, y + 1)) blend(x - 1, y + 1, x, y + 1, Depth::sixth);
        }
        if (D(x, y) && R(x, y) && R(x, y + 1) && !D(x + 1, y)) {
            if (!A(x, y - 1)) blend(x + 1, y, x, y, Depth::sixth);
            if (!G(x, y + 1)) blend(x + 1, y + 1, x, y + 1, Depth::sixth);
        }
    }

    int softness_;
    RampKinds<Depth> ramps_;
    const Picture<P>& in_;
    Picture<P> out_;
};

/// The input with alpha 0 in every pixel that the colour key takes out.
template <typename P>
Picture<P> ApplyKey(const Values& values, const DepthOf<P>& depth, Picture<P> picture) {
    if (values.colorKeyEnable == 0) return picture;
    for (P& p : picture.pixels)
        if (depth.matchesKey(p) != (values.keyInvert != 0)) p.alpha = 0;
    return picture;
}

}  // namespace

template <typename P>
Picture<P> Render(const Values& values, const Picture<P>& input) {
    const DepthOf<P> depth(values);
    const Picture<P> keyed = ApplyKey(values, depth, input);
    if (values.softness == 0) return keyed;
    const auto formEdge = [&](int x1, int y1, int x2, int y2) {
        return depth.formEdge(keyed.at(x1, y1), keyed.at(x2, y2));
    };
    const Measures measures(DetectEdges(input.width, input.height, formEdge));
    return Pass<P>(values, measures, keyed).smooth();
}

template Picture<Pixel8> Render(const Values&, const Picture<Pixel8>&);
template Picture<Pixel16> Render(const Values&, const Picture<Pixel16>&);
template Picture<PixelFloat> Render(const Values&, const Picture<PixelFloat>&);

}  // namespace judge
