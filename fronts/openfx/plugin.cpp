// The entry points of the bundle, and the actions that take no picture.
#include <cstring>
#include <initializer_list>

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

// Actions throw the status of a host that fails.

ofx::Status Describe(ofx::Effect effect, ofx::PropertySet /*inArgs*/,
                     ofx::PropertySet /*outArgs*/) {
    Properties properties;
    Require(suites.effects->getPropertySet(effect, &properties.handle));
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
    int index = 0;
    for (const Depth& depth : depths)
        properties.set("OfxImageEffectPropSupportedPixelDepths", depth.name, index++);
    return ofx::ok;
}

ofx::Status DescribeInContext(ofx::Effect effect, ofx::PropertySet inArgs,
                              ofx::PropertySet /*outArgs*/) {
    const Properties arguments{inArgs};
    if (!arguments.is("OfxImageEffectPropContext", filterContext) &&
        !arguments.is("OfxImageEffectPropContext", generalContext))
        return ofx::unsupported;
    for (const char* name : {"Source", "Output"}) {
        Properties clip;
        Require(suites.effects->clipDefine(effect, name, &clip.handle));
        int index = 0;
        for (const Components& components : componentKinds)
            clip.set("OfxImageEffectPropSupportedComponents", components.name, index++);
        clip.set("OfxImageEffectPropSupportsTiles", 0);
    }
    DefineControls(effect);
    return ofx::ok;
}

/// Answers with the extent of the whole source.
template <const char* name>
ofx::Status GetSourceRegion(ofx::Effect effect, ofx::PropertySet inArgs, ofx::PropertySet outArgs) {
    const double time = Properties{inArgs}.real("OfxPropTime");
    ofx::Clip clip = nullptr;
    ofx::RectD region{};
    Require(suites.effects->clipGetHandle(effect, "Source", &clip, nullptr));
    Require(suites.effects->clipGetRegionOfDefinition(clip, time, &region));
    int index = 0;
    for (const double side : {region.x1, region.y1, region.x2, region.y2})
        Properties{outArgs}.set(name, side, index++);
    return ofx::ok;
}

constexpr char definition[] = "OfxImageEffectPropRegionOfDefinition";
constexpr char interest[] = "OfxImageClipPropRoI_Source";

/// The key makes an opaque source transparent, in straight colour.
ofx::Status GetClipPreferences(ofx::Effect effect, ofx::PropertySet /*inArgs*/,
                               ofx::PropertySet outArgs) {
    ofx::Clip clip = nullptr;
    Properties source;
    Require(suites.effects->clipGetHandle(effect, "Source", &clip, &source.handle));
    if (!source.is("OfxImageEffectPropComponents", "OfxImageComponentRGBA"))
        return ofx::replyDefault;
    const bool isPremultiplied =
        source.is("OfxImageEffectPropPreMultiplication", "OfxImageAlphaPremultiplied");
    Properties{outArgs}.set(
        "OfxImageEffectPropPreMultiplication",
        isPremultiplied ? "OfxImageAlphaPremultiplied" : "OfxImageAlphaUnPremultiplied");
    return ofx::ok;
}

ofx::Status IsIdentity(ofx::Effect effect, ofx::PropertySet inArgs, ofx::PropertySet outArgs) {
    const double time = Properties{inArgs}.real("OfxPropTime");
    const nevrel_settings settings = ReadControls(effect, time);
    if (settings.softness != 0 || settings.color_key_enable != 0) return ofx::replyDefault;
    Properties{outArgs}.set("OfxPropName", "Source");
    return ofx::ok;
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

ofx::Status MainEntry(const char* action, const void* handle, ofx::PropertySet inArgs,
                      ofx::PropertySet outArgs) {
    try {
        return Answer(action, handle, inArgs, outArgs);
    } catch (ofx::Status status) {
        return status;
    } catch (...) {  // a host's function might
        return ofx::failed;
    }
}

ofx::Plugin plugin = {"OfxImageEffectPluginAPI", 1,       "kovra.nevrel", NEVREL_VERSION_MAJOR,
                      NEVREL_VERSION_MINOR,      SetHost, MainEntry};

}  // namespace

extern "C" NEVREL_EXPORT int OfxGetNumberOfPlugins() { return 1; }

extern "C" NEVREL_EXPORT ofx::Plugin* OfxGetPlugin(int nth) { return nth == 0 ? &plugin : nullptr; }
