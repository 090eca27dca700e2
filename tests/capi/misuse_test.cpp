// What is asked wrongly comes back as a status with nothing written; and what a call uses of its
// caller.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <vector>

#include "fronts/control_fields.h"
#include "tests/capi/caller.h"

namespace {

constexpr int width = 60, height = 200;

/// A call that is right, in ARGB, to be spoilt.
struct Call {
    std::vector<std::uint8_t> memory = std::vector<std::uint8_t>(width * height * 16 + 16, 7);
    std::array<nevrel_settings, 2> settings{};  // the second for fields of a later version
    nevrel_order order = NEVREL_ARGB;
    nevrel_sample sample = NEVREL_UINT8;
    int32_t w = width, h = height;
    nevrel_image in{memory.data(), width * 4};
    nevrel_image out{memory.data() + width * height * 8, width * 4};
    const nevrel_image *input = &in, *output = &out;
    nevrel_callbacks callbacks;

    explicit Call(const nevrel_callbacks& theCallbacks = {}) : callbacks(theCallbacks) {
        nevrel_settings_init(settings.data(), sizeof(nevrel_settings));
        for (int i = 0; i < width * height * 4; ++i) {
            const int x = i / 4 % width, y = i / 4 / width;
            memory[static_cast<std::size_t>(i)] = (x + y / 3) % 9 < 4 ? 255 : 1;
        }
    }
    Call(const Call&) = delete;

    Call& halfAsWide(nevrel_sample ofSamples = NEVREL_UINT8) {
        w /= 2;
        sample = ofSamples;
        return *this;
    }
    /// The fields that a later version has behind the present ones.
    nevrel_settings& laterFields() {
        settings[0].size *= 2;
        return settings[1];
    }
    /// The output begins so many bytes behind the input's first.
    void placeOutput(std::ptrdiff_t bytes, std::ptrdiff_t rowBytes = width * 4) {
        out = {static_cast<std::uint8_t*>(in.pixels) + bytes, rowBytes};
    }

