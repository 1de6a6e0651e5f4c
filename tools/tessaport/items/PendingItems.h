#pragma once

#include <string>
#include <vector>

#include "tools/tessaport/app/Context.h"

namespace Quorvex::Velmora::Tool
{

/// Why an item is listed as not in sync. Scripts see the words and letters.
struct PendingKind {
    const char* word;
    char letter;
    const char* text;
};

/// The state of an item for people: "in sync", "changed here", …
std::string textOfState(const std::string& word);

/// An item that is not in sync, is locked or was kept in a conflict.
struct PendingItem {
    Common::QVUUID drive;
    std::string relativePath;  ///< As the sync application writes it.
    std::string workspacePath; ///< As the sync application writes it.
    bool isFolder = false;
    std::string state;        ///< The property SyncState; "offline" for everything on an offline drive.
    std::string error;        ///< Why the last request failed, if it did.
    std::string lockedBy;     ///< Who locked it, if it is locked.
    std::string conflictOf;   ///< For a copy that was kept in a conflict, the relative path of the other version.
    std::string conflictFrom; ///< The side from which the copy is, "here" or "server"; empty if that is not known.

    [[nodiscard]] const PendingKind& kind() const;

    /// False for a locked item, which needs nothing to be done.
    [[nodiscard]] bool isPending() const;
};

/// The workspace path of an item on the drive of another one, as the sync application writes it.
std::string workspacePathIn(const TessaportAPI::Item& sameDrive, const std::string& relativePath);

/// Lists what is not in sync at an item and in it, folders before their contents.
///
/// @throws ApiException if the sync application cannot be asked.
std::vector<PendingItem> pendingIn(Context& context, const TessaportAPI::Item& top);

/// Lists what the patterns of the drive leave out at an item and in it; of a folder that is left out, only the folder.
///
/// @return nothing for a sync application that has no patterns.
/// @throws ApiException if the sync application cannot be asked.
std::vector<PendingItem> leftOutIn(Context& context, const TessaportAPI::Item& top);

} // namespace Quorvex::Velmora::Tool
