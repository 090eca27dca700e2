#include "host_kit/module.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace host_kit {
namespace {

std::string LoadError(const std::filesystem::path& path) {
    try {
        const Module module(path);
        return "loaded";
    } catch (const ModuleError& error) {
        return error.what();
    }
}

TEST(ModuleTest, NamesTheFileAndTheReasonInOneLine) {
    const std::string text =
        "test_modules/text" + std::filesystem::path(NOT_AN_EFFECT).extension().string();
    std::ofstream(text) << "not a module at all";
    EXPECT_EQ(LoadError("no/such.module"), "no/such.module: no such module");
    EXPECT_EQ(LoadError("test_modules"), "test_modules: is a folder, not a module");
    EXPECT_EQ(LoadError(NOT_AN_EFFECT),
              std::string(NOT_AN_EFFECT) + ": is no effect module: it exports no EntryPointFunc");
    const std::string error = LoadError(text);
    EXPECT_EQ(error.find(text + ": "), 0U) << error;
    EXPECT_EQ(error.find('\n'), std::string::npos) << error;
}

}  // namespace
}  // namespace host_kit
