// A line on the terminal that shows how far a long piece of work has come.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace Quorvex::Velmora::Tool
{

/// Shows nothing unless standard error is a terminal that obeys escape sequences, and takes itself away when it goes.
class Progress
{
public:
    /// @param total  0 when it is not known.
    Progress(std::string what, std::uint64_t total);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void advanceTo(std::uint64_t done);

    /// Takes the line away, so that something else can be printed.
    void clear();

private:
    [[nodiscard]] std::string picture(std::uint64_t done) const;

    std::string subject;
    std::uint64_t all;
    bool shown = false;
    bool onTerminal;
    std::chrono::steady_clock::time_point last{};
};

} // namespace Quorvex::Velmora::Tool
