#include "command/manual.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <vector>

#include "command/errors.h"

namespace nevrel {
namespace {

std::vector<const CLI::App*> Subcommands(const CLI::App& app) {
    return app.get_subcommands(
        [](const CLI::App* command) { return !command->get_group().empty(); });
}

std::vector<const CLI::Option*> Options(const CLI::App& app) {
    return app.get_options([](const CLI::Option* option) { return option->nonpositional(); });
}

/// Text as roff takes it: hyphens are to be copied, and no line begins a request.
std::string Roff(std::string_view text) {
    std::string roff;
    for (const char c : text) {
        const bool beginsLine = roff.empty() || roff.back() == '\n';
        if (beginsLine && (c == '.' || c == '\'')) roff += "\\&";
        if (c == '-' || c == '\\') roff += '\\';
        roff += c == '\\' ? 'e' : c;
    }
    return roff;
}

/// What follows the command's options on its line.
std::vector<const CLI::Option*> Positionals(const CLI::App& app) {
    return app.get_options([](const CLI::Option* option) { return !option->nonpositional(); });
}

/// The values that an option's type lists, as in "error|skip", with blanks between them; none where
/// it lists none.
std::string Choices(const CLI::Option& option) {
    std::string choices = option.get_type_name();
    if (choices.find('|') == std::string::npos) return "";
    std::replace(choices.begin(), choices.end(), '|', ' ');
    return choices;
}

std::string OptionItem(const CLI::Option& option) {
    std::string item = ".TP\n";
    if (option.nonpositional()) item += ".B " + Roff(option.get_name(false, true)) + " ";
    if (option.get_items_expected_max() > 0) item += "\\fI" + Roff(option.get_type_name()) + "\\fR";
    return item + "\n" + Roff(option.get_description()) + "\n";
}

std::string SynopsisLine(const CLI::App& command) {
    std::string line = ".B nevrel " + Roff(command.get_name()) + "\n";
    for (const CLI::Option* option : Positionals(command))
        line += "\\fI" + Roff(option->get_type_name()) + "\\fR\n";
    if (Options(command).size() > 1) line += "[\\fIoptions\\fR]\n";  // not just for help
    return line + ".br\n";
}

std::string OptionItems(const CLI::App& app) {
    std::string text, group;
    for (const CLI::Option* option : Positionals(app)) text += OptionItem(*option);
    for (const CLI::Option* option : Options(app)) {
        if (option->get_group() != group && option->get_group() != "Options")
            text += ".SS " + option->get_group() + "\n";
        group = option->get_group();
        text += OptionItem(*option);
    }
    return text;
}

/// The options that begin with a hyphen, as they are typed.
std::string Words(const CLI::App& app) {
    std::string words;
    for (const CLI::Option* option : Options(app)) {
        for (const std::string& name : option->get_snames()) words += "-" + name + " ";
        for (const std::string& name : option->get_lnames()) words += "--" + name + " ";
    }
    return words;
}

std::string BashScript(const CLI::App& app) {
    std::string names, cases;
    std::map<std::string, std::string> choices;  // by the word before
    for (const CLI::App* command : Subcommands(app)) {
        for (const CLI::Option* option : Options(*command))
            choices.emplace(option->get_name(), Choices(*option));
        for (const CLI::Option* option : Positionals(*command))
            choices.emplace(command->get_name(), Choices(*option));
        names += command->get_name() + " ";
        cases += "        " + command->get_name() + ") words=\"" + Words(*command) + Words(app) +
                 "\" ;;\n";
    }
    std::string values;
    for (const auto& [before, list] : choices) {
        if (list.empty()) continue;
        values.append("        ").append(before).append(") values=\"").append(list);
        values.append("\" ;;\n");
    }
    return "# Completes the words of nevrel in bash.\n"
           "_nevrel() {\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} words values=\n"
           "    case ${COMP_WORDS[1]} in\n" +
           cases + "        *) words=\"" + names + Words(app) +
           "\" ;;\n"
           "    esac\n"
           "    case ${COMP_WORDS[COMP_CWORD - 1]} in\n" +
           values +
           "    esac\n"
           "    COMPREPLY=()\n"
           "    if [[ $values || $word == -* || $COMP_CWORD -eq 1 ]]; then\n"
           "        mapfile -t COMPREPLY < <(compgen -W \"${values:-$words}\" -- \"$word\")\n"
           "    fi\n"
           "}\n"
           "complete -o default -F _nevrel nevrel\n";
}

/// A description within an item of zsh's _arguments.
std::string ZshText(std::string_view text) {
    std::string quoted;
    for (const char c : text) {
        if (c == '[' || c == ']' || c == ':') quoted += '\\';
        if (c == '\'') quoted += "'\\'";
        quoted += c;
    }
    return quoted;
}

/// What zsh offers for an option's value.
std::string ZshArgument(const CLI::Option& option) {
    const std::string& type = option.get_type_name();
    if (option.get_items_expected_max() == 0) return "";
    if (const std::string choices = Choices(option); !choices.empty())
        return ":value:(" + choices + ")";
    const bool isFile = type == "FILE" || type == "MASK" || type == "IN" || type == "OUT";
    return ":" + ZshText(type) + (isFile ? ":_files" : ":");
}

std::string ZshItems(const CLI::App& app) {
    std::string items;
    for (const CLI::Option* option : Options(app)) {
        const std::string argument = ZshArgument(*option);
        const auto item = [&](const std::string& word) {
            items.append("            '").append(word).append("[");
            items.append(ZshText(option->get_description())).append("]");
            items.append(argument).append("' \\\n");
        };
        for (const std::string& name : option->get_snames()) item("-" + name);
        for (const std::string& name : option->get_lnames()) item("--" + name);
    }
    for (const CLI::Option* option : Positionals(app))
        items += "            '*" + ZshArgument(*option) + "' \\\n";
    return items.erase(items.size() - 3);  // nothing goes on after the last one
}

std::string ZshScript(const CLI::App& app) {
    std::string names, cases;
    for (const CLI::App* command : Subcommands(app)) {
        names +=
            "        '" + command->get_name() + ":" + ZshText(command->get_description()) + "'\n";
        cases += "    " + command->get_name() + ")\n        _arguments \\\n" + ZshItems(*command) +
                 " ;;\n";
    }
    return "#compdef nevrel\n"
           "# Completes the words of nevrel in zsh.\n"
           "if (( CURRENT == 2 )); then\n"
           "    local -a commands=(\n" +
           names +
           "    )\n"
           "    _describe command commands\n"
           "    return\n"
           "fi\n"
           "shift words\n"
           "(( CURRENT-- ))\n"
           "case $words[1] in\n" +
           cases + "esac\n";
}

}  // namespace

std::string ManualPage(const CLI::App& app) {
    std::string text = R"(.TH NEVREL 1 "" ")" + Roff(app.version()) + "\"\n.SH NAME\nnevrel \\- " +
                       Roff(app.get_description()) + "\n.SH SYNOPSIS\n";
    for (const CLI::App* command : Subcommands(app)) text += SynopsisLine(*command);
    text += ".SH OPTIONS\n" + OptionItems(app);
    for (const CLI::App* command : Subcommands(app)) {
        text += ".SH nevrel " + Roff(command->get_name()) + "\n" +
                Roff(command->get_description()) + "\n" + OptionItems(*command);
        if (!command->get_footer().empty())
            text += ".PP\n.nf\n" + Roff(command->get_footer()) + "\n.fi\n";
    }
    return text;
}

std::string CompletionScript(const CLI::App& app, const std::string& shell) {
    if (shell == "bash") return BashScript(app);
    if (shell == "zsh") return ZshScript(app);
    throw UsageError("completion: '" + shell + "' is not bash or zsh");
}

}  // namespace nevrel
