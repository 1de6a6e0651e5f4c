/// @file
/// Records to answer with. They are ordinary records: a test changes whatever field it needs to.
#pragma once

#include <cstdint>
#include <vector>

#include <velmora/api/Command.h>
#include <velmora/api/Drive.h>
#include <velmora/api/Item.h>
#include <velmora/api/QVString.h>
#include <velmora/api/Result.h>

namespace Quorvex::Velmora::TestKit
{

/// An answer of getPermanentIds for one item.
struct ScriptedPermanentId {
    TessaportAPI::Item item;      ///< The item, recognised by its workspace path.
    Common::QVString permanentId; ///< Its permanent id; empty means that it has none.
    /// Whether the permanent id was found.
    TessaportAPI::Result result = TessaportAPI::Result::Success;
};

/// Makes a drive of type "Quorvex.DataSourceType.Drive" with a new identifier, whose root is `workspaceLocation`.
///
/// @param name               display name, also of the root.
/// @param workspaceLocation  the local folder that mirrors the drive. Nothing needs to exist there.
[[nodiscard]] TessaportAPI::Drive makeDrive(
    const Common::QVString& name, const Common::QVString& workspaceLocation = L"W:\\Tessaport\\Drive");

/// @name Items
/// @{

/// Makes an item that is in the workspace and on the server, was last modified on 2024-05-17 at 08:30:00 UTC, and is
/// named after the last part of its path.
///
/// Its `id` names no item: to make a request with an item, a test uses the one that the library has returned.
/// @param drive         the drive that holds the item.
/// @param relativePath  below the root of the drive; either slash is accepted.
[[nodiscard]] TessaportAPI::Item makeFile(const TessaportAPI::Drive& drive, const Common::QVString& relativePath);
[[nodiscard]] TessaportAPI::Item makeFolder(const TessaportAPI::Drive& drive, const Common::QVString& relativePath);
/// @}

/// Makes a command that is enabled.
///
/// @param id     by which it is recognised when it is executed.
/// @param name   display text.
/// @param image  the bytes of its icon, usually a PNG file.
[[nodiscard]] TessaportAPI::Command makeCommand(
    const Common::QVString& id, const Common::QVString& name, const std::vector<std::uint8_t>& image = {});

} // namespace Quorvex::Velmora::TestKit
