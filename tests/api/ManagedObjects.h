// Wrappers of managed objects that do not exist, and a record of which handles were released.
#pragma once

#include <memory>
#include <vector>

#include <velmora/bridge/boundary/Wrappers.h>

namespace Quorvex::Velmora::TestSupport
{

class ManagedObjects
{
public:
    ManagedObjects()
    {
        released.clear();
        table.releaseHandle = [](Tessaport::VelmoraHandle handle) { released.push_back(handle); };
    }

    [[nodiscard]] std::shared_ptr<Tessaport::ItemIdWrapper> itemId(Tessaport::VelmoraHandle handle) const
    {
        auto wrapper = std::make_shared<Tessaport::ItemIdWrapper>(table);
        wrapper->id.take(handle);
        return wrapper;
    }

    [[nodiscard]] std::shared_ptr<Tessaport::CommandWrapper> command(Tessaport::VelmoraHandle handle) const
    {
        auto wrapper = std::make_shared<Tessaport::CommandWrapper>(table);
        wrapper->command.take(handle);
        return wrapper;
    }

    static inline std::vector<Tessaport::VelmoraHandle> released;

private:
    Tessaport::TessaportEntryPoints table{};
};

} // namespace Quorvex::Velmora::TestSupport
