// The options of the command: any order and number of its words, right and wrong values, and
// anything in between.
#include <iostream>
#include <iterator>
#include <sstream>

#include "fuzz/command.h"
#include "fuzz/fuzz_target.h"

namespace {

const std::vector<std::string>& Words() {
    static std::istringstream text(
        "smooth about params options in.bmp -o out.bmp out.png --output --module -L JP --layer "
        "--depth "
        "--color-threshold --softness --bias --color-key --invert 8 16 float --key-threshold "
        "--no-color-key "
        "--help --no-invert 0 100 #00Ff00 -1 4294967297 out.gif --jobs --format folder. png");
    static const std::vector<std::string> words(std::istream_iterator<std::string>(text), {});
    return words;
}

/// A picture of one grey pixel.
constexpr char bitmap[] =
    "BM\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0\0\0\0\0\4\0\0\0\0\0\0\0\0\0"
    "\0\0\0\0\0"
    "\0\0\0\0\0"
    "\x80\x80\x80";

std::string ReadArgument(ByteSource& bytes) {
    const std::size_t choice = bytes.byte();
    std::string word = choice < Words().size() ? Words()[choice] : bytes.text(choice % 16);
    std::erase(word, '/');
    std::erase(word, '\0');
    if (word == "." || word == "..") word += 'x';  // files stay in the bench's folder
    if (word == "folder.") return CommandBench::get().file("folder/");
    return word.find('.') == std::string::npos ? word : CommandBench::get().file(word);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const CommandBench& bench = CommandBench::get();
    WriteText(bench.file("in.bmp"), std::string(bitmap, sizeof bitmap));
    ByteSource bytes(data, size);
    std::vector<std::string> arguments;
    for (int count = bytes.below(12); count > 0; --count) arguments.push_back(ReadArgument(bytes));
    std::istringstream keyboard(bytes.text(40));  // for the dialog of `options`
    std::streambuf* stdIn = std::cin.rdbuf(keyboard.rdbuf());
    std::cin.clear();
    bench.run(arguments);
    std::cin.rdbuf(stdIn);
    bench.clear();
    return 0;
}
