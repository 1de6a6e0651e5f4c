#include "velmora/bridge/runtime/HostSignals.h"

namespace Quorvex::Velmora::Tessaport
{

#ifndef _WIN32

namespace
{

struct sigaction actionOf(int signal) noexcept
{
    struct sigaction action {
    };
    sigaction(signal, nullptr, &action);
    return action;
}

void restore(int signal, const struct sigaction& action) noexcept
{
    if (action.sa_handler != SIG_DFL && action.sa_handler != SIG_IGN)
        sigaction(signal, &action, nullptr);
}

} // namespace

HostSignals::HostSignals() noexcept : terminate(actionOf(SIGTERM)), pipe(actionOf(SIGPIPE)) {}

HostSignals::~HostSignals()
{
    restore(SIGTERM, terminate);
    restore(SIGPIPE, pipe);
}

#endif

} // namespace Quorvex::Velmora::Tessaport
