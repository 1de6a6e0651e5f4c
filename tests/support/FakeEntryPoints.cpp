#include "tests/support/FakeEntryPoints.h"

#include <algorithm>
#include <bitset>
#include <cstdlib>
#include <cstring>
#include <map>
#include <utility>

#include <velmora/bridge/runtime/ClrRuntime.h>

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using Tessaport::TessaportEntryPoints;
using Tessaport::VelmoraArguments;
using Tessaport::VelmoraHandle;
using Tessaport::VelmoraReply;
using Tessaport::VelmoraRequest;

// A reply that was handed out and not yet given back, and its handles: `count` numbers from `first`.
struct Outstanding {
    const PackedReply* source = nullptr;
    const std::uint8_t* data = nullptr;
    void* memory = nullptr;
    VelmoraHandle first = 0;
    std::uint64_t count = 0;
};

struct State {
    // What requests reply; all but the last are pieces.
    std::vector<PackedReply> replies;
    std::map<VelmoraRequest, PackedReply> ownReplies;
    PackedReply newService = ReplyBuilder().handle().build(1);
    std::uint64_t expectedCount = 0;
    std::size_t shift = 0;
    std::int32_t row = 0;
    int calls = 0;
    int wrongReleases = 0;
    VelmoraHandle lastHandle = 0;
    // By number modulo the size, which is more than are ever alive at once.
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

// Takes back a reply, and releases the handles in it that no one has taken.
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

// Numbers the handles of the copy, except those that were cut off.
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
    // Exactly as large as the reply, so that a sanitizer reports every step beyond it.
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

// Returns false if the native side refuses the piece, or takes no pieces.
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

std::int32_t request(VelmoraRequest number, VelmoraHandle, const VelmoraArguments*, VelmoraReply* reply)
{
    ++state->calls;
    const bool makesService =
        number == VelmoraRequest::CreateService || number == VelmoraRequest::CreateServiceForWindow;
    const auto own = state->ownReplies.find(number);
    if (own != state->ownReplies.end())
        handOut(own->second, reply);
    else if (makesService && state->row == 0)
        handOut(state->newService, reply);
    else
        return respond(reply);
    return 0;
}

constexpr TessaportEntryPoints filledTable()
{
    TessaportEntryPoints table = Tessaport::expectedEntryPoints();
    table.request = request;
    table.releaseHandle = releaseHandle;
    table.releaseHandles = releaseHandles;
    table.releaseReply = releaseReply;
    table.countHandles = countHandles;
    return table;
}

constexpr TessaportEntryPoints Table = filledTable();

} // namespace

FakeEntryPoints::FakeEntryPoints()
{
    state = new State;
    Tessaport::ClrRuntime::ofProcess().replaceEntryPoints(&Table);
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

void FakeEntryPoints::replyTo(VelmoraRequest request, PackedReply reply)
{
    state->ownReplies[request] = std::move(reply);
}

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

PackedReply message(std::u16string_view text) { return ReplyBuilder().string(text).build(1); }

} // namespace Quorvex::Velmora::TestSupport
