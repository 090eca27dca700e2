// The bundle as a host sees it: what it describes, the bytes that it makes, what it refuses, and
// what it gives back.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "nevrel.h"
#include "tests/capi/sample_kinds.h"
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

constexpr char premultiplied[] = "OfxImageAlphaPremultiplied";

/// Stairs of two colours; alpha is 255, or 255, 100 and 0 from left to right.
Frame Draw(const Depth& depth, int channels, bool opaque) {
    constexpr int width = 41, height = 30;
    Frame picture;
    picture.depth = depth.name;
    picture.components = channels == 3 ? "OfxImageComponentRGB" : "OfxImageComponentRGBA";
    picture.bounds = {-7, 5, width - 7, height + 5};
    const SampleKind& kind = sampleKinds[depth.sample];
    for (int i = 0; i < width * height; ++i) {
        const int x = i % width, y = i / width;
        const int alpha = opaque || x < width / 2 ? 255 : x < width * 3 / 4 ? 100 : 0;
        const bool stair = (x + y / 3) % 9 < 4;
        const int values[] = {stair ? 90 : 10, stair ? 30 : 80, 60, alpha};
        for (int channel = 0; channel < channels; ++channel) {
            const int value = values[channel];
            const Bits bits = value == 255 ? kind.full : kind.fromByte(value);
            const auto* bytes = reinterpret_cast<const std::byte*>(&bits);
            picture.pixels.insert(picture.pixels.end(), bytes, bytes + kind.bytes);
        }
    }
    return picture;
}

/// What the C interface makes of a straight picture.
std::vector<std::byte> Smoothed(const nevrel_settings* settings, const Depth& depth,
                                Frame picture) {
    const nevrel_image image{picture.pixels.data(), static_cast<std::ptrdiff_t>(picture.rowSize())};
    const bool hasAlpha = picture.components == "OfxImageComponentRGBA";
    EXPECT_EQ(nevrel_smooth(settings, hasAlpha ? NEVREL_RGBA : NEVREL_RGB, depth.sample,
                            picture.width(), picture.height(), &image, &image, nullptr),
              NEVREL_OK);
    return picture.pixels;
}

/// Of the same form, filled with something.
Frame Blank(Frame picture) {
    std::fill(picture.pixels.begin(), picture.pixels.end(), std::byte{0x3c});
    return picture;
}

constexpr char expectedEffect[] = R"(OfxImageEffectPluginPropGrouping=KOVRA
OfxImageEffectPluginPropHostFrameThreading=0
OfxImageEffectPluginRenderThreadSafety=OfxImageEffectRenderFullySafe
OfxImageEffectPropSupportedContexts=OfxImageEffectContextFilter OfxImageEffectContextGeneral
OfxImageEffectPropSupportedPixelDepths=OfxBitDepthByte OfxBitDepthShort OfxBitDepthFloat OfxBitDepthHalf
OfxImageEffectPropSupportsTiles=0
OfxPropLabel=nevrel
)";
constexpr char expectedClip[] =
    R"(OfxImageEffectPropSupportedComponents=OfxImageComponentRGBA OfxImageComponentRGB
OfxImageEffectPropSupportsTiles=0
)";
#define SLIDER(default, min, max)                                                            \
    "OfxParamPropAnimates=1\nOfxParamPropDefault=" #default "\nOfxParamPropDisplayMax=" #max \
                                                            "\nOfxParamPropDisplayMin=" #min \
                                                            "\nOfxParamPropMax=" #max        \
                                                            "\nOfxParamPropMin=" #min "\n"
#define IN_GROUP "OfxParamPropParent=color_key\n"
#define SWITCH "OfxParamPropAnimates=1\nOfxParamPropDefault=0\n"
constexpr const char* expectedParameters[][3] = {
    {"Integer color_threshold", SLIDER(10, 1, 255), "color threshold"},
    {"Integer softness", SLIDER(70, 0, 100), "softness"},
    {"Integer bias", SLIDER(0, 0, 100), "bias"},
    {"Group color_key", "", "color key"},
    {"Boolean color_key_enable", SWITCH IN_GROUP, "color key enable"},
    {"RGB key_color", "OfxParamPropAnimates=1\nOfxParamPropDefault=1 1 1\n" IN_GROUP, "key color"},
    {"Integer key_color_threshold", SLIDER(0, 0, 255) IN_GROUP, "key color threshold"},
    {"Boolean invert", SWITCH IN_GROUP, "invert"},
};

