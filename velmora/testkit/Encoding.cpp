#include "velmora/testkit/Encoding.h"

#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include <velmora/api/Interop.h>

namespace Quorvex::Velmora::TestKit
{
namespace
{

constexpr std::int64_t TicksPerSecond = 10'000'000;
// 1970-01-01 in the unit that .NET counts from the year 1.
constexpr std::int64_t EpochTicks = 621'355'968'000'000'000;

Json dateOf(std::int64_t seconds)
{
    constexpr std::int64_t Earliest = -EpochTicks / TicksPerSecond;
    constexpr std::int64_t Latest = 253'402'300'799; // 9999-12-31 23:59:59
    if (seconds < Earliest || seconds > Latest) {
        throw std::logic_error(
            "The script is wrong: lastModifiedDate " + std::to_string(seconds) + " is not in the years 1 to 9999.");
    }
    return {{"ticks", EpochTicks + seconds * TicksPerSecond}, {"kind", "Utc"}};
}

Json uuidOf(const Common::QVUUID& id)
{
    const Common::QVString text = id.getString();
    if (text.Empty())
        throw std::logic_error(
            "The script is wrong: a drive id is not an identifier. A default-constructed QVUUID is.");
    return encoded(text);
}

std::string base64(const std::uint8_t* data, std::size_t size)
{
    constexpr std::string_view Digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < size; i += 3) {
        const std::size_t count = size - i < 3 ? size - i : 3;
        std::uint32_t bits = 0;
        for (std::size_t k = 0; k < 3; ++k)
            bits = bits << 8U | (k < count ? data[i + k] : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            text += k <= count ? Digits[bits >> (18 - 6 * k) & 63U] : '=';
    }
    return text;
}

Json itemsOf(const Common::QVBuffer<TessaportAPI::Item>& items) { return encodedList(items.begin(), items.end()); }

Json valueOf(const TessaportAPI::StringPropertyValue& value)
{
    return {{"driveId", uuidOf(value.driveId)}, {"relativePath", encoded(value.relativePath)},
        {"propertyDefinitionId", encoded(value.propertyDefinitionId)}, {"value", encoded(value.value)}};
}

const char* exceptionOf(FailureKind kind)
{
    switch (kind) {
    case FailureKind::NotInstalled:
        return "TessaportNotInstalledException";
    case FailureKind::NotRunning:
        return "TessaportNotRunningException";
    case FailureKind::RequiresUpdate:
        return "TessaportRequiresUpdateException";
    case FailureKind::ApiRequiresUpdate:
        return "TessaportApiRequiresUpdateException";
    case FailureKind::ForcedUpdate:
        return "TessaportForcedUpdateException";
    case FailureKind::Other:
        break;
    }
    return "Exception";
}

/// The name that QvNativeTessaportAPI has for a member of the sync application.
std::string requestOf(std::string member)
{
    constexpr std::array<std::pair<std::string_view, std::string_view>, 4> Renamed = {{
        {"TessaportService", "connect"},
        {"AreFilesInWorkspace", "isFileInWorkspace"},
        {"DeleteItems", "deleteFilesOrFolders"},
        {"GetProperties", "getStringPropertyValues"},
    }};
    for (const auto& [from, to] : Renamed) {
        if (member == from)
            return std::string(to);
    }
    member[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(member[0])));
    return member;
}

// Strings that UTF-8 cannot carry come as arrays of UTF-16 units, and records without a name as numbers.
std::wstring wideOf(const Json& json)
{
    if (json.is_string())
        return TessaportAPI::toWide(TessaportAPI::toQVString(json.get_ref<const std::string&>()));
    std::wstring text;
    if (json.is_array()) {
        for (const Json& unit : json)
            text += static_cast<wchar_t>(unit.get<unsigned>());
    }
    return text;
}

std::wstring wideOf(const Json& call, const char* name)
{
    const auto found = call.find(name);
    return found == call.end() ? std::wstring() : wideOf(*found);
}

std::vector<std::wstring> listOf(const Json& call, const char* name)
{
    std::vector<std::wstring> list;
    const auto found = call.find(name);
    if (found != call.end() && found->is_array()) {
        for (const Json& element : *found)
            list.push_back(wideOf(element));
    }
    return list;
}

template <class Number>
Number numberOf(const Json& call, const char* name)
{
    const auto found = call.find(name);
    return found != call.end() && found->is_number() ? found->get<Number>() : Number{};
}

Common::QVUUID driveIdOf(const Json& call)
{
    const auto found = call.find("driveId");
    return found == call.end() ? Common::QVUUID("") : Common::QVUUID(found->get_ref<const std::string&>().c_str());
}

Call decodedCall(const Json& call)
{
    Call decoded;
    decoded.request = requestOf(call.at("member"));
    decoded.connection = call.at("service");
    for (const char* const name : {"folder", "parent", "item"})
        decoded.item += wideOf(call, name);
    for (const char* const name : {"ids", "items"}) {
        for (std::wstring& item : listOf(call, name))
            decoded.items.push_back(std::move(item));
    }
    decoded.paths = listOf(call, "paths");
    if (call.contains("path"))
        decoded.paths.push_back(wideOf(call, "path"));
    decoded.permanentIds = listOf(call, "permanentIds");
    decoded.propertyIds = listOf(call, "properties");
    decoded.name = wideOf(call, "name");
    decoded.commandId = wideOf(call, "command");
    decoded.driveId = driveIdOf(call);
    decoded.processId = numberOf<int>(call, "processId");
    decoded.window = reinterpret_cast<HWND>(static_cast<std::intptr_t>(numberOf<std::int64_t>(call, "window")));
    return decoded;
}

} // namespace

