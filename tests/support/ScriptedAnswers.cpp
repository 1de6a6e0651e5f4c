#include "tests/support/ScriptedAnswers.h"

#include <utility>

#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::TestSupport
{
namespace
{

constexpr std::int64_t TicksPerSecond = 10'000'000;
constexpr std::int64_t EpochTicks = 621'355'968'000'000'000;

} // namespace

const char* const DriveId = "0f1e2d3c-4b5a-6978-8796-a5b4c3d2e1f0";

Json text(std::wstring_view text)
{
    if (auto narrow = Common::Unicode::toUtf8Strict(text))
        return *std::move(narrow);
    Json units = Json::array();
    for (const char16_t unit : Common::Unicode::toUtf16(text))
        units.push_back(static_cast<unsigned>(unit));
    return units;
}

std::wstring textOf(const Json& text)
{
    if (text.is_string())
        return Common::Unicode::fromUtf8(text.get<std::string>());
    std::u16string units;
    for (const Json& unit : text)
        units.push_back(static_cast<char16_t>(unit.get<unsigned>()));
    return Common::Unicode::fromUtf16(units);
}

Json date(std::int64_t seconds, std::int64_t ticks, const char* kind)
{
    return {{"ticks", EpochTicks + seconds * TicksPerSecond + ticks}, {"kind", kind}};
}

Json typedValue(const char* type, Json value) { return {{"type", type}, {"value", std::move(value)}}; }

Json failure(const char* type, std::wstring_view message) { return {{"type", type}, {"message", text(message)}}; }

Json failingList(Json list, unsigned after, Json failure, const char* step)
{
    return {{"list", std::move(list)}, {"after", after}, {"throw", std::move(failure)}, {"failsIn", step}};
}

Json listOfKind(const char* kind, Json list) { return {{"list", std::move(list)}, {"as", kind}}; }

Json generated(unsigned count) { return {{"generate", count}}; }

Json endlessList() { return "endless"; }

Json item(int number) { return itemAt(number, L"D:\\Drive\\Folder\\item " + std::to_wstring(number) + L".txt"); }

Json itemAt(int number, std::wstring_view workspacePath)
{
    const std::wstring name = L"item " + std::to_wstring(number) + L".txt";
    return {{"driveId", DriveId}, {"id", number}, {"isFolder", true}, {"isInWorkspace", true}, {"isOnServer", true},
        {"lastModifiedDate", date(1'700'000'000 + number)}, {"name", text(name)},
        {"relativePath", text(L"Folder\\" + name)}, {"workspacePath", text(workspacePath)}};
}

Json drive(int number, std::wstring_view driveType, std::wstring_view location)
{
    return {{"id", DriveId}, {"name", text(L"Drive " + std::to_wstring(number))}, {"workspaceLocation", text(location)},
        {"driveType", text(driveType)}, {"root", itemAt(number, location)}, {"capabilities", {{"locking", true}}}};
}

Json workspacePathResult(Json item, std::wstring_view path, int result)
{
    return {{"item", std::move(item)}, {"workspacePath", text(path)}, {"result", result}};
}

Json permanentIdResult(Json itemId, Json permanentId, int result)
{
    return {{"itemId", std::move(itemId)}, {"permanentId", std::move(permanentId)}, {"result", result}};
}

Json itemOfPermanentIdResult(Json item, Json permanentId, int result)
{
    return {{"item", std::move(item)}, {"permanentId", std::move(permanentId)}, {"result", result}};
}

Json propertyValues(Json list) { return {{"values", std::move(list)}}; }

Json propertyValue(std::wstring_view property, Json value)
{
    return {{"driveId", DriveId}, {"relativePath", "Folder\\item.txt"}, {"propertyDefinitionId", text(property)},
        {"value", std::move(value)}};
}

Json command(int number, Json image)
{
    return {{"command", number}, {"name", "Command " + std::to_string(number)},
        {"id", "command." + std::to_string(number)}, {"image", std::move(image)}};
}

Json commandWithFailingImage(int number, int reads, Json failure)
{
    Json result = command(number, "AQIDBA==");
    result["imageReads"] = reads;
    result["imageFailure"] = std::move(failure);
    return result;
}

Json outcome(bool isSuccess, Json created, Json deleted, Json updated)
{
    return {{"isSuccess", isSuccess}, {"itemsCreated", std::move(created)}, {"itemsDeleted", std::move(deleted)},
        {"itemsUpdated", std::move(updated)}};
}

} // namespace Quorvex::Velmora::TestSupport
