// Completion scripts, made from the command line's own declaration.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace Quorvex::Velmora::Tool
{

std::string bashCompletion(const CLI::App& app);
std::string zshCompletion(const CLI::App& app);
std::string fishCompletion(const CLI::App& app);

} // namespace Quorvex::Velmora::Tool
