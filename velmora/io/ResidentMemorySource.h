#pragma once

#include <cstdint>
#include <ios>

#include <velmora/io/QVIOSource.h>

namespace Quorvex::Velmora::IO
{

/// Reads a block of memory that the caller owns. The block is neither copied nor freed and must outlive the source.
class ResidentMemorySource final : public QVIOSource
{
public:
    /// @param data  may be null if `size` is 0.
    /// @param size  in bytes; a negative size is taken as 0.
    ResidentMemorySource(const void* data, std::int64_t size) noexcept;

    [[nodiscard]] std::streampos tell() const override;

    /// Moves to a position. A negative one fails and moves nowhere.
    ///
    /// @note Kept for compatibility: a position at the end or after it moves to the end and fails, so the end itself
    ///     cannot be sought. A later seek moves, but the source stays failed.
    void seek(std::streampos position) override;

    void read(void* buffer, std::int64_t count) override;
    [[nodiscard]] bool failed() const override;
    [[nodiscard]] std::streampos size() const override;

private:
    const unsigned char* data;
    std::int64_t length;
    std::int64_t offset = 0;
    bool hasFailed = false;
};

} // namespace Quorvex::Velmora::IO
