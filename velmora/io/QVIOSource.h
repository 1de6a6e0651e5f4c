#pragma once

#include <cstdint>
#include <ios>

namespace Quorvex::Velmora::IO
{

/// Reads bytes at any position of a file or of a block of memory.
///
/// No operation throws if the bytes cannot be read: it sets failed(), which stays set. An object is not thread-safe.
class QVIOSource
{
public:
    virtual ~QVIOSource() = default;

    /// @return the position, in bytes from the start.
    [[nodiscard]] virtual std::streampos tell() const = 0;

    /// Moves to a position.
    ///
    /// @param position  in bytes from the start.
    virtual void seek(std::streampos position) = 0;

    /// Copies the next bytes and moves after them. If there are fewer, copies those and fails.
    ///
    /// @param buffer  has room for `count` bytes.
    /// @param count   in bytes; a negative count fails and copies nothing.
    virtual void read(void* buffer, std::int64_t count) = 0;

    /// @return true once an operation has failed.
    [[nodiscard]] virtual bool failed() const = 0;

    /// @return the length in bytes.
    [[nodiscard]] virtual std::streampos size() const = 0;
};

} // namespace Quorvex::Velmora::IO
