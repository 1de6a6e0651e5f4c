// One-shot operations for the cloud identifiers of files and folders.
#include <string>
#include <tuple>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/native/StaticTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Urn = std::tuple<std::string, std::string>;

const std::wstring Error = L"[TP] ERROR: ";
const std::wstring NoProject = Error + L"project id is empty";

class Urns : public StaticTest
{
protected:
    // Sets up one drive of a type at D:\Drive, with its root and two items below it in the cache.
    void useDrive(const wchar_t* type)
    {
        Json only = drive(1, type, L"D:\\Drive");
        service.answer("GetDrives", Json::array({only}));
        service.answer(
            "GetItemsByRelativePaths", Json::array({itemAt(2, L"D:\\Drive\\F"), itemAt(3, L"D:\\Drive\\F\\a.txt")}));
        service.answer("GetItemsByWorkspacePaths", Json::array());
        Api connection;
        (void)connection.getDrives();
        const auto items = connection.getItemsByRelativePaths({}, {});
        folder = *items[0];
        file = *items[1];
        service.answer(
            "GetFolderContents", Json::array({itemAt(2, L"D:\\Drive\\F"), itemAt(3, L"D:\\Drive\\F\\a.txt")}));
        (void)connection.getFolderContents(folder);
        (void)service.takeCalls();
    }

    void answerProperties(const Json& values) { service.answer("GetProperties", propertyValues(values)); }

    // Returns the id and the property names of each request for properties.
    std::vector<Json> askedProperties()
    {
        std::vector<Json> asked;
        for (const Json& call : service.takeCalls()) {
            if (call["member"] == "GetProperties")
                asked.push_back({call["ids"], call["properties"]});
        }
        return asked;
    }

    static Json asked(int id, std::initializer_list<const char*> names)
    {
        return {Json::array({id}), Json(std::vector<std::string>(names.begin(), names.end()))};
    }

    Item folder;
    Item file;
    const Urn none;
};

struct FileRow {
    const char* name;
    const wchar_t* type;
    const char* property;
    bool hasProject;
};

class FileUrnOfType : public Urns, public ::testing::WithParamInterface<FileRow>
{
};

TEST_P(FileUrnOfType, ReadsThePropertiesOfItsType)
{
    useDrive(GetParam().type);
    const std::wstring property(GetParam().property, GetParam().property + std::string(GetParam().property).size());
    answerProperties(Json::array({propertyValue(property, "urn:file"), propertyValue(L"KeldaProjectId", "project")}));
    const Urn expected(GetParam().hasProject ? "project" : "", "urn:file");
    const Json names =
        GetParam().hasProject ? asked(3, {GetParam().property, "KeldaProjectId"}) : asked(3, {GetParam().property});

    EXPECT_EQ(Api::getFileUrn(hwnd, L"D:\\Drive\\F\\a.txt"), expected);
    EXPECT_THAT(askedProperties(), ElementsAre(names));
    EXPECT_EQ(Api::getFileUrn(hwnd, file), expected);
    EXPECT_THAT(askedProperties(), ElementsAre(names));
    expectConnectionsClosed();
}

INSTANTIATE_TEST_SUITE_P(Each, FileUrnOfType,
    ::testing::Values(FileRow{"Drive", DriveType, "SourceObjectId", false},
        FileRow{"Docs", DocsType, "KeldaItemId", true}, FileRow{"Team", TeamType, "KeldaItemId", true},
        FileRow{"Morrow", MorrowType, "SourceObjectId", false}),
    [](const auto& info) { return std::string(info.param.name); });

class FileUrn : public Urns
{
};

TEST_F(FileUrn, OfAPathLogsEachStep)
{
    useDrive(DriveType);
    answerProperties(Json::array({propertyValue(L"SourceObjectId", "urn:1")}));

    EXPECT_EQ(Api::getFileUrn(hwnd, L"D:/Drive/F/a.txt"), none);
    // The drive is matched by the path as given.
    EXPECT_THAT(log.take(),
        ElementsAre(L"[TP] Get urn: got item from path D:/Drive/F/a.txt",
            Error + L"Failed to get drive type from path D:/Drive/F/a.txt",
            L"[TP] Get urn: got drive type  from path D:\\Drive\\F\\a.txt", Error + L"Failed to find drive type  (3)"));

    EXPECT_EQ(Api::getFileUrn(hwnd, L"D:\\Drive\\F\\a.txt"), Urn("", "urn:1"));
    EXPECT_THAT(log.take(),
        ElementsAre(L"[TP] Get urn: got item from path D:\\Drive\\F\\a.txt",
            L"[TP] Get urn: got drive type Quorvex.DataSourceType.Drive from path D:\\Drive\\F\\a.txt", NoProject));
}

