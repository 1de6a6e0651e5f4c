#include "velmora/api/ItemId.h"

#include <utility>

#include <velmora/api/ItemIdImp.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

ItemIdImp* copied(const ItemIdImp* source)
{
    if (source == nullptr)
        return nullptr;
    auto* const copy = new ItemIdImp;
    copy->setInternalId(source->getInternalId());
    return copy;
}

} // namespace

ItemId::ItemId() noexcept = default;

ItemId::ItemId(const ItemId& other) : implementation(copied(other.implementation)) {}

ItemId::ItemId(ItemId&& other) noexcept : implementation(std::exchange(other.implementation, nullptr)) {}

ItemId::~ItemId() { ItemIdImp::destroy(implementation); }

ItemId& ItemId::operator=(const ItemId& other)
{
    if (this != &other && ItemIdImp::holdsId(other.implementation)) {
        ItemIdImp* const former = std::exchange(implementation, copied(other.implementation));
        ItemIdImp::destroy(former);
    }
    return *this;
}

ItemId& ItemId::operator=(ItemId&& other) noexcept
{
    if (this != &other && ItemIdImp::holdsId(other.implementation)) {
        ItemIdImp* const former = std::exchange(implementation, std::exchange(other.implementation, nullptr));
        ItemIdImp::destroy(former);
    }
    return *this;
}

} // namespace Quorvex::Velmora::TessaportAPI