TEST(OpenFx, IsDescribedInBothContexts) {
    for (const char* context : {"OfxImageEffectContextFilter", "OfxImageEffectContextGeneral"}) {
        Session session(context);
        EXPECT_EQ(session.loaded, ofx::ok);
        EXPECT_EQ(session.described, ofx::ok);
        EXPECT_EQ(session.describedInContext, ofx::ok);
        EXPECT_STREQ(session.plugin->pluginApi, "OfxImageEffectPluginAPI");
        EXPECT_EQ(session.plugin->apiVersion, 1);
        EXPECT_EQ(session.effect.properties.text(), expectedEffect);
        EXPECT_EQ(session.effect.clips.size(), 2U);
        EXPECT_EQ(session.effect.clips["Source"].properties.text(), expectedClip);
        EXPECT_EQ(session.effect.clips["Output"].properties.text(), expectedClip);
        ASSERT_EQ(session.effect.parameters.size(), std::size(expectedParameters));
        for (std::size_t i = 0; i < std::size(expectedParameters); ++i) {
            const auto& [definition, parameterProperties, label] = expectedParameters[i];
            const ofx::ParameterRecord& parameter = session.effect.parameters[i];
            EXPECT_EQ(parameter.type + ' ' + parameter.name,
                      std::string("OfxParamType") + definition);
            EXPECT_EQ(parameter.properties.text(),
                      std::string(parameterProperties) + "OfxPropLabel=" + label + '\n');
        }
    }
}

/// The values of the parameters and what they mean.
struct Setting {
    std::map<std::string, std::vector<double>> values;
    nevrel_settings settings;
};
const Setting settings[] = {
    {{}, {sizeof(nevrel_settings), 10, 70, 0, 0, 255, 255, 255, 0, 0}},
    {{{"color_threshold", {-3}}, {"softness", {101}}, {"bias", {30}}},
     {sizeof(nevrel_settings), 1, 100, 30, 0, 255, 255, 255, 0, 0}},
    {{{"color_key_enable", {1}},
      {"key_color", {90.4 / 255, 0.12, -1}},
      {"key_color_threshold", {61}}},
     {sizeof(nevrel_settings), 10, 70, 0, 1, 90, 31, 0, 61, 0}},
    {{{"color_key_enable", {1}}, {"key_color", {0.04, 80 / 255.0, 60 / 255.0}}, {"invert", {1}}},
     {sizeof(nevrel_settings), 10, 70, 0, 1, 10, 80, 60, 0, 1}},
};

TEST(OpenFx, GivesTheBytesOfTheCInterface) {
    for (const Setting& setting : settings) {
        Session session;
        for (const auto& [name, value] : setting.values) session.effect.setValue(name, value);
        for (const Depth& depth : depths) {
            for (int variant = 0; variant < 6; ++variant) {
                const int channels = variant % 3 == 1 ? 3 : 4;
                const bool opaque = variant % 3 == 2;  // where multiplied colour is straight colour
                if (variant % 3 != 0 && setting.settings.color_key_enable != 0) continue;
                Frame source = Draw(depth, channels, opaque);
                if (variant % 3 != 0) source.premultiplication = premultiplied;
                const Frame before = source;
                Frame output = Blank(source);
                EXPECT_EQ(session.render(source, output, source.bounds, variant >= 3), ofx::ok);
                const auto expected = Smoothed(&setting.settings, depth, source);
                EXPECT_NE(expected, source.pixels);
                EXPECT_EQ(output.pixels, expected) << depth.name << " variant " << variant;
                EXPECT_EQ(source.pixels, before.pixels);
            }
        }
        EXPECT_EQ(books.images + books.memory + books.locks, 0);
    }
}

struct Window {
    ofx::RectI window, output;
};
constexpr Window windows[] = {
    {{-7, 5, 34, 35}, {-7, 5, 34, 35}},    {{0, 10, 9, 20}, {-7, 5, 34, 35}},
    {{-99, -99, 99, 99}, {-9, 0, 40, 50}}, {{-99, 9, 99, 99}, {2, 3, 50, 12}},
    {{0, 9, 0, 20}, {-7, 5, 34, 35}},      {{50, 50, 60, 60}, {40, 40, 70, 70}},
    {{20, 10, 0, 20}, {-7, 5, 34, 35}},
};

