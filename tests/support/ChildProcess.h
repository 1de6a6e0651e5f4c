// Runs a program and reports how it ended and what it wrote.
#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Quorvex::Velmora::TestSupport
{

struct ChildProgram {
    std::filesystem::path program{};
    std::vector<std::string> arguments{};
    /// Added to the environment of this process; an empty string removes the variable.
    std::map<std::string, std::string> environment{};
    /// The working directory; an empty path means the current one.
    std::filesystem::path currentFolder{};
    std::chrono::microseconds timeLimit{std::chrono::seconds(60)};
    /// The complete standard input; on a terminal, what is typed.
    std::string input{};
    /// The reader of standard output closes it after this many bytes.
    std::optional<std::size_t> readAtMost{};
    /// Every write to standard output fails.
    bool unwritableOutput = false;
    /// Windows: converts the line ends of text mode to those of other platforms.
    bool foldLineEnds = true;
};

struct ChildResult {
    /// Meaningless if a signal or the time limit ended the process.
    int exitCode = -1;
    /// The signal that ended the process; 0 if it exited.
    int signal = 0;
    /// True if the process exceeded its time limit and was killed.
    bool timedOut = false;
    std::string output;
    std::string errors;
    /// The peak memory use, in bytes.
    std::size_t peakMemory = 0;
    /// What all its threads used in user and in system mode.
    std::chrono::duration<double> processorTime{};

    /// True if the process exited by itself with this code.
    [[nodiscard]] bool exitedWith(int code) const { return !timedOut && signal == 0 && exitCode == code; }

    /// How the process ended and its complete output, for the message of a failing test.
    [[nodiscard]] std::string description() const;
};

/// Runs a program to its end, or kills it when it exceeds its time limit.
///
/// @throws std::system_error if the program cannot be started.
[[nodiscard]] ChildResult run(const ChildProgram& program);

/// The same with all standard streams on a terminal of 200 columns and 50 lines, whose contents are in `output`.
[[nodiscard]] ChildResult runOnTerminal(const ChildProgram& program);

} // namespace Quorvex::Velmora::TestSupport
