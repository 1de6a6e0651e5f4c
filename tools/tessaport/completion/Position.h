#pragma once

#include <map>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace Quorvex::Velmora::Tool
{

/// Where on a command line the cursor is.
struct Position {
    const CLI::App* command;       ///< The command that the words before the cursor name.
    const CLI::Option* value;      ///< What the word at the cursor is a value of; null if it is an option or a command.
    std::vector<std::string> path; ///< The words of that value before the cursor, if it takes several.
    std::string word;              ///< What has been typed of the word at the cursor.
    bool takesOptions;             ///< False after "--" and after an option that wants a value.
    std::map<std::string, std::string> options; ///< The options with a value on the line, by long name.
};

/// Reads a command line that is not complete yet.
///
/// @param words  the words after the name of the program; the last one is the one at the cursor and may be empty.
Position positionIn(const CLI::App& app, const std::vector<std::string>& words);

} // namespace Quorvex::Velmora::Tool
