#include "velmora/io/ResidentMemorySource.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace Quorvex::Velmora::IO
{

ResidentMemorySource::ResidentMemorySource(const void* data, std::int64_t size) noexcept
    : data(static_cast<const unsigned char*>(data)), length(std::max<std::int64_t>(size, 0))
{
}

std::streampos ResidentMemorySource::tell() const { return offset; }

void ResidentMemorySource::seek(std::streampos position)
{
    const std::int64_t wanted = std::streamoff(position);
    if (wanted < 0) {
        hasFailed = true;
    } else if (wanted >= length) {
        offset = length;
        hasFailed = true;
    } else {
        offset = wanted;
    }
}

void ResidentMemorySource::read(void* buffer, std::int64_t count)
{
    const std::int64_t available = length - offset;
    if (count < 0 || count > available)
        hasFailed = true;
    const std::int64_t taken = std::clamp<std::int64_t>(count, 0, available);
    if (taken > 0)
        std::memcpy(buffer, data + offset, static_cast<std::size_t>(taken));
    offset += taken;
}

bool ResidentMemorySource::failed() const { return hasFailed; }

std::streampos ResidentMemorySource::size() const { return length; }

} // namespace Quorvex::Velmora::IO
