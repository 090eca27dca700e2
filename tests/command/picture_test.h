// Tests of the command on pictures that they write and read themselves.
#pragma once

#include <string>

#include "tests/command/command_runner.h"
#include "tests/command/picture_files.h"

/// Writes pictures into a folder of the test's own, and reads what the command makes of them.
class PictureTest : public CommandTest {
  protected:
    void write(const std::string& name, const TestPicture& picture) const {
        WriteTestPictures(path(name), {picture});
    }
    [[nodiscard]] TestPicture read(const std::string& name, int part = 0) const {
        return ReadTestPicture(path(name), part);
    }
    /// What the command makes of the file.
    [[nodiscard]] TestPicture smoothed(const std::string& name,
                                       const std::string& options = "") const {
        const CommandRun result = smooth(name, options);
        EXPECT_EQ(result.status, 0) << name << result.errors;
        return result.status == 0 ? read("out_" + name) : TestPicture{};
    }
};
