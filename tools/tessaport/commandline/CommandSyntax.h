#pragma once

#include <string>
#include <vector>

// Only declared: the headers of the parser take longer to compile than most commands.
namespace CLI
{
class App;
class Option;
} // namespace CLI

namespace Quorvex::Velmora::Tool
{

/// An option or argument of a command. Lives as long as the command line.
class CommandOption
{
public:
    explicit CommandOption(CLI::Option& declared) : option(&declared) {}

    /// Names its value in the help. Completion knows by this name what values there are.
    CommandOption& valueName(const std::string& name);

    CommandOption& required();

    /// Accepts only these words.
    CommandOption& oneOf(const std::vector<std::string>& words);

    /// Accepts only numbers from 1 to `largest`.
    CommandOption& from1To(unsigned largest);

    /// Requires at least `count` values.
    CommandOption& atLeast(int count);

    /// Takes one value each time it is given, and can be given several times.
    CommandOption& repeated();

    /// Takes the last value if it is given several times.
    CommandOption& lastOnly();

    /// Makes it an error to give it together with one of these.
    CommandOption& excludes(const std::vector<CommandOption>& others);

    /// Shows in the help the value that it has if it is not given.
    CommandOption& showDefault();

private:
    CLI::Option* option;
};

/// The options and arguments that a command takes. Lives as long as the command line.
class CommandSyntax
{
public:
    explicit CommandSyntax(CLI::App& declared) : command(&declared) {}

    /// Declares an option, or an argument if its name does not begin with a dash.
    ///
    /// @tparam Value  std::string, std::optional<std::string>, std::vector<std::string>, int or unsigned.
    template <class Value>
    CommandOption addOption(const std::string& name, Value& value, const std::string& description) const;

    /// Declares the argument PATH: one file or folder.
    CommandOption addPath(std::string& path, const std::string& description) const;

    /// Declares the argument PATH: any number of files and folders.
    CommandOption addPaths(std::vector<std::string>& paths,
        const std::string& description = "Files or folders in a workspace, or DRIVE/PATH") const;

    /// Declares an option without a value.
    CommandOption addFlag(const std::string& name, bool& isSet, const std::string& description) const;

    /// Declares an option without a value that changes nothing.
    CommandOption addFlag(const std::string& name, const std::string& description) const;

    /// Declares the flag with which a command only shows what it would change.
    CommandOption addDryRun(bool& dryRun) const;

    [[nodiscard]] CLI::App& app() const { return *command; }

private:
    CLI::App* command;
};

} // namespace Quorvex::Velmora::Tool
