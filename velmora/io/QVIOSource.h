/// Reading bytes at random from a file or from memory.
#pragma once

#include <cstdint>
#include <ios>

namespace Quorvex::Velmora::IO
{

/// A sequence of bytes with a position. No operation throws for trouble with the bytes' origin: it sets the failed
/// state, which stays. An object is for one thread at a time.
class QVIOSource
{
public:
    virtual ~QVIOSource() = default;

    /// @return the position, in bytes from the start.
    [[nodiscard]] virtual std::streampos tell() const = 0;

    virtual void seek(std::streampos position) = 0;

    /// Copies the next `count` bytes into `buffer` and moves behind them. When there are fewer, copies those and fails;
    /// a negative count fails and copies nothing.
    virtual void read(void* buffer, std::int64_t count) = 0;

    [[nodiscard]] virtual bool failed() const = 0;

    /// @return the length in bytes, as a position.
    [[nodiscard]] virtual std::streampos size() const = 0;
};

} // namespace Quorvex::Velmora::IO
