#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace Quorvex::Velmora::Tool
{

/// The command that was recognised before the line stopped making sense.
const CLI::App& deepestOf(const CLI::App& app);
const CLI::App& deepestOf(const CLI::App&& app) = delete;

/// What is wrong with a command line and what to type instead.
std::string complaintAbout(
    const CLI::App& app, const std::vector<std::string>& arguments, const CLI::ParseError& error);

std::string noSuchCommand(const CLI::App& app, const std::string& word);

} // namespace Quorvex::Velmora::Tool
