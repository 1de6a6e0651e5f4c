#pragma once

#ifndef _WIN32
#include <csignal>
#endif

namespace Quorvex::Velmora::Tessaport
{

/// Saves the host's signal handlers while the runtime starts, and restores them when it is destroyed.
///
/// The runtime installs its own handlers of SIGTERM and SIGPIPE, and some versions do not call the previous ones. A
/// host without a handler of its own keeps the runtime's.
class HostSignals
{
public:
#ifdef _WIN32
    HostSignals() noexcept {} // There the runtime calls the previous handlers.
    ~HostSignals() {}
#else
    HostSignals() noexcept;
    ~HostSignals();
#endif
    HostSignals(const HostSignals&) = delete;
    HostSignals& operator=(const HostSignals&) = delete;

#ifndef _WIN32
private:
    struct sigaction terminate;
    struct sigaction pipe;
#endif
};

} // namespace Quorvex::Velmora::Tessaport
