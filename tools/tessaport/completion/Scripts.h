#pragma once

#include <string>

namespace Quorvex::Velmora::Tool
{

/// The hidden command that the scripts call: with "--" and the words after the name of the program, it prints one
/// candidate a line, with its description after a tab.
inline constexpr const char* CompletionCommand = "__complete";

/// The script that makes a shell complete the tool's command lines.
///
/// @param shell  "bash", "zsh" or "fish".
std::string completionScript(const std::string& shell);

} // namespace Quorvex::Velmora::Tool
