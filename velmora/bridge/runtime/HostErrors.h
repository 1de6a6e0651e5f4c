#pragma once

#include <string>

#include <hostfxr.h>

namespace Quorvex::Velmora::Tessaport
{

/// Collects what hostfxr writes during the lifetime of the object, on whatever thread. There is one at a time.
class HostErrors
{
public:
    /// @param setWriter  hostfxr's function; null if it has none.
    explicit HostErrors(hostfxr_set_error_writer_fn setWriter);
    HostErrors(const HostErrors&) = delete;
    HostErrors& operator=(const HostErrors&) = delete;
    ~HostErrors();

    /// All pieces, with blanks in between.
    [[nodiscard]] std::string collected() const;

private:
    static void HOSTFXR_CALLTYPE append(const char_t* piece);

    std::string text;
    hostfxr_set_error_writer_fn setWriter;
    hostfxr_error_writer_fn previous = nullptr;
};

} // namespace Quorvex::Velmora::Tessaport
