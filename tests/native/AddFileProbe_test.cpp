// canAddFile: whether the sync application would accept a new file.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/native/ProbeTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CanAddFile : public ProbeTest
{
protected:
    void answerWithFolder(int number, const wchar_t* path)
    {
        service.answer("GetItemsByWorkspacePaths", Json::array({workspacePathResult(itemAt(number, path), path, 1)}));
    }
};

TEST_F(CanAddFile, ReturnsTheServicesAnswerAboutARealFile)
{
    answerWithFolder(5, L"D:\\Drive\\F");
    service.answerInTurn("CanAddFiles", {Json{{"value", true}}, Json{{"value", false}}});

    EXPECT_TRUE(Api::canAddFile(hwnd, L"D:/Drive/F"));
    const Json call = service.takeCall("CanAddFiles");
    EXPECT_EQ(call["folder"], 5);
    EXPECT_EQ(call["contents"][0].get<std::string>().rfind("dummy", 0), 0U);
    expectNoProbeFile();

    EXPECT_FALSE(Api::canAddFile(hwnd, L"D:/Drive/F"));
    expectNoProbeFile();
    EXPECT_THAT(log.take(), IsEmpty());
    expectConnectionsClosed();
}

TEST_F(CanAddFile, OpensOneConnectionBesidesThatOfTheLookUp)
{
    answerWithFolder(5, L"D:\\Drive\\F");

    EXPECT_TRUE(Api::canAddFile(hwnd, L"D:\\Drive\\F"));
    EXPECT_THAT(takeMembersAskedForWindow(),
        ElementsAre("TessaportService", "TessaportService", "GetItemsByWorkspacePaths", "CanAddFiles"));

    EXPECT_TRUE(Api::canAddFile(hwnd, L"D:\\Drive\\F"));
    EXPECT_THAT(takeMembersAskedForWindow(), ElementsAre("TessaportService", "CanAddFiles"));
}

TEST_F(CanAddFile, IsFalseOutsideTheWorkspace)
{
    service.answer("GetItemsByWorkspacePaths", Json::array({workspacePathResult(nullptr, L"D:\\x", 2)}));

    EXPECT_FALSE(Api::canAddFile(hwnd, L"D:/x"));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to get item from workspace path D:/x"));
    expectNoProbeFile();
}

TEST_F(CanAddFile, IsFalseWithoutAResult)
{
    EXPECT_FALSE(Api::canAddFile(hwnd, L"D:\\x"));

    EXPECT_THAT(log.take(), IsEmpty());
    expectNoProbeFile();
}

TEST_F(CanAddFile, IsFalseWithOneLineWhenTheServiceFails)
{
    answerWithFolder(5, L"D:\\Drive\\F");
    service.fail("CanAddFiles", notRunning);

    EXPECT_FALSE(Api::canAddFile(hwnd, L"D:/Drive/F"));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to copy file to D:/Drive/F" + saysOff));
    expectNoProbeFile();
}

TEST_F(CanAddFile, IsFalseWithOneLineWhenNoConnectionCanBeOpened)
{
    service.fail("TessaportService", notRunning);

    EXPECT_FALSE(Api::canAddFile(hwnd, L"D:/Drive/F"));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to copy file to D:/Drive/F" + saysOff));
    expectNoProbeFile();
}

TEST_F(CanAddFile, IsFalseWithOneLineWithoutATemporaryFolder)
{
    std::filesystem::remove_all(temporary.path());

    EXPECT_FALSE(Api::canAddFile(hwnd, L"D:\\F"));

    const auto lines = log.take();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].rfind(L"[TP] ERROR: Failed to copy file to D:\\F - ", 0), 0U);
}

TEST_F(CanAddFile, IsFalseForEmptyUnpairedAndOverlongPaths)
{
    const std::wstring longPath = L"D:\\" + std::wstring(100'000, L'x');
    for (const wchar_t* path : {L"", L"D:\\\xD800", longPath.c_str()}) {
        EXPECT_FALSE(Api::canAddFile(hwnd, path));
        expectNoProbeFile();
    }
    EXPECT_THAT(log.take(), IsEmpty());
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
