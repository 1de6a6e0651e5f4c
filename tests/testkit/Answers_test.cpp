#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include <velmora/api/Interop.h>
#include <velmora/native/CommandImage.h>
#include "tests/testkit/KitTest.h"

namespace Quorvex::Velmora::TestKit
{
namespace
{

using namespace TessaportAPI;
using testing::ElementsAre;

class Answers : public KitTest
{
protected:
    QvNativeTessaportAPI tessaport;
};

std::vector<std::wstring> namesOf(const QVBuffer<Item>& items)
{
    std::vector<std::wstring> names;
    for (const Item& item : items)
        names.push_back(toWide(item.name));
    return names;
}

CommandResult resultWith(const Item& created)
{
    CommandResult result;
    result.itemsCreated.Append(created);
    return result;
}

TEST_F(Answers, AreOneEmptyDriveWithoutAScript)
{
    const auto drives = tessaport.getDrives();

    ASSERT_EQ(drives.GetSize(), 1U);
    EXPECT_EQ(drives[0]->name, QVString(L"Drive 1"));
    EXPECT_EQ(tessaport.getFolderContents(drives[0]->root).GetSize(), 0U);
    EXPECT_TRUE(tessaport.canAddFiles(drives[0]->root, {}));
    EXPECT_TRUE(tessaport.syncFiles({}).isSuccess);
    EXPECT_FALSE(tessaport.isFileInWorkspace(L"D:\\a"));
}

TEST_F(Answers, BringEveryFieldOfADrive)
{
    Drive wanted = makeDrive(L"Übersicht \U0001F600", L"D:/Harbour");
    wanted.locking = true;
    wanted.driveType = L"Quorvex.DataSourceType.Morrow";
    service.getDrives.answer({wanted});

    const auto drives = tessaport.getDrives();

    ASSERT_EQ(drives.GetSize(), 1U);
    EXPECT_EQ(drives[0]->id, wanted.id);
    EXPECT_EQ(drives[0]->name, QVString(L"Übersicht \U0001F600"));
    EXPECT_EQ(drives[0]->driveType, wanted.driveType);
    EXPECT_EQ(drives[0]->workspaceLocation, QVString(L"D:\\Harbour"));
    EXPECT_TRUE(drives[0]->locking);
    EXPECT_EQ(drives[0]->root.workspacePath, QVString(L"D:\\Harbour"));
    EXPECT_EQ(drives[0]->root.relativePath, QVString());
    EXPECT_TRUE(drives[0]->root.isFolder);
}

TEST_F(Answers, BringEveryFieldOfAnItem)
{
    Item wanted = makeFile(drive, L"Plans/Quay.txt");
    wanted.isInWorkspace = false;
    wanted.lastModifiedDate = -1;
    service.getFolderContents.answer({wanted});

    const auto items = tessaport.getFolderContents(tessaport.getDrives()[0]->root);

    ASSERT_EQ(items.GetSize(), 1U);
    EXPECT_EQ(items[0]->driveId, drive.id);
    EXPECT_EQ(items[0]->name, QVString(L"Quay.txt"));
    EXPECT_EQ(items[0]->relativePath, QVString(L"Plans\\Quay.txt"));
    EXPECT_EQ(items[0]->workspacePath, QVString(L"W:\\Tessaport\\Drive\\Plans\\Quay.txt"));
    EXPECT_EQ(items[0]->lastModifiedDate, -1);
    EXPECT_FALSE(items[0]->isFolder);
    EXPECT_FALSE(items[0]->isInWorkspace);
    EXPECT_TRUE(items[0]->isOnServer);
}

TEST_F(Answers, DifferByFolder)
{
    const Item plans = makeFolder(drive, L"Plans");
    service.getDrives.answer({drive});
    service.getFolderContents.answer({makeFile(drive, L"Elsewhere.txt")});
    service.getFolderContents.answerFor(drive.root, {plans});
    service.getFolderContents.failFor(plans, L"Access denied.");

    const auto top = tessaport.getFolderContents(tessaport.getDrives()[0]->root);

    EXPECT_THAT(namesOf(top), ElementsAre(L"Plans"));
    EXPECT_THROW((void)tessaport.getFolderContents(*top[0]), ApiException);
    const Item other = tessaport.getOrCreateFolder(*top[0], L"Other");
    EXPECT_THAT(namesOf(tessaport.getFolderContents(other)), ElementsAre(L"Elsewhere.txt"));
}

TEST_F(Answers, BringAMenu)
{
    const std::vector<std::uint8_t> icon = {0x89, 'P', 'N', 'G', 0, 255, 7};
    Command lock = makeCommand(L"lock", L"Lock", icon);
    lock.isChecked = true;
    lock.isDefaultCommand = true;
    Command share = makeCommand(L"share", L"Share…");
    share.isBeginningOfGroup = true;
    share.isEnabled = false;
    service.getCommands.answer({lock, share});

    CommandContext context;
    context.itemId = tessaport.getDrives()[0]->root.id;
    const auto menu = tessaport.getCommands(context);

    ASSERT_EQ(menu.GetSize(), 2U);
    EXPECT_EQ(menu[0]->id, QVString(L"lock"));
    EXPECT_EQ(menu[0]->name, QVString(L"Lock"));
    EXPECT_TRUE(menu[0]->isEnabled && menu[0]->isChecked && menu[0]->isDefaultCommand);
    EXPECT_FALSE(menu[0]->isBeginningOfGroup);
    EXPECT_EQ(commandImage(*menu[0]), icon);
    EXPECT_TRUE(menu[1]->isBeginningOfGroup);
    EXPECT_FALSE(menu[1]->isEnabled || menu[1]->isChecked || menu[1]->isDefaultCommand);
    EXPECT_TRUE(commandImage(*menu[1]).empty());
}

TEST_F(Answers, BringImagesOfEveryLength)
{
    for (std::size_t length = 1; length < 9; ++length) {
        std::vector<std::uint8_t> icon;
        for (std::size_t i = 0; i < length; ++i)
            icon.push_back(static_cast<std::uint8_t>(251 - 37 * i));
        service.getCommands.answer({makeCommand(L"open", L"Open", icon)});

        CommandContext context;
        context.itemId = tessaport.getDrives()[0]->root.id;
        EXPECT_EQ(commandImage(*tessaport.getCommands(context)[0]), icon);
    }
}

TEST_F(Answers, BringResultsOfOperations)
{
    service.addFiles.answer(resultWith(makeFile(drive, L"added.txt")));
    service.syncFiles.answer(resultWith(makeFile(drive, L"synced.txt")));
    service.deleteFilesOrFolders.answer(resultWith(makeFile(drive, L"deleted.txt")));
    service.executeCommand.answer(resultWith(makeFile(drive, L"executed.txt")));
    service.getCommands.answer({makeCommand(L"open", L"Open")});
    service.canAddFiles.answer(false);
    service.isFileInWorkspace.answer(true);
    const Item root = tessaport.getDrives()[0]->root;
    CommandContext context;
    context.itemId = root.id;

    EXPECT_THAT(namesOf(tessaport.addFiles(root, {}).itemsCreated), ElementsAre(L"added.txt"));
    EXPECT_THAT(namesOf(tessaport.syncFiles({}).itemsCreated), ElementsAre(L"synced.txt"));
    EXPECT_THAT(namesOf(tessaport.deleteFilesOrFolders({}).itemsCreated), ElementsAre(L"deleted.txt"));
    EXPECT_THAT(namesOf(tessaport.executeCommand(*tessaport.getCommands(context)[0], context).itemsCreated),
        ElementsAre(L"executed.txt"));
    EXPECT_FALSE(tessaport.canAddFiles(root, {}));
    EXPECT_TRUE(tessaport.isFileInWorkspace(L"D:/any/path"));
}

TEST_F(Answers, BringLookupsAndProperties)
{
    const Item plan = makeFile(drive, L"Plan.txt");
    PropertyDefinition author;
    author.id = L"author";
    author.displayName = L"Author";
    author.valueDataType = PropertyDataType{3};
    StringPropertyValue value;
    value.driveId = drive.id;
    value.propertyDefinitionId = L"author";
    value.value = L"Quinn";
    service.getVersion.answer(L"5.2");
    service.getPropertyDefinitions.answer({author});
    service.getStringPropertyValues.answer({value});
    service.getPermanentIds.answer({{plan, L"permanent:1"}, {plan, L"", Result::Offline}});
    service.getItemsByPermanentIds.answer({{plan, L"permanent:1", Result::Success}});
    service.getItemsByWorkspacePaths.answer({{plan, Result::Success, plan.workspacePath}});
    service.getItemsByRelativePaths.answer({plan});
    service.getChildFolders.answer({makeFolder(drive, L"Plans")});
    service.getOrCreateFolder.answer(makeFolder(drive, L"New"));
    const Item root = tessaport.getDrives()[0]->root;

    EXPECT_EQ(tessaport.getVersion(), QVString(L"5.2"));
    EXPECT_EQ(tessaport.getPropertyDefinitions(drive.id)[0]->valueDataType, PropertyDataType{3});
    EXPECT_EQ(tessaport.getStringPropertyValues({}, {})[0]->value, QVString(L"Quinn"));
    EXPECT_EQ(tessaport.getPermanentIds({})[0]->permanentId, QVString(L"permanent:1"));
    EXPECT_EQ(tessaport.getPermanentIds({})[1]->result, Result::Offline);
    EXPECT_EQ(tessaport.getItemsByPermanentIds({})[0]->item.name, QVString(L"Plan.txt"));
    EXPECT_EQ(tessaport.getItemsByWorkspacePaths({})[0]->result, Result::Success);
    EXPECT_THAT(namesOf(tessaport.getItemsByRelativePaths(drive.id, {})), ElementsAre(L"Plan.txt"));
    EXPECT_THAT(namesOf(tessaport.getChildFolders(root)), ElementsAre(L"Plans"));
    EXPECT_EQ(tessaport.getOrCreateFolder(root, L"New").name, QVString(L"New"));
}

TEST_F(Answers, ComeInTurnBeforeTheLastingOne)
{
    service.getVersion.answerNext(L"1");
    service.getVersion.failNext(L"busy", 2);
    service.getVersion.answerNext(L"2");
    service.getVersion.answer(L"3");

    EXPECT_EQ(tessaport.getVersion(), QVString(L"1"));
    EXPECT_THROW((void)tessaport.getVersion(), ApiException);
    EXPECT_THROW((void)tessaport.getVersion(), ApiException);
    EXPECT_EQ(tessaport.getVersion(), QVString(L"2"));
    EXPECT_EQ(tessaport.getVersion(), QVString(L"3"));
    EXPECT_EQ(tessaport.getVersion(), QVString(L"3"));
}

TEST_F(Answers, AreForgottenByAReset)
{
    const QVString without = tessaport.getVersion();
    service.getVersion.answer(L"5");
    service.getVersion.reset();
    EXPECT_EQ(tessaport.getVersion(), without);

    service.getDrives.answer({});
    service.reset();
    EXPECT_EQ(tessaport.getDrives().GetSize(), 1U);
}

TEST_F(Answers, ThatCannotBeSentAreRefusedAndChangeNothing)
{
    service.getDrives.answer({drive});
    Item invalid = makeFile(drive, L"a");
    invalid.driveId = "no identifier";
    Item distant = makeFile(drive, L"b");
    distant.lastModifiedDate = std::numeric_limits<std::int64_t>::max();

    EXPECT_THROW(service.getFolderContents.answer({invalid}), std::logic_error);
    EXPECT_THROW(service.getFolderContents.answer({distant}), std::logic_error);
    EXPECT_EQ(tessaport.getFolderContents(tessaport.getDrives()[0]->root).GetSize(), 0U);
}

TEST_F(Answers, BringDatesFromTheFirstSecondToTheLast)
{
    Item first = makeFile(drive, L"a");
    first.lastModifiedDate = -62'135'596'800; // 0001-01-01 00:00:00
    Item last = makeFile(drive, L"b");
    last.lastModifiedDate = 253'402'300'799; // 9999-12-31 23:59:59
    service.getFolderContents.answer({first, last});

    const auto items = tessaport.getFolderContents(tessaport.getDrives()[0]->root);

    ASSERT_EQ(items.GetSize(), 2U);
    EXPECT_EQ(items[0]->lastModifiedDate, first.lastModifiedDate);
    EXPECT_EQ(items[1]->lastModifiedDate, last.lastModifiedDate);
}

TEST_F(Answers, BringLongLists)
{
    std::vector<Item> items;
    for (int i = 0; i < 20'000; ++i)
        items.push_back(makeFile(drive, (L"file " + std::to_wstring(i)).c_str()));
    service.getItemsByRelativePaths.answer(items);

    const auto found = tessaport.getItemsByRelativePaths(drive.id, {});

    ASSERT_EQ(found.GetSize(), 20'000U);
    EXPECT_EQ(found[19'999]->name, QVString(L"file 19999"));
}

} // namespace
} // namespace Quorvex::Velmora::TestKit