TEST_F(FileUrn, OfAnItemLogsEachStep)
{
    useDrive(DocsType);
    answerProperties(Json::array({propertyValue(L"KeldaItemId", "urn:1"), propertyValue(L"KeldaProjectId", "p")}));

    EXPECT_EQ(Api::getFileUrn(hwnd, file), Urn("p", "urn:1"));

    EXPECT_THAT(log.take(),
        ElementsAre(
            L"[TP] Get urn: got drive type Quorvex.DataSourceType.TrelisDocs from item path D:\\Drive\\F\\a.txt"));
    EXPECT_THAT(takeMembersAskedForWindow(), ElementsAre("TessaportService", "GetDrives", "GetProperties"));
}

TEST_F(FileUrn, OfACachedPathNeedsOneConnection)
{
    useDrive(DriveType);

    (void)Api::getFileUrn(hwnd, L"D:\\Drive\\F\\a.txt");

    EXPECT_THAT(takeMembersAskedForWindow(), ElementsAre("TessaportService", "GetDrives", "GetProperties"));
}

TEST_F(FileUrn, OfAnEmptyPathIsEmptyWithoutAConnection)
{
    EXPECT_EQ(Api::getFileUrn(hwnd, L""), none);

    EXPECT_THAT(service.takeCalls(), IsEmpty());
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(FileUrn, OfAPathThatStartsWithAZeroCharacterIsThatOfTheCurrentFolder)
{
    service.answer("GetItemsByWorkspacePaths", Json::array());

    EXPECT_EQ(Api::getFileUrn(hwnd, std::wstring(L"\0x", 2)), none);

    EXPECT_THAT(
        takeMembersAskedForWindow(), ElementsAre("TessaportService", "TessaportService", "GetItemsByWorkspacePaths"));
}

TEST_F(FileUrn, OfAnUnknownPathIsEmpty)
{
    useDrive(DriveType);
    service.answer("GetItemsByWorkspacePaths", Json::array({workspacePathResult(nullptr, L"D:\\Drive\\no", 2)}));

    EXPECT_EQ(Api::getFileUrn(hwnd, L"D:\\Drive\\no"), none);

    EXPECT_THAT(log.take(), ElementsAre(Error + L"Failed to get item from workspace path D:\\Drive\\no"));
}

TEST_F(FileUrn, OfAnItemWithoutDriveOrPathIsEmptyWithoutAConnection)
{
    useDrive(DriveType);
    Item withoutDrive = file;
    withoutDrive.driveId = QVUUID("00000000-0000-0000-0000-000000000000");
    Item withoutPath = file;
    withoutPath.workspacePath = L"";

    for (const Item& item : {withoutDrive, withoutPath}) {
        EXPECT_EQ(Api::getFileUrn(hwnd, item), none);
        EXPECT_EQ(Api::getFolderUrn(hwnd, item, false), none);
    }

    EXPECT_THAT(service.takeCalls(), IsEmpty());
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(FileUrn, WithoutADriveIsEmpty)
{
    useDrive(DriveType);
    service.answer("GetDrives", Json::array());

    EXPECT_EQ(Api::getFileUrn(hwnd, file), none);
    EXPECT_THAT(log.take(), ElementsAre(Error + L"Failed to get mounted drives for path D:\\Drive\\F\\a.txt"));

    EXPECT_EQ(Api::getFileUrn(hwnd, L"D:\\Drive\\F\\a.txt"), none);
    EXPECT_THAT(log.take(),
        ElementsAre(L"[TP] Get urn: got item from path D:\\Drive\\F\\a.txt",
            Error + L"Failed to get mounted drives for path D:\\Drive\\F\\a.txt",
            L"[TP] Get urn: got drive type  from path D:\\Drive\\F\\a.txt", Error + L"Failed to find drive type  (3)"));
}

TEST_F(FileUrn, OnADriveOfAnUnknownTypeIsEmpty)
{
    useDrive(L"Quorvex.DataSourceType.New");

    EXPECT_EQ(Api::getFileUrn(hwnd, file), none);

    EXPECT_THAT(log.take(),
        ElementsAre(L"[TP] Get urn: got drive type Quorvex.DataSourceType.New from item path D:\\Drive\\F\\a.txt",
            Error + L"Failed to find drive type Quorvex.DataSourceType.New (3)"));
}

TEST_F(FileUrn, IsTheLastOfSeveralValues)
{
    useDrive(DocsType);
    answerProperties(Json::array({propertyValue(L"KeldaItemId", "first"), propertyValue(L"KeldaProjectId", "p1"),
        propertyValue(L"Other", "x"), propertyValue(L"KeldaItemId", "last"), propertyValue(L"KeldaProjectId", "p2")}));

    EXPECT_EQ(Api::getFileUrn(hwnd, file), Urn("p2", "last"));
}

TEST_F(FileUrn, MayConsistOfAProjectOnly)
{
    useDrive(DocsType);
    answerProperties(Json::array({propertyValue(L"KeldaProjectId", "p")}));

    EXPECT_EQ(Api::getFileUrn(hwnd, file), Urn("p", ""));

    EXPECT_EQ(log.take().size(), 1U);
}

TEST_F(FileUrn, IsUtf8)
{
    useDrive(DriveType);
    answerProperties(Json::array({propertyValue(L"SourceObjectId", text(L"\xE9\x4E2D"))}));

    EXPECT_EQ(Api::getFileUrn(hwnd, file), Urn("", "\xC3\xA9\xE4\xB8\xAD"));
}

TEST_F(FileUrn, ReportsFailure)
{
    useDrive(DriveType);
    service.fail("GetProperties", notRunning);

    EXPECT_EQ(Api::getFileUrn(hwnd, L"D:\\Drive\\F\\a.txt"), none);
    EXPECT_EQ(log.take().back(), Error + L"Failed to get file urn on path D:\\Drive\\F\\a.txt" + saysOff);
    EXPECT_EQ(Api::getFileUrn(hwnd, file), none);
    EXPECT_EQ(log.take().back(), Error + L"Failed to get file urn on item" + saysOff);

    service.fail("TessaportService", notRunning);
    EXPECT_EQ(Api::getFileUrn(hwnd, L"D:\\Drive\\F\\a.txt"), none);
    EXPECT_EQ(Api::getFileUrn(hwnd, file), none);
    EXPECT_THAT(log.take(), ElementsAre(Error + L"Failed to get file urn on path D:\\Drive\\F\\a.txt" + saysOff,
                                Error + L"Failed to get file urn on item" + saysOff));
}

class FolderUrn : public Urns
{
};

TEST_F(FolderUrn, OnADriveIsItsSourceObject)
{
    for (const wchar_t* type : {DriveType, MorrowType}) {
        Api::clearCachedItems();
        service.reset();
        useDrive(type);
        answerProperties(Json::array({propertyValue(L"SourceObjectId", "urn:folder")}));
        (void)log.take();

        EXPECT_EQ(Api::getFolderUrn(hwnd, L"D:\\Drive\\F", false), Urn("", "urn:folder"));
        EXPECT_THAT(log.take(), ElementsAre(NoProject));
        EXPECT_EQ(Api::getFolderUrn(hwnd, folder, false), Urn("", "urn:folder"));
        EXPECT_THAT(log.take(),
            ElementsAre(
                L"[TP] Get urn: found drive type " + std::wstring(type) + L" from path D:\\Drive\\F", NoProject));
        EXPECT_THAT(askedProperties(), ElementsAre(asked(2, {"SourceObjectId"}), asked(2, {"SourceObjectId"})));
        folder = file = Item();
    }
}

TEST_F(FolderUrn, WithTheFlagComesFromTheParentKeyAndTheProject)
{
    for (const wchar_t* type : {DocsType, TeamType}) {
        Api::clearCachedItems();
        service.reset();
        useDrive(type);
        answerProperties(
            Json::array({propertyValue(L"KeldaParentId", "urn:parent"), propertyValue(L"KeldaProjectId", "p")}));

        EXPECT_EQ(Api::getFolderUrn(hwnd, L"D:\\Drive\\F", true), Urn("p", "urn:parent"));
        EXPECT_EQ(Api::getFolderUrn(hwnd, folder, true), Urn("p", "urn:parent"));

        const Json names = asked(2, {"KeldaParentId", "KeldaProjectId"});
        EXPECT_THAT(askedProperties(), ElementsAre(names, names));
    }
}

TEST_F(FolderUrn, OnDocsWithoutTheFlagAsksForNothing)
{
    useDrive(DocsType);

    EXPECT_EQ(Api::getFolderUrn(hwnd, L"D:\\Drive\\F", false), none);

    EXPECT_THAT(log.take(), ElementsAre(Error + L"Empty urn id (1)", Error + L"Empty urn id (1)"));
    EXPECT_THAT(askedProperties(), IsEmpty());
}

TEST_F(FolderUrn, OfAnItemOnDocsWithoutTheFlagAsksForNothing)
{
    useDrive(DocsType);

    EXPECT_EQ(Api::getFolderUrn(hwnd, folder, false), none);

    EXPECT_THAT(log.take(),
        ElementsAre(L"[TP] Get urn: found drive type Quorvex.DataSourceType.TrelisDocs from path D:\\Drive\\F",
            Error + L"Empty urn id (1)", L"[TP] Get urn: urn is empty",
            L"[TP] Get urn: find item from workspace path D:\\Drive", Error + L"Empty urn id (1)"));
    EXPECT_THAT(askedProperties(), IsEmpty());
}

TEST_F(FolderUrn, FallsBackToTheParentByTheKeyWithoutTheFlag)
{
    useDrive(DriveType);
    service.answerInTurn("GetProperties",
        {Json{{"value", propertyValues(Json::array())}},
            Json{{"value", propertyValues(Json::array({propertyValue(L"SourceObjectId", "urn:of parent")}))}}});

    EXPECT_EQ(Api::getFolderUrn(hwnd, L"D:\\Drive\\F", false), Urn("", "urn:of parent"));

    EXPECT_THAT(log.take(), ElementsAre(NoProject, NoProject));
    EXPECT_THAT(askedProperties(), ElementsAre(asked(2, {"SourceObjectId"}), asked(1, {"SourceObjectId"})));
}

TEST_F(FolderUrn, OfAnItemFallsBackToTheParentByTheKeyWithoutTheFlag)
{
    useDrive(DriveType);
    service.answerInTurn("GetProperties",
        {Json{{"value", propertyValues(Json::array({propertyValue(L"SourceObjectId", "urn:of parent")}))}}});

    // With the flag, this drive type has no key for the folder itself.
    EXPECT_EQ(Api::getFolderUrn(hwnd, folder, true), Urn("", "urn:of parent"));

    EXPECT_THAT(
        log.take(), ElementsAre(L"[TP] Get urn: found drive type Quorvex.DataSourceType.Drive from path D:\\Drive\\F",
                        Error + L"Empty urn id (1)", L"[TP] Get urn: urn is empty",
                        L"[TP] Get urn: find item from workspace path D:\\Drive", NoProject));
    EXPECT_THAT(askedProperties(), ElementsAre(asked(1, {"SourceObjectId"})));
}

TEST_F(FolderUrn, OfAPathWithASlashAtItsEndFallsBackToTheParent)
{
    useDrive(DriveType);
    const Json ofParent = propertyValues(Json::array({propertyValue(L"SourceObjectId", "urn:of parent")}));
    const Json withoutValues = propertyValues(Json::array());
    service.answerInTurn("GetProperties", {Json{{"value", withoutValues}}, Json{{"value", ofParent}},
                                              Json{{"value", withoutValues}}, Json{{"value", ofParent}}});
    folder.workspacePath = L"D:\\Drive\\F\\";

    EXPECT_EQ(Api::getFolderUrn(hwnd, L"D:\\Drive\\F\\", false), Urn("", "urn:of parent"));
    EXPECT_EQ(Api::getFolderUrn(hwnd, folder, false), Urn("", "urn:of parent"));

    EXPECT_THAT(askedProperties(), ElementsAre(asked(2, {"SourceObjectId"}), asked(1, {"SourceObjectId"}),
                                       asked(2, {"SourceObjectId"}), asked(1, {"SourceObjectId"})));
}

TEST_F(FolderUrn, WithTheFlagFallsBackToTheKeyWithoutTheFlag)
{
    useDrive(DocsType);
    answerProperties(Json::array({propertyValue(L"KeldaProjectId", "p")}));

    EXPECT_EQ(Api::getFolderUrn(hwnd, L"D:\\Drive\\F", true), none);

    EXPECT_THAT(log.take(), ElementsAre(Error + L"Empty urn id (1)"));
    EXPECT_THAT(askedProperties(), ElementsAre(asked(2, {"KeldaParentId", "KeldaProjectId"})));
}

TEST_F(FolderUrn, IsEmptyIfTheParentIsUnknown)
{
    useDrive(DriveType);
    (void)Api::removeCachedItem(L"D:\\Drive");
    service.answer("GetItemsByWorkspacePaths", Json::array({workspacePathResult(nullptr, L"D:\\Drive", 2)}));
    const Json drives = Json::array({drive(1, DriveType, L"D:\\Dri")});
    service.answer("GetDrives", drives);

    EXPECT_EQ(Api::getFolderUrn(hwnd, L"D:\\Drive\\F", true), none);
    EXPECT_THAT(log.take(),
        ElementsAre(Error + L"Empty urn id (1)", Error + L"Failed to get item from workspace path D:\\Drive"));

    EXPECT_EQ(Api::getFolderUrn(hwnd, folder, true), none);
    EXPECT_THAT(
        log.take(), ElementsAre(L"[TP] Get urn: found drive type Quorvex.DataSourceType.Drive from path D:\\Drive\\F",
                        Error + L"Empty urn id (1)", L"[TP] Get urn: urn is empty",
                        Error + L"Failed to get item from workspace path D:\\Drive"));
}

TEST_F(FolderUrn, OfAPathOutsideEveryDriveLogsTwoLines)
{
    useDrive(DriveType);
    service.answer("GetItemsByWorkspacePaths", Json::array({workspacePathResult(itemAt(9, L"E:\\x"), L"E:\\x", 1)}));

    EXPECT_EQ(Api::getFolderUrn(hwnd, L"E:\\x", false), none);

    EXPECT_THAT(log.take(), ElementsAre(Error + L"Failed to get drive type from path E:\\x",
                                Error + L"Failed to get drive type from path E:\\x"));
}

TEST_F(FolderUrn, OfAnItemOutsideEveryDriveLogsOneLine)
{
    useDrive(DriveType);
    folder.workspacePath = L"E:\\x";

    EXPECT_EQ(Api::getFolderUrn(hwnd, folder, false), none);

    EXPECT_THAT(log.take(), ElementsAre(Error + L"Failed to get drive type from path E:\\x"));
}

TEST_F(FolderUrn, OnADriveOfAnUnknownTypeFallsBackToTheEmptyName)
{
    useDrive(L"Quorvex.DataSourceType.New");

    EXPECT_EQ(Api::getFolderUrn(hwnd, L"D:\\Drive\\F", false), none);

    EXPECT_THAT(log.take(),
        ElementsAre(Error + L"Failed to find drive type Quorvex.DataSourceType.New (2)", Error + L"Empty urn id (1)"));
}

TEST_F(FolderUrn, OfAnEmptyPathIsEmptyWithoutAConnection)
{
    EXPECT_EQ(Api::getFolderUrn(hwnd, L"", false), none);

    EXPECT_THAT(service.takeCalls(), IsEmpty());
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(FolderUrn, OfAnUnknownPathIsEmpty)
{
    useDrive(DriveType);

    EXPECT_EQ(Api::getFolderUrn(hwnd, L"D:\\Drive\\no", false), none);

    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(FolderUrn, ReportsFailure)
{
    useDrive(DriveType);
    service.fail("GetDrives", notRunning);

    EXPECT_EQ(Api::getFolderUrn(hwnd, L"D:\\Drive\\F", false), none);
    EXPECT_EQ(Api::getFolderUrn(hwnd, folder, false), none);

    EXPECT_THAT(log.take(), ElementsAre(Error + L"Failed to get folder urn from path D:\\Drive\\F" + saysOff,
                                Error + L"Failed to get folder urn" + saysOff));
    expectConnectionsClosed();
}

class DriveOfPath : public Urns
{
protected:
    // Returns the drive type that the log names.
    std::wstring typeFor(const wchar_t* path)
    {
        Item item = file;
        item.workspacePath = path;
        (void)Api::getFileUrn(hwnd, item);
        const std::wstring line = log.take().front();
        const std::wstring prefix = L"[TP] Get urn: got drive type ";
        return line.rfind(prefix, 0) == 0 ? line.substr(prefix.size(), line.find(L" from") - prefix.size()) : line;
    }
};

TEST_F(DriveOfPath, IsFoundByThePrefixOfThePath)
{
    useDrive(DocsType);

    EXPECT_EQ(typeFor(L"D:\\Drive2\\x"), DocsType);
    EXPECT_EQ(typeFor(L"D:\\Drive"), DocsType);
    EXPECT_EQ(typeFor(L"D:\\Driv"), Error + L"Failed to get drive type from path D:\\Driv");
    EXPECT_EQ(typeFor(L"C:\\D:\\Drive"), Error + L"Failed to get drive type from path C:\\D:\\Drive");
}

TEST_F(DriveOfPath, IsFoundIgnoringCase)
{
    useDrive(DocsType);

    EXPECT_EQ(typeFor(L"d:\\DRIVE\\x"), DocsType);
}

TEST_F(DriveOfPath, IsFoundIgnoringTheCaseOfNonAsciiLetters)
{
    useDrive(DocsType);
    service.answer("GetDrives", Json::array({drive(1, TeamType, L"D:\\\xC4\x41F")}));

    EXPECT_EQ(typeFor(L"d:\\\xE4\x43F\\x"), TeamType);
}

TEST_F(DriveOfPath, IsTheFirstThatMatches)
{
    useDrive(DocsType);
    service.answer("GetDrives",
        Json::array({drive(1, MorrowType, L"E:\\"), drive(1, TeamType, L"D:\\Dr"), drive(1, DocsType, L"D:\\Drive")}));

    EXPECT_EQ(typeFor(L"D:\\Drive\\x"), TeamType);
}

TEST_F(DriveOfPath, WithoutARootPathMatchesEveryPath)
{
    useDrive(DocsType);
    service.answer("GetDrives", Json::array({drive(1, TeamType, L"")}));

    EXPECT_EQ(typeFor(L"D:\\Drive\\x"), TeamType);
}

TEST_F(Urns, OfPathsThatNameNothingAreEmptyAndTheServiceIsAsked)
{
    useDrive(DriveType);
    const std::wstring paths[] = {
        L"D:\\Drive\\\xD800", L"D:\\Drive\\" + std::wstring(100'000, L'x'), L"relative", L"/"};

    for (const std::wstring& path : paths) {
        EXPECT_EQ(Api::getFolderUrn(hwnd, path, false), none);
        EXPECT_EQ(Api::getFolderUrn(hwnd, path, true), none);
        EXPECT_EQ(Api::getFileUrn(hwnd, path), none);

        const std::string opened = "TessaportService";
        const std::string askedFor = "GetItemsByWorkspacePaths";
        EXPECT_THAT(takeMembersAskedForWindow(),
            ElementsAre(opened, opened, askedFor, opened, opened, askedFor, opened, opened, askedFor));
    }
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(Urns, OfAPathWithAZeroCharacterAreThoseOfThePartBeforeIt)
{
    useDrive(DriveType);
    answerProperties(Json::array({propertyValue(L"SourceObjectId", "urn:folder")}));
    const std::wstring path(L"D:\\Drive\\F\0hidden", 17);

    EXPECT_EQ(Api::getFolderUrn(hwnd, path, false), Urn("", "urn:folder"));
    EXPECT_EQ(Api::getFileUrn(hwnd, path), Urn("", "urn:folder"));

    const Json ofFolder = asked(2, {"SourceObjectId"});
    EXPECT_THAT(askedProperties(), ElementsAre(ofFolder, ofFolder));
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
