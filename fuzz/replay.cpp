// Runs a fuzz target on the files of the folders given, without a fuzzer: the seeds as a test.
#include <algorithm>
#include <filesystem>
#include <vector>

#include "fuzz/fuzz_target.h"
#include "tests/temp_folder.h"

int main(int argc, char** argv) {
    std::vector<std::filesystem::path> inputs;
    for (int i = 1; i < argc; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(argv[i]))
            inputs.push_back(entry.path());
    }
    std::sort(inputs.begin(), inputs.end());
    Require(!inputs.empty(), "there are no inputs to replay");
    for (const std::filesystem::path& input : inputs) {
        std::printf("%s\n", input.c_str());
        std::fflush(stdout);
        const std::string bytes = ReadText(input.string());
        // In memory of its own, so that a read behind its end is noticed.
        const std::vector<std::uint8_t> copy(bytes.begin(), bytes.end());
        LLVMFuzzerTestOneInput(copy.data(), copy.size());
    }
    std::printf("%zu inputs\n", inputs.size());
}
