// The defaults file's path. Its keys are held where they show: in the controls and after the
// options dialog.
#include "params/defaults_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace {

std::string modulePath;  // what the host tells

PF_Err TellPath(PF_ProgPtr /*effect*/, A_long which, void* data) {
    if (which != PF_PlatData_RES_FILE_PATH) return PF_Err_BAD_CALLBACK_PARAM;
    std::memcpy(data, modulePath.data(), std::min(modulePath.size(), PF_MAX_PATH_LEN));
    return PF_Err_NONE;
}

TEST(DefaultsFile, PathIsTheModulesWithAnotherExtension) {
    PF_UtilCallbacks utils{};
    utils.get_platform_data = TellPath;
    PF_InData in{};
    in.utils = &utils;
    const std::string longest(250, 'x');
    const std::string cases[][2] = {
        {"nevrel.aex", "nevrel.ini"},
        {"./nevrel.v1.so", "./nevrel.v1.ini"},
        {"nevrel", "nevrel.ini"},
        {longest + ".plugin12", longest + ".ini"},
        {longest + "1234567.x", longest + "1234567.i"},  // cut at 259 characters
        {std::string(PF_MAX_PATH_LEN, 'x'),
         std::string(PF_MAX_PATH_LEN - 1, 'x')},  // without an end
    };
    for (const auto& [module, file] : cases) {
        modulePath = module;
        EXPECT_EQ(DefaultsFilePath(&in), FromSystemCodePage(file.c_str())) << module;
    }
}

}  // namespace
