// Runs the command `nevrel` as a user does.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>

struct CommandRun {
    int status = -1;
    std::string output, errors;
};

inline std::string FileText(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
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
    [[nodiscard]] CommandRun run(const std::string& arguments, const std::string& before = "") const {
        const std::string line = "cd '" + folder.string() + "' && " + before + " '" +
                                 std::filesystem::absolute("nevrel").string() + "' " + arguments +
                                 " >logs/output 2>logs/errors";
        const int status = std::system(line.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, FileText(folder / "logs/output"),
                FileText(folder / "logs/errors")};
    }

    /// `nevrel smooth INPUT -o out_INPUT`, with options before them.
    [[nodiscard]] CommandRun smooth(const std::string& input, const std::string& options = "") const {
        return run(std::string("smooth ")
                       .append(options)
                       .append(" -o out_")
                       .append(input)
                       .append(" ")
                       .append(input));
    }

    [[nodiscard]] std::string path(const std::string& name) const { return (folder / name).string(); }

    /// What lies in the folder beside the logs.
    [[nodiscard]] std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().filename() != "logs") names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    std::filesystem::path folder;
};
