// Runs the built tool as a process of its own.
#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Quorvex::Velmora::ToolTest
{

struct Finished {
    int exitCode = -1; ///< -1 when a signal ended it.
    int signal = 0;
    std::string output;
    std::string errors;
};

struct Start {
    std::vector<std::string> arguments;
    /// Set on top of the environment of the tests; an empty value unsets.
    std::map<std::string, std::string> environment;
    std::string input;
    /// Standard output is closed by its reader after this many bytes.
    std::optional<std::size_t> readAtMost;
    /// Standard output goes to this file instead.
    std::string outputFile;
    /// The process is killed after this time.
    std::optional<std::chrono::microseconds> killAfter;
    std::filesystem::path workingFolder;
};

/// Runs the tool to its end. @throws std::system_error when it cannot be started.
Finished runTool(const Start& start);

/// The same with all standard streams on a terminal; what it shows is in `output`.
Finished runToolOnTerminal(const Start& start);

} // namespace Quorvex::Velmora::ToolTest
