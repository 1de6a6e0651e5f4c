// What the window asks the sync application. These functions run on the request thread and touch no window.
#pragma once

#include <QImage>
#include <QString>
#include <QStringList>
#include <cstddef>
#include <memory>
#include <vector>

#include <velmora/native/QvNativeTessaportAPI.h>
#include "Text.h"

namespace DriveWindow
{

using Tessaport = Api::QvNativeTessaportAPI;

/// A drive, a folder or a file, ready to be shown.
struct Row {
    std::shared_ptr<const Api::Item> item; ///< Never null. Shared, because long lists are copied.
    QString name;
    QString state;
    qint64 size = -1; ///< In bytes; negative if unknown.
};
using Rows = std::vector<Row>;

struct Property {
    QString name;
    QString value;
};

struct MenuEntry {
    Api::Command command;
    QString text;
    QImage icon; ///< Null without one.
};

struct CommandMenu {
    std::vector<MenuEntry> entries;
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

    void add(const Outcome& other);
};

[[nodiscard]] Rows readDrives(Tessaport& tessaport);
/// Reads the folders in a folder, or all that is in it, sorted by name with folders first.
[[nodiscard]] Rows readFolders(Tessaport& tessaport, const Row& folder);
[[nodiscard]] Rows readContents(Tessaport& tessaport, const Row& folder);

/// Adds sizes and states to items of one drive. They take longer to read than the list.
[[nodiscard]] Rows readDetails(Tessaport& tessaport, Rows rows);
/// Reads the properties of items of one drive. One that differs between the items is shown as such.
[[nodiscard]] std::vector<Property> readProperties(Tessaport& tessaport, const Rows& rows);

[[nodiscard]] CommandMenu readCommands(Tessaport& tessaport, const Rows& rows);
[[nodiscard]] Outcome execute(Tessaport& tessaport, const Api::Command& command, const Rows& rows);
[[nodiscard]] Outcome sync(Tessaport& tessaport, const Rows& rows);
/// @param paths  local files, in the form of this platform.
[[nodiscard]] Outcome addFiles(Tessaport& tessaport, const Row& folder, const QStringList& paths);

} // namespace DriveWindow
