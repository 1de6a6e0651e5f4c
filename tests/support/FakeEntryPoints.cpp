#include "tests/support/FakeEntryPoints.h"

#include <algorithm>
#include <bitset>
#include <cstdlib>
#include <cstring>
#include <map>
#include <tuple>
#include <utility>

#include <velmora/bridge/runtime/ClrRuntime.h>

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using Tessaport::TessaportEntryPoints;
using Tessaport::VelmoraHandle;
using Tessaport::VelmoraReply;

// A reply that is out, and the handles in it: `count` numbers from `first`.
struct Outstanding {
    const PackedReply* source = nullptr;
    const std::uint8_t* data = nullptr;
    void* memory = nullptr;
    VelmoraHandle first = 0;
    std::uint64_t count = 0;
};

struct State {
    // All but the last are pieces.
    std::vector<PackedReply> replies;
    // For requests with a reply of their own, by their place in the table.
    std::map<std::size_t, PackedReply> ownReplies;
    std::uint64_t expectedCount = 0;
    std::size_t shift = 0;
    std::int32_t row = 0;
    int calls = 0;
    int wrongReleases = 0;
    VelmoraHandle lastHandle = 0;
    // By number modulo the size: so many are never out at once.
    std::bitset<1 << 16> liveHandles;
    Outstanding outstanding[16];
};

State* state = nullptr;

constexpr std::int32_t OtherRow = 6;

VelmoraHandle newHandle()
{
    const VelmoraHandle handle = ++state->lastHandle;
    state->liveHandles.set(static_cast<std::size_t>(handle) % state->liveHandles.size());
    return handle;
}

void releaseHandle(VelmoraHandle handle)
{
    const auto place = static_cast<std::size_t>(handle) % state->liveHandles.size();
    if (handle <= 0 || handle > state->lastHandle || !state->liveHandles.test(place))
        ++state->wrongReleases;
    else
        state->liveHandles.reset(place);
}

void releaseHandles(const VelmoraHandle* handles, std::uint64_t count)
{
    std::for_each(handles, handles + count, releaseHandle);
}

// Gives back what was handed out, but for the handles that were taken.
void release(Outstanding& out, std::uint64_t handlesTaken)
{
    for (std::uint64_t i = handlesTaken; i < out.count; ++i) {
        if (!out.source->isNullHandle[i])
            releaseHandle(out.first + static_cast<VelmoraHandle>(i));
    }
    std::free(out.memory);
    out = Outstanding();
}

void releaseReply(VelmoraReply* reply)
{
    const auto found = std::find_if(std::begin(state->outstanding), std::end(state->outstanding),
        [reply](const Outstanding& out) { return out.data == reply->data; });
    if (reply->data == nullptr || found == std::end(state->outstanding)) {
        ++state->wrongReleases;
        return;
    }
    release(*found, reply->handlesTaken);
    reply->data = nullptr;
    reply->size = 0;
}

std::int64_t countHandles() { return static_cast<std::int64_t>(state->liveHandles.count()); }

// Numbers the handles of the copy; those that were cut off are not out.
void numberHandles(std::uint8_t* data, Outstanding& out)
{
    const PackedReply& reply = *out.source;
    out.first = state->lastHandle + 1;
    for (std::size_t i = 0; i < reply.isNullHandle.size(); ++i) {
        const std::size_t offset = reply.handlesOffset + i * sizeof(VelmoraHandle);
        if (offset + sizeof(VelmoraHandle) > reply.bytes.size())
            break;
        ++out.count;
        VelmoraHandle handle = 0;
        if (reply.isNullHandle[i])
            ++state->lastHandle;
        else
            handle = newHandle();
        std::memcpy(data + offset, &handle, sizeof handle);
    }
}

Outstanding& handOut(const PackedReply& source, VelmoraReply* reply)
{
    Outstanding& out = *std::find_if(std::begin(state->outstanding), std::end(state->outstanding),
        [](const Outstanding& other) { return other.data == nullptr; });
    out.source = &source;
    // Exactly as large as the reply, so that a sanitizer sees every step beyond it.
    out.memory = std::malloc(std::max<std::size_t>(source.bytes.size() + state->shift, 1));
    auto* const data = static_cast<std::uint8_t*>(out.memory) + state->shift;
    std::copy(source.bytes.begin(), source.bytes.end(), data);
    numberHandles(data, out);
    out.data = data;
    reply->data = data;
    reply->size = source.bytes.size();
    reply->handlesTaken = 0;
    return out;
}

// False when the native side refuses it, or takes no pieces.
bool passPiece(const PackedReply& piece, VelmoraReply* reply)
{
    if (reply->takePiece == nullptr)
        return false;
    Outstanding& out = handOut(piece, reply);
    const bool isTaken = reply->takePiece(reply) == 0;
    release(out, reply->handlesTaken);
    reply->data = nullptr;
    reply->size = 0;
    return isTaken;
}

