// The defaults file, through a host that tells the module's path.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

#include "params/defaults_file.h"
#include "tests/temp_folder.h"

namespace {

std::string modulePath;  // what the host tells
PF_Err pathCode = PF_Err_NONE;

PF_Err TellPath(PF_ProgPtr /*effect*/, A_long which, void* data) {
    if (which != PF_PlatData_RES_FILE_PATH) return PF_Err_BAD_CALLBACK_PARAM;
    std::memcpy(data, modulePath.data(), std::min(modulePath.size(), PF_MAX_PATH_LEN));
    return pathCode;
}

class DefaultsFile : public testing::Test {
  protected:
    DefaultsFile() {
        modulePath = folder_.file("nevrel.aex");
        pathCode = PF_Err_NONE;
        utils_.get_platform_data = TellPath;
        in_.utils = &utils_;
        setHost(PF_AppID_AfterEffects, 13, 0);
    }

    void setHost(A_long applId, A_short major, A_short minor) {
        in_.appl_id = applId;
        in_.version = {major, minor};
    }

    [[nodiscard]] ParamDefaults read() const {
        ParamDefaults defaults = builtInDefaults;
        ReadParamDefaults(defaults, &in_);
        return defaults;
    }

    TempFolder folder_;
    std::string ini_ = folder_.file("nevrel.ini");
    PF_UtilCallbacks utils_{};
    PF_InData in_{};
};

TEST_F(DefaultsFile, PathIsTheModulesWithAnotherExtension) {
    const std::string longest(250, 'x');
    const std::string cases[][2] = {
        {"C:\\Plug-ins\\nevrel.aex", "C:\\Plug-ins\\nevrel.ini"},
        {"/a.b/nevrel.v1.so", "/a.b/nevrel.v1.ini"},
        {"nevrel", "nevrel.ini"},
        {"", ""},
        {longest + ".plugin12", longest + ".ini"},
        {longest + "1234567.x", longest + "1234567.i"},  // cut at 259 characters
        {std::string(PF_MAX_PATH_LEN, 'x'),
         std::string(PF_MAX_PATH_LEN - 1, 'x')},  // without an end
    };
    for (const auto& [module, file] : cases) {
        modulePath = module;
        EXPECT_EQ(DefaultsFilePath(&in_), file) << module;
    }
    modulePath = "C:\\nevrel.aex";
    pathCode = PF_Err_OUT_OF_MEMORY;
    EXPECT_EQ(DefaultsFilePath(&in_), "");
}

TEST_F(DefaultsFile, EveryKeyIsWrittenEachTime) {
    constexpr A_long most = std::numeric_limits<A_long>::max();
    constexpr A_long least = std::numeric_limits<A_long>::min();
    const ParamDefaults values{{300, -1, most, least, 5, 6, 7, 8, 9}, 2};
    WriteParamDefaults(values, &in_);
    EXPECT_EQ(read(), values);
    const std::string text = ReadText(ini_);
    for (const char* line :
         {"[defaults]", "ColorThreshold=300", "Softness=-1", "Bias=2147483647",
          "ColorkeyEnable=-2147483648", "KeycolorR=5", "KeycolorG=6", "KeycolorB=7",
          "ColorkeyThreshold=8", "ColorkeyInvert=9", "[ui]", "ColorkeyGroup=2"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line;
    }
    WriteParamDefaults(builtInDefaults, &in_);
    EXPECT_EQ(read(), builtInDefaults);
}

TEST_F(DefaultsFile, OldAfterEffectsReadsAndWritesTheLayoutAlone) {
    setHost(PF_AppID_AfterEffects, 12, 11);
    WriteText(ini_, "[defaults]\nBias=3\n[ui]\nColorkeyGroup=0\n");
    EXPECT_EQ(read(), (ParamDefaults{{10, 70, 0, 0, 255, 255, 255, 0, 0}, 0}));
    WriteParamDefaults({{1, 2, 4, 4, 5, 6, 7, 8, 9}, 1}, &in_);
    EXPECT_EQ(read(), builtInDefaults);
    setHost(PF_AppID_AfterEffects, 12, 12);
    EXPECT_EQ(read(), (ParamDefaults{{10, 70, 3, 0, 255, 255, 255, 0, 0}, 1}));
}

TEST_F(DefaultsFile, WithoutAPathNothingIsReadOrWritten) {
    WriteText(ini_, "[defaults]\nBias=3\n");
    pathCode = PF_Err_BAD_CALLBACK_PARAM;
    EXPECT_EQ(read(), builtInDefaults);
    WriteParamDefaults({}, &in_);
    EXPECT_EQ(ReadText(ini_), "[defaults]\nBias=3\n");
}

}  // namespace
