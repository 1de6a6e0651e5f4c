// What no sync application should send: the window shows it as what it is, and goes on.
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTreeView>
#include <QTreeWidget>
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <limits>

#include "tests/window/ScriptedWindow.h"

namespace Quorvex::Velmora::WindowTest
{
namespace
{

using DriveWindow::ItemModel;
using OddAnswers = ScriptedWindow;

Json numberedDrives(int count)
{
    Json drives = Json::array();
    for (int i = 1; i <= count; ++i) {
        Json drive = TestSupport::drive(i, L"D", L"D:\\");
        drive["name"] = "Drive " + std::to_string(i);
        drives.push_back(drive);
    }
    return drives;
}

TEST_F(OddAnswers, MarkupInNamesIsText)
{
    const char* const name = "<img src=x><h1>big</h1> & more";
    Json drive = TestSupport::drive(1, L"D", L"D:\\");
    drive["name"] = name;
    service.answer("GetDrives", Json::array({drive}));
    service.answer("GetFolderContents", Json::array({fileNamed(11, name)}));
    service.fail("SyncFiles", TestSupport::failure("InvalidOperationException", L"<h1>no</h1>"));
    openWindow();
    ASSERT_TRUE(waitForRow(name));
    EXPECT_EQ(part<QTreeView>("tree").currentIndex().data(), name);

    trigger("Sync");

    ASSERT_TRUE(waitForNotice(QString("Cannot sync the folder “%1”: ").arg(name))) << noticeText().toStdString();
    for (QLabel* label : window->findChildren<QLabel*>())
        EXPECT_EQ(label->textFormat() == Qt::PlainText || !Qt::mightBeRichText(label->text()), true)
            << label->text().toStdString();
    EXPECT_TRUE(messages().contains("<h1>no</h1>"));
}

TEST_F(OddAnswers, ControlCharactersAndReversedTextAreReplaced)
{
    service.answer("GetFolderContents", Json::array({fileNamed(11, "a\nb\tc\u202Etxt.exe")}));

    openWindow();

    EXPECT_TRUE(waitForRow(u8"a\uFFFDb\uFFFDc\uFFFDtxt.exe")) << column(0).join("|").toStdString();
}

TEST_F(OddAnswers, LongNamesAreCut)
{
    service.answer("GetFolderContents", Json::array({fileNamed(11, std::string(3'000'000, 'x'))}));

    openWindow();

    EXPECT_TRUE(waitFor([&] { return column(0).value(0).size() == 251; }));
    EXPECT_LE(window->minimumSizeHint().width(), 1000);
}

TEST_F(OddAnswers, EmptyAndEqualNamesAreAllListed)
{
    service.answer("GetFolderContents",
        Json::array({fileNamed(11, ""), fileNamed(12, ""), fileNamed(13, "a"), fileNamed(14, "a")}));

    openWindow();

    EXPECT_TRUE(waitFor([&] { return column(0) == QStringList({"", "", "a", "a"}); }));
}

TEST_F(OddAnswers, TimesOutsideTheCalendarAreEmpty)
{
    Json first = fileNamed(11, "first");
    first["lastModifiedDate"] = Json{{"ticks", 0}, {"kind", "Utc"}};
    Json last = fileNamed(12, "last");
    last["lastModifiedDate"] = Json{{"ticks", 3155378975999999999}, {"kind", "Utc"}};
    service.answer("GetFolderContents", Json::array({first, last}));

    openWindow();

    ASSERT_TRUE(waitForRow("last"));
    EXPECT_FALSE(column(ItemModel::Modified)[0].isEmpty());

    auto items = std::make_shared<DriveWindow::Items>();
    items->Append().lastModifiedDate = std::numeric_limits<std::int64_t>::min();
    items->Append().lastModifiedDate = std::numeric_limits<std::int64_t>::max();
    ItemModel model;
    model.setItems(items);
    EXPECT_EQ(model.index(0, ItemModel::Modified).data(), "");
    EXPECT_EQ(model.index(1, ItemModel::Modified).data(), "");
}

TEST_F(OddAnswers, ThousandsOfCommandsBecomeAShortMenu)
{
    service.answer("GetCommands", TestSupport::generated(10'000));
    openWindow();
    ASSERT_TRUE(waitForRow("a.txt"));

    const auto actions = openMenu();

    ASSERT_EQ(actions.size(), 101);
    EXPECT_EQ(actions.last()->text(), "9900 more commands are not shown");
    EXPECT_FALSE(actions.last()->isEnabled());
}

TEST_F(OddAnswers, CommandsKeepAmpersandsAndHaveNoShortcutsOfTheirOwn)
{
    Json command = TestSupport::command(1);
    command["name"] = "Copy & paste\tCtrl+Q";
    service.answer("GetCommands", Json::array({command}));
    openWindow();
    ASSERT_TRUE(waitForRow("a.txt"));

    EXPECT_EQ(openMenu().value(0)->text(), u8"Copy && paste\uFFFDCtrl+Q");
}

TEST_F(OddAnswers, ImagesThatAreNoneAreNoIcons)
{
    service.answer("GetCommands", Json::array({TestSupport::command(1, "bm90IGEgcGljdHVyZQ=="),
                                      TestSupport::command(2, 100'000'000), TestSupport::command(3, "")}));
    openWindow();
    ASSERT_TRUE(waitForRow("a.txt"));

    const auto actions = openMenu();

    ASSERT_EQ(actions.size(), 3);
    for (QAction* action : actions)
        EXPECT_TRUE(action->icon().isNull());
}

TEST_F(OddAnswers, ThousandsOfPropertiesAreCutToWhatAPersonReads)
{
    service.answer("GetPropertyDefinitions", TestSupport::generated(20'000));
    Json values = Json::array();
    for (int i = 0; i <= 600; ++i) {
        Json value = TestSupport::propertyValue(L"Property" + std::to_wstring(i), "<b>x</b>");
        value["relativePath"] = "a.txt";
        values.push_back(value);
    }
    service.answer("GetProperties", TestSupport::propertyValues(values));
    openWindow();
    ASSERT_TRUE(waitForRow("a.txt"));

    select("a.txt");

    auto& properties = part<QTreeWidget>("properties");
    ASSERT_TRUE(waitFor([&] { return properties.topLevelItemCount() == 500; }));
    EXPECT_EQ(properties.topLevelItem(0)->text(1), "<b>x</b>");
}

TEST_F(OddAnswers, EqualPathsOfTwoItemsDoNotMixUpTheirDetails)
{
    service.answer("GetPropertyDefinitions", Json::array({{{"id", "SyncState"}, {"displayName", "State"}}}));
    Json value = TestSupport::propertyValue(L"SyncState", "in-sync");
    value["relativePath"] = "b";
    service.answer("GetProperties", TestSupport::propertyValues(Json::array({value})));
    service.answer("GetFolderContents", Json::array({fileNamed(11, "a"), fileNamed(12, "a"), fileNamed(13, "b")}));

    openWindow();

    EXPECT_TRUE(waitForState("b", "In sync")) << column(ItemModel::State).join("|").toStdString();
}

TEST_F(OddAnswers, MessagesOfMillionsOfCharactersAreCut)
{
    service.fail("GetDrives", TestSupport::failure("InvalidOperationException", std::wstring(5'000'000, L'x')));

    openWindow();

    ASSERT_TRUE(waitForNotice("Tessaport reports a failure."));
    EXPECT_LE(messages().size(), 5000);
}

TEST_F(OddAnswers, FoldersWithoutEndInTheTreeLeaveTheWindowAlive)
{
    service.answer("GetChildFolders", TestSupport::generated(5'000));
    openWindow();

    auto* model = part<QTreeView>("tree").model();
    EXPECT_TRUE(waitFor([&] { return model->rowCount(model->index(0, 0)) == 5'000; }));
}

TEST_F(OddAnswers, AListWithoutEndLeavesTheWindowAliveAndItsFolderListed)
{
    openWindow();
    ASSERT_TRUE(waitForRow("b.txt"));
    service.answer("GetFolderContents", TestSupport::endlessList());
    (void)service.takeCalledMembers();

    trigger("Refresh");

    ASSERT_TRUE(waitForCall("GetFolderContents"));
    part<QLineEdit>("filter").setText("b");
    EXPECT_EQ(column(ItemModel::Name), QStringList("b.txt"));
}

TEST_F(OddAnswers, AListWithoutEndDoesNotKeepTheWindowOpen)
{
    service.answer("GetFolderContents", TestSupport::endlessList());
    openWindow();
    ASSERT_TRUE(waitForCall("GetFolderContents"));

    window.reset();

    // The request goes on. Once it ends, another window can be opened.
    service.reset();
    service.answer("GetFolderContents", Json::array({fileNamed(11, "a.txt")}));
    openWindow();
    EXPECT_TRUE(waitForRow("a.txt"));
}

TEST_F(OddAnswers, AFolderOfTheTreeThatIsBeingReadDoesNotKeepTheWindowOpen)
{
    service.kit.getChildFolders.hold();
    openWindow();
    ASSERT_TRUE(waitFor([&] { return service.kit.getChildFolders.waitUntilHeld(std::chrono::milliseconds(0)); }));

    window.reset();

    service.kit.getChildFolders.release();
    // All queues share one order, so the answer for the window has come and gone.
    Api::RequestQueue().ask([](Api::QvNativeTessaportAPI&) {}).get();
    EXPECT_FALSE(window.has_value());
}

TEST_F(OddAnswers, ThousandsOfDrivesAreAllListed)
{
    service.answer("GetDrives", numberedDrives(2'500));

    openWindow();

    const auto* const tree = part<QTreeView>("tree").model();
    EXPECT_TRUE(waitFor([&] { return tree->rowCount() == 2'500; })) << tree->rowCount();
    EXPECT_EQ(tree->index(2'499, 0).data(), "Drive 2500");
}

TEST_F(OddAnswers, DrivesThatChangeBetweenTwoReadingsAreListedOnce)
{
    const auto drives = [](std::initializer_list<const char*> names) {
        Json list = numberedDrives(static_cast<int>(names.size()));
        std::size_t i = 0;
        for (const char* name : names)
            list[i++]["name"] = name;
        return list;
    };
    service.answer("GetDrives", drives({"a", "b", "b", "c", "d"}));
    openWindow();
    auto& tree = part<QTreeView>("tree");
    const auto names = [&] {
        QStringList found;
        for (int row = 0; row < tree.model()->rowCount(); ++row)
            found += tree.model()->index(row, 0).data().toString();
        return found.join(' ');
    };
    ASSERT_TRUE(waitFor([&] { return names() == "a b b c d"; })) << names().toStdString();

    for (const auto& next :
        {drives({"a", "d", "new", "b", "b", "b"}), drives({"x"}), drives({}), drives({"y", "x", "a"})}) {
        service.answer("GetDrives", next);
        QStringList expected;
        for (const Json& drive : next)
            expected += QString::fromStdString(drive["name"].get<std::string>());
        trigger("Refresh");
        EXPECT_TRUE(waitFor([&] { return names() == expected.join(' '); })) << names().toStdString();
        // The list is that of the first drive.
        EXPECT_TRUE(waitFor([&] { return column(0).isEmpty() == expected.isEmpty(); }));
    }
}

TEST_F(OddAnswers, DrivesThatAreReadAgainMeanwhileAreListedOnce)
{
    service.answer("GetDrives", numberedDrives(2'500));
    openWindow();
    trigger("Refresh");
    // All queues share one order, so both answers now wait for the window.
    Api::RequestQueue().ask([](Api::QvNativeTessaportAPI&) {}).get();

    const auto* const tree = part<QTreeView>("tree").model();
    EXPECT_TRUE(waitFor([&] { return tree->rowCount() == 2'500; })) << tree->rowCount();
}

} // namespace
} // namespace Quorvex::Velmora::WindowTest