std::int32_t respond(VelmoraReply* reply)
{
    if (state->replies.empty())
        return state->row;
    reply->expectedCount = state->expectedCount;
    for (std::size_t i = 0; i + 1 < state->replies.size(); ++i) {
        if (!passPiece(state->replies[i], reply))
            return OtherRow;
    }
    handOut(state->replies.back(), reply);
    return state->row;
}

std::int32_t respond(std::size_t slot, VelmoraReply* reply)
{
    ++state->calls;
    const auto own = state->ownReplies.find(slot);
    if (own == state->ownReplies.end())
        return respond(reply);
    handOut(own->second, reply);
    return 0;
}

// A request of any arguments, the reply being the last.
template <auto Member>
struct Request;

template <class... Arguments, std::int32_t (*TessaportEntryPoints::*Member)(Arguments...)>
struct Request<Member> {
    static std::int32_t run(Arguments... arguments)
    {
        return respond(FakeEntryPoints::slotOf(Member),
            std::get<sizeof...(Arguments) - 1>(std::tuple<Arguments...>(arguments...)));
    }
};

template <auto... Members>
void fill(TessaportEntryPoints& table)
{
    ((table.*Members = &Request<Members>::run), ...);
}

std::int32_t createService(VelmoraHandle* service, VelmoraReply* reply)
{
    ++state->calls;
    if (state->row != 0)
        return respond(reply);
    *service = newHandle();
    return 0;
}

std::int32_t createServiceForWindow(void*, VelmoraHandle* service, VelmoraReply* reply)
{
    return createService(service, reply);
}

const TessaportEntryPoints& table()
{
    static const TessaportEntryPoints filled = [] {
        TessaportEntryPoints t{};
        t.version = Tessaport::EntryPointsVersion;
        t.size = sizeof t;
        t.createService = createService;
        t.createServiceForWindow = createServiceForWindow;
        using Table = TessaportEntryPoints;
        fill<&Table::discover, &Table::getVersion, &Table::getDrives, &Table::getChildFolders,
            &Table::getFolderContents, &Table::addFiles, &Table::getOrCreateFolder, &Table::canAddFiles,
            &Table::isFileInWorkspace, &Table::syncFiles, &Table::deleteItems, &Table::getItemsByWorkspacePaths,
            &Table::getItemsByRelativePaths, &Table::fileClosedWithinRunningProcess, &Table::getPropertyDefinitions,
            &Table::getProperties, &Table::getCommands, &Table::executeCommand, &Table::getPermanentIds,
            &Table::getItemsByPermanentIds, &Table::getFullPath>(t);
        t.releaseHandle = releaseHandle;
        t.releaseHandles = releaseHandles;
        t.releaseReply = releaseReply;
        t.countHandles = countHandles;
        return t;
    }();
    return filled;
}

} // namespace

FakeEntryPoints::FakeEntryPoints()
{
    state = new State;
    Tessaport::ClrRuntime::ofProcess().replaceEntryPoints(&table());
}

FakeEntryPoints::~FakeEntryPoints()
{
    Tessaport::ClrRuntime::ofProcess().replaceEntryPoints(nullptr);
    delete std::exchange(state, nullptr);
}

void FakeEntryPoints::replyWith(PackedReply reply, std::size_t shift)
{
    replyInPieces({std::move(reply)});
    state->shift = shift;
}

void FakeEntryPoints::replyInPieces(std::vector<PackedReply> pieces, std::uint64_t expectedCount)
{
    state->replies = std::move(pieces);
    state->expectedCount = expectedCount;
    state->shift = 0;
    state->row = 0;
}

void FakeEntryPoints::replyTo(std::size_t slot, PackedReply reply) { state->ownReplies[slot] = std::move(reply); }

void FakeEntryPoints::replyWithNothing() { replyInPieces({}); }

void FakeEntryPoints::failWith(std::int32_t row) { state->row = row; }

int FakeEntryPoints::calls() const noexcept { return state->calls; }

std::int64_t FakeEntryPoints::liveHandles() const noexcept { return countHandles(); }

int FakeEntryPoints::liveReplies() const noexcept
{
    return static_cast<int>(std::count_if(std::begin(state->outstanding), std::end(state->outstanding),
        [](const Outstanding& out) { return out.data != nullptr; }));
}

int FakeEntryPoints::wrongReleases() const noexcept { return state->wrongReleases; }

PackedReply message(std::u16string_view text) { return ReplyBuilder().text(text).build(1); }

} // namespace Quorvex::Velmora::TestSupport
