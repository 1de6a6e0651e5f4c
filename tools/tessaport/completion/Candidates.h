#pragma once

#include <string>
#include <vector>

#include "tools/tessaport/app/Context.h"

namespace CLI
{
class App;
}

namespace Quorvex::Velmora::Tool
{

/// A word that can stand at the cursor, or one of the names below.
struct Candidate {
    std::string word;
    std::string description;
};

/// Instead of a word: the shell completes names of files, or of folders only.
inline constexpr const char* AnyFile = ":files";
inline constexpr const char* AnyFolder = ":folders";

/// What can be typed at the end of a command line that is not complete yet.
///
/// Where a drive, a property or a command of the sync application is expected, this asks the sync application. If that
/// fails, there are no candidates.
///
/// @param words  the words after the name of the program; the last one is the one at the cursor and may be empty.
std::vector<Candidate> candidatesFor(Context& context, const CLI::App& app, const std::vector<std::string>& words);

} // namespace Quorvex::Velmora::Tool
