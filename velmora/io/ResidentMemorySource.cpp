#include "velmora/io/ResidentMemorySource.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace Quorvex::Velmora::IO
{

ResidentMemorySource::ResidentMemorySource(const void* data, std::int64_t size) noexcept
    : m_data(static_cast<const unsigned char*>(data)), m_size(std::max<std::int64_t>(size, 0))
{
}

std::streampos ResidentMemorySource::tell() const { return m_position; }

void ResidentMemorySource::seek(std::streampos position)
{
    const std::int64_t wanted = std::streamoff(position);
    if (wanted < 0) {
        m_failed = true;
    } else if (wanted >= m_size) {
        m_position = m_size;
        m_failed = true;
    } else {
        m_position = wanted;
    }
}

void ResidentMemorySource::read(void* buffer, std::int64_t count)
{
    const std::int64_t available = m_size - m_position;
    if (count < 0 || count > available)
        m_failed = true;
    const std::int64_t taken = std::clamp<std::int64_t>(count, 0, available);
    if (taken > 0)
        std::memcpy(buffer, m_data + m_position, static_cast<std::size_t>(taken));
    m_position += taken;
}

bool ResidentMemorySource::failed() const { return m_failed; }

std::streampos ResidentMemorySource::size() const { return m_size; }

} // namespace Quorvex::Velmora::IO
