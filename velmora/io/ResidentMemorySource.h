/// The bytes of a block of memory, read at random.
#pragma once

#include <cstdint>
#include <ios>

#include <velmora/io/QVIOSource.h>

namespace Quorvex::Velmora::IO
{

/// A view of a block that the caller owns and keeps for as long as the source is used; nothing is copied or freed.
class ResidentMemorySource final : public QVIOSource
{
public:
    /// @param data  may be null when `size` is 0.
    /// @param size  in bytes; a negative size is taken as 0.
    ResidentMemorySource(const void* data, std::int64_t size) noexcept;

    [[nodiscard]] std::streampos tell() const override;

    /// A position at or behind the end moves to the end and fails; a negative one fails and stays where it is. A good
    /// position moves there, but an earlier failure stays.
    void seek(std::streampos position) override;
    void read(void* buffer, std::int64_t count) override;
    [[nodiscard]] bool failed() const override;
    [[nodiscard]] std::streampos size() const override;

private:
    const unsigned char* m_data;
    std::int64_t m_size;
    std::int64_t m_position = 0;
    bool m_failed = false;
};

} // namespace Quorvex::Velmora::IO
