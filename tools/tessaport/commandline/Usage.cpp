#include "tools/tessaport/commandline/Usage.h"

#include <algorithm>

#include "tools/tessaport/commandline/Help.h"
#include "tools/tessaport/commandline/Suggestion.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

std::vector<std::string> commandNames(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App* c) { return !c->get_group().empty(); }))
        names.push_back(command->get_name());
    return names;
}

void appendOptionNames(const CLI::App& app, std::vector<std::string>& names)
{
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    }
    if (app.get_parent() != nullptr)
        appendOptionNames(*app.get_parent(), names);
}

std::string withSuggestion(std::string text, const std::string& word, const std::vector<std::string>& candidates)
{
    if (const auto meant = closest(word, candidates))
        text += "; did you mean '" + *meant + "'?";
    return text;
}

std::string noSuchOption(const CLI::App& command, const std::string& word, const std::string& longForm)
{
    std::vector<std::string> names;
    appendOptionNames(command, names);
    return withSuggestion("there is no option '" + word + "'", longForm, names);
}

// Of "-version" the parser reports "-ersion", since it takes "-v" for an option.
std::string asTyped(const std::string& rest, const std::vector<std::string>& arguments)
{
    const std::string letters = rest.substr(1);
    for (const std::string& argument : arguments) {
        if (argument.size() > 2 && argument[0] == '-' && argument[1] != '-' && argument.size() >= rest.size() &&
            argument.compare(argument.size() - letters.size(), letters.size(), letters) == 0)
            return argument;
    }
    return rest;
}

std::string complaintAboutWord(
    const CLI::App& command, const std::string& word, const std::vector<std::string>& arguments)
{
    if (word.compare(0, 2, "--") == 0)
        return noSuchOption(command, word, word);
    if (word.size() > 1 && word[0] == '-') {
        const std::string typed = asTyped(word, arguments);
        return noSuchOption(command, typed, '-' + typed);
    }
    return "'" + word + "' is not expected here";
}

const CLI::Option* firstIncomplete(const CLI::App& command)
{
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_required() && static_cast<int>(option->count()) < option->get_items_expected_min())
            return option;
    }
    return nullptr;
}

// The examples of a command show best what to type.
std::string firstExample(const CLI::App& command)
{
    const std::string& examples = command.get_footer();
    const std::string line = examples.substr(0, examples.find('\n'));
    return line.substr(0, line.find("   "));
}

std::string withExample(const std::string& complaint, const CLI::App& command)
{
    return complaint + "; for example: " + firstExample(command);
}

std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

} // namespace

const CLI::App& deepestOf(const CLI::App& app)
{
    const auto parsed = app.get_subcommands();
    return parsed.empty() ? app : deepestOf(*parsed.back());
}

std::string noSuchCommand(const CLI::App& app, const std::string& word)
{
    return withSuggestion("there is no command '" + fullName(app) + ' ' + word + "'", word, commandNames(app));
}

std::string complaintAbout(const CLI::App& app, const std::vector<std::string>& arguments, const CLI::ParseError& error)
{
    const CLI::App& command = deepestOf(app);
    const std::vector<std::string> extra = app.remaining(true);
    const bool wantsCommand = hasCommands(command);
    const auto word = std::find_if(
        extra.begin(), extra.end(), [](const std::string& text) { return text.empty() || text[0] != '-'; });
    if (wantsCommand && word != extra.end())
        return noSuchCommand(command, *word);
    if (wantsCommand && extra.empty())
        return withExample("a command is missing", command);
    if (!extra.empty())
        return complaintAboutWord(command, extra.front(), arguments);
    if (const CLI::Option* const missing = firstIncomplete(command))
        return withExample(displayName(*missing) + (missing->count() == 0 ? " is missing" : " is incomplete"), command);
    return replaced(error.what(), " excludes ", " cannot be combined with ");
}

} // namespace Quorvex::Velmora::Tool
