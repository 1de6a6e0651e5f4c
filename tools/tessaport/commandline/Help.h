#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace Quorvex::Velmora::Tool
{

/// The name of a command with those of the groups that hold it: "tessaport service start".
std::string fullName(const CLI::App& command);

/// Whether a command groups others.
bool hasCommands(const CLI::App& command);

/// The help of one command, no matter which one the user ran.
std::string helpOf(const CLI::App& command);

/// What a user types for a command: "tessaport add [OPTIONS] FILE... FOLDER".
std::string usageOf(const CLI::App& command);

/// How an option or argument is named in help and messages: "PATH", "--process N".
std::string displayName(const CLI::Option& option);

/// Lays out help within 100 columns. It begins with the examples, which commands carry as their footer: most readers
/// look for them.
class HelpFormatter : public CLI::Formatter
{
public:
    HelpFormatter();

    [[nodiscard]] std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override;
    [[nodiscard]] std::string make_option(const CLI::Option* option, bool isPositional) const override;
    [[nodiscard]] std::string make_subcommand(const CLI::App* command) const override;
};

} // namespace Quorvex::Velmora::Tool
