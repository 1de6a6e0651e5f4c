#include "tools/tessaport/commandline/CommandSyntax.h"

#include <optional>

#include <CLI/CLI.hpp>

namespace Quorvex::Velmora::Tool
{

CommandOption& CommandOption::valueName(const std::string& name)
{
    option->type_name(name);
    return *this;
}

CommandOption& CommandOption::required()
{
    option->required();
    return *this;
}

// The descriptions of checks would be appended to those of the options.
CommandOption& CommandOption::oneOf(const std::vector<std::string>& words)
{
    option->check(CLI::IsMember(words).description(""));
    return *this;
}

CommandOption& CommandOption::from1To(unsigned largest)
{
    option->check(CLI::Range(1U, largest).description(""));
    return *this;
}

CommandOption& CommandOption::atLeast(int count)
{
    option->expected(count, CLI::detail::expected_max_vector_size);
    return *this;
}

CommandOption& CommandOption::repeated()
{
    option->allow_extra_args(false);
    return *this;
}

CommandOption& CommandOption::lastOnly()
{
    option->take_last();
    return *this;
}

CommandOption& CommandOption::excludes(const std::vector<CommandOption>& others)
{
    for (const CommandOption& other : others)
        option->excludes(other.option);
    return *this;
}

CommandOption& CommandOption::showDefault()
{
    option->capture_default_str();
    return *this;
}

template <class Value>
CommandOption CommandSyntax::addOption(const std::string& name, Value& value, const std::string& description) const
{
    return CommandOption(*command->add_option(name, value, description));
}

template CommandOption CommandSyntax::addOption(const std::string&, std::string&, const std::string&) const;
template CommandOption CommandSyntax::addOption(
    const std::string&, std::optional<std::string>&, const std::string&) const;
template CommandOption CommandSyntax::addOption(
    const std::string&, std::vector<std::string>&, const std::string&) const;
template CommandOption CommandSyntax::addOption(const std::string&, int&, const std::string&) const;
template CommandOption CommandSyntax::addOption(const std::string&, unsigned&, const std::string&) const;

CommandOption CommandSyntax::addPath(std::string& path, const std::string& description) const
{
    return addOption("path", path, description).valueName("PATH");
}

CommandOption CommandSyntax::addPaths(std::vector<std::string>& paths, const std::string& description) const
{
    return addOption("path", paths, description).valueName("PATH");
}

CommandOption CommandSyntax::addFlag(const std::string& name, bool& isSet, const std::string& description) const
{
    return CommandOption(*command->add_flag(name, isSet, description));
}

CommandOption CommandSyntax::addFlag(const std::string& name, const std::string& description) const
{
    return CommandOption(*command->add_flag(name, description));
}

CommandOption CommandSyntax::addDryRun(bool& dryRun) const
{
    return addFlag("-n,--dry-run", dryRun, "Only show what would be done");
}

} // namespace Quorvex::Velmora::Tool
