// The language option on any command line.
#include <algorithm>
#include <vector>

#include "fuzz/fuzz_target.h"
#include "params/ui_language.h"

namespace {

A_long Parse(const std::string& line) {
    const std::vector<char> exact(line.c_str(), line.c_str() + line.size() + 1);
    return ParseLanguageOption(exact.data());
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string line = ByteSource(data, size).text(100);
    line.resize(std::min(line.find('\0'), line.size()));
    const A_long code = Parse(line);

    std::string upper = line;
    for (char& c : upper) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    Require(Parse(upper) == code, "the case of a letter counts");

    // The line may end inside a quoted stretch.
    Require(Parse(line + " x -L JP") == languageJapanese ||
                Parse(line + "\" x -L JP") == languageJapanese,
            "the last option does not count");
    const bool quotable = line.find('"') == std::string::npos;
    Require(!quotable || Parse('"' + line) == 0, "an option in quotes counts");
    return 0;
}
