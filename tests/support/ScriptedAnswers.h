// Answers of the scripted service, as JSON. A missing property has the default value of its type: null for strings,
// ids, lists and records.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace Quorvex::Velmora::TestSupport
{

using Json = nlohmann::json;

/// A string that arrives unchanged, including unpaired surrogates and zero characters.
[[nodiscard]] Json text(std::wstring_view text);
[[nodiscard]] std::wstring textOf(const Json& text);

/// The date this many seconds and 100 ns ticks after 1970-01-01 00:00:00, of kind "Utc", "Local" or "Unspecified".
[[nodiscard]] Json date(std::int64_t seconds, std::int64_t ticks = 0, const char* kind = "Utc");

/// A property value of a type that JSON does not have; see managed/ScriptedTessaport/Records/Values.cs.
[[nodiscard]] Json typedValue(const char* type, Json value = nullptr);

/// An exception, by the name of its type.
[[nodiscard]] Json failure(const char* type, std::wstring_view message);

/// A lazy list that throws in `step` (GetEnumerator, MoveNext, Current or Dispose) after this many elements.
[[nodiscard]] Json failingList(Json list, unsigned after, Json failure, const char* step = "MoveNext");

/// A collection of another kind than List<T>: "array", "enumerable-only" (fails if anything but its generic enumerator
/// is used), "reversing" (a class derived from List<T> that enumerates from its end), or, for property values,
/// "growing" (a List<T> that grows while it is enumerated).
[[nodiscard]] Json listOfKind(const char* kind, Json list);

/// A prepared list of this many generated records.
[[nodiscard]] Json generated(unsigned count);

/// A list of generated records, one for each millisecond, that ends when the service is reset.
[[nodiscard]] Json endlessList();

/// An item with all nine fields, derived from `number`, which is also the number of its id.
[[nodiscard]] Json item(int number);

/// An item with this path and id; its other fields are those of item(number).
[[nodiscard]] Json itemAt(int number, std::wstring_view workspacePath);

/// A drive with a root whose id has the number `number`.
[[nodiscard]] Json drive(int number, std::wstring_view driveType, std::wstring_view location);

[[nodiscard]] Json workspacePathResult(Json item, std::wstring_view path, int result);
[[nodiscard]] Json permanentIdResult(Json itemId, Json permanentId, int result);
[[nodiscard]] Json itemOfPermanentIdResult(Json item, Json permanentId, int result);
[[nodiscard]] Json propertyValues(Json list);
[[nodiscard]] Json propertyValue(std::wstring_view property, Json value);
/// @param image  bytes in base 64, or the number of bytes of a long image, of which each is its index modulo 251.
[[nodiscard]] Json command(int number, Json image = nullptr);
/// A command whose image can be read so many times, and then fails. getCommands reads it once.
[[nodiscard]] Json commandWithFailingImage(int number, int reads, Json failure);
[[nodiscard]] Json outcome(bool isSuccess, Json created = nullptr, Json deleted = nullptr, Json updated = nullptr);

/// The identifier of the drives and items above.
extern const char* const DriveId;

constexpr const wchar_t* DriveType = L"Quorvex.DataSourceType.Drive";
constexpr const wchar_t* DocsType = L"Quorvex.DataSourceType.TrelisDocs";
constexpr const wchar_t* TeamType = L"Quorvex.DataSourceType.TrelisTeam";
constexpr const wchar_t* MorrowType = L"Quorvex.DataSourceType.Morrow";

} // namespace Quorvex::Velmora::TestSupport
