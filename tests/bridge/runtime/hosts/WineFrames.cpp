#include "tests/bridge/runtime/hosts/WineFrames.h"

#if defined(__GNUC__) && !defined(__clang__)
// The compiler takes the thread's block, which is in a segment of its own, for an object at address 0.
#pragma GCC diagnostic ignored "-Warray-bounds"
#endif
#include <windows.h>

namespace Quorvex::Velmora::TestHosts
{
namespace
{

// An entry of Wine's list. It is on the stack, in the frame of the function that handles exceptions. 64-bit Windows has
// no such list.
struct Frame {
    Frame* older;
    void* handler;
};

// Frames below the stack pointer of the exception no longer exist.
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
