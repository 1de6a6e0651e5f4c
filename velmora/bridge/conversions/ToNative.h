/// @file
/// Reads records from a reply. Each function fills one default-constructed record, and throws DamagedReply if the reply
/// ends too early.
#pragma once

#include <cstdint>

#include <velmora/api/Records.h>
#include <velmora/bridge/boundary/ReplyReader.h>

namespace Quorvex::Velmora::Tessaport
{

void toNative(ReplyReader& reader, Common::QVString& text);
void toNative(ReplyReader& reader, TessaportAPI::Item& item);
void toNative(ReplyReader& reader, TessaportAPI::Drive& drive);
/// Sets the outcome, and appends the items: a long result comes in several pieces.
void toNative(ReplyReader& reader, TessaportAPI::CommandResult& result);
void toNative(ReplyReader& reader, TessaportAPI::WorkspacePathToItemResult& result);
void toNative(ReplyReader& reader, TessaportAPI::PropertyDefinition& definition);
void toNative(ReplyReader& reader, TessaportAPI::StringPropertyValue& value);
void toNative(ReplyReader& reader, TessaportAPI::Command& command);
void toNative(ReplyReader& reader, TessaportAPI::ItemIdToPermanentIdResult& result);
void toNative(ReplyReader& reader, TessaportAPI::PermanentIdToItemResult& result);

/// The capacity of a buffer to which `count` elements were appended one by one. Reserving it leaves the same capacity.
[[nodiscard]] std::uint32_t capacityAfterAppending(std::uint32_t count) noexcept;

/// Appends `count` records.
template <class Record>
void toNative(ReplyReader& reader, std::uint32_t count, Common::QVBuffer<Record>& records)
{
    // No record has fewer than four bytes.
    records.Reserve(capacityAfterAppending(records.GetSize() + reader.plausible(count, 4)));
    for (std::uint32_t i = 0; i < count; ++i)
        toNative(reader, records.Append());
}

} // namespace Quorvex::Velmora::Tessaport
