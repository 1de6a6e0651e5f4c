#include "velmora/bridge/conversions/RequestArguments.h"

#include <cstddef>
#include <utility>

#include <velmora/api/TextAccess.h>
#include <velmora/text/Narrowing.h>

namespace Quorvex::Velmora::Tessaport
{

RequestArguments& RequestArguments::setFolder(const TessaportAPI::ItemId& folder)
{
    arguments.target = toManaged(folder);
    return *this;
}

RequestArguments& RequestArguments::setCommand(const TessaportAPI::Command& command)
{
    arguments.target = toManaged(command);
    return *this;
}

RequestArguments& RequestArguments::setIds(const Common::QVBuffer<TessaportAPI::ItemId>& ids)
{
    return setHandles(toManaged(ids));
}

RequestArguments& RequestArguments::setIds(const Common::QVBuffer<TessaportAPI::Item>& items)
{
    return setHandles(toManaged(items));
}

RequestArguments& RequestArguments::setStrings(const Common::QVBuffer<Common::QVString>& values)
{
    std::size_t most = 0;
    for (const Common::QVString& value : values)
        most += Common::mostUnits(Common::TextAccess::view(value).size());
    // Not a vector, which would clear what is written next.
    characters.reset(new char16_t[most]);
    strings.reserve(values.GetSize());
    char16_t* position = characters.get();
    for (const Common::QVString& value : values) {
        const std::size_t length = Common::narrow(Common::TextAccess::view(value), position);
        strings.push_back({position, length});
        position += length;
    }
    arguments.strings = strings.data();
    arguments.stringCount = strings.size();
    return *this;
}

RequestArguments& RequestArguments::setPaths(const Common::QVBuffer<Common::QVString>& paths)
{
    setStrings(paths);
    if (!strings.empty()) {
        const VelmoraString& last = strings.back();
        useBackSlashes(characters.get(), characters.get() + (last.data - characters.get()) + last.length);
    }
    return *this;
}

RequestArguments& RequestArguments::setPath(const Common::QVString& path) { return setString(toManagedPath(path)); }

RequestArguments& RequestArguments::setString(std::u16string value)
{
    single = std::move(value);
    singleString = {single.data(), single.size()};
    arguments.strings = &singleString;
    arguments.stringCount = 1;
    return *this;
}

RequestArguments& RequestArguments::setDriveId(const Common::QVUUID& id)
{
    arguments.identifier = toManaged(id);
    return *this;
}

RequestArguments& RequestArguments::setContext(const TessaportAPI::CommandContext& context)
{
    contextItems = toManaged(context.itemIds);
    crossingContext = {context.windowHandle, toManaged(context.itemId), contextItems.data(), contextItems.size()};
    arguments.context = &crossingContext;
    return *this;
}

RequestArguments& RequestArguments::setWindow(HWND window) noexcept
{
    arguments.window = window;
    return *this;
}

RequestArguments& RequestArguments::setNumber(std::int64_t number) noexcept
{
    arguments.number = number;
    return *this;
}

RequestArguments& RequestArguments::setHandles(std::vector<VelmoraHandle> given) noexcept
{
    handles = std::move(given);
    arguments.handles = handles.data();
    arguments.handleCount = handles.size();
    return *this;
}

} // namespace Quorvex::Velmora::Tessaport
