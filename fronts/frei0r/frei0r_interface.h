// The part of the frei0r 1.2 binary interface that a video filter uses. Strings are UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>

#define FREI0R_EXPORT extern "C" __attribute__((visibility("default")))

constexpr int frei0rMajorVersion = 1;

enum Frei0rPluginType : int { frei0rFilter = 0 };

// Four bytes a pixel in this order in memory, rows from the top without gaps.
enum Frei0rColorModel : int { frei0rRgba8888 = 1 };

// What the value of a parameter points to.
enum Frei0rParameterType : int {
    frei0rBool = 0,    // a double, true from 0.5 on
    frei0rDouble = 1,  // a double from 0 to 1
    frei0rColor = 2    // a Frei0rColor
};

struct Frei0rColor {
    float red, green, blue;  // 0 to 1
};
static_assert(sizeof(Frei0rColor) == 12);

struct Frei0rPluginInfo {
    const char* name;
    const char* author;
    int pluginType;
    int colorModel;
    int frei0rVersion;  // the major one
    int majorVersion;   // the plug-in's own
    int minorVersion;
    int parameterCount;
    const char* explanation;
};
static_assert(sizeof(void*) != 8 ||
              (sizeof(Frei0rPluginInfo) == 48 && offsetof(Frei0rPluginInfo, pluginType) == 16 &&
               offsetof(Frei0rPluginInfo, parameterCount) == 36 &&
               offsetof(Frei0rPluginInfo, explanation) == 40));

struct Frei0rParameterInfo {
    const char* name;
    int type;
    const char* explanation;
};
static_assert(sizeof(void*) != 8 ||
              (sizeof(Frei0rParameterInfo) == 24 && offsetof(Frei0rParameterInfo, type) == 8 &&
               offsetof(Frei0rParameterInfo, explanation) == 16));

using Frei0rInstance = void*;

// Called once each, after loading (1 is success) and before unloading.
FREI0R_EXPORT int f0r_init();
FREI0R_EXPORT void f0r_deinit();

// From any thread at any time.
FREI0R_EXPORT void f0r_get_plugin_info(Frei0rPluginInfo* info);
FREI0R_EXPORT void f0r_get_param_info(Frei0rParameterInfo* info, int index);
FREI0R_EXPORT Frei0rInstance f0r_construct(unsigned width, unsigned height);  // null is failure
FREI0R_EXPORT void f0r_destruct(Frei0rInstance instance);

// One at a time for an instance.
FREI0R_EXPORT void f0r_set_param_value(Frei0rInstance instance, void* value, int index);
FREI0R_EXPORT void f0r_get_param_value(Frei0rInstance instance, void* value, int index);
FREI0R_EXPORT void f0r_update(Frei0rInstance instance, double time, const std::uint32_t* input,
                              std::uint32_t* output);
