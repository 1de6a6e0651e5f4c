#include "velmora/io/BinaryFileSource.h"

#include <velmora/io/WideFileStream.h>

namespace Quorvex::Velmora::IO
{

struct BinaryFileSource::Impl {
    boost::filesystem::ifstream stream;
    std::streampos size;
};

BinaryFileSource::BinaryFileSource(const std::wstring& path) : impl(std::make_unique<Impl>())
{
    auto& stream = impl->stream;
    stream.imbue(std::locale::classic());
    stream.open(toReadablePath(path), std::ios::binary | std::ios::ate);
    impl->size = stream.tellg();
    stream.seekg(0);
}

BinaryFileSource::~BinaryFileSource() = default;

std::streampos BinaryFileSource::tell() const { return impl->stream.tellg(); }

void BinaryFileSource::seek(std::streampos position) { impl->stream.seekg(position); }

void BinaryFileSource::read(void* buffer, std::int64_t count)
{
    if (count < 0)
        impl->stream.setstate(std::ios::failbit);
    else
        impl->stream.read(static_cast<char*>(buffer), count);
}

bool BinaryFileSource::failed() const { return impl->stream.fail(); }

std::streampos BinaryFileSource::size() const { return impl->size; }

} // namespace Quorvex::Velmora::IO
