#include "command/describe_module.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "command/controls.h"
#include "command/session.h"
#include "host_kit/module.h"

namespace nevrel {
namespace {

std::string Color(PF_Pixel pixel) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", pixel.red, pixel.green, pixel.blue);
    return text.data();
}

struct Row {
    std::string kind, range, value;
};

Row Describe(const PF_ParamDef& def) {
    switch (def.param_type) {
        case PF_Param_LAYER:
            return {"layer", "", ""};
        case PF_Param_SLIDER:
            return {
                "slider",
                std::to_string(def.u.sd.valid_min) + " to " + std::to_string(def.u.sd.valid_max),
                std::to_string(def.u.sd.dephault)};
        case PF_Param_CHECKBOX:
            return {"checkbox", "off, on", def.u.bd.dephault != 0 ? "on" : "off"};
        case PF_Param_COLOR:
            return {"color", "", Color(def.u.cd.dephault)};
        case PF_Param_GROUP_START:
            return {"group start", "", ""};
        case PF_Param_GROUP_END:
            return {"group end", "", ""};
        default:
            return {"kind " + std::to_string(def.param_type), "", ""};
    }
}

std::string Line(const std::string& place, const std::string& id, const std::string& name,
                 const Row& row, const std::string& option) {
    std::array<char, 160> text{};
    std::snprintf(text.data(), text.size(), "%5s  %4s  %-11s  %-19.31s  %-8s  %-7s  %s",
                  place.c_str(), id.c_str(), row.kind.c_str(), name.c_str(), row.range.c_str(),
                  row.value.c_str(), option.c_str());
    std::string line = text.data();
    line.erase(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

}  // namespace

std::string AboutText(const host_kit::Effect& effect) {
    const host_kit::CommandResult result = effect.about();
    if (!result.ok()) throw host_kit::ModuleError("about " + FailureText(result));
    std::string text = result.out.return_msg;
    std::replace(text.begin(), text.end(), '\r', '\n');
    return text + "\n";
}

std::string ParamsText(const host_kit::Effect& effect) {
    std::string text = Line("index", "id", "name", {"kind", "range", "default"}, "option");
    bool grouped = false;
    for (std::size_t i = 0; i < effect.declared().size(); ++i) {
        const PF_ParamDef& def = effect.declared()[i];
        grouped = grouped || def.param_type == PF_Param_GROUP_START;
        const std::string name = i == 0                                 ? "input layer"
                                 : def.param_type == PF_Param_GROUP_END ? ""
                                                                        : def.name;
        text += Line(std::to_string(i), i == 0 ? "" : std::to_string(def.uu.id), name,
                     Describe(def), i == 0 ? "" : OptionOf(def.uu.id));
    }
    return text + "layout: " +
           (grouped ? "color key controls in a group\n" : "color key controls without a group\n");
}

}  // namespace nevrel
