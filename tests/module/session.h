// The module under a host of its own.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "host_kit/books/multi_frame_host.h"
#include "host_kit/frame.h"
#include "host_kit/module.h"
#include "kernel/effect_values.h"
#include "tests/temp_folder.h"

/// The ids of the controls.
enum ControlId : A_long {
    idThreshold = 1,
    idSoftness,
    idKeyEnable,
    idKeyColor,
    idKeyThreshold,
    idKeyInvert,
    idBias
};

/// The build of the module under test: the one that NEVREL_TEST_MODULE names, or the first.
inline std::filesystem::path ModuleFile() {
    const char* file = std::getenv("NEVREL_TEST_MODULE");
    return file == nullptr ? MODULE_FILE : file;
}

/// Whether that is the one for hosts that render several frames at once.
inline bool ForMultiFrame() { return ModuleFile().parent_path().filename() == "mfr"; }

/// Copies it into the folder; returns its path there.
inline std::filesystem::path CopyModule(const std::filesystem::path& folder) {
    std::filesystem::copy_file(ModuleFile(), folder / MODULE_FILE);
    return folder / MODULE_FILE;
}

/// A host with a copy of the module in a folder of its own: its once-only values are fresh and its
/// defaults file is `ini`. Set up and with its parameters declared; every loan has to be back in
/// the end.
class Session {
  public:
    explicit Session(const std::string& ini = {}, const host_kit::HostIdentity& identity = {}) {
        host.identity = identity;
        host.identity.pluginPath = module.path().string();
        host.scratchMemory = {.padding = 12, .misalignment = 4, .guarded = true, .seed = 1};
        host.watchesInputs = true;
        if (!ini.empty()) WriteText(folder.file("nevrel.ini"), ini);
        EXPECT_EQ(effect.globalSetup().error, PF_Err_NONE);
        EXPECT_EQ(effect.paramsSetup().error, PF_Err_NONE);
    }
    ~Session() { EXPECT_EQ(host.accounts.complaints(), ""); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Which parameter, or whatever else a call's number says, in order.
    [[nodiscard]] std::vector<A_long> recordedNumbers(host_kit::HostCall which) const {
        std::vector<A_long> numbers;
        for (const host_kit::HostCallRecord& call : host.calls.recorded())
            if (call.call == which) numbers.push_back(call.number);
        return numbers;
    }

    TempFolder folder;
    host_kit::Module module{CopyModule(folder.path())};
    host_kit::MultiFrameHost host;
    host_kit::Effect effect{host, module.entryPoint()};
};

inline constexpr char flatLayout[] = "[ui]\nColorkeyGroup=0\n";

/// Sets every control; of the key colour's components the low byte counts.
inline void SetControls(host_kit::Instance& instance, const EffectValues& v) {
    instance.setSlider(idThreshold, v.colorThreshold);
    instance.setSlider(idSoftness, v.softness);
    instance.setSlider(idBias, v.bias);
    instance.setCheckbox(idKeyEnable, v.colorKeyEnable != 0);
    instance.setColor(idKeyColor, {99, LowByte(v.keyRed), LowByte(v.keyGreen), LowByte(v.keyBlue)});
    instance.setSlider(idKeyThreshold, v.keyThreshold);
    instance.setCheckbox(idKeyInvert, v.keyInvert != 0);
}

template <typename Pixel, typename Channel>
void DrawSlope(host_kit::World& world, Channel full) {
    for (A_long y = 0; y < world.height(); ++y) {
        for (A_long x = 0; x < world.width(); ++x) {
            const Channel ink = 3 * x < 7 * y ? Channel{} : full;
            world.row<Pixel>(y)[x] = {full, ink, full, ink};
        }
    }
}

/// An image with one hard slanted edge, green on white; between guards, aligned to nothing but the
/// pixel, with a row pitch twice as long as a row, or negative.
class Picture : public host_kit::World {
  public:
    explicit Picture(PF_PixelFormat format, bool bottomUp = false)
        : World(format, defaultWidth, defaultHeight,
                {.padding = (bottomUp ? 3 : defaultWidth) * host_kit::PixelBytes(format),
                 .misalignment = host_kit::PixelBytes(format),
                 .bottomUp = bottomUp,
                 .guarded = true,
                 .seed = 1}) {
        if (format == PF_PixelFormat_ARGB32) DrawSlope<PF_Pixel, A_u_char>(*this, 255);
        if (format == PF_PixelFormat_ARGB64) DrawSlope<PF_Pixel16, A_u_short>(*this, 32768);
        if (format == PF_PixelFormat_ARGB128) DrawSlope<PF_PixelFloat, float>(*this, 1.0F);
    }

    [[nodiscard]] std::vector<char> pixels() const {
        const auto rowSize = std::ptrdiff_t{width()} * host_kit::PixelBytes(format());
        std::vector<char> bytes;
        for (A_long y = 0; y < height(); ++y)
            bytes.insert(bytes.end(), row<char>(y), row<char>(y) + rowSize);
        return bytes;
    }

  private:
    static constexpr A_long defaultWidth = 40, defaultHeight = 12;
};
