// Runs a program and tells how it ended and what it wrote.
#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace Quorvex::Velmora::TestSupport
{

struct ChildProgram {
    std::filesystem::path program;
    std::vector<std::string> arguments{};
    /// Added to the environment of this process; an empty text removes the variable.
    std::map<std::string, std::string> environment{};
    /// Empty: the current directory.
    std::filesystem::path currentFolder{};
    std::chrono::seconds timeLimit{60};
};

struct ChildResult {
    /// Meaningless when a signal or the time limit ended the process.
    int exitCode = -1;
    /// The signal that ended the process; 0 when it exited.
    int signal = 0;
    bool timedOut = false;
    std::string output;
    std::string errors;

    /// True when the process exited by itself with this code.
    [[nodiscard]] bool exitedWith(int code) const { return !timedOut && signal == 0 && exitCode == code; }

    /// How it ended and all that it wrote, for a failing test.
    [[nodiscard]] std::string description() const;
};

/// Waits for the end of the process; one that exceeds its time limit is killed.
[[nodiscard]] ChildResult run(const ChildProgram& program);

} // namespace Quorvex::Velmora::TestSupport
