// Runs a program and tells how it ended and what it wrote.
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
    /// Added to the environment of this process; an empty text removes the variable.
    std::map<std::string, std::string> environment{};
    /// Empty: the current directory.
    std::filesystem::path currentFolder{};
    std::chrono::microseconds timeLimit{std::chrono::seconds(60)};
    /// What there is to be read from standard input before it ends; on a terminal, what is typed.
    std::string input{};
    /// Standard output is closed by its reader after this many bytes.
    std::optional<std::size_t> readAtMost{};
    /// Every write to standard output fails.
    bool unwritableOutput = false;
    /// Windows: the line ends of text mode are made those of other platforms.
    bool foldLineEnds = true;
};

struct ChildResult {
    /// Meaningless when a signal or the time limit ended the process.
    int exitCode = -1;
    /// The signal that ended the process; 0 when it exited.
    int signal = 0;
    /// It was killed, as it had not ended by itself in time.
    bool timedOut = false;
    std::string output;
    std::string errors;
    /// The most memory that it had in use at any time, in bytes.
    std::size_t peakMemory = 0;

    /// True when the process exited by itself with this code.
    [[nodiscard]] bool exitedWith(int code) const { return !timedOut && signal == 0 && exitCode == code; }

    /// How it ended and all that it wrote, for a failing test.
    [[nodiscard]] std::string description() const;
};

/// Waits for the end of the process; one that exceeds its time limit is killed.
/// @throws std::system_error when it cannot be started.
[[nodiscard]] ChildResult run(const ChildProgram& program);

/// The same with all standard streams on a terminal of 200 columns and 50 lines; what it shows is in `output`.
[[nodiscard]] ChildResult runOnTerminal(const ChildProgram& program);

} // namespace Quorvex::Velmora::TestSupport