    nevrel_status run() {
        return nevrel_smooth(settings.data(), order, sample, w, h, input, output, &callbacks);
    }
};

struct Misuse {
    nevrel_status status;
    void (*spoil)(Call& c);
};

constexpr std::ptrdiff_t farthest = PTRDIFF_MAX / 64 * 64;

constexpr Misuse misuses[] = {
    {NEVREL_OK, [](Call&) {}},
    {NEVREL_BAD_ARGUMENT, [](Call& c) { c.input = nullptr; }},
    {NEVREL_BAD_ARGUMENT, [](Call& c) { c.output = nullptr; }},
    {NEVREL_BAD_ARGUMENT, [](Call& c) { c.in.pixels = nullptr; }},
    {NEVREL_BAD_ARGUMENT, [](Call& c) { c.out.pixels = nullptr; }},
    {NEVREL_BAD_ARGUMENT, [](Call& c) { c.order = static_cast<nevrel_order>(5); }},
    {NEVREL_BAD_ARGUMENT, [](Call& c) { c.sample = static_cast<nevrel_sample>(-1); }},
    {NEVREL_BAD_ARGUMENT, [](Call& c) { c.settings[0].size -= 4; }},
    {NEVREL_BAD_ARGUMENT, [](Call& c) { c.settings[0].size = UINT32_MAX; }},
    {NEVREL_OK, [](Call& c) { c.laterFields(); }},
    {NEVREL_BAD_ARGUMENT, [](Call& c) { c.laterFields().key_invert = 1; }},
    {NEVREL_BAD_ARGUMENT,
     [](Call& c) {
         c.order = NEVREL_RGB;
         c.settings[0].color_key_enable = 1;
     }},
    {NEVREL_BAD_ARGUMENT, [](Call& c) { c.callbacks.allocate = Caller().callbacks().allocate; }},
    {NEVREL_BAD_ARGUMENT, [](Call& c) { c.callbacks.release = [](void*, void*) {}; }},
    {NEVREL_BAD_SIZE, [](Call& c) { c.w = 0; }},
    {NEVREL_BAD_SIZE, [](Call& c) { c.h = NEVREL_LARGEST_SIDE + 1; }},
    {NEVREL_BAD_SIZE, [](Call& c) { c.in.row_bytes = PTRDIFF_MIN; }},
    {NEVREL_BAD_SIZE, [](Call& c) { c.out.row_bytes = -(farthest / 256); }},
    {NEVREL_BAD_STRIDE, [](Call& c) { c.in.row_bytes = width * 4 - 1; }},
    {NEVREL_BAD_STRIDE, [](Call& c) { c.in.row_bytes = 4 - width * 4; }},
    {NEVREL_BAD_STRIDE, [](Call& c) { c.halfAsWide(NEVREL_UINT16).in.row_bytes += 1; }},
    {NEVREL_BAD_STRIDE,
     [](Call& c) { c.halfAsWide(NEVREL_HALF).placeOutput(width * height * 8 + 1); }},
    {NEVREL_OVERLAP, [](Call& c) { c.placeOutput(width * 4); }},
    {NEVREL_OVERLAP, [](Call& c) { c.placeOutput(0, width * 8); }},
    {NEVREL_OVERLAP, [](Call& c) { c.placeOutput((height - 1) * width * 4, -width * 4); }},
    {NEVREL_OVERLAP, [](Call& c) { c.halfAsWide().placeOutput((width / 2 - 1) * 4); }},
    {NEVREL_OVERLAP, [](Call& c) { c.halfAsWide().placeOutput(3 * width * 4 - 4); }},
    {NEVREL_OK, [](Call& c) { c.halfAsWide().placeOutput(width / 2 * 4); }},
    {NEVREL_OK,
     [](Call& c) {  // of one row
         c.h = 1;
         c.in.row_bytes = PTRDIFF_MIN;
     }},
};

TEST(Misuse, ComesBackAsAStatusWithNothingWritten) {
    for (const Misuse& misuse : misuses) {
        SCOPED_TRACE(&misuse - misuses);
        Call call;
        misuse.spoil(call);
        const auto before = call.memory;
        EXPECT_EQ(call.run(), misuse.status);
        EXPECT_EQ(call.memory != before, misuse.status == NEVREL_OK);
    }
    const char* unknown = nevrel_status_text(static_cast<nevrel_status>(-1));
    for (int status = NEVREL_OK; status <= NEVREL_CANCELLED; ++status)
        EXPECT_STRNE(nevrel_status_text(static_cast<nevrel_status>(status)), unknown);
}

TEST(Callbacks, GiveMemoryTellTheProgressAndCancel) {
    Call plain;
    ASSERT_EQ(plain.run(), NEVREL_OK);
    Caller watcher;
    Call watched(watcher.callbacks());
    ASSERT_EQ(watched.run(), NEVREL_OK);
    EXPECT_EQ(watched.memory, plain.memory);
    ASSERT_GT(watcher.rowsDone.size(), 3U);
    EXPECT_EQ(watcher.rowsDone.front(), 0);
    EXPECT_LT(watcher.rowsDone.back(), height);
    EXPECT_EQ(watcher.rowsInAll, std::vector(watcher.rowsDone.size(), height));
    EXPECT_TRUE(std::ranges::is_sorted(watcher.rowsDone, std::less_equal()));
    EXPECT_EQ(watcher.allocations, 1);
    EXPECT_EQ(watcher.held, 0);

    for (std::size_t at = 0; at < watcher.rowsDone.size(); ++at) {
        Caller caller{.cancelAt = at};
        EXPECT_EQ(Call(caller.callbacks()).run(), NEVREL_CANCELLED);
        EXPECT_EQ(caller.rowsDone.size(), at + 1);
        EXPECT_EQ(caller.held, 0);
    }
    Caller poor{.givesMemory = false};
    Call call(poor.callbacks());
    EXPECT_EQ(call.run(), NEVREL_OUT_OF_MEMORY);
    EXPECT_EQ(call.memory, Call().memory);
    EXPECT_EQ(poor.held, 0) << "released what was never given";
}

/// The controls as the effect has them.
struct ExpectedControl {
    const char* name;
    nevrel_control_kind kind;
    std::int32_t minimum, maximum, value;
    std::int32_t nevrel_settings::*field;
    std::int32_t inKeyGroup;
};
constexpr ExpectedControl expectedControls[] = {
    {"color threshold", NEVREL_SLIDER, 1, 255, 10, &nevrel_settings::color_threshold, 0},
    {"softness", NEVREL_SLIDER, 0, 100, 70, &nevrel_settings::softness, 0},
    {"bias", NEVREL_SLIDER, 0, 100, 0, &nevrel_settings::bias, 0},
    {"color key enable", NEVREL_CHECKBOX, 0, 1, 0, &nevrel_settings::color_key_enable, 1},
    {"key color", NEVREL_COLOR, 0, 255, 255, &nevrel_settings::key_red, 1},
    {"key color threshold", NEVREL_SLIDER, 0, 255, 0, &nevrel_settings::key_threshold, 1},
    {"invert", NEVREL_CHECKBOX, 0, 1, 0, &nevrel_settings::key_invert, 1},
};

TEST(Controls, AreTheEffectsAndGuardTheirRanges) {
    ASSERT_EQ(nevrel_control_count(), std::size(expectedControls));
    EXPECT_EQ(nevrel_control_at(nevrel_control_count()), nullptr);
    std::array<nevrel_settings, 2> settings;
    std::memset(settings.data(), 0x55, sizeof settings);
    EXPECT_EQ(nevrel_settings_init(nullptr, sizeof(nevrel_settings)), NEVREL_BAD_ARGUMENT);
    EXPECT_EQ(nevrel_settings_init(settings.data(), sizeof(nevrel_settings) - 1),
              NEVREL_BAD_ARGUMENT);
    EXPECT_EQ(settings[0].size, 0x55555555U);
    ASSERT_EQ(nevrel_settings_init(settings.data(), sizeof settings), NEVREL_OK);
    EXPECT_EQ(settings[0].size, sizeof settings);
    EXPECT_EQ(settings[1].size, 0U);
    for (std::size_t i = 0; i < std::size(expectedControls); ++i) {
        const nevrel_control& control = *nevrel_control_at(i);
        const ExpectedControl& expected = expectedControls[i];
        SCOPED_TRACE(expected.name);
        EXPECT_STREQ(control.name, expected.name);
        EXPECT_EQ(control.kind, expected.kind);
        EXPECT_EQ(control.in_key_group, expected.inKeyGroup);
        const int count = control.kind == NEVREL_COLOR ? 3 : 1;
        for (int field = 0; field < count; ++field) {
            EXPECT_EQ((&(settings[0].*expected.field))[field], expected.value);
            EXPECT_EQ(control.default_value[field], expected.value);
            for (const auto& [value, status] : {std::pair{expected.minimum, NEVREL_OK},
                                                {expected.maximum, NEVREL_OK},
                                                {expected.minimum - 1, NEVREL_BAD_SETTING},
                                                {expected.maximum + 1, NEVREL_BAD_SETTING}}) {
                Call call;
                std::int32_t* fields = FieldsOf(control, call.settings[0]);
                EXPECT_EQ(fields, &(call.settings[0].*expected.field));
                fields[field] = value;
                EXPECT_EQ(call.run(), status) << value;
            }
        }
    }
}

}  // namespace
