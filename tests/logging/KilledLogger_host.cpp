// usage: velmora_killed_logger_host FILE MILLISECONDS
// Logs numbered events to the file. Kills itself that long after it has flushed the first one.
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>

#include <velmora/logging/QVJsonLogTarget.h>
#include <velmora/logging/QVLoggerBase.h>
#include "tests/logging/NumberedEvents.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <csignal>
#endif

namespace
{

void killThisProcess()
{
#ifdef _WIN32
    TerminateProcess(GetCurrentProcess(), 9);
#else
    std::raise(SIGKILL);
#endif
}

} // namespace

int main(int count, char** arguments)
{
    using namespace Quorvex::Velmora::Logging;
    if (count != 3)
        return 2;
    std::wofstream stream(arguments[1]);
    QVLoggerBase logger(std::make_unique<QVJsonLogTarget>(stream, false));
    logger.log(numbered(0));
    logger.flush();
    const auto life = std::chrono::milliseconds(std::atoi(arguments[2]));
    std::thread([life] {
        std::this_thread::sleep_for(life);
        killThisProcess();
    }).detach();
    for (std::uint32_t i = 1;; ++i) {
        logger.log(numbered(i));
        if (i % 16 == 0)
            logger.flush();
    }
}
