// getRootFolderLocalPath: where on the local disk new files can be added.
#include <algorithm>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/platform/NativePath.h>
#include "tests/native/ProbeTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RootFolderLocalPath : public ProbeTest
{
protected:
    QVCode ask(const wchar_t* driveType = DriveType)
    {
        return Api::getRootFolderLocalPath(hwnd, driveType, path, item);
    }

    static Json folder(int number, const wchar_t* path, bool isOnServer = true)
    {
        Json json = itemAt(number, path);
        json["isOnServer"] = isOnServer;
        return json;
    }

    void answerWith(const Json& drives, const std::vector<Json>& childrenOfEach, const std::vector<bool>& accepts)
    {
        service.answer("GetDrives", drives);
        service.answerInTurn("GetChildFolders", inTurn(childrenOfEach));
        service.answerInTurn("CanAddFiles", inTurn({accepts.begin(), accepts.end()}));
    }

    // Returns the folders that the service was asked about.
    std::vector<int> askedFolders()
    {
        std::vector<int> folders;
        for (const Json& call : service.takeCalls()) {
            if (call["member"] == "CanAddFiles")
                folders.push_back(call["folder"]);
        }
        return folders;
    }

    void expectUntouched()
    {
        EXPECT_EQ(path, QVString(L"before"));
        EXPECT_EQ(item.lastModifiedDate, 1'700'000'900);
    }

    QVString path = L"before";
    Item item = itemOf(900);

private:
    static std::vector<Json> inTurn(const std::vector<Json>& values)
    {
        std::vector<Json> answers;
        for (const Json& value : values)
            answers.push_back(Json{{"value", value}});
        return answers;
    }
};

TEST_F(RootFolderLocalPath, NamesTheFirstChildThatAcceptsFiles)
{
    answerWith(Json::array({drive(1, DriveType, L"D:\\Drive")}),
        {Json::array({folder(11, L"D:\\Drive\\A"), folder(12, L"D:\\Drive\\B"), folder(13, L"D:\\Drive\\C")})},
        {false, true, true});

    EXPECT_EQ(ask(), QVCode::Success);

    EXPECT_EQ(path, QVString(L"D:\\Drive\\B"));
    EXPECT_EQ(item.lastModifiedDate, 1'700'000'012);
    EXPECT_THAT(askedFolders(), ElementsAre(11, 12));
    EXPECT_THAT(log.take(), IsEmpty());
    expectNoProbeFile();
    expectConnectionsClosed();
}

TEST_F(RootFolderLocalPath, UsesOneConnectionAndListsTheDrivesRoot)
{
    answerWith(Json::array({drive(1, DriveType, L"D:\\Drive")}), {Json::array({folder(11, L"D:\\Drive\\A")})}, {true});

    EXPECT_EQ(ask(), QVCode::Success);

    const auto calls = service.takeCalls();
    ASSERT_EQ(calls.size(), 4U);
    EXPECT_EQ(calls[0]["window"], 0x1234);
    EXPECT_EQ(calls[1]["member"], "GetDrives");
    EXPECT_EQ(calls[2]["member"], "GetChildFolders");
    EXPECT_EQ(calls[2]["folder"], 1);
    EXPECT_EQ(calls[3]["member"], "CanAddFiles");
}

TEST_F(RootFolderLocalPath, AsksAboutARealFileWithAFreshName)
{
    answerWith(Json::array({drive(1, DriveType, L"D:\\Drive")}),
        {Json::array({folder(11, L"D:\\Drive\\A"), folder(12, L"D:\\Drive\\B")})}, {false, true});

    EXPECT_EQ(ask(), QVCode::Success);
    const auto first = service.takeCalls();
    EXPECT_EQ(ask(), QVCode::Success);
    const auto second = service.takeCalls();

    const Json& paths = first[3]["paths"];
    ASSERT_EQ(paths.size(), 1U);
    EXPECT_EQ(paths, first[4]["paths"]);
    EXPECT_NE(paths, second[3]["paths"]);
    std::wstring parent = Common::wideText(temporary.path());
    std::replace(parent.begin(), parent.end(), L'/', L'\\');
    const std::wstring probe = textOf(paths[0]);
    EXPECT_EQ(probe.substr(0, parent.size() + 1), parent + L"\\");
    EXPECT_EQ(probe.substr(parent.size() + 1).size(), 36U + 4U);
    EXPECT_EQ(probe.substr(probe.size() - 4), L".txt");
    for (const Json& call : {first[3], first[4]}) {
        std::string content = call["contents"][0];
        content.erase(std::remove(content.begin(), content.end(), '\r'), content.end());
        EXPECT_EQ(content, "dummy\n");
    }
}

TEST_F(RootFolderLocalPath, HasBackSlashesAndNoOtherChange)
{
    answerWith(Json::array({drive(1, DriveType, L"D:\\Drive")}),
        {Json::array({folder(11, L"D:/Users/a/Drive/../Folder/")})}, {true});

    EXPECT_EQ(ask(), QVCode::Success);

    EXPECT_EQ(path, QVString(L"D:\\Users\\a\\Drive\\..\\Folder\\"));
    EXPECT_EQ(item.workspacePath, QVString(L"D:/Users/a/Drive/../Folder/"));
}

TEST_F(RootFolderLocalPath, SkipsChildrenThatAreNotOnTheServer)
{
    answerWith(Json::array({drive(1, DriveType, L"D:\\Drive")}),
        {Json::array({folder(11, L"D:\\Drive\\A", false), folder(12, L"D:\\Drive\\B")})}, {true});

    EXPECT_EQ(ask(), QVCode::Success);

    EXPECT_THAT(askedFolders(), ElementsAre(12));
}

TEST_F(RootFolderLocalPath, FailsIfNoChildIsOnTheServer)
{
    answerWith(Json::array({drive(1, DriveType, L"D:\\Drive")}),
        {Json::array({folder(11, L"D:\\Drive\\A", false), folder(12, L"D:\\Drive\\B", false)})}, {true});

    EXPECT_EQ(ask(), QVCode::Failure);

    expectUntouched();
    EXPECT_THAT(askedFolders(), IsEmpty());
    EXPECT_THAT(log.take(), IsEmpty());
    expectNoProbeFile();
}

TEST_F(RootFolderLocalPath, TriesEveryDriveOfItsTypeInOrder)
{
    answerWith(Json::array({drive(1, DocsType, L"D:\\Docs"), drive(2, DriveType, L"D:\\One"),
                   drive(3, MorrowType, L"D:\\M"), drive(4, DriveType, L"D:\\Two"), drive(5, TeamType, L"D:\\T")}),
        {Json::array({folder(21, L"D:\\One\\A")}), Json::array({folder(41, L"D:\\Two\\A")})}, {false, true});

    EXPECT_EQ(ask(), QVCode::Success);

    EXPECT_EQ(path, QVString(L"D:\\Two\\A"));
    std::vector<int> roots;
    for (const Json& call : service.takeCalls()) {
        if (call["member"] == "GetChildFolders")
            roots.push_back(call["folder"]);
    }
    EXPECT_THAT(roots, ElementsAre(2, 4));
}

TEST_F(RootFolderLocalPath, FailsIfNoFolderAccepts)
{
    answerWith(Json::array({drive(1, DriveType, L"D:\\Drive")}), {Json::array({folder(11, L"D:\\Drive\\A")})}, {false});

    EXPECT_EQ(ask(), QVCode::Failure);

    expectUntouched();
    EXPECT_THAT(log.take(), IsEmpty());
    expectNoProbeFile();
    expectConnectionsClosed();
}

TEST_F(RootFolderLocalPath, FailsWithoutADrive)
{
    answerWith(Json::array(), {}, {});

    EXPECT_EQ(ask(), QVCode::Failure);

    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(RootFolderLocalPath, FailsForEveryOtherTypeWithoutAConnection)
{
    for (const wchar_t* type :
        {DocsType, TeamType, MorrowType, L"quorvex.datasourcetype.drive", L"", L"Quorvex.DataSourceType.Drive "}) {
        EXPECT_EQ(ask(type), QVCode::Failure);
        EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Drive type not found"));
    }

    expectUntouched();
    EXPECT_THAT(service.takeCalls(), IsEmpty());
    expectNoProbeFile();
}

TEST_F(RootFolderLocalPath, ReportsEveryFailureAndRemovesTheProbe)
{
    answerWith(Json::array({drive(1, DriveType, L"D:\\Drive")}), {Json::array({folder(11, L"D:\\Drive\\A")})}, {true});
    for (const char* member : {"CanAddFiles", "GetChildFolders", "GetDrives", "TessaportService"}) {
        service.fail(member, notRunning);

        EXPECT_EQ(ask(), QVCode::Failure) << member;

        EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to get root path of connected drive" + saysOff));
        expectNoProbeFile();
    }
    expectUntouched();
    service.reset();
}

TEST_F(RootFolderLocalPath, FailsWithoutATemporaryFolder)
{
    std::filesystem::remove_all(temporary.path());

    EXPECT_EQ(ask(), QVCode::Failure);

    const auto lines = log.take();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].rfind(L"[TP] ERROR: Failed to get root path of connected drive - ", 0), 0U);
    EXPECT_THAT(service.takeCalls(), IsEmpty());
}

TEST_F(RootFolderLocalPath, PassesAProbeThatCannotBeWrittenToTheService)
{
    // Not even root can write there.
#ifdef _WIN32
    const EnvironmentVariable variable(
        TemporaryFolderVariable, "Z:\\proc\\self\\fdinfo"); // The same folder under Wine.
#else
    const EnvironmentVariable variable(TemporaryFolderVariable, "/proc/self/fdinfo");
#endif
    answerWith(Json::array({drive(1, DriveType, L"D:\\Drive")}), {Json::array({folder(11, L"D:\\Drive\\A")})}, {false});

    EXPECT_EQ(ask(), QVCode::Failure);

    EXPECT_EQ(service.takeCall("CanAddFiles")["contents"], Json::array({nullptr}));
    EXPECT_THAT(log.take(), IsEmpty());
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
