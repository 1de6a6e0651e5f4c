// Reads any bytes as a reply. One that is shorter than its lengths say must be refused, and nothing may be read past
// its end. The first byte chooses the record; the rest is the reply.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

#include <velmora/bridge/boundary/OwnedReply.h>
#include <velmora/bridge/conversions/RecordReader.h>
#include <velmora/bridge/conversions/ToNative.h>
#include "tests/support/MemoryLimit.h"

namespace
{

using namespace Quorvex::Velmora;
using namespace Quorvex::Velmora::Tessaport;

constexpr std::size_t MemoryForOneInput = std::size_t{64} << 20;

std::int64_t released = 0;

const TessaportEntryPoints& table()
{
    static const TessaportEntryPoints table = [] {
        TessaportEntryPoints own{};
        own.releaseHandle = [](VelmoraHandle) { ++released; };
        return own;
    }();
    return table;
}

template <class Record>
void readList(VelmoraReply& reply)
{
    RecordReader reader(reply, table());
    Common::QVBuffer<Record> records;
    toNative(reader, reader.count(), records);
}

template <class Record>
void readOne(VelmoraReply& reply)
{
    RecordReader reader(reply, table());
    Record record;
    toNative(reader, record);
}

void read(unsigned kind, VelmoraReply& reply)
{
    switch (kind % 10) {
    case 0:
        return readList<TessaportAPI::Item>(reply);
    case 1:
        return readList<TessaportAPI::Drive>(reply);
    case 2:
        return readList<TessaportAPI::Command>(reply);
    case 3:
        return readList<TessaportAPI::PropertyDefinition>(reply);
    case 4:
        return readList<TessaportAPI::StringPropertyValue>(reply);
    case 5:
        return readList<TessaportAPI::WorkspacePathToItemResult>(reply);
    case 6:
        return readList<TessaportAPI::PermanentIdToItemResult>(reply);
    case 7:
        return readList<TessaportAPI::ItemIdToPermanentIdResult>(reply);
    case 8:
        return readOne<TessaportAPI::CommandResult>(reply);
    default:
        return readOne<Common::QVString>(reply);
    }
}

// How many of the taken handles are not the null object; those must have been released once each by now.
std::int64_t takenHandles(const VelmoraReply& reply)
{
    std::int64_t count = 0;
    for (std::uint64_t i = 0; i < reply.handlesTaken; ++i) {
        std::uint64_t offset = 0;
        std::memcpy(&offset, reply.data + 8, sizeof offset);
        VelmoraHandle handle = 0;
        std::memcpy(&handle, reply.data + offset + i * sizeof handle, sizeof handle);
        count += handle != 0 ? 1 : 0;
    }
    return count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    // An allocation of exactly the reply's size, so that the sanitizer sees a step beyond it.
    const std::unique_ptr<std::uint8_t[]> bytes(new std::uint8_t[size - 1]);
    std::memcpy(bytes.get(), data + 1, size - 1);
    VelmoraReply reply{};
    reply.data = bytes.get();
    reply.size = size - 1;
    released = 0;
    const TestSupport::MemoryLimit limit(MemoryForOneInput);
    try {
        read(data[0], reply);
    } catch (const DamagedReply&) {
    } catch (const std::bad_alloc&) {
        // The size of an image is all that a reply says of it, and may ask for more than there is.
    }
    if (released != takenHandles(reply))
        std::abort();
    return 0;
}
