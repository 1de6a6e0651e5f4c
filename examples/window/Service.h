// What the window asks the sync application. These functions run on the request thread and touch no window.
#pragma once

#include <QImage>
#include <QString>
#include <QStringList>
#include <cstddef>
#include <vector>

#include <velmora/native/QvNativeTessaportAPI.h>
#include "Text.h"

namespace DriveWindow
{

using Tessaport = Api::QvNativeTessaportAPI;
using Items = std::vector<Api::Item>;

/// A folder of the tree.
struct Folder {
    Api::Item item;
    QString name;
};

/// An item of the list.
struct Row {
    Api::Item item;
    QString name;
    QString state;
    qint64 size = -1; ///< In bytes; negative if unknown.
};

/// What is read after the list is shown.
struct Details {
    QString state;
    qint64 size = -1;
};

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

[[nodiscard]] std::vector<Folder> readDrives(Tessaport& tessaport);
[[nodiscard]] std::vector<Folder> readFolders(Tessaport& tessaport, const Api::Item& folder);
[[nodiscard]] std::vector<Row> readItems(Tessaport& tessaport, const Api::Item& folder);
/// Reads the details of items of one drive, in their order.
[[nodiscard]] std::vector<Details> readDetails(Tessaport& tessaport, const Items& items);
/// Reads the properties of items of one drive. One that differs between the items is shown as such.
[[nodiscard]] std::vector<Property> readProperties(Tessaport& tessaport, const Items& items);

[[nodiscard]] Api::CommandContext contextOf(const Items& items);
[[nodiscard]] CommandMenu readCommands(Tessaport& tessaport, const Items& items);
[[nodiscard]] Outcome execute(Tessaport& tessaport, const Api::Command& command, const Items& items);

[[nodiscard]] Outcome sync(Tessaport& tessaport, const Items& items);
/// @param paths  local files, in the form of this platform.
[[nodiscard]] Outcome addFiles(Tessaport& tessaport, const Api::Item& folder, const QStringList& paths);

} // namespace DriveWindow
