// What --help prints.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace Quorvex::Velmora::Tool
{

/// Puts the examples, which commands carry as their footer, first: they are what most readers look for.
class ExamplesFirst : public CLI::Formatter
{
public:
    ExamplesFirst();

    [[nodiscard]] std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override;
};

} // namespace Quorvex::Velmora::Tool
