/* What the effect tells the host about itself, in global set-up and in the module resource alike.
   Plain definitions only: the resource compiler reads this file as well. */
#ifndef NEVREL_RESOURCES_EFFECT_IDENTITY_H
#define NEVREL_RESOURCES_EFFECT_IDENTITY_H

#include "resources/version.h"

#define NEVREL_DISPLAY_NAME "nevrel"
#define NEVREL_CATEGORY "KOVRA"
#define NEVREL_MATCH_NAME "KOVRA NEVREL"
#define NEVREL_ENTRY_POINT "EntryPointFunc"

/* Resource compilers know no operators, so the composed words stand here as numbers; the C++ side
   holds them against their parts. */
#define NEVREL_OUT_FLAGS 0x6000030L

/* NEVREL_MULTI_FRAME: for hosts from 2022 on, which render several frames at once. Flags, version
   of the host's effect interface, and what the system's file manager tells people. */
#ifdef NEVREL_MULTI_FRAME
#define NEVREL_OUT_FLAGS2 0x8801418L
#define NEVREL_INTERFACE_MAJOR 13
#define NEVREL_INTERFACE_MINOR 25
#define NEVREL_DESCRIPTION "nevrel, an effect for After Effects 2022 and later and Premiere Pro"
#else
#define NEVREL_OUT_FLAGS2 0x1418L
#define NEVREL_INTERFACE_MAJOR 13
#define NEVREL_INTERFACE_MINOR 0
#define NEVREL_DESCRIPTION "nevrel, an effect for After Effects and Premiere Pro"
#endif

#endif
