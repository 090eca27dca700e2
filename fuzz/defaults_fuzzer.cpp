// Reading and writing the defaults in a file that holds anything.
#include <algorithm>

#include "fuzz/fuzz_target.h"
#include "params/defaults_file.h"
#include "tests/temp_folder.h"

namespace {

const TempFolder& Folder() {
    static const TempFolder folder;
    return folder;
}

PF_Err TellPath(PF_ProgPtr /*effect*/, A_long /*which*/, void* data) {
    const std::string path = Folder().file("nevrel.so");
    std::memcpy(data, path.c_str(), path.size() + 1);
    return PF_Err_NONE;
}

ParamDefaults Read(const PF_InData& in) {
    ParamDefaults defaults = builtInDefaults;
    ReadParamDefaults(defaults, &in);
    return defaults;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    PF_UtilCallbacks utils{};
    utils.get_platform_data = TellPath;
    PF_InData in{};
    in.utils = &utils;
    in.appl_id = PF_AppID_AfterEffects;
    in.version = {13, 0};

    ByteSource bytes(data, size);
    const bool writes = bytes.below(8) == 0;  // which takes long
    ParamDefaults wanted{{}, bytes.mostlySmall()};
    for (auto field :
         {&EffectValues::colorThreshold, &EffectValues::bias, &EffectValues::keyInvert})
        wanted.*field = bytes.mostlySmall();
    const std::string file = Folder().file("nevrel.ini");
    WriteText(file, bytes.text());

    const ParamDefaults found = Read(in);
    Require(Read(in) == found, "reading changes the file");
    if (!writes) return 0;
    WriteParamDefaults(wanted, &in);
    Require(Read(in) == wanted, "what was written is not what is read");
    const std::string text = ReadText(file);
    WriteParamDefaults(wanted, &in);
    Require(ReadText(file) == text, "writing the same again changes the file");
    WriteParamDefaults(found, &in);
    Require(Read(in) == found, "the first values do not come back");
    return 0;
}
