#pragma once

#include <algorithm>
#include <cstdint>
#include <exception>

#include <velmora/api/QVBuffer.h>
#include <velmora/bridge/boundary/OwnedReply.h>
#include <velmora/bridge/conversions/RecordReader.h>
#include <velmora/bridge/conversions/ToNative.h>

namespace Quorvex::Velmora::Tessaport
{

/// Receives a list, or a result with lists, over the C boundary piece by piece, and appends what each piece holds.
/// Outlives the call whose reply it is.
template <class Result>
class ReplyReceiver
{
public:
    ReplyReceiver(const TessaportEntryPoints& table, Result& result) : table(table), owned(table), result(result)
    {
        owned.reply().takePiece = &takePiece;
        owned.reply().taker = this;
    }
    ReplyReceiver(const ReplyReceiver&) = delete;
    ReplyReceiver& operator=(const ReplyReceiver&) = delete;

    [[nodiscard]] OwnedReply& reply() noexcept { return owned; }

    /// Throws what went wrong while a piece was taken, if anything did: it is the cause of the call's failure.
    void rethrowFailure() const
    {
        if (failure != nullptr)
            std::rethrow_exception(failure);
    }

    /// Takes the last piece, which is the reply itself. Call it once the request has succeeded.
    void finish() { append(owned.reply()); }

private:
    // The announced count is untrusted: beyond this the buffer grows as the records come.
    static constexpr std::uint64_t LongestAnnouncement = 1U << 20;

    static std::int32_t takePiece(VelmoraReply* piece) noexcept
    {
        auto* const self = static_cast<ReplyReceiver*>(piece->taker);
        try {
            self->append(*piece);
            return 0;
        } catch (...) {
            self->failure = std::current_exception();
            return 1;
        }
    }

    void append(VelmoraReply& piece)
    {
        RecordReader reader(piece, table);
        append(reader, piece, result);
    }

    template <class Record>
    static void append(RecordReader& reader, const VelmoraReply& piece, Common::QVBuffer<Record>& records)
    {
        records.Reserve(
            capacityAfterAppending(static_cast<std::uint32_t>(std::min(piece.expectedCount, LongestAnnouncement))));
        toNative(reader, reader.count(), records);
    }

    static void append(RecordReader& reader, const VelmoraReply&, TessaportAPI::CommandResult& outcome)
    {
        toNative(reader, outcome);
    }

    const TessaportEntryPoints& table;
    OwnedReply owned;
    Result& result;
    std::exception_ptr failure;
};

} // namespace Quorvex::Velmora::Tessaport
