#include "host_kit/effect.h"

namespace host_kit {

CommandResult Effect::send(PF_Cmd selector) const {
    Command command(host_, selector);
    return command.run(entryPoint_, Command::Params::Withheld, nullptr, nullptr);
}

CommandResult Effect::globalSetup() { return send(PF_Cmd_GLOBAL_SETUP); }

CommandResult Effect::paramsSetup() {
    std::vector<PF_ParamDef> declaration(1);
    declaration.front().param_type = PF_Param_LAYER;
    Command command(host_, PF_Cmd_PARAMS_SETUP);
    command.declaration = &declaration;
    const CommandResult result =
        command.run(entryPoint_, Command::Params::Withheld, nullptr, nullptr);
    declared_.clear();
    if (!result.ok()) return result;
    command.expect(result.out.num_params == static_cast<A_long>(declaration.size()),
                   "wrong num_params");
    declared_ = std::move(declaration);
    return result;
}

}  // namespace host_kit
