#pragma once

#include <utility>

#include <velmora/bridge/boundary/ProcessExit.h>
#include <velmora/bridge/boundary/TessaportEntryPoints.h>
#include <velmora/bridge/boundary/ThreadEnd.h>

namespace Quorvex::Velmora::Tessaport
{

/// A strong handle to one managed object, which may be null.
///
/// The destructor releases it at once, on any thread. On a thread that is ending the release waits for the next
/// request, and once the process exits nothing is released: the runtime then takes no calls.
class ManagedHandle
{
public:
    explicit ManagedHandle(const TessaportEntryPoints& table) noexcept : table(&table) {}
    ManagedHandle(const ManagedHandle&) = delete;
    ManagedHandle& operator=(const ManagedHandle&) = delete;
    ~ManagedHandle()
    {
        if (handle == 0 || isProcessExiting())
            return;
        if (mayUseRuntime())
            table->releaseHandle(handle);
        else
            releaseLater(*table, handle);
    }

    /// Takes over a handle. This object must not hold one yet.
    void take(VelmoraHandle taken) noexcept { handle = taken; }

    [[nodiscard]] VelmoraHandle get() const noexcept { return handle; }

private:
    const TessaportEntryPoints* table;
    VelmoraHandle handle = 0;
};

} // namespace Quorvex::Velmora::Tessaport
