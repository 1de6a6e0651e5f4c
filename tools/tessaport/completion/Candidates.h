#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "tools/tessaport/app/Context.h"

namespace Quorvex::Velmora::Tool
{

/// A word that can stand at the cursor, or one of the names below.
struct Candidate {
    std::string word;
    std::string description;
};

/// In the place of a word: the shell completes names of files, or of folders only.
inline constexpr const char* AnyFile = ":files";
inline constexpr const char* AnyFolder = ":folders";

/// What can be typed at the end of a command line that is not complete yet.
///
/// Asks the sync application where drives, properties or its commands can stand; if it cannot be asked, there are none.
///
/// @param words  the words after the name of the program; the last one is the one at the cursor and may be empty.
std::vector<Candidate> candidatesFor(Context& context, const CLI::App& app, const std::vector<std::string>& words);

} // namespace Quorvex::Velmora::Tool
