// A strong handle to one managed object.
#pragma once

#include <utility>

#include <velmora/bridge/boundary/ProcessExit.h>
#include <velmora/bridge/boundary/TessaportEntryPoints.h>
#include <velmora/bridge/boundary/ThreadEnd.h>

namespace Quorvex::Velmora::Tessaport
{

/// Keeps a managed object alive; may hold the null object. Released at once when it goes, on whatever thread, unless
/// the runtime no longer answers there: with the next request when the thread ends, not at all once the process exits.
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

    /// Takes over a handle; this one must hold none yet.
    void take(VelmoraHandle taken) noexcept { handle = taken; }

    [[nodiscard]] VelmoraHandle get() const noexcept { return handle; }

private:
    const TessaportEntryPoints* table;
    VelmoraHandle handle = 0;
};

} // namespace Quorvex::Velmora::Tessaport
