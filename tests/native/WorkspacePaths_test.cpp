// One-shot operations on local paths: the items at them, and their full form.
#include <algorithm>
#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/native/ItemCache.h>
#include <velmora/platform/NativePath.h>
#include "tests/native/StaticTest.h"
#include "tests/support/Links.h"
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WorkspacePaths : public StaticTest
{
protected:
    void cache(int number, const std::wstring& path)
    {
        service.answer("GetDrives", Json::array({drive(number, DriveType, path)}));
        (void)Api().getDrives();
        (void)service.takeCalls();
    }

    void answerWith(const Json& results) { service.answer("GetItemsByWorkspacePaths", results); }

    bool find(const wchar_t* path) { return Api::getItemByWorkspacePath(hwnd, path, found); }

    // Returns the path that the service was asked for.
    std::wstring askedPath() { return textOf(service.takeCall("GetItemsByWorkspacePaths")["paths"][0]); }

    Item found = itemOf(900);
};

std::wstring withBackSlashes(std::wstring path)
{
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

TEST_F(WorkspacePaths, ThatAreCachedAreAnsweredWithoutAConnection)
{
    cache(5, L"D:\\Drive\\a.txt");
    service.fail("TessaportService", notRunning);

    EXPECT_TRUE(find(L"D:\\Drive\\a.txt"));

    EXPECT_EQ(found.lastModifiedDate, 1'700'000'005);
    EXPECT_THAT(service.takeCalls(), IsEmpty());
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(WorkspacePaths, WithForwardSlashesAreFoundInTheCache)
{
    cache(5, L"D:\\Drive\\a.txt");

    EXPECT_TRUE(find(L"D:/Drive/a.txt"));
    EXPECT_TRUE(find(L"D:/Drive/./x/../a.txt"));

    EXPECT_THAT(service.takeCalls(), IsEmpty());
}

TEST_F(WorkspacePaths, ThatAreRelativeBelongToTheCurrentFolder)
{
    const std::wstring folder =
        withBackSlashes(Common::wideText(std::filesystem::canonical(std::filesystem::current_path())));
    cache(5, folder + L"\\b.txt");

    EXPECT_TRUE(find(L"b.txt"));
    EXPECT_TRUE(find(L"x/../b.txt"));

    EXPECT_EQ(found.lastModifiedDate, 1'700'000'005);
    EXPECT_THAT(service.takeCalls(), IsEmpty());
}

TEST_F(WorkspacePaths, ThatAreNotCachedAreAskedForInCanonicalForm)
{
    answerWith(Json::array({workspacePathResult(itemAt(5, L"D:\\Drive\\a.txt"), L"D:\\Drive\\a.txt", 1)}));

    EXPECT_TRUE(find(L"D:/Drive/x/../a.txt"));

    EXPECT_EQ(found.lastModifiedDate, 1'700'000'005);
    const auto calls = service.takeCalls();
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(calls[0]["window"], 0x1234);
    EXPECT_EQ(calls[1]["paths"], Json::array({"D:\\Drive\\a.txt"}));
    EXPECT_THAT(log.take(), IsEmpty());
    expectConnectionsClosed();
}

TEST_F(WorkspacePaths, AreCachedAfterTheyWereFound)
{
    answerWith(Json::array({workspacePathResult(itemAt(5, L"D:\\Drive\\a.txt"), L"D:\\Drive\\a.txt", 1)}));

    EXPECT_TRUE(find(L"D:/Drive/a.txt"));
    (void)service.takeCalls();
    EXPECT_TRUE(find(L"D:/Drive/a.txt"));

    EXPECT_THAT(service.takeCalls(), IsEmpty());
}

TEST_F(WorkspacePaths, AreNotFoundIfTheReplyHasNoResult)
{
    answerWith(Json::array());

    EXPECT_FALSE(find(L"D:\\a"));

    EXPECT_EQ(found.lastModifiedDate, 1'700'000'900);
    EXPECT_THAT(log.take(), IsEmpty());
    expectConnectionsClosed();
}

TEST_F(WorkspacePaths, AreNotFoundIfTheResultIsAFailureAndOneLineNamesThePathAsGiven)
{
    for (const int result : {0, 2, 4, -1}) {
        answerWith(Json::array({workspacePathResult(itemAt(5, L"D:\\a"), L"D:\\a", result)}));

        EXPECT_FALSE(find(L"D:/x/../a"));

        EXPECT_EQ(found.lastModifiedDate, 1'700'000'900);
        EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to get item from workspace path D:/x/../a"));
    }
    EXPECT_EQ(findCachedItem(L"D:\\a"), nullptr);
}

TEST_F(WorkspacePaths, UseTheFirstResultOnly)
{
    answerWith(Json::array(
        {workspacePathResult(nullptr, L"D:\\a", 2), workspacePathResult(itemAt(5, L"D:\\other"), L"D:\\other", 1)}));

    EXPECT_FALSE(find(L"D:\\a"));

    EXPECT_EQ(log.take().size(), 1U);
    EXPECT_NE(findCachedItem(L"D:\\other"), nullptr);
}

TEST_F(WorkspacePaths, ReportAFailureWithTheCanonicalPath)
{
    service.fail("GetItemsByWorkspacePaths", notRunning);

    EXPECT_FALSE(find(L"D:/x/../a"));

    EXPECT_EQ(found.lastModifiedDate, 1'700'000'900);
    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to find item D:\\a" + saysOff));
    expectConnectionsClosed();
}

TEST_F(WorkspacePaths, ReportAConnectionThatCannotBeOpened)
{
    service.fail("TessaportService", notRunning);

    EXPECT_FALSE(find(L"D:\\a"));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to find item D:\\a" + saysOff));
}

TEST_F(WorkspacePaths, MayBeAStringOfTheOutputItem)
{
    cache(5, L"D:\\Drive\\a.txt");
    found.workspacePath = L"D:/Drive/a.txt";

    EXPECT_TRUE(Api::getItemByWorkspacePath(hwnd, found.workspacePath, found));

    EXPECT_EQ(found.workspacePath, QVString(L"D:\\Drive\\a.txt"));
}

TEST_F(WorkspacePaths, ThatAreEmptyMeanTheCurrentFolder)
{
    EXPECT_FALSE(find(L""));

    EXPECT_EQ(
        askedPath(), withBackSlashes(Common::wideText(std::filesystem::canonical(std::filesystem::current_path()))));
}

TEST_F(WorkspacePaths, ThatAreOverlongAreAskedForCompletely)
{
    const std::wstring path = L"D:\\" + std::wstring(200'000, L'x');
    service.fail("GetItemsByWorkspacePaths", notRunning);

    EXPECT_FALSE(find(path.c_str()));

    EXPECT_EQ(askedPath(), path);
    const auto lines = log.take();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].size(), 1'003U);
}

TEST_F(WorkspacePaths, OnTheDiskThatAreOverlongAreAskedForCompletely)
{
    std::wstring path;
    for (int i = 0; i < 5'000; ++i)
        path += L"/component";

    EXPECT_FALSE(find(path.c_str()));

    EXPECT_EQ(askedPath(), std::filesystem::current_path().root_name().wstring() + withBackSlashes(path));
}

TEST_F(WorkspacePaths, WithUnpairedSurrogatesAreAskedForAsTheyAre)
{
    EXPECT_FALSE(find(L"D:\\a\xD800"));
    EXPECT_EQ(askedPath(), L"D:\\a\xD800");
    EXPECT_FALSE(find(L"/tmp/\xDFFF/x"));
    EXPECT_EQ(askedPath(), std::filesystem::current_path().root_name().wstring() + L"\\tmp\\\xDFFF\\x");
}

TEST_F(WorkspacePaths, WithNonAsciiNamesWorkInTheCLocale)
{
    cache(5, L"D:\\\xC4\xF6 \x4E2D\U0001F600");

    EXPECT_TRUE(find(L"D:/\xC4\xF6 \x4E2D\U0001F600"));
}

TEST_F(WorkspacePaths, ThatExistHaveTheirLinksFollowed)
{
    const TemporaryFolder folder;
    const auto real = std::filesystem::canonical(folder.path());
    std::filesystem::create_directory(real / "target");
    const Link link("target", real / "link");

    EXPECT_FALSE(find(Common::wideText(real / "link" / "new.txt").c_str()));
    EXPECT_EQ(askedPath(), withBackSlashes(Common::wideText(real / "target" / "new.txt")));
    EXPECT_FALSE(find(Common::wideText(real / "link" / ".." / "new.txt").c_str()));
    EXPECT_EQ(askedPath(), withBackSlashes(Common::wideText(real / "new.txt")));
}

#ifndef _WIN32 // There a current folder cannot be removed.
class DeletedFolder : public WorkspacePaths
{
protected:
    DeletedFolder()
    {
        const TemporaryFolder folder;
        std::filesystem::current_path(folder.path());
    }
    ~DeletedFolder() override { std::filesystem::current_path(former); }

private:
    std::filesystem::path former = std::filesystem::current_path();
};

TEST_F(DeletedFolder, MakesOperationsOnPathsThrow)
{
    cache(5, L"D:\\Drive\\a.txt");

    for (const wchar_t* path : {L"a.txt", L"/tmp/a.txt", L"D:\\Drive\\a.txt", L""}) {
        EXPECT_THROW((void)find(path), std::filesystem::filesystem_error) << path;
        EXPECT_THROW((void)Api::checkExistence(hwnd, path, found), std::filesystem::filesystem_error);
        EXPECT_THROW(Api::removeCachedItem(path), std::filesystem::filesystem_error);
    }
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(DeletedFolder, IsReportedByTheResultOfOtherOperations)
{
    QVString permanentId;

    EXPECT_FALSE(Api::getPermanentIdByFullWorkspacePath(hwnd, L"D:\\a", permanentId));
    EXPECT_EQ(Api::getFolderUrn(hwnd, L"D:\\a", false), std::make_tuple(std::string(), std::string()));
    EXPECT_EQ(Api::getFileUrn(hwnd, L"D:\\a"), std::make_tuple(std::string(), std::string()));
    EXPECT_FALSE(Api::canAddFile(hwnd, L"D:\\a"));

    const auto lines = log.take();
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0].rfind(L"[TP] ERROR: Failed to get pid from path D:\\a - ", 0), 0U);
    EXPECT_EQ(lines[1].rfind(L"[TP] ERROR: Failed to get folder urn from path D:\\a - ", 0), 0U);
    EXPECT_EQ(lines[2].rfind(L"[TP] ERROR: Failed to get file urn on path D:\\a - ", 0), 0U);
    EXPECT_EQ(lines[3].rfind(L"[TP] ERROR: Failed to copy file to D:\\a - ", 0), 0U);
}
#endif

class TrueFullPath : public ScriptedTest
{
};

TEST_F(TrueFullPath, EqualsThatOfTheManagedRuntime)
{
#ifdef _WIN32
    EXPECT_EQ(QvNativeTessaportAPI::toTrueFullPath(L"D:/a/./b/../\xE9\xD800"), L"D:\\a\\\xE9\xD800");
#else
    EXPECT_EQ(QvNativeTessaportAPI::toTrueFullPath(L"/a/./b/../\xE9\xD800"), L"/a/\xE9\xD800");
#endif
    EXPECT_EQ(QvNativeTessaportAPI::toTrueFullPath(L"x.txt"),
        Common::wideText((std::filesystem::current_path() / "x.txt").make_preferred()));
}

TEST_F(TrueFullPath, OfAnInvalidPathIsAnApiExceptionWithTheManagedMessage)
{
    for (const std::wstring& path : {std::wstring(), std::wstring(L"a\0b", 3)}) {
        try {
            (void)QvNativeTessaportAPI::toTrueFullPath(path);
            FAIL() << "nothing was thrown";
        } catch (const ApiException& e) {
            EXPECT_STRNE(e.what(), "");
        }
    }
    EXPECT_THAT(log.take(), IsEmpty());
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