TEST(OpenFx, WritesTheWindowAndNothingElse) {
    for (const Window& w : windows) {
        for (const bool hasSource : {true, false}) {
            for (const char* alpha : {premultiplied, "OfxImageOpaque"}) {
                Session session;
                Frame source = Draw(depths[0], 4, true), output;
                source.premultiplication = alpha;
                output.bounds = w.output;
                output.pixels.resize(4 * static_cast<std::size_t>(output.width() * output.height()),
                                     std::byte{0x3c});
                const auto smoothed = Smoothed(nullptr, depths[0], source);
                {
                    LentImage from(source, false, 8), to(output, true, 0);
                    EXPECT_EQ(session.render(hasSource ? &from : nullptr, to, w.window), ofx::ok);
                }
                const auto inside = [](const ofx::RectI& r, int x, int y) {
                    return x >= r.x1 && x < r.x2 && y >= r.y1 && y < r.y2;
                };
                for (int i = 0; i < output.width() * output.height(); ++i) {
                    const int x = w.output.x1 + i % output.width();
                    const int y = w.output.y2 - 1 - i / output.width();
                    std::uint32_t expected = 0x3c3c3c3c, pixel = 0;
                    if (inside(w.window, x, y)) expected = 0;
                    if (hasSource && inside(w.window, x, y) && inside(source.bounds, x, y)) {
                        const int at = (source.bounds.y2 - 1 - y) * 41 + x - source.bounds.x1;
                        std::memcpy(&expected, smoothed.data() + 4 * at, 4);
                    }
                    std::memcpy(&pixel, output.pixels.data() + 4 * i, 4);
                    ASSERT_EQ(pixel, expected) << x << ", " << y << " row " << &w - windows;
                }
            }
        }
    }
}

struct Refusal {
    ofx::Status status;
    void (*spoil)(Session& session, Frame& source, Frame& output);
};
const Refusal refusals[] = {
    {ofx::ok, [](Session&, Frame&, Frame&) {}},
    {ofx::unsupported,
     [](Session& s, Frame&, Frame&) {
         s.inArgs.values["OfxImageEffectPropFieldToRender"] = {std::string("OfxFieldLower")};
     }},
    {ofx::unsupported,
     [](Session& s, Frame&, Frame&) {
         s.inArgs.values["OfxImageEffectPropFieldToRender"] = {std::string("OfxFieldBoth")};
     }},
    {ofx::unknown, [](Session& s, Frame&, Frame&) { s.inArgs.values.erase("OfxPropTime"); }},
    {ofx::badImageFormat,
     [](Session&, Frame& source, Frame& output) {
         source.components = output.components = "OfxImageComponentAlpha";
     }},
    {ofx::badImageFormat,
     [](Session&, Frame& source, Frame&) { source.depth = "OfxBitDepthNone"; }},
    {ofx::badImageFormat,
     [](Session&, Frame& source, Frame&) { source = Draw(depths[1], 4, true); }},
    {ofx::badImageFormat,
     [](Session&, Frame& source, Frame&) { source = Draw(depths[0], 3, true); }},
    {ofx::badImageFormat,
     [](Session&, Frame& source, Frame&) {  // rows overlap
         source.bounds.x2 += 5;
     }},
    {ofx::unsupported,
     [](Session& s, Frame& source, Frame& output) {
         source = Draw(depths[0], 3, true);
         output = Blank(source);
         s.effect.setValue("color_key_enable", {1});
     }},
};

TEST(OpenFx, RefusesWhatItCannotSmooth) {
    for (const Refusal& refusal : refusals) {
        Session session;
        Frame source = Draw(depths[0], 4, true), output = Blank(source);
        refusal.spoil(session, source, output);
        const auto before = output.pixels;
        EXPECT_EQ(session.render(source, output, output.bounds), refusal.status)
            << "row " << &refusal - refusals;
        EXPECT_EQ(output.pixels == before, refusal.status != ofx::ok);
        EXPECT_EQ(books.images + books.memory + books.locks, 0);
    }
    Session session("OfxImageEffectContextTransition");
    EXPECT_EQ(session.describedInContext, ofx::unsupported);
    EXPECT_EQ(session.call(nullptr), ofx::failed);
    EXPECT_EQ(session.call("OfxActionCreateInstance", &session.effect), ofx::replyDefault);
}

TEST(OpenFx, AnswersBeforeAFrameIsRendered) {
    Session session;
    ofx::ClipRecord& source = session.effect.clips["Source"];
    source.region = {-20, 3.5, 1000, 500};
    EXPECT_EQ(session.call("OfxImageEffectActionGetRegionOfDefinition", &session.effect), ofx::ok);
    EXPECT_EQ(session.call("OfxImageEffectActionGetRegionsOfInterest", &session.effect), ofx::ok);
    EXPECT_EQ(session.call("OfxImageEffectActionIsIdentity", &session.effect), ofx::replyDefault);
    session.effect.setValue("softness", {0});
    EXPECT_EQ(session.call("OfxImageEffectActionIsIdentity", &session.effect), ofx::ok);
    EXPECT_EQ(session.outArgs.text(),
              "OfxImageClipPropRoI_Source=-20 3.5 1000 500\n"
              "OfxImageEffectPropRegionOfDefinition=-20 3.5 1000 500\nOfxPropName=Source\n");
    session.effect.setValue("color_key_enable", {1});
    EXPECT_EQ(session.call("OfxImageEffectActionIsIdentity", &session.effect), ofx::replyDefault);

    for (const auto& [components, alpha, answer] :
         {std::tuple{"OfxImageComponentRGBA", "OfxImageOpaque", "OfxImageAlphaUnPremultiplied"},
          {"OfxImageComponentRGBA", premultiplied, premultiplied},
          {"OfxImageComponentRGB", "OfxImageOpaque", ""}}) {
        session.outArgs.values.clear();
        source.properties.values["OfxImageEffectPropComponents"] = {std::string(components)};
        source.properties.values["OfxImageEffectPropPreMultiplication"] = {std::string(alpha)};
        EXPECT_EQ(session.call("OfxImageEffectActionGetClipPreferences", &session.effect),
                  *answer == 0 ? ofx::replyDefault : ofx::ok);
        EXPECT_EQ(session.outArgs.text(),
                  *answer == 0
                      ? ""
                      : "OfxImageEffectPropPreMultiplication=" + std::string(answer) + "\n");
    }
}

