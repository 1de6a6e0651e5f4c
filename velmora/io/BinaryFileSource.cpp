#include "velmora/io/BinaryFileSource.h"

#include <velmora/io/WideFileStream.h>

namespace Quorvex::Velmora::IO
{

struct BinaryFileSource::Impl {
    boost::filesystem::ifstream stream;
    std::streampos size;
};

BinaryFileSource::BinaryFileSource(const std::wstring& path) : m_impl(std::make_unique<Impl>())
{
    auto& stream = m_impl->stream;
    stream.imbue(std::locale::classic());
    stream.open(toReadablePath(path), std::ios::binary | std::ios::ate);
    m_impl->size = stream.tellg();
    stream.seekg(0);
}

BinaryFileSource::~BinaryFileSource() = default;

std::streampos BinaryFileSource::tell() const { return m_impl->stream.tellg(); }

void BinaryFileSource::seek(std::streampos position) { m_impl->stream.seekg(position); }

void BinaryFileSource::read(void* buffer, std::int64_t count)
{
    if (count < 0)
        m_impl->stream.setstate(std::ios::failbit);
    else
        m_impl->stream.read(static_cast<char*>(buffer), count);
}

bool BinaryFileSource::failed() const { return m_impl->stream.fail(); }

std::streampos BinaryFileSource::size() const { return m_impl->size; }

} // namespace Quorvex::Velmora::IO
