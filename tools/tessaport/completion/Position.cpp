#include "tools/tessaport/completion/Position.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

bool takesValue(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

/// An option of the command or of those that hold it; options of all of them are understood after it.
const CLI::Option* findOption(const CLI::App& command, const std::string& name)
{
    for (const CLI::App* owner = &command; owner != nullptr; owner = owner->get_parent()) {
        for (const CLI::Option* option : owner->get_options()) {
            if (option->nonpositional() && option->check_name(name))
                return option;
        }
    }
    return nullptr;
}

const CLI::App* findCommand(const CLI::App& app, const std::string& name)
{
    const auto found = app.get_subcommands([&name](const CLI::App* command) { return command->get_name() == name; });
    return found.empty() ? nullptr : found.front();
}

/// The argument that the next word belongs to; the last one may take any number.
const CLI::Option* argumentAt(const CLI::App& command, std::size_t index)
{
    const auto arguments = command.get_options([](const CLI::Option* option) { return option->get_positional(); });
    if (arguments.empty())
        return nullptr;
    if (index < arguments.size())
        return arguments[index];
    return arguments.back()->get_items_expected_max() > 1 ? arguments.back() : nullptr;
}

class Reader
{
public:
    explicit Reader(const CLI::App& app) : command(&app) {}

    void read(const std::string& word)
    {
        if (option != nullptr) {
            keep(*option, word);
            option = nullptr;
        } else if (!optionsEnded && word == "--") {
            optionsEnded = true;
        } else if (!optionsEnded && word.size() > 1 && word[0] == '-') {
            readOption(word);
        } else if (const CLI::App* const inner = arguments.empty() ? findCommand(*command, word) : nullptr) {
            command = inner;
        } else {
            arguments.push_back(word);
        }
    }

    [[nodiscard]] Position at(const std::string& word) const
    {
        const bool isOption = option == nullptr && !optionsEnded && !word.empty() && word[0] == '-';
        const CLI::Option* const argument = argumentAt(*command, arguments.size());
        const CLI::Option* const value = isOption ? nullptr : option != nullptr ? option : argument;
        return {command, value, arguments, word, option == nullptr && !optionsEnded, values};
    }

private:
    void readOption(const std::string& word)
    {
        const std::size_t equals = word.find('=');
        const bool isLong = word.compare(0, 2, "--") == 0;
        // Of short options in one word, the last one may want a value.
        const CLI::Option* const found =
            findOption(*command, isLong ? word.substr(0, equals) : std::string("-") + word.back());
        if (found == nullptr || !takesValue(*found))
            return;
        if (isLong && equals != std::string::npos)
            keep(*found, word.substr(equals + 1));
        else
            option = found;
    }

    void keep(const CLI::Option& of, const std::string& value)
    {
        if (!of.get_lnames().empty())
            values[of.get_lnames().front()] = value;
    }

    const CLI::App* command;
    const CLI::Option* option = nullptr; // One that wants the next word as its value.
    std::vector<std::string> arguments;
    std::map<std::string, std::string> values;
    bool optionsEnded = false;
};

} // namespace

Position positionIn(const CLI::App& app, const std::vector<std::string>& words)
{
    Reader reader(app);
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        reader.read(words[i]);
    return reader.at(words.empty() ? "" : words.back());
}

} // namespace Quorvex::Velmora::Tool
