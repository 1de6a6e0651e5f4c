/// The sync application's handle of an item.
#pragma once

#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::Tessaport
{
class QvManagedTessaportService;
}

namespace Quorvex::Velmora::TessaportAPI
{

class ItemIdImp;

/// An opaque handle of an item, to be handed back to the library. It names its item for as long as any copy lives, also
/// after the connection that it came from is gone. One made by hand names nothing; a request with it fails with
/// ApiException.
class VELMORA_API ItemId
{
public:
    ItemId() noexcept;
    ItemId(const ItemId& other);
    ItemId(ItemId&& other) noexcept;
    virtual ~ItemId();

    /// Makes this handle name the item of `other`. A handle that names nothing changes nothing: assigning it does not
    /// clear this one.
    ItemId& operator=(const ItemId& other);
    ItemId& operator=(ItemId&& other) noexcept;

private:
    friend class Tessaport::QvManagedTessaportService;

    // Null as long as the handle names nothing: lists are default-constructed before they are filled.
    ItemIdImp* implementation = nullptr;
};

} // namespace Quorvex::Velmora::TessaportAPI
