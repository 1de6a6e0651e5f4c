/// @file
/// The managed objects behind native item ids and commands.
#pragma once

#include <memory>

#include <velmora/api/Command.h>
#include <velmora/api/ItemId.h>
#include <velmora/bridge/boundary/ReplyReader.h>
#include <velmora/bridge/boundary/Wrappers.h>

namespace Quorvex::Velmora::Tessaport
{

struct HandleAccess {
    /// @return the wrapper that the id shares with its copies; null for an id that names nothing.
    [[nodiscard]] static std::shared_ptr<ItemIdWrapper> wrapperOf(const TessaportAPI::ItemId& id);
    [[nodiscard]] static std::shared_ptr<CommandWrapper> wrapperOf(const TessaportAPI::Command& command);

    /// @return the handle in the id's wrapper, or null for an id that names nothing. Unlike wrapperOf() it counts no
    /// owner: requests name many ids.
    [[nodiscard]] static const ManagedHandle* findHandle(const TessaportAPI::ItemId& id) noexcept;

    static void setWrapper(TessaportAPI::ItemId& id, std::shared_ptr<ItemIdWrapper> wrapper);
    static void setWrapper(TessaportAPI::Command& command, std::shared_ptr<CommandWrapper> wrapper);

    /// Gives the id a new wrapper in `room` (see IdRoom.h), which takes the reader's next handle.
    static void placeWrapper(TessaportAPI::ItemId& id, void* room, ReplyReader& reader);
};

} // namespace Quorvex::Velmora::Tessaport
