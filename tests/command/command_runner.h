// Runs the command `nevrel` as a user does.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "tests/temp_folder.h"

struct CommandRun {
    int status = -1;
    std::string output, errors;
};

/// One line that starts with the program's name and holds every one of `words`.
inline void ExpectError(const CommandRun& run, int status, const std::vector<std::string>& words) {
    EXPECT_EQ(run.status, status) << run.errors;
    EXPECT_EQ(run.errors.find("nevrel: "), 0U) << run.errors;
    EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
    for (const std::string& word : words)
        EXPECT_NE(run.errors.find(word), std::string::npos) << run.errors;
}

/// A fresh folder for each test, in which the command runs.
class CommandTest : public testing::Test {
  protected:
    CommandTest() {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        folder = std::filesystem::absolute(std::filesystem::path("command_files") / test->name());
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder / "logs");
    }

    /// `arguments` are shell text.
    [[nodiscard]] CommandRun run(const std::string& arguments,
                                 const std::string& before = "") const {
        const std::string line = "cd '" + folder.string() + "' && " + before +
                                 " >logs/output 2>logs/errors '" +
                                 std::filesystem::absolute("nevrel").string() + "' " + arguments;
        const int status = std::system(line.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadText(path("logs/output")),
                ReadText(path("logs/errors"))};
    }

    /// `nevrel smooth INPUT -o out_INPUT`, with options before them.
    [[nodiscard]] CommandRun smooth(const std::string& input,
                                    const std::string& options = "") const {
        return run("smooth " + options + " -o 'out_" + input + "' '" + input + "'");
    }

    [[nodiscard]] std::string path(const std::string& name) const {
        return (folder / name).string();
    }

    /// What lies in the folder, or in a folder there, beside the logs.
    [[nodiscard]] std::vector<std::string> files(const std::string& within = "") const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder / within)) {
            if (entry.path().filename() != "logs")
                names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    std::filesystem::path folder;
};
