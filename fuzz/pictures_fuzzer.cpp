// Picture files into the command: each comes out smoothed, or not at all with the cause in one
// line.
#include <array>

#include "fuzz/command.h"
#include "fuzz/fuzz_target.h"

namespace {

constexpr std::array<const char*, 6> extensions{".png", ".tif", ".tga", ".bmp", ".exr", ".dpx"};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const CommandBench& bench = CommandBench::get();
    ByteSource bytes(data, size);
    const char* extension = extensions[static_cast<std::size_t>(bytes.below(extensions.size()))];
    const unsigned choice = bytes.byte();
    const bool otherFormat = choice % 4 == 0;
    const std::string input = bench.file(std::string("in") + extension);
    const std::string output =
        bench.file(std::string("out") + (otherFormat ? extensions[choice / 4 % 6] : extension));
    std::vector<std::string> arguments{"smooth", input, "-o", output};
    if ((choice & 16) != 0)
        arguments.insert(arguments.end(), {"--color-key", "#FF0000", "--key-threshold", "9"});
    if ((choice & 32) != 0)
        arguments.insert(arguments.end(), {"--depth", (choice & 64) != 0 ? "16" : "float"});
    WriteText(input, bytes.text());

    const bool succeeded = bench.run(arguments);
    Require(std::filesystem::exists(output) == succeeded, "half a picture");
    Require(bench.clear() == (succeeded ? 2 : 1), "a file is left behind");
    return 0;
}
