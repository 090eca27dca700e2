// The paints of the sample cel.
#pragma once

#include "samples/painter.h"

inline constexpr PF_Pixel ink = Colour(0x2B1B24);
inline constexpr Paint white{0xFCF8F0, 0xD6D2DE};
inline constexpr Paint skin{0xFFDDC2, 0xEBB396};
inline constexpr PF_Pixel skinLine = Colour(0xA8503C);
inline constexpr PF_Pixel blush = Colour(0xF08C78);
inline constexpr Paint hair{0x5B3A4A, 0x40283A};
inline constexpr PF_Pixel hairLight = Colour(0x94647A);
inline constexpr Paint iris{0x3E9C9A, 0x1E5A6A};
inline constexpr PF_Pixel irisLight = Colour(0x8EDCC8);
inline constexpr PF_Pixel mouth = Colour(0xA83A44);
inline constexpr PF_Pixel tongue = Colour(0xF08A8A);
inline constexpr Paint cloth{0x4668B8, 0x324A8E};
inline constexpr Paint sash{0xE8603C, 0xB8422E};
inline constexpr Paint yellow{0xF6C944, 0xD09428};
inline constexpr Paint pink{0xF2A2BC, 0xCE7496};
inline constexpr Paint red{0xD8343C, 0xA02238};
inline constexpr Paint wood{0xC68C56, 0x946038};
inline constexpr PF_Pixel woodLight = Colour(0xE2B27C);
inline constexpr Paint iron{0x6E7486, 0x4A4E62};
inline constexpr PF_Pixel glass = Colour(0xD2ECF2);
inline constexpr PF_Pixel water = Colour(0x9CD2E6);
inline constexpr Paint green{0x5EA862, 0x3C7C52};
inline constexpr PF_Pixel grey = Colour(0x7C7888);

inline constexpr Pen line{1, 2.4, 1, ink};
inline constexpr Pen fineLine{1, 1.3, 1, ink};
inline constexpr Pen outline{2.4, 2.4, 2.4, ink};
inline constexpr Pen boldLine{1.5, 3, 1.5, ink};
