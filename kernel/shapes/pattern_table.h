// The patterns of the local fixes: each as a drawing of the flags around the tested pixel, with the
// pixel that it blends. See drawing.h for the signs.
#pragma once

#include "kernel/shapes/drawing.h"

/// A straight boundary of two pieces, which a staircase may continue.
inline constexpr Pattern straightVertical = Draw(R"(
o | .
:   :
. | .
)");
inline constexpr Pattern straightHorizontal = Draw(R"(
. ~ o
-   -
. ~ .
)");

/// Notches at a vertical piece: the first that applies moves pixel x back by one half.
inline constexpr auto verticalNotches = DrawAll<3>(R"(
.   .   .   .
-
. | .   .   .
- \ -   -
. | x ~ o | .
    -     \
.   .   .   .

.   .   . | .
          /
.   . | .   .
        :
.   . | x | .
    - / -
. | o | .   .

.   .   .   .
  \ -
.   . | .   .
    :
. | x | .   .
    - \ -
.   . | o | .
)");

/// Notches at a horizontal piece: the same.
inline constexpr auto horizontalNotches = DrawAll<3>(R"(
.   .   .   .
            -
.   .   . | .
    -   - / -
. | . ~ X   .
  /     -
.   .   .   .

.   .   .   .
  \     -
. | . ~ x | .
    -   - \ -
.   .   . | o
            -
.   .   .   .

. | . | .   .
    - \ -
.   . | x | .
        :
.   . | o   .
        - \
.   .   .   .
)");

/// Notches at a pixel with both pieces: the same.
inline constexpr auto cornerNotches = DrawAll<2>(R"(
.   .   .   .
    -     /
. | x ~ . | .
- / -   -
o | .   .   .
-
.   .   .   .

.   . | . | .
    - / -
. | x | .   .
    :
.   o | .   .
  / -
.   .   .   .
)");

/// Pixels beside line tips: the first that applies moves pixel x back by three quarters. The first
/// of them needs three rows above the tested pixel and three columns on its right.
inline constexpr auto tipRestores = DrawAll<4>(R"(
.   .   .
  \ -   -
. | x ~ .
    :
o | .   .

.   .   .
-   - /
. ~ X | .
    :
.   . | .

.   . | .
    :
. ~ X | .
-   - \
.   .   .

. | .   .
    :
. | X ~ .
  / -   -
.   .   .
)");

/// Where a piece ends at a boundary that runs across it: each that applies blends s into t by one
/// sixth. Above and below a vertical piece, left and right of a horizontal one, two each.
inline constexpr auto junctions = DrawAll<8>(R"(
.   t ~ .
  \ -   -
.   S | .

. ~ t   .
-   - /
o | s   .

.   S | .
  / -   -
.   t ~ .

o | s   .
-   - \
. ~ t   .

.   .
  \
t | S
:   -
. | .

. | o
:   -
t | s
  /
.   .

.   .
  /
S | t
-   :
. | .

o | .
-   :
s | t
  \
.   .
)");
