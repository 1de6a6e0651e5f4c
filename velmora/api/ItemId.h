#pragma once

#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::Tessaport
{
struct HandleAccess;
}

namespace Quorvex::Velmora::TessaportAPI
{

class ItemIdImp;

/// The sync application's handle of an item, to be passed back to the library.
///
/// It names its item as long as any copy of it exists, also after the connection that it came from was closed. A
/// default-constructed one names no item: a request with it fails with ApiException.
class VELMORA_API ItemId
{
public:
    /// Makes a handle that names no item.
    ItemId() noexcept;

    /// Makes a handle that names the same item.
    ///
    /// @throws std::bad_alloc if an allocation fails.
    ItemId(const ItemId& other);

    /// Takes over the handle of `other`, which then names no item.
    ItemId(ItemId&& other) noexcept;
    virtual ~ItemId();

    /// Makes this handle name the item of `other`.
    ///
    /// @note Kept for compatibility: assigning a handle that names no item changes nothing; it does not clear this one.
    /// @throws std::bad_alloc if an allocation fails. This handle is then unchanged.
    ItemId& operator=(const ItemId& other);

    /// Does the same, and `other` then names no item.
    ItemId& operator=(ItemId&& other) noexcept;

private:
    friend struct Tessaport::HandleAccess;

    // Null when the handle names no item: buffers default-construct many before they fill them.
    ItemIdImp* implementation = nullptr;
};

} // namespace Quorvex::Velmora::TessaportAPI
