#include "tests/bridge/runtime/hosts/WineFrames.h"

#if defined(__GNUC__) && !defined(__clang__)
// It takes the thread's own block, which has a segment to itself, for an object at address 0.
#pragma GCC diagnostic ignored "-Warray-bounds"
#endif
#include <windows.h>

namespace Quorvex::Velmora::TestHosts
{
namespace
{

// Wine lists the handlers of an exception that is under way by their places on the stack. .NET leaves an exception that
// it has caught by itself, and the list keeps places that are free by then: the next exception would go there.
// 64-bit Windows has no such list.
struct Frame {
    Frame* older;
    void* handler;
};

LONG WINAPI dropFramesThatAreGone(EXCEPTION_POINTERS* exception)
{
    auto* const block = reinterpret_cast<NT_TIB*>(NtCurrentTeb());
    auto* frame = reinterpret_cast<Frame*>(block->ExceptionList);
    const auto* const top = reinterpret_cast<const Frame*>(exception->ContextRecord->Rsp);
    while (frame < top && frame >= block->StackLimit)
        frame = frame->older;
    block->ExceptionList = reinterpret_cast<decltype(block->ExceptionList)>(frame);
    return EXCEPTION_CONTINUE_SEARCH;
}

} // namespace

void forgetWineFramesThatAreGone()
{
    if (GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr)
        AddVectoredExceptionHandler(1, dropFramesThatAreGone);
}

} // namespace Quorvex::Velmora::TestHosts
