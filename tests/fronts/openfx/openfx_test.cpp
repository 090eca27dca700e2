// The bundle as a host sees it: what it describes, the bytes that it makes, what it refuses, and
// what it gives back.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "nevrel.h"
#include "tests/capi/sample_pictures.h"
#include "tests/fronts/openfx/session.h"

namespace {

struct Depth {
    const char* name;
    nevrel_sample sample;
};
constexpr Depth depths[] = {{"OfxBitDepthByte", NEVREL_UINT8},
                            {"OfxBitDepthShort", NEVREL_UINT16},
                            {"OfxBitDepthHalf", NEVREL_HALF},
                            {"OfxBitDepthFloat", NEVREL_FLOAT}};

struct Format {
    const char *components, *premultiplication;
    nevrel_order order;
};
constexpr Format formats[] = {
    {"OfxImageComponentRGBA", "OfxImageAlphaUnPremultiplied", NEVREL_RGBA},
    {"OfxImageComponentRGBA", "OfxImageAlphaPremultiplied", NEVREL_RGBA_PREMULTIPLIED},
    {"OfxImageComponentRGB", "OfxImageAlphaPremultiplied", NEVREL_RGB}};
constexpr Format straight = formats[0], premultiplied = formats[1];

constexpr ofx::RectI bounds = {-7, 5, 34, 29};
constexpr int width = bounds.x2 - bounds.x1, height = bounds.y2 - bounds.y1;

Frame Draw(const Depth& depth, const Format& format) {
    const SampleKind& kind = sampleKinds[depth.sample];
    const auto pixels = DrawPixels(PinnedResults().front(), kind, false, width, height);
    return {depth.name, format.components, format.premultiplication, bounds,
            Pack(pixels, kind, orderKinds[format.order])};
}

/// What the C interface makes of it.
std::vector<std::byte> Smoothed(const nevrel_settings* settings, const Depth& depth,
                                const Format& format, Frame picture) {
    const nevrel_image image{picture.pixels.data(), picture.rowSize()};
    EXPECT_EQ(
        nevrel_smooth(settings, format.order, depth.sample, width, height, &image, &image, nullptr),
        NEVREL_OK);
    return picture.pixels;
}

/// Of the same form, filled with something.
Frame Blank(Frame picture) {
    std::fill(picture.pixels.begin(), picture.pixels.end(), std::byte{0x3c});
    return picture;
}

void ExpectProperties(const ofx::PropertySetRecord& set,
                      std::initializer_list<std::pair<const char*, const char*>> expected) {
    for (const auto& [name, value] : expected) EXPECT_EQ(set.text(name), value) << name;
}

/// "Type name, label: default from minimum to maximum in group".
std::string Described(const ofx::ParameterRecord& parameter) {
    const auto text = [&](const char* name) { return parameter.properties.text(name); };
    EXPECT_EQ(text("OfxParamPropDisplayMin"), text("OfxParamPropMin"));
    EXPECT_EQ(text("OfxParamPropDisplayMax"), text("OfxParamPropMax"));
    EXPECT_EQ(text("OfxParamPropAnimates"), parameter.type == "OfxParamTypeGroup" ? "" : "1");
    return parameter.type + ' ' + parameter.name + ", " + text("OfxPropLabel") + ": " +
           text("OfxParamPropDefault") + " from " + text("OfxParamPropMin") + " to " +
           text("OfxParamPropMax") + " in " + text("OfxParamPropParent");
}
constexpr const char* expectedParameters[] = {
    "OfxParamTypeInteger color_threshold, color threshold: 10 from 1 to 255 in ",
    "OfxParamTypeInteger softness, softness: 70 from 0 to 100 in ",
    "OfxParamTypeInteger bias, bias: 0 from 0 to 100 in ",
    "OfxParamTypeGroup color_key, color key:  from  to  in ",
    "OfxParamTypeBoolean color_key_enable, color key enable: 0 from  to  in color_key",
    "OfxParamTypeRGB key_color, key color: 1 1 1 from  to  in color_key",
    "OfxParamTypeInteger key_color_threshold, key color threshold: 0 from 0 to 255 in color_key",
    "OfxParamTypeBoolean invert, invert: 0 from  to  in color_key",
};

TEST(OpenFx, IsDescribedInBothContexts) {
    for (const char* context : {"OfxImageEffectContextFilter", "OfxImageEffectContextGeneral"}) {
        Session session(context);
        EXPECT_STREQ(session.plugin->pluginApi, "OfxImageEffectPluginAPI");
        EXPECT_EQ(session.plugin->apiVersion, 1);
        ExpectProperties(
            session.effect.properties,
            {{"OfxPropLabel", "nevrel"},
             {"OfxImageEffectPluginPropGrouping", "KOVRA"},
             {"OfxImageEffectPluginPropHostFrameThreading", "0"},
             {"OfxImageEffectPluginRenderThreadSafety", "OfxImageEffectRenderFullySafe"},
             {"OfxImageEffectPropSupportedContexts",
              "OfxImageEffectContextFilter OfxImageEffectContextGeneral"},
             {"OfxImageEffectPropSupportedPixelDepths",
              "OfxBitDepthByte OfxBitDepthShort OfxBitDepthFloat OfxBitDepthHalf"},
             {"OfxImageEffectPropSupportsTiles", "0"}});
        EXPECT_EQ(session.effect.clips.size(), 2U);
        for (const char* clip : {"Source", "Output"}) {
            ExpectProperties(session.effect.clips[clip].properties,
                             {{"OfxImageEffectPropSupportedComponents",
                               "OfxImageComponentRGBA OfxImageComponentRGB"},
                              {"OfxImageEffectPropSupportsTiles", "0"}});
        }
        std::vector<std::string> parameters;
        for (const auto& parameter : session.effect.parameters)
            parameters.push_back(Described(parameter));
        EXPECT_EQ(parameters, std::vector<std::string>(std::begin(expectedParameters),
                                                       std::end(expectedParameters)));
    }
}

/// The values of the parameters and what they mean.
struct Setting {
    std::map<std::string, Values> values;
    nevrel_settings settings;
};
const Setting settings[] = {
    {{}, {sizeof(nevrel_settings), 10, 70, 0, 0, 255, 255, 255, 0, 0}},
    {{{"color_threshold", {-3}}, {"softness", {101}}, {"bias", {30}}},
     {sizeof(nevrel_settings), 1, 100, 30, 0, 255, 255, 255, 0, 0}},
    {{{"color_key_enable", {1}},
      {"key_color", {20.4 / 255, 0.06, -1.0}},
      {"key_color_threshold", {61}}},
     {sizeof(nevrel_settings), 10, 70, 0, 1, 20, 15, 0, 61, 0}},
    {{{"color_key_enable", {1}}, {"key_color", {0.94, 180 / 255.0, 60 / 255.0}}, {"invert", {1}}},
     {sizeof(nevrel_settings), 10, 70, 0, 1, 240, 180, 60, 0, 1}},
};

TEST(OpenFx, GivesTheBytesOfTheCInterface) {
    for (const Setting& setting : settings) {
        Session session;
        for (const auto& [name, value] : setting.values)
            session.effect.parameter(name).value = value;
        for (const Depth& depth : depths) {
            for (const Format& format : formats) {
                if (format.order == NEVREL_RGB && setting.settings.color_key_enable != 0) continue;
                Frame source = Draw(depth, format);
                const auto before = source.pixels;
                const auto expected = Smoothed(&setting.settings, depth, format, source);
                EXPECT_NE(expected, before);
                for (const bool negativeRowBytes : {false, true}) {
                    Frame output = Blank(source);
                    EXPECT_EQ(session.render(source, output, bounds, negativeRowBytes), ofx::ok);
                    EXPECT_EQ(output.pixels, expected) << depth.name << " " << format.order;
                    EXPECT_EQ(source.pixels, before);
                }
            }
        }
        EXPECT_EQ(books.lent, 0);
    }
}

/// What a host wants of a frame, and the bounds of its output.
struct Window {
    ofx::RectI window, output;
};
constexpr Window windows[] = {
    {{-7, 5, 34, 29}, {-7, 5, 34, 29}},    {{0, 10, 9, 20}, {-7, 5, 34, 29}},
    {{-99, -99, 99, 99}, {-9, 0, 40, 50}}, {{-99, 9, 99, 99}, {2, 3, 50, 12}},
    {{0, 9, 0, 20}, {-7, 5, 34, 29}},      {{50, 50, 60, 60}, {40, 40, 70, 70}},
    {{20, 10, 0, 20}, {-7, 5, 34, 29}},
};

TEST(OpenFx, WritesTheWindowAndNothingElse) {
    const auto inside = [](const ofx::RectI& r, int x, int y) {
        return x >= r.x1 && x < r.x2 && y >= r.y1 && y < r.y2;
    };
    Frame source = Draw(depths[0], premultiplied);
    const auto smoothed = Smoothed(nullptr, depths[0], premultiplied, source);
    for (const Window& w : windows) {
        for (const bool hasSource : {true, false}) {
            Session session;
            Frame output = source;
            output.bounds = w.output;
            output.pixels.resize(4 * static_cast<std::size_t>(output.width() * output.height()));
            output = Blank(output);
            {
                LentImage from(source, {.padding = 8, .bottomUp = true}), to(output, {});
                EXPECT_EQ(session.render(hasSource ? &from : nullptr, to, w.window), ofx::ok);
            }
            for (int i = 0; i < output.width() * output.height(); ++i) {
                const int x = w.output.x1 + i % output.width();
                const int y = w.output.y2 - 1 - i / output.width();
                std::uint32_t expected = 0x3c3c3c3c, pixel = 0;
                if (inside(w.window, x, y)) expected = 0;
                if (hasSource && inside(w.window, x, y) && inside(bounds, x, y)) {
                    const int at = (bounds.y2 - 1 - y) * width + x - bounds.x1;
                    std::memcpy(&expected, smoothed.data() + 4 * at, 4);
                }
                std::memcpy(&pixel, output.pixels.data() + 4 * i, 4);
                ASSERT_EQ(pixel, expected) << x << ", " << y << " row " << &w - windows;
            }
        }
    }
}

/// A wrong property of a call with the key, or of its images; without values one that is missing.
enum class Of { call, source, images };
struct Refusal {
    ofx::Status status;
    Of of;
    const char* property;
    Values values;
};
const Refusal refusals[] = {
    {ofx::ok, Of::call, "OfxImageEffectPropFieldToRender", {"OfxFieldNone"}},
    {ofx::unsupported, Of::call, "OfxImageEffectPropFieldToRender", {"OfxFieldLower"}},
    {ofx::unsupported, Of::call, "OfxImageEffectPropFieldToRender", {"OfxFieldBoth"}},
    {ofx::unknown, Of::call, "OfxPropTime", {}},
    {ofx::unsupported, Of::images, "OfxImageEffectPropComponents", {"OfxImageComponentRGB"}},
    {ofx::badImageFormat, Of::images, "OfxImageEffectPropComponents", {"OfxImageComponentAlpha"}},
    {ofx::badImageFormat, Of::source, "OfxImageEffectPropComponents", {"OfxImageComponentRGB"}},
    {ofx::badImageFormat, Of::source, "OfxImageEffectPropPixelDepth", {"OfxBitDepthShort"}},
    {ofx::badImageFormat, Of::images, "OfxImageEffectPropPixelDepth", {"OfxBitDepthNone"}},
    {ofx::badImageFormat, Of::source, "OfxImagePropRowBytes", {width * 4 - 1}},
};

TEST(OpenFx, RefusesWhatItCannotSmooth) {
    for (const Refusal& refusal : refusals) {
        Session session;
        session.effect.parameter("color_key_enable").value = {1};
        Frame source = Draw(depths[0], straight), output = Blank(source);
        {
            LentImage from(source, {.bottomUp = true}), to(output, {.bottomUp = true});
            const auto spoil = [&](ofx::PropertySetRecord& set) {
                set.values[refusal.property] = refusal.values;
                if (refusal.values.empty()) set.values.erase(refusal.property);
            };
            spoil(refusal.of == Of::call ? session.inArgs : from.properties);
            if (refusal.of == Of::images) spoil(to.properties);
            EXPECT_EQ(session.render(&from, to, bounds), refusal.status)
                << "row " << &refusal - refusals;
        }
        EXPECT_EQ(output.pixels == Blank(source).pixels, refusal.status != ofx::ok);
        EXPECT_EQ(books.lent, 0);
    }
    Session session;
    session.inArgs.values["OfxImageEffectPropContext"] = {"OfxImageEffectContextTransition"};
    EXPECT_EQ(session.call("OfxImageEffectActionDescribeInContext"), ofx::unsupported);
    EXPECT_EQ(session.call(nullptr), ofx::failed);
    EXPECT_EQ(session.call("OfxActionCreateInstance"), ofx::replyDefault);
}

TEST(OpenFx, AnswersBeforeAFrameIsRendered) {
    Session session;
    ofx::ClipRecord& source = session.effect.clips["Source"];
    source.region = {-20, 3.5, 1000, 500};
    EXPECT_EQ(session.call("OfxImageEffectActionGetRegionOfDefinition"), ofx::ok);
    EXPECT_EQ(session.call("OfxImageEffectActionGetRegionsOfInterest"), ofx::ok);
    EXPECT_EQ(session.call("OfxImageEffectActionIsIdentity"), ofx::replyDefault);
    session.effect.parameter("softness").value = {0};
    EXPECT_EQ(session.call("OfxImageEffectActionIsIdentity"), ofx::ok);
    ExpectProperties(session.outArgs, {{"OfxImageClipPropRoI_Source", "-20 3.5 1000 500"},
                                       {"OfxImageEffectPropRegionOfDefinition", "-20 3.5 1000 500"},
                                       {"OfxPropName", "Source"}});
    session.effect.parameter("color_key_enable").value = {1};
    EXPECT_EQ(session.call("OfxImageEffectActionIsIdentity"), ofx::replyDefault);

    constexpr char preference[] = "OfxImageEffectPropPreMultiplication";
    for (const auto& [components, alpha, answer] :
         {std::tuple{"OfxImageComponentRGBA", "OfxImageOpaque", "OfxImageAlphaUnPremultiplied"},
          {"OfxImageComponentRGBA", "OfxImageAlphaPremultiplied", "OfxImageAlphaPremultiplied"},
          {"OfxImageComponentRGB", "OfxImageOpaque", ""}}) {
        session.outArgs.values.clear();
        source.properties.values["OfxImageEffectPropComponents"] = {components};
        source.properties.values[preference] = {alpha};
        EXPECT_EQ(session.call("OfxImageEffectActionGetClipPreferences"),
                  *answer == 0 ? ofx::replyDefault : ofx::ok);
        EXPECT_EQ(session.outArgs.text(preference), answer);
    }
}

TEST(OpenFx, StopsWhenTheHostAborts) {
    Session session;
    Frame source = Draw(depths[1], premultiplied), output = Blank(source);
    books.abort = 1;
    EXPECT_EQ(session.render(source, output, output.bounds), ofx::ok);
    EXPECT_EQ(output.pixels, Blank(source).pixels);
    EXPECT_EQ(books.lent, 0);
}

TEST(OpenFx, NeedsThreeSuites) {
    for (const auto& [missing, loaded, messages] : {std::tuple{"OfxPropertySuite", ofx::failed, 0U},
                                                    {"OfxImageEffectSuite", ofx::failed, 0U},
                                                    {"OfxParameterSuite", ofx::failed, 0U},
                                                    {"OfxMessageSuite", ofx::ok, 0U},
                                                    {"", ofx::ok, 1U}}) {
        Session session;
        session.inArgs.values["OfxImageEffectPropFieldToRender"] = {"OfxFieldUpper"};
        session.call("OfxActionUnload");
        EXPECT_EQ(session.call("OfxImageEffectActionRender"), ofx::failed);
        books.missingSuite = missing;
        EXPECT_EQ(session.call("OfxActionLoad"), loaded);
        EXPECT_EQ(session.call("OfxImageEffectActionRender"),
                  loaded == ofx::ok ? ofx::unsupported : ofx::failed);
        EXPECT_EQ(books.messages.size(), messages);
        session.plugin->setHost(nullptr);
        EXPECT_EQ(session.call("OfxActionLoad"), ofx::failed);
    }
}

/// Everything that a host asks, with the n-th of its own calls failing, until a run needs none.
TEST(OpenFx, GivesEverythingBackToAFailingHost) {
    for (const ofx::Status failure : {ofx::failed, ofx::outOfMemory, ofx::ok}) {
        bool failed = true;
        for (int n = 1; failed; ++n) {
            Session session;
            Frame source = Draw(depths[2], premultiplied), output = Blank(source);
            source.bounds.x1 -= 1, source.bounds.x2 -= 1;  // so that a part is taken
            session.effect.clips["Source"].properties.values = {
                {"OfxImageEffectPropComponents", {"OfxImageComponentRGBA"}},
                {"OfxImageEffectPropPreMultiplication", {"OfxImageAlphaPremultiplied"}}};
            session.inArgs.values["OfxImageEffectPropContext"] = {"OfxImageEffectContextFilter"};
            books = {.failingCall = n, .failure = failure};
            std::vector<ofx::Status> statuses;
            for (const char* action :
                 {"OfxActionDescribe", "OfxImageEffectActionDescribeInContext",
                  "OfxImageEffectActionGetClipPreferences",
                  "OfxImageEffectActionGetRegionOfDefinition", "OfxImageEffectActionIsIdentity"})
                statuses.push_back(session.call(action));
            statuses.push_back(session.render(source, output, bounds));
            const auto good = std::ranges::count_if(
                statuses, [](ofx::Status s) { return s == ofx::ok || s == ofx::replyDefault; });
            failed = n <= books.calls;
            // A clip without a picture is no failure.
            const bool mayBeBlank = failure == ofx::failed &&
                                    output.pixels == std::vector<std::byte>(output.pixels.size());
            EXPECT_TRUE(failed ? good == 5 || mayBeBlank : good == 6)
                << "call " << n << ": " << failure;
            EXPECT_EQ(books.lent, 0) << "call " << n;
            EXPECT_TRUE(failed || n > 100);
        }
    }
}

}  // namespace
