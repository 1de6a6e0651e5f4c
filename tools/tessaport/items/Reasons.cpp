#include "tools/tessaport/items/Reasons.h"

#include <velmora/api/Exceptions.h>
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

constexpr const char* ErrorProperty = "SyncError";

std::string keyOf(const Common::QVUUID& drive, const QVString& relativePath, const std::string& property)
{
    return toUtf8(drive) + '\n' + toUtf8(relativePath) + '\n' + property;
}

bool isTrue(const std::string& text) { return asciiLower(text) == "true"; }

} // namespace

std::string withoutFullStop(std::string text)
{
    while (!text.empty() && (text.back() == '.' || text.back() == ' '))
        text.pop_back();
    return text;
}

PropertyTexts::PropertyTexts(
    Context& context, const std::vector<Item>& items, const std::vector<std::string>& propertyIds, Refusal refusal)
{
    if (items.empty())
        return;
    QVBuffer<ItemId> ids;
    for (const Item& item : items)
        ids.Append(item.id);
    QVBuffer<QVString> names;
    for (const std::string& id : propertyIds)
        names.Append(toQVString(id));
    try {
        for (const StringPropertyValue& value : context.connection().getStringPropertyValues(ids, names))
            texts[keyOf(value.driveId, value.relativePath, toUtf8(value.propertyDefinitionId))] = toUtf8(value.value);
    } catch (const ApiException&) {
        // A sync application may refuse properties that it does not define.
        if (refusal == Refusal::Thrown)
            throw;
    }
}

std::string PropertyTexts::of(const Item& item, const std::string& propertyId) const
{
    return of(item.driveId, item.relativePath, propertyId);
}

std::string PropertyTexts::of(
    const Common::QVUUID& drive, const QVString& relativePath, const std::string& propertyId) const
{
    const auto found = texts.find(keyOf(drive, relativePath, propertyId));
    return found == texts.end() ? "" : found->second;
}

std::optional<Refusal> refusalOf(Context& context, const Common::QVUUID& driveId)
{
    for (const Drive& drive : context.connection().getDrives()) {
        if (drive.id != driveId)
            continue;
        const PropertyTexts texts(context, {drive.root}, {"Offline", "Writable", "IgnorePatterns", "UpkeepError"});
        const std::string offline = texts.of(drive.root, "Offline");
        const std::string writable = texts.of(drive.root, "Writable");
        const bool hasPatterns = !texts.of(drive.root, "IgnorePatterns").empty();
        const std::string fault = withoutFullStop(texts.of(drive.root, "UpkeepError"));
        // The sentences that the local service writes.
        const std::string name = "The drive '" + toUtf8(drive.name) + "' is ";
        if (isTrue(offline))
            return Refusal{name + "offline", true, hasPatterns, fault};
        if (offline.empty() && writable.empty())
            return std::nullopt;
        return Refusal{isTrue(writable) ? "" : name + "read-only", false, hasPatterns, fault};
    }
    return std::nullopt;
}

Reasons::Reasons(Context& commandContext, const std::vector<Item>& items)
    : context(commandContext), texts(commandContext, items, {ErrorProperty})
{
}

std::string Reasons::whyNotDone(const Item& item, const std::string& guess) const
{
    if (const std::string error = texts.of(item, ErrorProperty); !error.empty())
        return withoutFullStop(error);
    const auto drive = refusalOf(context, item.driveId);
    if (drive && drive->refuses())
        return drive->reason;
    return drive && !drive->fault.empty() ? drive->fault : guess;
}

bool Reasons::hasFailed(const Item& item) const { return !texts.of(item, ErrorProperty).empty(); }

} // namespace Quorvex::Velmora::Tool
