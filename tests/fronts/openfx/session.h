// The bundle in the test host: loaded, described, with one instance.
#pragma once

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/fronts/openfx/test_host.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

/// The file of the bundle. It stays loaded: other tests run in the same process.
inline ofx::Plugin* PluginOfBundle() {
#ifdef _WIN32
    const HMODULE library = LoadLibraryA(BUNDLE_FILE);
    const auto find = [&](const char* name) {
        return reinterpret_cast<void*>(GetProcAddress(library, name));
    };
#else
    void* library = dlopen(BUNDLE_FILE, RTLD_NOW | RTLD_LOCAL);
    const auto find = [&](const char* name) { return dlsym(library, name); };
#endif
    if (library == nullptr) throw std::runtime_error("cannot load " BUNDLE_FILE);
    const auto number = reinterpret_cast<int (*)()>(find("OfxGetNumberOfPlugins"));
    const auto plugin = reinterpret_cast<ofx::Plugin* (*)(int)>(find("OfxGetPlugin"));
    if (number() != 1 || plugin(1) != nullptr || plugin(-1) != nullptr)
        throw std::runtime_error("not one plug-in in " BUNDLE_FILE);
    return plugin(0);
}

class Session {
  public:
    explicit Session(const char* context = "OfxImageEffectContextFilter") {
        books = {};
        plugin->setHost(&testHost);
        inArgs.values = {{"OfxImageEffectPropContext", {context}}};
        for (const char* action :
             {"OfxActionLoad", "OfxActionDescribe", "OfxImageEffectActionDescribeInContext"})
            EXPECT_EQ(call(action), ofx::ok) << action;
        for (ofx::ParameterRecord& parameter : effect.parameters)
            parameter.value = parameter.properties.values["OfxParamPropDefault"];
        inArgs.values = {{"OfxPropTime", {frameTime}},
                         {"OfxImageEffectPropFieldToRender", {"OfxFieldNone"}},
                         {"OfxImageEffectPropRenderWindow", {0, 0, 0, 0}}};
    }
    ~Session() { call("OfxActionUnload"); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    ofx::Status call(const char* action) {
        return plugin->mainEntry(action, &effect, &inArgs, &outArgs);
    }

    /// The frame as a host asks for it, `window` being what it wants of it.
    ofx::Status render(Frame& source, Frame& output, const ofx::RectI& window,
                       bool negativeRowBytes = false) {
        LentImage from(source, {.padding = 16, .bottomUp = !negativeRowBytes});
        LentImage to(output, {.padding = 48, .bottomUp = !negativeRowBytes});
        return render(&from, to, window);
    }
    ofx::Status render(LentImage* from, LentImage& to, const ofx::RectI& window) {
        inArgs.values["OfxImageEffectPropRenderWindow"] = {window.x1, window.y1, window.x2,
                                                           window.y2};
        effect.clips["Source"].image = from;
        effect.clips["Output"].image = &to;
        return call("OfxImageEffectActionRender");
    }

    ofx::Plugin* plugin = PluginOfBundle();
    ofx::EffectRecord effect;
    ofx::PropertySetRecord inArgs, outArgs;
};
