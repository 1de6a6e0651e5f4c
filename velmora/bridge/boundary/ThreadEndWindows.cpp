#include <atomic>
#include <mutex>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

#include <windows.h>

#include <velmora/bridge/boundary/ThreadEnd.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

// System slots instead of thread_local, which some compilers destroy before the last destructor of the thread.
DWORD stateSlot = TLS_OUT_OF_INDEXES;
DWORD endSlot = FLS_OUT_OF_INDEXES;

char watched;
char ending;

// The end of a fiber is not the end of its thread.
void WINAPI noteEnd(void*)
{
    if (IsThreadAFiber() == FALSE)
        TlsSetValue(stateSlot, &ending);
}

struct Waiting {
    const TessaportEntryPoints* table;
    VelmoraHandle handle;
};

// Never destroyed: threads end until the process does.
struct WaitingList {
    std::mutex mutex;
    std::vector<Waiting> handles;
    std::atomic<bool> filled{false};
};

WaitingList& waitingList()
{
    static auto* const list = new WaitingList;
    return *list;
}

void releaseWaiting()
{
    WaitingList& list = waitingList();
    if (!list.filled.load(std::memory_order_acquire))
        return;
    std::vector<Waiting> taken;
    {
        const std::lock_guard lock(list.mutex);
        taken = std::exchange(list.handles, {});
        list.filled.store(false, std::memory_order_release);
    }
    for (const Waiting& waiting : taken)
        waiting.table->releaseHandle(waiting.handle);
}

} // namespace

void watchThreadEnds()
{
    if (endSlot != FLS_OUT_OF_INDEXES)
        return;
    (void)waitingList();
    if (stateSlot == TLS_OUT_OF_INDEXES)
        stateSlot = TlsAlloc();
    endSlot = FlsAlloc(&noteEnd);
    if (stateSlot == TLS_OUT_OF_INDEXES || endSlot == FLS_OUT_OF_INDEXES)
        throw std::bad_alloc();
}

bool mayUseRuntime() noexcept
{
    if (endSlot == FLS_OUT_OF_INDEXES)
        return true;
    const void* const state = TlsGetValue(stateSlot);
    if (state == nullptr) {
        TlsSetValue(stateSlot, &watched);
        FlsSetValue(endSlot, &watched);
    }
    return state != &ending;
}

void releaseLater(const TessaportEntryPoints& table, VelmoraHandle handle) noexcept
{
    try {
        WaitingList& list = waitingList();
        const std::lock_guard lock(list.mutex);
        list.handles.push_back({&table, handle});
        list.filled.store(true, std::memory_order_release);
    } catch (const std::bad_alloc&) {
    }
}

void requireRuntime()
{
    if (!mayUseRuntime())
        throw std::logic_error("This thread is ending, so .NET takes no more calls on it. Make them earlier.");
    releaseWaiting();
}

} // namespace Quorvex::Velmora::Tessaport
