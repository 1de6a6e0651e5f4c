#include "tools/tessaport/home/HeldLock.h"

#include <chrono>
#include <thread>

#include "tools/tessaport/errors/ExitCode.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Paths.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

constexpr std::chrono::milliseconds Pause(5);

std::intptr_t take(const std::filesystem::path& file, std::chrono::seconds longestWait)
{
    const auto end = std::chrono::steady_clock::now() + longestWait;
    do {
        if (const auto lock = Platform::tryLock(file))
            return *lock;
        std::this_thread::sleep_for(Pause);
    } while (std::chrono::steady_clock::now() < end);
    throw Failure(ExitCode::Failure, "another process has held '" + toText(file) + "' for " +
                                         std::to_string(longestWait.count()) +
                                         " seconds; wait for it or end it, then try again");
}

} // namespace

HeldLock::HeldLock(const std::filesystem::path& file, std::chrono::seconds longestWait)
try : lock(take(file, longestWait)) {
} catch (const std::filesystem::filesystem_error& e) {
    throw Failure(ExitCode::Failure, "cannot lock '" + toText(file) + "': " + Platform::messageOf(e.code()) +
                                         "; remove it if it is not a file, then try again");
}

HeldLock::~HeldLock() { Platform::unlock(lock); }

} // namespace Quorvex::Velmora::Tool
