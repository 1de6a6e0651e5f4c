// Item ids, commands and contexts, as the handles of the managed objects that they stand for.
#pragma once

#include <vector>

#include <velmora/api/Records.h>
#include <velmora/bridge/runtime/TessaportEntryPoints.h>

namespace Quorvex::Velmora::Tessaport
{

/// The handle of the very managed object that the id or command came from; 0 when that was null.
/// @throws std::invalid_argument when it did not come from this library.
[[nodiscard]] VelmoraHandle toManaged(const TessaportAPI::ItemId& id);
[[nodiscard]] VelmoraHandle toManaged(const TessaportAPI::Command& command);

[[nodiscard]] std::vector<VelmoraHandle> toManaged(const Common::QVBuffer<TessaportAPI::ItemId>& ids);
[[nodiscard]] std::vector<VelmoraHandle> toManaged(const Common::QVBuffer<TessaportAPI::Item>& items);

/// A command context; must outlive the call that it is given to.
class CrossingContext
{
public:
    explicit CrossingContext(const TessaportAPI::CommandContext& context);
    CrossingContext(const CrossingContext&) = delete;
    CrossingContext& operator=(const CrossingContext&) = delete;

    [[nodiscard]] const VelmoraContext* get() const noexcept { return &crossing; }

private:
    std::vector<VelmoraHandle> items;
    VelmoraContext crossing;
};

} // namespace Quorvex::Velmora::Tessaport
