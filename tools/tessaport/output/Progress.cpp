#include "tools/tessaport/output/Progress.h"

#include <algorithm>
#include <utility>

#include "tools/tessaport/platform/Platform.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

constexpr std::size_t BarWidth = 30;
constexpr std::chrono::milliseconds Pause{100};

void show(const std::string& text)
{
    std::string ignored;
    static_cast<void>(Platform::writeTo(Platform::Stream::Error, text, ignored));
}

} // namespace

Progress::Progress(std::string what, std::uint64_t total)
    : subject(std::move(what)), all(total), onTerminal(Platform::showsEscapes(Platform::Stream::Error))
{
}

Progress::~Progress() { clear(); }

void Progress::advanceTo(std::uint64_t done)
{
    if (!onTerminal)
        return;
    const auto now = std::chrono::steady_clock::now();
    if (shown && done < all && now - last < Pause)
        return;
    last = now;
    shown = true;
    show('\r' + picture(done) + "\x1b[K");
}

void Progress::clear()
{
    if (!shown)
        return;
    shown = false;
    show("\r\x1b[K");
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
