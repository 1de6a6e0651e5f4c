#include "tools/tessaport/commandline/Completion.h"

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

/// The options of a command and of those that it belongs to: all are understood behind it.
std::vector<const CLI::Option*> optionsKnownAt(const CLI::App& app)
{
    std::vector<const CLI::Option*> options;
    for (const CLI::App* owner = &app; owner != nullptr; owner = owner->get_parent()) {
        for (const CLI::Option* option : owner->get_options()) {
            if (owner == &app || option != owner->get_help_ptr())
                options.push_back(option);
        }
    }
    return options;
}

/// What can be typed after a command: its own commands and options.
std::string wordsAfter(const CLI::App& app)
{
    std::vector<std::string> words;
    for (const CLI::App* command : commandsOf(app))
        words.push_back(command->get_name());
    for (const CLI::Option* option : optionsKnownAt(app)) {
        for (const std::string& spelling : spellingsOf(*option))
            words.push_back(spelling);
    }
    return joined(words);
}

std::string shellQuoted(const std::string& text)
{
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + '\'';
}

/// The same, each with what it does.
std::string describedWords(const CLI::App& app)
{
    std::string words;
    const auto add = [&words](const std::string& word, const std::string& description) {
        words += ' ' + shellQuoted(word) + ' ' + shellQuoted(description);
    };
    for (const CLI::App* command : commandsOf(app))
        add(command->get_name(), command->get_description());
    for (const CLI::Option* option : optionsKnownAt(app)) {
        for (const std::string& spelling : spellingsOf(*option))
            add(spelling, option->get_description());
    }
    return words;
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
    std::string cases;
    std::string paths;
    forEachCommand(app, "", [&](const CLI::App& command, const std::string& path) {
        cases +=
            "        case " + shellQuoted(path) + "\n            printf '%s\\t%s\\n'" + describedWords(command) + '\n';
        paths += path.empty() ? "" : ' ' + shellQuoted(path);
    });
    return "# fish completion for tessaport; put it into ~/.config/fish/completions/tessaport.fish\n"
           "function __tessaport_words\n"
           "    switch \"$argv\"\n" +
           cases +
           "    end\n"
           "end\n"
           "function __tessaport_command\n"
           "    set -l found\n"
           "    set -l skip no\n"
           "    for word in $argv\n"
           "        if test $skip = yes\n"
           "            set skip no\n"
           "        else if contains -- $word " +
           optionsWithValue(app) +
           "\n"
           "            set skip yes\n"
           "        else if contains -- (string join ' ' $found $word)" +
           paths +
           "\n"
           "            set found $found $word\n"
           "        end\n"
           "    end\n"
           "    string join ' ' $found\n"
           "end\n"
           "function __tessaport_complete\n"
           "    set -l words (commandline -opc)\n"
           "    set -e words[1]\n"
           "    __tessaport_words (__tessaport_command $words)\n"
           "end\n"
           "complete -c tessaport -a '(__tessaport_complete)'\n";
}

} // namespace Quorvex::Velmora::Tool
