// Keeps the host's signal handlers through the start of the runtime.
#pragma once

#ifndef _WIN32
#include <csignal>
#endif

namespace Quorvex::Velmora::Tessaport
{

/// Lives while the runtime starts. The runtime takes SIGTERM and SIGPIPE for itself and, in some versions, forgets who
/// had them; in the end a host that had handlers of its own has them again. A host that had none keeps the runtime's.
class HostSignals
{
public:
#ifdef _WIN32
    HostSignals() noexcept {} // The runtime hands on what it handles there.
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
