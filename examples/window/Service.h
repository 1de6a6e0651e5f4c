// What the window asks the sync application. These functions run on the request thread and touch no window.
#pragma once

#include <QImage>
#include <QStringList>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <velmora/native/QvNativeTessaportAPI.h>
#include "Text.h"

namespace DriveWindow
{

using Tessaport = Api::QvNativeTessaportAPI;
using Items = Api::QVBuffer<Api::Item>;
using ItemList = std::shared_ptr<const Items>; ///< For requests: long lists are not copied. Never null.

/// What is read about an item after the list.
struct Details {
    qint64 size = -1; ///< In bytes; negative if unknown.
    QString state;
};

struct CommandMenu {
    struct Entry {
        Api::Command command;
        QImage icon; ///< Null without one.
    };
    std::vector<Entry> entries;
    std::size_t leftOut = 0; ///< The number of further commands.
    QStringList problems;    ///< Why icons are missing.
};

/// What became of a request that changes items.
struct Outcome {
    bool success = true;
    std::size_t created = 0;
    std::size_t updated = 0;
    std::size_t deleted = 0;
    QStringList problems;
};

/// Returns the root folders of the drives, with the names of the drives.
[[nodiscard]] Items readDrives(Tessaport& api);

/// Returns the positions of the items in the order of their names, in which numbers count as such.
[[nodiscard]] std::vector<std::uint32_t> orderByName(const Items& items);

/// Reads the details of items of one drive.
[[nodiscard]] std::vector<Details> readDetails(Tessaport& api, const Items& items);
/// Reads the names and values of the properties of items of one drive.
[[nodiscard]] std::vector<QStringList> readProperties(Tessaport& api, const Items& items);

[[nodiscard]] CommandMenu readCommands(Tessaport& api, const Items& items);
[[nodiscard]] Outcome execute(Tessaport& api, const Api::Command& command, const Items& items);
[[nodiscard]] Outcome sync(Tessaport& api, const Items& items);
/// Returns the names of local files that the folder has already, in quotation marks; at most ten.
[[nodiscard]] QStringList namesThere(Tessaport& api, const Api::Item& folder, const QStringList& paths);
/// @param path  a local file, in the form of this platform.
[[nodiscard]] Outcome addFile(Tessaport& api, const Api::Item& folder, const QString& path);

} // namespace DriveWindow
