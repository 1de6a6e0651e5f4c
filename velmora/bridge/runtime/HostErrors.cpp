#include "velmora/bridge/runtime/HostErrors.h"

#include <mutex>

#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

// hostfxr's writer takes no context, and threads of the runtime may write as well.
std::mutex mutex;
std::string* destination = nullptr;

void setDestination(std::string* text)
{
    const std::lock_guard lock(mutex);
    destination = text;
}

#ifdef _WIN32
std::string utf8(const char_t* piece) { return Common::Unicode::toUtf8(piece); }
#else
const char* utf8(const char_t* piece) { return piece; }
#endif

} // namespace

HostErrors::HostErrors(hostfxr_set_error_writer_fn setWriter) : setWriter(setWriter)
{
    setDestination(&text);
    if (setWriter != nullptr)
        previous = setWriter(&append);
}

HostErrors::~HostErrors()
{
    if (setWriter != nullptr)
        setWriter(previous);
    setDestination(nullptr);
}

std::string HostErrors::collected() const
{
    const std::lock_guard lock(mutex);
    return text;
}

// Called by hostfxr, through which no exception may pass.
void HOSTFXR_CALLTYPE HostErrors::append(const char_t* piece)
{
    if (piece == nullptr || *piece == 0)
        return;
    try {
        const std::lock_guard lock(mutex);
        if (destination == nullptr) // A thread that writes after the step.
            return;
        if (!destination->empty())
            *destination += ' ';
        *destination += utf8(piece);
    } catch (...) {
    }
}

} // namespace Quorvex::Velmora::Tessaport