Json encoded(bool flag) { return flag; }

Json encoded(const Common::QVString& string) { return TessaportAPI::toUtf8(string); }

Json encoded(const TessaportAPI::Item& item)
{
    return {{"id", encoded(item.workspacePath)}, {"driveId", uuidOf(item.driveId)}, {"isFolder", item.isFolder},
        {"isInWorkspace", item.isInWorkspace}, {"isOnServer", item.isOnServer},
        {"lastModifiedDate", dateOf(item.lastModifiedDate)}, {"name", encoded(item.name)},
        {"relativePath", encoded(item.relativePath)}, {"workspacePath", encoded(item.workspacePath)}};
}

Json encoded(const TessaportAPI::Drive& drive)
{
    return {{"id", uuidOf(drive.id)}, {"name", encoded(drive.name)},
        {"workspaceLocation", encoded(drive.workspaceLocation)}, {"driveType", encoded(drive.driveType)},
        {"root", encoded(drive.root)}, {"capabilities", {{"locking", drive.locking}}}};
}

Json encoded(const TessaportAPI::Command& command)
{
    const TessaportAPI::Command::Image& image = command.image;
    return {{"command", encoded(command.id)}, {"id", encoded(command.id)}, {"name", encoded(command.name)},
        {"isEnabled", command.isEnabled}, {"isChecked", command.isChecked},
        {"isBeginningOfGroup", command.isBeginningOfGroup}, {"isDefaultCommand", command.isDefaultCommand},
        {"image", image.count == 0 ? Json() : Json(base64(image.data, static_cast<std::size_t>(image.count)))}};
}

Json encoded(const TessaportAPI::CommandResult& result)
{
    return {{"isSuccess", result.isSuccess}, {"itemsCreated", itemsOf(result.itemsCreated)},
        {"itemsDeleted", itemsOf(result.itemsDeleted)}, {"itemsUpdated", itemsOf(result.itemsUpdated)}};
}

Json encoded(const TessaportAPI::PropertyDefinition& definition)
{
    return {{"id", encoded(definition.id)}, {"displayName", encoded(definition.displayName)},
        {"displayDataType", static_cast<std::int32_t>(definition.displayDataType)},
        {"valueDataType", static_cast<std::int32_t>(definition.valueDataType)}};
}

Json encoded(const TessaportAPI::WorkspacePathToItemResult& result)
{
    return {{"item", encoded(result.item)}, {"workspacePath", encoded(result.workspacePath)},
        {"result", static_cast<std::int32_t>(result.result)}};
}

Json encoded(const TessaportAPI::PermanentIdToItemResult& result)
{
    return {{"item", encoded(result.item)}, {"permanentId", encoded(result.permanentId)},
        {"result", static_cast<std::int32_t>(result.result)}};
}

Json encoded(const ScriptedPermanentId& result)
{
    return {{"itemId", encoded(result.item.workspacePath)}, {"permanentId", encoded(result.permanentId)},
        {"result", static_cast<std::int32_t>(result.result)}};
}

Json encoded(const std::vector<TessaportAPI::StringPropertyValue>& values)
{
    Json list = Json::array();
    for (const TessaportAPI::StringPropertyValue& value : values)
        list.push_back(valueOf(value));
    return {{"values", std::move(list)}};
}

Json encodedFailure(const Failure& failure)
{
    return {{"type", exceptionOf(failure.kind)}, {"message", encoded(failure.message)}};
}

std::vector<Call> decodedCalls(const Json& calls)
{
    std::vector<Call> decoded;
    for (const Json& call : calls) {
        if (call.at("member") != "Dispose")
            decoded.push_back(decodedCall(call));
    }
    return decoded;
}

} // namespace Quorvex::Velmora::TestKit
