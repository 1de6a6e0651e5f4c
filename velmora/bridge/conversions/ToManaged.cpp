#include "velmora/bridge/conversions/ToManaged.h"

#include <algorithm>
#include <stdexcept>

#include <velmora/api/TextAccess.h>
#include <velmora/api/UuidAccess.h>
#include <velmora/bridge/conversions/HandleAccess.h>
#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::Tessaport
{

VelmoraHandle toManaged(const TessaportAPI::ItemId& id)
{
    const ManagedHandle* const handle = HandleAccess::findHandle(id);
    if (handle == nullptr)
        throw std::invalid_argument("The item id names nothing; use an item that a request of this library returned.");
    return handle->get();
}

VelmoraHandle toManaged(const TessaportAPI::Command& command)
{
    const auto wrapper = HandleAccess::wrapperOf(command);
    if (wrapper == nullptr)
        throw std::invalid_argument("The command names nothing; use one that getCommands returned.");
    return wrapper->command.get();
}

std::vector<VelmoraHandle> toManaged(const Common::QVBuffer<TessaportAPI::ItemId>& ids)
{
    std::vector<VelmoraHandle> handles;
    handles.reserve(ids.GetSize());
    for (const TessaportAPI::ItemId& id : ids)
        handles.push_back(toManaged(id));
    return handles;
}

std::vector<VelmoraHandle> toManaged(const Common::QVBuffer<TessaportAPI::Item>& items)
{
    std::vector<VelmoraHandle> handles;
    handles.reserve(items.GetSize());
    for (const TessaportAPI::Item& item : items)
        handles.push_back(toManaged(item.id));
    return handles;
}

const std::uint8_t* toManaged(const Common::QVUUID& id)
{
    if (!Common::UuidAccess::isValid(id)) {
        throw std::invalid_argument("The drive id was made from text that is not an identifier; it must have the form "
                                    "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx.");
    }
    return Common::UuidAccess::bytes(id);
}

std::u16string toManagedPath(const Common::QVString& path)
{
    std::u16string units = Common::Unicode::toUtf16(Common::TextAccess::view(path));
    useBackSlashes(units.data(), units.data() + units.size());
    return units;
}

void useBackSlashes(char16_t* begin, char16_t* end) noexcept
{
    // Writes every character, so that the compiler can take several at once.
    std::transform(begin, end, begin, [](char16_t unit) { return unit == u'/' ? u'\\' : unit; });
}

} // namespace Quorvex::Velmora::Tessaport