TEST(OpenFx, StopsWhenTheHostAborts) {
    Session session;
    Frame source = Draw(depths[1], 4, false), output = Blank(source);
    source.premultiplication = premultiplied;
    books.abort = 1;
    EXPECT_EQ(session.render(source, output, output.bounds), ofx::ok);
    EXPECT_EQ(output.pixels, Blank(source).pixels);
    EXPECT_EQ(books.images + books.memory + books.locks, 0);
}

TEST(OpenFx, NeedsThreeSuites) {
    for (const char* suite : {"OfxPropertySuite", "OfxImageEffectSuite", "OfxParameterSuite"}) {
        Session session;
        session.call("OfxActionUnload");
        EXPECT_EQ(session.call("OfxActionDescribe", &session.effect), ofx::failed);
        books.missingSuite = suite;
        EXPECT_EQ(session.call("OfxActionLoad"), ofx::failed);
        EXPECT_EQ(session.call("OfxActionDescribe", &session.effect), ofx::failed);
        session.plugin->setHost(nullptr);
        EXPECT_EQ(session.call("OfxActionLoad"), ofx::failed);
    }
    for (const char* suite : {"", "OfxMessageSuite"}) {
        Session session;
        session.call("OfxActionUnload");
        books.missingSuite = suite;
        EXPECT_EQ(session.call("OfxActionLoad"), ofx::ok);
        session.inArgs.values["OfxImageEffectPropFieldToRender"] = {std::string("OfxFieldUpper")};
        EXPECT_EQ(session.call("OfxImageEffectActionRender", &session.effect), ofx::unsupported);
        EXPECT_EQ(books.messages.size(), *suite == 0 ? 1U : 0U);
    }
}

/// Everything that a host asks, with the n-th of its own calls failing, until a run needs none.
TEST(OpenFx, GivesEverythingBackToAFailingHost) {
    for (const ofx::Status failure : {ofx::failed, ofx::outOfMemory, ofx::ok}) {
        bool failed = true;
        for (int n = 1; failed; ++n) {
            Session session;
            Frame source = Draw(depths[2], 4, false), output = Blank(source);
            source.premultiplication = premultiplied;
            source.bounds.x1 -= 1, source.bounds.x2 -= 1;  // so that a part is taken
            session.effect.clips["Source"].properties.values = {
                {"OfxImageEffectPropComponents", {std::string("OfxImageComponentRGBA")}},
                {"OfxImageEffectPropPreMultiplication", {std::string(premultiplied)}}};
            books = {.failingCall = n, .failure = failure};
            ofx::EffectRecord descriptor;
            std::vector<ofx::Status> statuses;
            session.inArgs.values["OfxImageEffectPropContext"] = {
                std::string("OfxImageEffectContextFilter")};
            for (const char* action :
                 {"OfxActionDescribe", "OfxImageEffectActionDescribeInContext"})
                statuses.push_back(session.call(action, &descriptor));
            for (const char* action :
                 {"OfxImageEffectActionGetClipPreferences",
                  "OfxImageEffectActionGetRegionOfDefinition",
                  "OfxImageEffectActionGetRegionsOfInterest", "OfxImageEffectActionIsIdentity"})
                statuses.push_back(session.call(action, &session.effect));
            statuses.push_back(session.render(source, output, output.bounds));
            const auto good = std::count_if(statuses.begin(), statuses.end(), [](ofx::Status s) {
                return s == ofx::ok || s == ofx::replyDefault;
            });
            failed = n <= books.calls;
            // A clip without a picture is no failure.
            const bool mayBeBlank = failure == ofx::failed &&
                                    output.pixels == std::vector<std::byte>(output.pixels.size());
            EXPECT_TRUE(failed ? good == 6 || mayBeBlank : good == 7)
                << "call " << n << ": " << failure;
            EXPECT_EQ(books.images + books.memory + books.locks, 0) << "call " << n;
            EXPECT_TRUE(failed || n > 100);
        }
    }
}

}  // namespace
