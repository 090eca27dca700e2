// The paints of the sample cel. Shadow paints belong to the paint they are named after.
#pragma once

#include "samples/painter.h"

inline constexpr PF_Pixel kInk = Paint(0x2B1B24);
inline constexpr PF_Pixel kWhite = Paint(0xFCF8F0);
inline constexpr PF_Pixel kWhiteShadow = Paint(0xD6D2DE);
inline constexpr PF_Pixel kSkin = Paint(0xFFDDC2);
inline constexpr PF_Pixel kSkinShadow = Paint(0xEBB396);
inline constexpr PF_Pixel kSkinLine = Paint(0xA8503C);
inline constexpr PF_Pixel kBlush = Paint(0xF08C78);
inline constexpr PF_Pixel kHair = Paint(0x5B3A4A);
inline constexpr PF_Pixel kHairShadow = Paint(0x40283A);
inline constexpr PF_Pixel kHairLight = Paint(0x94647A);
inline constexpr PF_Pixel kIris = Paint(0x3E9C9A);
inline constexpr PF_Pixel kIrisShadow = Paint(0x1E5A6A);
inline constexpr PF_Pixel kIrisLight = Paint(0x8EDCC8);
inline constexpr PF_Pixel kMouth = Paint(0xA83A44);
inline constexpr PF_Pixel kTongue = Paint(0xF08A8A);
inline constexpr PF_Pixel kCloth = Paint(0x4668B8);
inline constexpr PF_Pixel kClothShadow = Paint(0x324A8E);
inline constexpr PF_Pixel kSash = Paint(0xE8603C);
inline constexpr PF_Pixel kSashShadow = Paint(0xB8422E);
inline constexpr PF_Pixel kYellow = Paint(0xF6C944);
inline constexpr PF_Pixel kYellowShadow = Paint(0xD09428);
inline constexpr PF_Pixel kPink = Paint(0xF2A2BC);
inline constexpr PF_Pixel kPinkShadow = Paint(0xCE7496);
inline constexpr PF_Pixel kRed = Paint(0xD8343C);
inline constexpr PF_Pixel kRedShadow = Paint(0xA02238);
inline constexpr PF_Pixel kWood = Paint(0xC68C56);
inline constexpr PF_Pixel kWoodShadow = Paint(0x946038);
inline constexpr PF_Pixel kWoodLight = Paint(0xE2B27C);
inline constexpr PF_Pixel kIron = Paint(0x6E7486);
inline constexpr PF_Pixel kIronShadow = Paint(0x4A4E62);
inline constexpr PF_Pixel kGlass = Paint(0xD2ECF2);
inline constexpr PF_Pixel kWater = Paint(0x9CD2E6);
inline constexpr PF_Pixel kGreen = Paint(0x5EA862);
inline constexpr PF_Pixel kGreenShadow = Paint(0x3C7C52);
inline constexpr PF_Pixel kGrey = Paint(0xA4A0AC);
inline constexpr PF_Pixel kGreyShadow = Paint(0x7C7888);

inline constexpr Pen kLine{1, 2.4, 1, kInk};
inline constexpr Pen kFineLine{1, 1.3, 1, kInk};
inline constexpr Pen kOutline{2.4, 2.4, 2.4, kInk};
inline constexpr Pen kBoldLine{1.5, 3, 1.5, kInk};
