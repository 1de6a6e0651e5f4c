// The implementation object that an ItemId owns. Internal.
#pragma once

#include <memory>
#include <utility>

namespace Quorvex::Velmora::Tessaport
{
struct ItemIdWrapper;
}

namespace Quorvex::Velmora::TessaportAPI
{

class ItemIdImp
{
public:
    using Dispose = void (*)(ItemIdImp*) noexcept;

    /// @param dispose  destroys this object; given by code that did not allocate it with `new`.
    explicit ItemIdImp(Dispose dispose = [](ItemIdImp* imp) noexcept { delete imp; }) noexcept : dispose(dispose) {}

    void setInternalId(std::shared_ptr<Tessaport::ItemIdWrapper> id) noexcept { internalId = std::move(id); }
    [[nodiscard]] const std::shared_ptr<Tessaport::ItemIdWrapper>& getInternalId() const noexcept { return internalId; }

    /// Returns whether it names an item. An assignment from one that names none changes nothing.
    [[nodiscard]] static bool holdsId(const ItemIdImp* imp) noexcept
    {
        return imp != nullptr && imp->internalId != nullptr;
    }

    static void destroy(ItemIdImp* imp) noexcept
    {
        if (imp != nullptr)
            imp->dispose(imp);
    }

private:
    std::shared_ptr<Tessaport::ItemIdWrapper> internalId;
    Dispose dispose;
};

} // namespace Quorvex::Velmora::TessaportAPI
