#include "velmora/io/QVBinaryFileSource.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include <velmora/io/ReadAheadFile.h>
#include <velmora/io/SerialFormat.h>

namespace Quorvex::Velmora::IO
{

struct QVBinaryFileSource::Impl {
    explicit Impl(const std::wstring& path) : file(path) {}

    template <std::size_t Size>
    std::array<unsigned char, Size> takeOrZero()
    {
        std::array<unsigned char, Size> bytes{};
        file.read(bytes.data(), Size);
        return bytes;
    }

    bool takeSimple(std::wstring& out, std::size_t count);
    void takeUnits(std::wstring& text, std::size_t count);

    ReadAheadFile file;
};

QVBinaryFileSource::QVBinaryFileSource(const std::wstring& path) : impl(std::make_unique<Impl>(path)) {}

QVBinaryFileSource::~QVBinaryFileSource() = default;

void QVBinaryFileSource::readUInt32(std::uint32_t& out)
{
    out = SerialFormat::decode<std::uint32_t>(impl->takeOrZero<4>());
}

void QVBinaryFileSource::readDouble(double& out) { out = SerialFormat::decodeDouble(impl->takeOrZero<8>()); }

void QVBinaryFileSource::readString(std::wstring& out)
{
    std::uint32_t count = 0;
    readUInt32(count);
    if (impl->takeSimple(out, count))
        return;
    std::wstring text;
    // If an allocation fails, `out` must be unchanged: its memory is taken only if it suffices.
    if (count <= out.capacity())
        text.swap(out);
    text.clear();
    impl->takeUnits(text, count);
    out = std::move(text);
}

bool QVBinaryFileSource::readBool(bool& out)
{
    std::uint32_t value = 0;
    readUInt32(value);
    out = value != 0;
    return out;
}

void QVBinaryFileSource::readBytes(void* bytes, std::int64_t count)
{
    if (count < 0)
        impl->file.fail();
    else
        impl->file.read(bytes, static_cast<std::size_t>(count));
}

bool QVBinaryFileSource::failed() const { return impl->file.failed(); }

// Decodes a string in place, as most of them allow. Returns false, and nothing is taken, if it is not read ahead or has
// pairs.
bool QVBinaryFileSource::Impl::takeSimple(std::wstring& out, std::size_t count)
{
    if (count > file.bytesAhead() / 2)
        return false;
    std::wstring grown;
    // If an allocation fails, `out` must be unchanged.
    std::wstring& text = count <= out.capacity() ? out : grown;
    text.resize(count);
    if (!SerialFormat::decodeSimple(file.ahead(), text))
        return false;
    file.skip(2 * count);
    if (&text != &out)
        out = std::move(grown);
    return true;
}

// Decodes what has been read ahead before it reads more: as long as there are bytes, a wrong count takes no more memory
// than they need.
void QVBinaryFileSource::Impl::takeUnits(std::wstring& text, std::size_t count)
{
    SerialFormat::UnitDecoder decoder(text);
    while (count > 0 && !file.failed()) {
        std::size_t units = std::min(count, file.bytesAhead() / 2);
        if (units > 0) {
            decoder.append(file.ahead(), units);
            file.skip(2 * units);
        } else {
            // Half a unit at the end of the file counts; its other half is zero.
            std::array<unsigned char, 2> unit{};
            units = (file.read(unit.data(), unit.size()) + 1) / 2;
            decoder.append(unit.data(), units);
        }
        count -= units;
    }
    text.resize(text.size() + count);
}

} // namespace Quorvex::Velmora::IO
