/// @file
/// What copies of a native item id or command share: the managed object that they stand for.
#pragma once

#include <velmora/bridge/boundary/ManagedHandle.h>

namespace Quorvex::Velmora::Tessaport
{

struct ItemIdWrapper {
    explicit ItemIdWrapper(const TessaportEntryPoints& table) noexcept : id(table) {}

    ManagedHandle id;
};

struct CommandWrapper {
    explicit CommandWrapper(const TessaportEntryPoints& table) noexcept : command(table) {}

    ManagedHandle command;
};

} // namespace Quorvex::Velmora::Tessaport
