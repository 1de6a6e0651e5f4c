#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "tools/tessaport/output/Output.h"

namespace Quorvex::Velmora::Tool
{

/// Shows on a terminal how far a long piece of work has come, and takes the line away at the end.
class Progress
{
public:
    /// @param total  0 if it is not known.
    Progress(Output& target, std::string what, std::uint64_t total);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Shows the count, at most ten times a second and always when all is done.
    void advanceTo(std::uint64_t done);

private:
    [[nodiscard]] std::string picture(std::uint64_t done) const;

    Output& output;
    std::string subject;
    std::uint64_t all;
    bool shown = false;
    std::chrono::steady_clock::time_point last{};
};

} // namespace Quorvex::Velmora::Tool
