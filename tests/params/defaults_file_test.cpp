// The defaults file, through a host that tells the module's path. Its keys are held where they
// show: in the controls and after the options dialog.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
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
        in_.appl_id = PF_AppID_AfterEffects;
        in_.version = {13, 0};
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
        {modulePath, ini_},
        {folder_.file("nevrel.v1.so"), folder_.file("nevrel.v1.ini")},
        {"nevrel", "nevrel.ini"},
        {longest + ".plugin12", longest + ".ini"},
        {longest + "1234567.x", longest + "1234567.i"},  // cut at 259 characters
        {std::string(PF_MAX_PATH_LEN, 'x'),
         std::string(PF_MAX_PATH_LEN - 1, 'x')},  // without an end
    };
    for (const auto& [module, file] : cases) {
        modulePath = module;
        EXPECT_EQ(DefaultsFilePath(&in_), FromSystemCodePage(file.c_str())) << module;
    }
}

/// As from a host whose code page cannot hold the folder's name, or which does not tell.
TEST_F(DefaultsFile, PathThatLeadsNowhereIsTheSystems) {
    for (const PF_Err code : {PF_Err_NONE, PF_Err_OUT_OF_MEMORY}) {
        pathCode = code;
        for (const std::string& path :
             {std::string(), folder_.file("missing/nevrel.aex"), folder_.file("?/nevrel.aex"),
              folder_.file("nevrel?.aex")}) {
            modulePath = path;
            const std::filesystem::path file = DefaultsFilePath(&in_);
            EXPECT_FALSE(file.empty()) << path;
            EXPECT_EQ(file.string().find(folder_.path().string()), std::string::npos) << path;
        }
    }
}

}  // namespace
