#include "Completion.h"

#include <functional>
#include <vector>

namespace Quorvex::Velmora::Tool
{
namespace
{

std::vector<const CLI::App*> commandsOf(const CLI::App& app)
{
    const auto commands = app.get_subcommands([](const CLI::App*) { return true; });
    return {commands.begin(), commands.end()};
}

/// "--json" and "-n", as they are typed.
std::vector<std::string> spellingsOf(const CLI::Option& option)
{
    std::vector<std::string> all;
    for (const std::string& name : option.get_lnames())
        all.push_back("--" + name);
    for (const std::string& name : option.get_snames())
        all.push_back('-' + name);
    return all;
}

bool takesValue(const CLI::Option& option) { return option.get_expected_max() > 0; }

std::string joined(const std::vector<std::string>& words)
{
    std::string all;
    for (const std::string& word : words)
        all += (all.empty() ? "" : " ") + word;
    return all;
}

/// What can be typed after a command: its own commands and options.
std::string wordsAfter(const CLI::App& app)
{
    std::vector<std::string> words;
    for (const CLI::App* command : commandsOf(app))
        words.push_back(command->get_name());
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& spelling : spellingsOf(*option))
            words.push_back(spelling);
    }
    return joined(words);
}

/// Options whose value is the next word, which therefore is no command.
std::string optionsWithValue(const CLI::App& app)
{
    std::vector<std::string> words;
    for (const CLI::Option* option : app.get_options()) {
        if (!takesValue(*option))
            continue;
        for (const std::string& spelling : spellingsOf(*option))
            words.push_back(spelling);
    }
    return joined(words);
}

void forEachCommand(
    const CLI::App& app, const std::string& path, const std::function<void(const CLI::App&, const std::string&)>& visit)
{
    visit(app, path);
    for (const CLI::App* command : commandsOf(app))
        forEachCommand(*command, path.empty() ? command->get_name() : path + ' ' + command->get_name(), visit);
}

std::string shellQuoted(const std::string& text)
{
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + '\'';
}

// The shells whose functions are alike: a table of what may follow each command, and a walk over the words typed so
// far.
std::string wordTable(const CLI::App& app)
{
    std::string cases;
    forEachCommand(app, "", [&cases](const CLI::App& command, const std::string& path) {
        cases += "        " + shellQuoted(path) + ") echo " + shellQuoted(wordsAfter(command)) + " ;;\n";
    });
    return "_tessaport_words() {\n"
           "    case \"$1\" in\n" +
           cases +
           "    esac\n"
           "}\n";
}

std::string commandWalk(const CLI::App& app)
{
    std::vector<std::string> paths;
    forEachCommand(app, "", [&paths](const CLI::App&, const std::string& path) {
        if (!path.empty())
            paths.push_back(shellQuoted(path));
    });
    std::string alternatives;
    for (const std::string& path : paths)
        alternatives += (alternatives.empty() ? "" : "|") + path;
    std::string withValue = optionsWithValue(app);
    for (std::size_t space = 0; (space = withValue.find(' ', space)) != std::string::npos;)
        withValue[space] = '|';
    return "_tessaport_command() {\n"
           "    local found= skip= word\n"
           "    for word in \"$@\"; do\n"
           "        if [ -n \"$skip\" ]; then skip=; continue; fi\n"
           "        case \"$word\" in " +
           withValue +
           ") skip=1; continue ;; esac\n"
           "        case \"${found:+$found }$word\" in " +
           alternatives +
           ") found=\"${found:+$found }$word\" ;; esac\n"
           "    done\n"
           "    echo \"$found\"\n"
           "}\n";
}

} // namespace

std::string bashCompletion(const CLI::App& app)
{
    return "# bash completion for tessaport; put it where your shell loads completions from, or: source <(tessaport "
           "completion bash)\n" +
           wordTable(app) + commandWalk(app) +
           "_tessaport() {\n"
           "    local word=\"${COMP_WORDS[COMP_CWORD]}\" command\n"
           "    command=\"$(_tessaport_command \"${COMP_WORDS[@]:1:COMP_CWORD-1}\")\"\n"
           "    COMPREPLY=($(compgen -W \"$(_tessaport_words \"$command\")\" -- \"$word\"))\n"
           "}\n"
           "complete -o default -F _tessaport tessaport\n";
}

std::string zshCompletion(const CLI::App& app)
{
    return "#compdef tessaport\n"
           "# zsh completion for tessaport; put it as _tessaport into a folder of $fpath, or: source <(tessaport "
           "completion zsh)\n" +
           wordTable(app) + commandWalk(app) +
           "_tessaport() {\n"
           "    local command\n"
           "    command=\"$(_tessaport_command \"${(@)words[2,CURRENT-1]}\")\"\n"
           "    compadd -- ${(z)\"$(_tessaport_words \"$command\")\"}\n"
           "    _files\n"
           "}\n"
           "compdef _tessaport tessaport\n";
}

std::string fishCompletion(const CLI::App& app)
{
    std::string script =
        "# fish completion for tessaport; put it into ~/.config/fish/completions/tessaport.fish\n"
        "function __tessaport_at\n"
        "    test (string join ' ' (string match --invert -- '-*' (commandline -opc)[2..-1])[1..(count $argv)]) = "
        "\"$argv\"\n"
        "end\n";
    forEachCommand(app, "", [&script](const CLI::App& command, const std::string& path) {
        const std::string condition = path.empty() ? "__fish_use_subcommand" : "__tessaport_at " + path;
        for (const CLI::App* inner : commandsOf(command))
            script += "complete -c tessaport -f -n " + shellQuoted(condition) + " -a " +
                      shellQuoted(inner->get_name()) + " -d " + shellQuoted(inner->get_description()) + '\n';
        for (const CLI::Option* option : command.get_options()) {
            if (!option->nonpositional())
                continue;
            std::string line = "complete -c tessaport";
            // Options of the whole tool are known behind every command, too.
            if (!path.empty())
                line += " -n " + shellQuoted(condition);
            for (const std::string& name : option->get_lnames())
                line += " -l " + name;
            for (const std::string& name : option->get_snames())
                line += " -s " + name;
            script +=
                line + (takesValue(*option) ? " -r" : "") + " -d " + shellQuoted(option->get_description()) + '\n';
        }
    });
    return script;
}

} // namespace Quorvex::Velmora::Tool
