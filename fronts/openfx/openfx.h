// The binary interface of OpenFX, as far as the front uses it: what a host and an effect hand each
// other. Members that the front never calls keep their place as Unused.
#pragma once

#include <cstddef>

namespace ofx {

/// What every action and every function of a suite answers.
enum Status : int {
    ok = 0,
    failed = 1,
    unknown = 3,
    unsupported = 5,
    outOfMemory = 8,
    badValue = 11,
    replyDefault = 14,  ///< the host does what it does for effects that do not answer
    badImageFormat = 1000,
};

// Handles, each of a type of its own.
using PropertySet = struct PropertySetRecord*;
using Effect = struct EffectRecord*;  ///< a descriptor or an instance
using Clip = struct ClipRecord*;
using Memory = struct MemoryRecord*;
using ParameterSet = struct ParameterSetRecord*;
using Parameter = struct ParameterRecord*;

/// Right and top lie outside. In pixels, or in the host's canonical coordinates; y points upwards.
template <typename Number>
struct Rect {
    Number x1, y1, x2, y2;
};
using RectI = Rect<int>;
using RectD = Rect<double>;
static_assert(sizeof(RectI) == 16 && sizeof(RectD) == 32);

struct Host {
    PropertySet host;
    const void* (*fetchSuite)(PropertySet host, const char* name, int version);
};
static_assert(offsetof(Host, fetchSuite) == 8 && sizeof(Host) == 16);

struct Plugin {
    const char* pluginApi;
    int apiVersion;
    const char* pluginIdentifier;
    unsigned int pluginVersionMajor;
    unsigned int pluginVersionMinor;
    void (*setHost)(Host* host);
    Status (*mainEntry)(const char* action, const void* handle, PropertySet inArgs,
                        PropertySet outArgs);
};
static_assert(offsetof(Plugin, pluginIdentifier) == 16 &&
              offsetof(Plugin, pluginVersionMajor) == 24);
static_assert(offsetof(Plugin, setHost) == 32 && offsetof(Plugin, mainEntry) == 40);
static_assert(sizeof(Plugin) == 48);

using Unused = void (*)();

/// A text from the host lasts until the next call into the host.
struct PropertySuite {
    static constexpr char name[] = "OfxPropertySuite";

    Unused propSetPointer;
    Status (*propSetString)(PropertySet set, const char* property, int index, const char* value);
    Status (*propSetDouble)(PropertySet set, const char* property, int index, double value);
    Status (*propSetInt)(PropertySet set, const char* property, int index, int value);
    Unused propSetManyOfAType[4];
    Status (*propGetPointer)(PropertySet set, const char* property, int index, void** value);
    Status (*propGetString)(PropertySet set, const char* property, int index, char** value);
    Status (*propGetDouble)(PropertySet set, const char* property, int index, double* value);
    Status (*propGetInt)(PropertySet set, const char* property, int index, int* value);
    Unused propGetManyOfAType[4];
    Unused propReset;
    Unused propGetDimension;
};
static_assert(offsetof(PropertySuite, propGetPointer) == 64 && sizeof(PropertySuite) == 144);

struct EffectSuite {
    static constexpr char name[] = "OfxImageEffectSuite";

    Status (*getPropertySet)(Effect effect, PropertySet* properties);
    Status (*getParamSet)(Effect effect, ParameterSet* parameters);
    Status (*clipDefine)(Effect effect, const char* clip, PropertySet* properties);
    Status (*clipGetHandle)(Effect effect, const char* name, Clip* clip, PropertySet* properties);
    Unused clipGetPropertySet;
    Status (*clipGetImage)(Clip clip, double time, const RectD* region, PropertySet* image);
    Status (*clipReleaseImage)(PropertySet image);
    Status (*clipGetRegionOfDefinition)(Clip clip, double time, RectD* region);
    int (*abort)(Effect effect);  ///< other than 0 to stop
    Status (*imageMemoryAlloc)(Effect effect, std::size_t bytes, Memory* memory);
    Status (*imageMemoryFree)(Memory memory);
    Status (*imageMemoryLock)(Memory memory, void** bytes);  ///< 16-byte aligned
    Status (*imageMemoryUnlock)(Memory memory);
};
static_assert(offsetof(EffectSuite, clipGetImage) == 40 && offsetof(EffectSuite, abort) == 64);
static_assert(offsetof(EffectSuite, imageMemoryUnlock) == 96 && sizeof(EffectSuite) == 104);

struct ParameterSuite {
    static constexpr char name[] = "OfxParameterSuite";

    Status (*paramDefine)(ParameterSet set, const char* type, const char* parameter,
                          PropertySet* properties);
    Status (*paramGetHandle)(ParameterSet set, const char* parameter, Parameter* handle,
                             PropertySet* properties);
    Unused paramSetGetPropertySet;
    Unused paramGetPropertySet;
    Unused paramGetValue;
    Status (*paramGetValueAtTime)(Parameter parameter, double time, ...);
    Unused others[12];
};
static_assert(offsetof(ParameterSuite, paramGetValueAtTime) == 40 && sizeof(ParameterSuite) == 144);

struct MessageSuite {
    static constexpr char name[] = "OfxMessageSuite";

    Status (*message)(void* handle, const char* type, const char* id, const char* format, ...);
};
static_assert(sizeof(MessageSuite) == 8);

}  // namespace ofx
