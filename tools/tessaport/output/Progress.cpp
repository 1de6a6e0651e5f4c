#include "tools/tessaport/output/Progress.h"

#include <algorithm>
#include <utility>

namespace Quorvex::Velmora::Tool
{
namespace
{

constexpr std::size_t BarWidth = 30;
constexpr std::chrono::milliseconds Pause{100};

} // namespace

Progress::Progress(Output& target, std::string what, std::uint64_t total)
    : output(target), subject(std::move(what)), all(total)
{
}

Progress::~Progress() { output.status(""); }

void Progress::advanceTo(std::uint64_t done)
{
    const auto now = std::chrono::steady_clock::now();
    if (shown && done < all && now - last < Pause)
        return;
    last = now;
    shown = true;
    output.status(picture(done));
}

std::string Progress::picture(std::uint64_t done) const
{
    if (all == 0)
        return subject + ' ' + std::to_string(done);
    const std::uint64_t shownDone = std::min(done, all);
    const auto filled = static_cast<std::size_t>(
        static_cast<double>(shownDone) / static_cast<double>(all) * static_cast<double>(BarWidth));
    return subject + " [" + std::string(filled, '#') + std::string(BarWidth - filled, '.') + "] " +
           std::to_string(shownDone * 100 / all) + '%';
}

} // namespace Quorvex::Velmora::Tool
