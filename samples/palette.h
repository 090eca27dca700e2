// The paints of the sample cel. Shadow paints belong to the paint they are named after.
#pragma once

#include "samples/painter.h"

inline constexpr PF_Pixel ink = Paint(0x2B1B24);
inline constexpr PF_Pixel white = Paint(0xFCF8F0);
inline constexpr PF_Pixel whiteShadow = Paint(0xD6D2DE);
inline constexpr PF_Pixel skin = Paint(0xFFDDC2);
inline constexpr PF_Pixel skinShadow = Paint(0xEBB396);
inline constexpr PF_Pixel skinLine = Paint(0xA8503C);
inline constexpr PF_Pixel blush = Paint(0xF08C78);
inline constexpr PF_Pixel hair = Paint(0x5B3A4A);
inline constexpr PF_Pixel hairShadow = Paint(0x40283A);
inline constexpr PF_Pixel hairLight = Paint(0x94647A);
inline constexpr PF_Pixel iris = Paint(0x3E9C9A);
inline constexpr PF_Pixel irisShadow = Paint(0x1E5A6A);
inline constexpr PF_Pixel irisLight = Paint(0x8EDCC8);
inline constexpr PF_Pixel mouth = Paint(0xA83A44);
inline constexpr PF_Pixel tongue = Paint(0xF08A8A);
inline constexpr PF_Pixel cloth = Paint(0x4668B8);
inline constexpr PF_Pixel clothShadow = Paint(0x324A8E);
inline constexpr PF_Pixel sash = Paint(0xE8603C);
inline constexpr PF_Pixel sashShadow = Paint(0xB8422E);
inline constexpr PF_Pixel yellow = Paint(0xF6C944);
inline constexpr PF_Pixel yellowShadow = Paint(0xD09428);
inline constexpr PF_Pixel pink = Paint(0xF2A2BC);
inline constexpr PF_Pixel pinkShadow = Paint(0xCE7496);
inline constexpr PF_Pixel red = Paint(0xD8343C);
inline constexpr PF_Pixel redShadow = Paint(0xA02238);
inline constexpr PF_Pixel wood = Paint(0xC68C56);
inline constexpr PF_Pixel woodShadow = Paint(0x946038);
inline constexpr PF_Pixel woodLight = Paint(0xE2B27C);
inline constexpr PF_Pixel iron = Paint(0x6E7486);
inline constexpr PF_Pixel ironShadow = Paint(0x4A4E62);
inline constexpr PF_Pixel glass = Paint(0xD2ECF2);
inline constexpr PF_Pixel water = Paint(0x9CD2E6);
inline constexpr PF_Pixel green = Paint(0x5EA862);
inline constexpr PF_Pixel greenShadow = Paint(0x3C7C52);
inline constexpr PF_Pixel grey = Paint(0xA4A0AC);
inline constexpr PF_Pixel greyShadow = Paint(0x7C7888);

inline constexpr Pen line{1, 2.4, 1, ink};
inline constexpr Pen fineLine{1, 1.3, 1, ink};
inline constexpr Pen outline{2.4, 2.4, 2.4, ink};
inline constexpr Pen boldLine{1.5, 3, 1.5, ink};
