// Runs the command `nevrel` as a user does.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "tests/temp_folder.h"

struct CommandRun {
    int status = -1;
    std::string output, errors;
};

inline void ExpectWords(const std::string& text, const std::vector<std::string>& words) {
    for (const std::string& word : words)
        EXPECT_NE(text.find(word), std::string::npos) << word << " is not in " << text;
}

/// One line that starts with the program's name and holds every one of `words`.
inline void ExpectError(const CommandRun& run, int status, const std::vector<std::string>& words) {
    EXPECT_EQ(run.status, status) << run.errors;
    EXPECT_TRUE(run.errors.starts_with("nevrel: ")) << run.errors;
    EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
    ExpectWords(run.errors, words);
}

/// A fresh folder for each test, in which the command runs.
class CommandTest : public testing::Test {
  protected:
    CommandTest() { std::filesystem::create_directory(folder); }

    /// `arguments` are shell text.
    [[nodiscard]] CommandRun run(const std::string& arguments,
                                 const std::string& before = "") const {
        const std::string line = "cd '" + folder.string() + "' && " + before +
                                 " >../output 2>../errors '" +
                                 std::filesystem::absolute("nevrel").string() + "' " + arguments;
        const int status = std::system(line.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadText(path("../output")),
                ReadText(path("../errors"))};
    }

    /// `nevrel smooth INPUT -o out_INPUT`, with options before them.
    [[nodiscard]] CommandRun smooth(const std::string& input,
                                    const std::string& options = "") const {
        return run("smooth " + options + " -o 'out_" + input + "' '" + input + "'");
    }

    [[nodiscard]] std::string path(const std::string& name) const {
        return (folder / name).string();
    }

    /// What lies in the folder, or in a folder there.
    [[nodiscard]] std::vector<std::string> files(const std::string& within = "") const {
        return NamesIn(folder / within);
    }

    TempFolder around;
    std::filesystem::path folder = around.path() / "files";
};
