#include "velmora/api/ItemId.h"

#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/bridge/QvManagedTessaportService.h>
#include "tests/api/ManagedObjects.h"

using namespace Quorvex::Velmora;
using TessaportAPI::ItemId;
using TestSupport::ManagedObjects;
using Bridge = Tessaport::QvManagedTessaportService;
using Released = std::vector<Tessaport::VelmoraHandle>;

namespace
{

class ItemIds : public testing::Test
{
protected:
    [[nodiscard]] ItemId named(Tessaport::VelmoraHandle handle) const
    {
        ItemId id;
        Bridge::setInternalId(id, objects.itemId(handle));
        return id;
    }

    static Tessaport::VelmoraHandle handleOf(const ItemId& id)
    {
        const auto wrapper = Bridge::getInternalId(id);
        return wrapper == nullptr ? 0 : wrapper->id.get();
    }

    ManagedObjects objects;
};

} // namespace

TEST_F(ItemIds, NameNothingByDefault) { EXPECT_EQ(Bridge::getInternalId(ItemId()), nullptr); }

TEST_F(ItemIds, ShareTheManagedObjectWithTheirCopies)
{
    {
        ItemId copy;
        {
            const ItemId original = named(7);
            copy = original;
            const ItemId another(original);
            EXPECT_EQ(Bridge::getInternalId(another), Bridge::getInternalId(original));
        }
        EXPECT_EQ(handleOf(copy), 7);
        EXPECT_EQ(ManagedObjects::released, Released{});
    }
    EXPECT_EQ(ManagedObjects::released, Released{7});
}

TEST_F(ItemIds, KeepTheirObjectWhenAnIdThatNamesNothingIsAssigned)
{
    ItemId id = named(7);

    id = ItemId();
    const ItemId nothing;
    id = nothing;
    ItemId copyOfNothing(nothing);
    id = copyOfNothing;

    EXPECT_EQ(handleOf(id), 7);
    EXPECT_EQ(ManagedObjects::released, Released{});
}

TEST_F(ItemIds, KeepTheirObjectWhenAnIdWithAnEmptyInternalIdIsAssigned)
{
    ItemId id = named(7);
    ItemId emptied;
    Bridge::setInternalId(emptied, nullptr);

    id = emptied;
    id = std::move(emptied);

    EXPECT_EQ(handleOf(id), 7);
}

TEST_F(ItemIds, ReleaseThePreviousObjectWhenAnotherIsAssigned)
{
    ItemId id = named(7);

    id = named(8);
    EXPECT_EQ(ManagedObjects::released, Released{7});
    const ItemId ninth = named(9);
    id = ninth;

    EXPECT_EQ(ManagedObjects::released, (Released{7, 8}));
    EXPECT_EQ(handleOf(id), 9);
}

TEST_F(ItemIds, KeepTheirObjectWhenAssignedToThemselves)
{
    ItemId id = named(7);
    ItemId& same = id;

    id = same;
    id = std::move(same);

    EXPECT_EQ(handleOf(id), 7);
    EXPECT_EQ(ManagedObjects::released, Released{});
}

TEST_F(ItemIds, NameNothingAfterAMove)
{
    ItemId source = named(7);

    const ItemId target(std::move(source));

    EXPECT_EQ(handleOf(target), 7);
    EXPECT_EQ(handleOf(source), 0);
    EXPECT_EQ(handleOf(ItemId(source)), 0);
}

TEST_F(ItemIds, ReleaseTheirObjectWhenDestroyedThroughABase)
{
    ItemId* const id = new ItemId(named(7));

    delete id;

    EXPECT_EQ(ManagedObjects::released, Released{7});
}
