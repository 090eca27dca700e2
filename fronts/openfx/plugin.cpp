// The entry points of the bundle, and the actions that take no picture.
#include <cstring>

#include "fronts/openfx/controls.h"
#include "fronts/openfx/host.h"
#include "fronts/openfx/openfx.h"
#include "fronts/openfx/render.h"

#ifdef _WIN32
#define NEVREL_EXPORT __declspec(dllexport)
#else
#define NEVREL_EXPORT __attribute__((visibility("default")))
#endif

namespace {

constexpr char filterContext[] = "OfxImageEffectContextFilter";
constexpr char generalContext[] = "OfxImageEffectContextGeneral";

ofx::Host* host = nullptr;

template <typename Suite>
const Suite* Fetch() {
    return static_cast<const Suite*>(host->fetchSuite(host->host, Suite::name, 1));
}

ofx::Status Load() {
    if (host == nullptr || host->fetchSuite == nullptr) return ofx::failed;
    suites = {Fetch<ofx::PropertySuite>(), Fetch<ofx::EffectSuite>(), Fetch<ofx::ParameterSuite>(),
              Fetch<ofx::MessageSuite>()};
    if (suites.properties != nullptr && suites.effects != nullptr && suites.parameters != nullptr)
        return ofx::ok;
    suites = {};
    return ofx::failed;
}

ofx::Status Describe(ofx::Effect effect, ofx::PropertySet /*inArgs*/,
                     ofx::PropertySet /*outArgs*/) {
    Properties properties;
    properties.status = suites.effects->getPropertySet(effect, &properties.handle);
    properties.set("OfxPropLabel", "nevrel");
    properties.set("OfxImageEffectPluginPropGrouping", "KOVRA");
    properties.set("OfxPropPluginDescription",
                   "Smooths the stair-stepped edges of hand-painted cels and line art, and leaves "
                   "everything else of the picture exactly as it was painted.");
    properties.set("OfxImageEffectPropSupportedContexts", filterContext, 0);
    properties.set("OfxImageEffectPropSupportedContexts", generalContext, 1);
    properties.set("OfxImageEffectPluginRenderThreadSafety", "OfxImageEffectRenderFullySafe");
    // Frames are smoothed whole: what a pixel becomes depends on pixels far away.
    properties.set("OfxImageEffectPluginPropHostFrameThreading", 0);
    properties.set("OfxImageEffectPropSupportsTiles", 0);
    for (std::size_t i = 0; i < depths.size(); ++i) {
        properties.set("OfxImageEffectPropSupportedPixelDepths", depths[i].name,
                       static_cast<int>(i));
    }
    return properties.status;
}

ofx::Status DefineClip(ofx::Effect effect, const char* name) {
    Properties properties;
    properties.status = suites.effects->clipDefine(effect, name, &properties.handle);
    for (std::size_t i = 0; i < componentKinds.size(); ++i) {
        properties.set("OfxImageEffectPropSupportedComponents", componentKinds[i].name,
                       static_cast<int>(i));
    }
    properties.set("OfxImageEffectPropSupportsTiles", 0);
    return properties.status;
}

ofx::Status DescribeInContext(ofx::Effect effect, ofx::PropertySet inArgs,
                              ofx::PropertySet /*outArgs*/) {
    Properties arguments{inArgs};
    const bool isKnown = arguments.is("OfxImageEffectPropContext", filterContext) ||
                         arguments.is("OfxImageEffectPropContext", generalContext);
    if (arguments.status != ofx::ok) return arguments.status;
    if (!isKnown) return ofx::unsupported;
    for (const char* clip : {"Source", "Output"}) {
        const ofx::Status status = DefineClip(effect, clip);
        if (status != ofx::ok) return status;
    }
    return DefineControls(effect);
}

/// Answers with the extent of the whole source.
template <const char* name>
ofx::Status GetSourceRegion(ofx::Effect effect, ofx::PropertySet inArgs, ofx::PropertySet outArgs) {
    Properties arguments{inArgs};
    const double time = arguments.real("OfxPropTime");
    if (arguments.status != ofx::ok) return arguments.status;
    ofx::Clip clip = nullptr;
    ofx::RectD region{};
    ofx::Status status = suites.effects->clipGetHandle(effect, "Source", &clip, nullptr);
    if (status == ofx::ok) status = suites.effects->clipGetRegionOfDefinition(clip, time, &region);
    Properties answer{outArgs, status};
    int index = 0;
    for (const double side : {region.x1, region.y1, region.x2, region.y2})
        answer.set(name, side, index++);
    return answer.status;
}

constexpr char definition[] = "OfxImageEffectPropRegionOfDefinition";
constexpr char interest[] = "OfxImageClipPropRoI_Source";

/// The key makes an opaque source transparent, in straight colour.
ofx::Status GetClipPreferences(ofx::Effect effect, ofx::PropertySet /*inArgs*/,
                               ofx::PropertySet outArgs) {
    ofx::Clip clip = nullptr;
    Properties source;
    source.status = suites.effects->clipGetHandle(effect, "Source", &clip, &source.handle);
    const bool hasAlpha = source.is("OfxImageEffectPropComponents", "OfxImageComponentRGBA");
    const bool isPremultiplied =
        source.is("OfxImageEffectPropPreMultiplication", "OfxImageAlphaPremultiplied");
    if (source.status != ofx::ok) return source.status;
    if (!hasAlpha) return ofx::replyDefault;
    Properties answer{outArgs};
    answer.set("OfxImageEffectPropPreMultiplication",
               isPremultiplied ? "OfxImageAlphaPremultiplied" : "OfxImageAlphaUnPremultiplied");
    return answer.status;
}

ofx::Status IsIdentity(ofx::Effect effect, ofx::PropertySet inArgs, ofx::PropertySet outArgs) {
    Properties arguments{inArgs};
    const double time = arguments.real("OfxPropTime");
    nevrel_settings settings;
    ofx::Status status = arguments.status;
    if (status == ofx::ok) status = ReadControls(effect, time, settings);
    if (status != ofx::ok) return status;
    if (settings.softness != 0 || settings.color_key_enable != 0) return ofx::replyDefault;
    Properties answer{outArgs};
    answer.set("OfxPropName", "Source");
    return answer.status;
}

struct Action {
    const char* name;
    ofx::Status (*answer)(ofx::Effect effect, ofx::PropertySet inArgs, ofx::PropertySet outArgs);
};
constexpr Action actions[] = {
    {"OfxActionDescribe", Describe},
    {"OfxImageEffectActionDescribeInContext", DescribeInContext},
    {"OfxImageEffectActionGetRegionOfDefinition", GetSourceRegion<definition>},
    {"OfxImageEffectActionGetRegionsOfInterest", GetSourceRegion<interest>},
    {"OfxImageEffectActionGetClipPreferences", GetClipPreferences},
    {"OfxImageEffectActionIsIdentity", IsIdentity},
    {"OfxImageEffectActionRender", Render},
};

ofx::Status Answer(const char* name, const void* handle, ofx::PropertySet inArgs,
                   ofx::PropertySet outArgs) {
    if (name == nullptr) return ofx::failed;
    if (std::strcmp(name, "OfxActionLoad") == 0) return Load();
    if (suites.properties == nullptr) return ofx::failed;
    if (std::strcmp(name, "OfxActionUnload") == 0) {
        suites = {};
        return ofx::ok;
    }
    const auto effect = static_cast<ofx::Effect>(const_cast<void*>(handle));
    for (const Action& action : actions) {
        if (std::strcmp(name, action.name) == 0) return action.answer(effect, inArgs, outArgs);
    }
    return ofx::replyDefault;
}

void SetHost(ofx::Host* newHost) { host = newHost; }

/// Nothing of ours throws, but a host's function might.
ofx::Status MainEntry(const char* action, const void* handle, ofx::PropertySet inArgs,
                      ofx::PropertySet outArgs) {
    try {
        return Answer(action, handle, inArgs, outArgs);
    } catch (...) {
        return ofx::failed;
    }
}

ofx::Plugin plugin = {"OfxImageEffectPluginAPI", 1,       "kovra.nevrel", NEVREL_VERSION_MAJOR,
                      NEVREL_VERSION_MINOR,      SetHost, MainEntry};

}  // namespace

extern "C" NEVREL_EXPORT int OfxGetNumberOfPlugins() { return 1; }

extern "C" NEVREL_EXPORT ofx::Plugin* OfxGetPlugin(int nth) { return nth == 0 ? &plugin : nullptr; }
