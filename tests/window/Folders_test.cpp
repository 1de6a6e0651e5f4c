// Drives, folders and the list.
#include <QHeaderView>
#include <QLineEdit>
#include <QLocale>
#include <QTest>
#include <QTreeView>
#include <QTreeWidget>

#include "tests/window/LocalWindow.h"

namespace Quorvex::Velmora::WindowTest
{
namespace
{

using DriveWindow::ItemModel;
using Folders = LocalWindow;

QModelIndex childNamed(const QTreeView& tree, const QModelIndex& parent, const QString& name)
{
    for (int row = 0; row < tree.model()->rowCount(parent); ++row) {
        const QModelIndex child = tree.model()->index(row, 0, parent);
        if (child.data().toString() == name)
            return child;
    }
    return {};
}

TEST_F(Folders, AreTheDrivesAtFirst)
{
    openFirstDrive();

    const auto& tree = part<QTreeView>("tree");
    EXPECT_EQ(tree.model()->rowCount(), 4);
    EXPECT_TRUE(childNamed(tree, {}, "Harbour Project").isValid());
    EXPECT_TRUE(childNamed(tree, {}, "Morrow Archive").isValid());
    EXPECT_EQ(tree.currentIndex().data(), "Harbour Project");
    EXPECT_EQ(column(ItemModel::Name), QStringList({"plans", "survey", "README.txt"}));
}

TEST_F(Folders, AreReadWhenTheyAreOpened)
{
    openFirstDrive();
    auto& tree = part<QTreeView>("tree");
    const QModelIndex drive = childNamed(tree, {}, "Harbour Project");
    ASSERT_TRUE(waitFor([&] { return childNamed(tree, drive, "plans").isValid(); }));
    const QModelIndex plans = childNamed(tree, drive, "plans");
    EXPECT_EQ(tree.model()->rowCount(plans), 0);

    tree.expand(plans);

    EXPECT_TRUE(waitFor([&] { return childNamed(tree, plans, "details").isValid(); }));
}

TEST_F(Folders, AreListedWhenTheyAreSelected)
{
    openFirstDrive();
    auto& tree = part<QTreeView>("tree");

    tree.setCurrentIndex(childNamed(tree, {}, "Trelis Documents"));

    EXPECT_TRUE(waitForRow("contract.txt"));
    EXPECT_FALSE(column(ItemModel::Name).contains("README.txt"));
}

TEST_F(Folders, AreOpenedFromTheListToo)
{
    openFirstDrive();

    emit part<QTableView>("list").activated(rowOf("plans"));

    EXPECT_TRUE(waitForRow("Übersicht.txt"));
    EXPECT_TRUE(waitFor([&] { return part<QTreeView>("tree").currentIndex().data() == "plans"; }));
}

TEST_F(Folders, ShowNewFilesWhenTheyAreRead)
{
    openFirstDrive();
    writeText(demo.here("new.txt"), "12345");

    trigger("Refresh");

    EXPECT_TRUE(waitForState("new.txt", "Only here"));
}

TEST_F(Folders, InTheTreeAreReadAgainWithTheListAndStayOpen)
{
    openFirstDrive();
    auto& tree = part<QTreeView>("tree");
    const QPersistentModelIndex drive = childNamed(tree, {}, "Harbour Project");
    ASSERT_TRUE(waitFor([&] { return childNamed(tree, drive, "plans").isValid(); }));
    const QPersistentModelIndex plans = childNamed(tree, drive, "plans");
    fs::create_directory(demo.here("plans/annex"));
    tree.expand(plans);
    ASSERT_TRUE(waitFor([&] { return childNamed(tree, plans, "annex").isValid(); }));
    tree.setCurrentIndex(plans);
    ASSERT_TRUE(waitForRow("details"));

    fs::remove(demo.here("plans/annex"));
    fs::create_directory(demo.here("plans/new"));
    trigger("Refresh");

    EXPECT_TRUE(waitFor([&] { return childNamed(tree, plans, "new").isValid(); }));
    EXPECT_TRUE(childNamed(tree, plans, "details").isValid());
    EXPECT_FALSE(childNamed(tree, plans, "annex").isValid());
    EXPECT_TRUE(tree.isExpanded(plans));
    EXPECT_EQ(tree.currentIndex(), plans);
    EXPECT_TRUE(waitForRow("new"));
}

TEST_F(Folders, ThatAreNewAreOpenedFromTheList)
{
    openFirstDrive();
    ASSERT_TRUE(waitFor([&] { return childNamed(part<QTreeView>("tree"), {}, "Harbour Project").isValid(); }));
    fs::create_directory(demo.here("new"));
    // A sync has the list read again, not the tree.
    trigger("Sync");
    ASSERT_TRUE(waitForRow("new"));

    emit part<QTableView>("list").activated(rowOf("new"));

    EXPECT_TRUE(waitFor([&] { return part<QTreeView>("tree").currentIndex().data() == "new"; }));
}

TEST_F(Folders, ListSizeLocalTimeAndState)
{
    openFirstDrive();

    const int row = rowOf("README.txt").row();

    EXPECT_EQ(column(ItemModel::Size)[row],
        QLocale().formattedDataSize(static_cast<qint64>(fs::file_size(demo.here("README.txt")))));
    const auto time = QDateTime::fromSecsSinceEpoch(1714558530);
    EXPECT_EQ(column(ItemModel::Modified)[row], QLocale().toString(time, QLocale::ShortFormat));
    EXPECT_EQ(column(ItemModel::State)[row], "In sync");
    EXPECT_EQ(column(ItemModel::Size)[rowOf("plans").row()], "");
}

TEST_F(Folders, AreSortedByNumbersInNamesWithFoldersFirst)
{
    for (const char* name : {"plan 10.txt", "plan 9.txt"})
        writeText(demo.here(name), "x");
    openFirstDrive();
    const QStringList ascending{"plans", "survey", "plan 9.txt", "plan 10.txt", "README.txt"};
    EXPECT_TRUE(waitFor([&] { return column(ItemModel::Name) == ascending; })) << column(0).join(", ").toStdString();

    part<QTableView>("list").sortByColumn(ItemModel::Name, Qt::DescendingOrder);

    const QStringList descending{"survey", "plans", "README.txt", "plan 10.txt", "plan 9.txt"};
    EXPECT_TRUE(waitFor([&] { return column(ItemModel::Name) == descending; }));
}

TEST_F(Folders, AreSortedBySizeOnceItIsKnown)
{
    writeText(demo.here("large.txt"), std::string(1000, 'x'));
    writeText(demo.here("small.txt"), "x");
    openWindow();
    part<QTableView>("list").sortByColumn(ItemModel::Size, Qt::DescendingOrder);

    const QStringList expected{"survey", "plans", "large.txt", "README.txt", "small.txt"};
    EXPECT_TRUE(waitFor([&] { return column(ItemModel::Name) == expected; })) << column(0).join(", ").toStdString();
}

TEST_F(Folders, AreFilteredByNameAndKeepTheSelection)
{
    openFirstDrive();
    select("README.txt");

    QTest::keyClicks(&part<QLineEdit>("filter"), "readme");

    EXPECT_TRUE(waitFor([&] { return column(ItemModel::Name) == QStringList("README.txt"); }));
    EXPECT_TRUE(part<QTableView>("list").selectionModel()->isRowSelected(0));
    part<QLineEdit>("filter").clear();
    EXPECT_TRUE(waitForRow("plans"));
    EXPECT_TRUE(part<QTableView>("list").selectionModel()->isRowSelected(rowOf("README.txt").row()));
}

TEST_F(Folders, ShowThePropertiesOfTheSelection)
{
    openFirstDrive();
    auto& properties = part<QTreeWidget>("properties");

    const QString size = QString::number(fs::file_size(demo.here("README.txt")));
    select("README.txt");

    EXPECT_TRUE(waitFor([&] { return !properties.findItems(size, Qt::MatchExactly, 1).isEmpty(); }));
    part<QTableView>("list").selectAll();
    EXPECT_TRUE(waitFor([&] { return !properties.findItems("(different values)", Qt::MatchExactly, 1).isEmpty(); }));
    part<QTableView>("list").clearSelection();
    EXPECT_TRUE(waitFor([&] { return properties.topLevelItemCount() == 0; }));
}

} // namespace
} // namespace Quorvex::Velmora::WindowTest
