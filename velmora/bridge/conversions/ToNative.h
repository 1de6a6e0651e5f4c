/// @file
/// Reads records from a reply. Each function fills one default-constructed record, and throws DamagedReply if the reply
/// ends too early.
#pragma once

#include <cstdint>

#include <velmora/api/Records.h>
#include <velmora/bridge/conversions/RecordReader.h>

namespace Quorvex::Velmora::Tessaport
{

void toNative(RecordReader& reader, Common::QVString& text);
void toNative(RecordReader& reader, TessaportAPI::Item& item);
void toNative(RecordReader& reader, TessaportAPI::Drive& drive);
/// Sets the outcome, and appends the items: a long result comes in several pieces.
void toNative(RecordReader& reader, TessaportAPI::CommandResult& result);
void toNative(RecordReader& reader, TessaportAPI::WorkspacePathToItemResult& result);
void toNative(RecordReader& reader, TessaportAPI::PropertyDefinition& definition);
void toNative(RecordReader& reader, TessaportAPI::StringPropertyValue& value);
void toNative(RecordReader& reader, TessaportAPI::Command& command);
void toNative(RecordReader& reader, TessaportAPI::ItemIdToPermanentIdResult& result);
void toNative(RecordReader& reader, TessaportAPI::PermanentIdToItemResult& result);

/// The capacity of a buffer to which `count` elements were appended one by one. Reserving it leaves the same capacity.
[[nodiscard]] std::uint32_t capacityAfterAppending(std::uint32_t count) noexcept;

/// Appends `count` records.
template <class Record>
void toNative(RecordReader& reader, std::uint32_t count, Common::QVBuffer<Record>& records)
{
    // No record has fewer than four bytes.
    records.Reserve(capacityAfterAppending(records.GetSize() + reader.plausible(count, 4)));
    reader.expectTexts(count);
    for (std::uint32_t i = 0; i < count; ++i)
        toNative(reader, records.Append());
}

} // namespace Quorvex::Velmora::Tessaport
