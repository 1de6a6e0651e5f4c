// The dialogs of the example open_dialog, with the real local service.
#include <filesystem>
#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "examples/open_dialog/Controls.h"
#include "tests/examples/OpenDialogDriverWindows.h"
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using ::testing::HasSubstr;
using ::testing::StrEq;

constexpr int Drives = 1;
constexpr int ItemsOfTheDrive = 4;

class OpenDialog : public ::testing::Test
{
protected:
    OpenDialog()
    {
        for (const wchar_t* name : {L"home", L"home/workspace", L"home/server", L"home/server/Drawings"})
            std::filesystem::create_directories(folder.path() / name);
        setState("running");
        write(L"drives.json", R"([{"id": "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01", "name": "Harbour Project",
            "type": "Quorvex.DataSourceType.Drive", "workspace": "workspace", "server": "server"}])");
        write(L"workspace/Plan.txt", "Quay wall");
        write(L"workspace/\xDC"
              L"bersicht.txt",
            "Lageplan f\xC3\xBCr alle");
        write(L"server/Remote.txt", "from the server");
    }

    void setState(const std::string& state) { write(L"service.json", R"({"state": ")" + state + "\"}"); }

    void write(const std::wstring& name, const std::string& bytes) const
    {
        writeFile(folder.file(L"home/" + name), bytes);
    }
    [[nodiscard]] std::string read(const std::wstring& name) const { return readText(folder.path() / L"home" / name); }

    void start() { program = std::make_unique<OpenDialogDriver>(folder.path() / L"home"); }

    /// Starts the program, opens a dialog and, in it, the drive.
    void openDrive(int button)
    {
        start();
        program->openDialog(button);
        program->awaitRows(Drives);
        program->type(L"Harbour Project");
        program->press(IDOK);
        program->awaitRows(ItemsOfTheDrive);
    }

    void awaitText(int control, const std::wstring& text) const
    {
        program->awaitClosedDialog();
        waitFor("the text", [&] { return textOf(program->control(control)) == text; });
    }

    TemporaryFolder folder;
    std::unique_ptr<OpenDialogDriver> program;
};

TEST_F(OpenDialog, OpensTheFileWhoseNameIsTyped)
{
    openDrive(IDC_OPEN);
    program->type(L"\xFC"
                  L"bersicht.txt");
    program->key(IDC_NAME, VK_RETURN);

    awaitText(IDC_TEXT, L"Lageplan f\xFCr alle");
    EXPECT_EQ(program->close(), 0U);
}

TEST_F(OpenDialog, OpensTheFileThatArrowsSelect)
{
    start();
    program->openDialog(IDC_OPEN);
    program->awaitRows(Drives);
    program->key(IDC_LIST, VK_HOME);
    program->key(IDC_LIST, VK_RETURN);
    program->awaitRows(ItemsOfTheDrive);
    program->key(IDC_LIST, VK_HOME);
    program->key(IDC_LIST, VK_DOWN);
    program->key(IDC_LIST, VK_RETURN);

    awaitText(IDC_TEXT, L"Quay wall");
}

TEST_F(OpenDialog, BringsAFileOfTheServerHere)
{
    openDrive(IDC_OPEN);
    program->type(L"Remote.txt");
    program->press(IDOK);

    awaitText(IDC_TEXT, L"from the server");
    EXPECT_EQ(read(L"workspace/Remote.txt"), "from the server");
}

TEST_F(OpenDialog, OpensNoFileThatIsNotAText)
{
    write(L"workspace/Plan.txt", std::string{'Q', '\0', 'y'});
    openDrive(IDC_OPEN);
    program->type(L"Plan.txt");
    program->press(IDOK);

    awaitText(IDC_MESSAGE, L"'Plan.txt' is not a text. Choose another file.");
    EXPECT_EQ(textOf(program->control(IDC_TEXT)), L"");
}

TEST_F(OpenDialog, GoesUpByItsButtonAndByBackspace)
{
    openDrive(IDC_OPEN);
    program->type(L"Drawings");
    program->press(IDOK);
    program->awaitRows(0);
    EXPECT_THAT(textOf(program->inDialog(IDC_LOCATION)), HasSubstr(L"Harbour Project \x203A Drawings"));
    program->key(IDC_LIST, VK_BACK);
    program->awaitRows(ItemsOfTheDrive);
    program->press(IDC_UP);
    program->awaitRows(Drives);
}

TEST_F(OpenDialog, SaysThatThereIsNoSuchFile)
{
    openDrive(IDC_OPEN);
    program->type(L"Plam.txt");
    program->press(IDOK);

    program->awaitStatus(L"There is no 'Plam.txt' here");
    EXPECT_TRUE(program->isDialogOpen());
}

TEST_F(OpenDialog, LeavesTheTextWhenItIsCancelled)
{
    start();
    SendMessageW(program->control(IDC_TEXT), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"unchanged"));
    program->openDialog(IDC_OPEN);
    program->awaitRows(Drives);
    program->key(IDC_LIST, VK_ESCAPE);

    awaitText(IDC_TEXT, L"unchanged");
    EXPECT_EQ(program->close(), 0U);
}

TEST_F(OpenDialog, ClosesWithItsProgramWhileARequestRuns)
{
    // Longer than the test may take.
    write(L"service.json", R"({"state": "running", "faults": {"getDrives": {"delayMilliseconds": 600000}}})");
    start();
    program->openDialog(IDC_OPEN);
    program->awaitStatus(L"Reading");
    program->press(IDCANCEL);
    program->awaitClosedDialog();

    EXPECT_EQ(program->close(), 0U);
}

TEST_F(OpenDialog, SavesInANewFolder)
{
    openDrive(IDC_SAVE);
    SendMessageW(program->control(IDC_TEXT), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"F\xFCr sp\xE4ter"));
    program->press(IDC_NEW_FOLDER);
    program->nameFolder(L"Entw\xFCrfe");
    program->awaitRows(0);
    EXPECT_THAT(textOf(program->inDialog(IDC_LOCATION)), HasSubstr(L"Entw\xFCrfe"));
    program->type(L"Neu.txt");
    program->press(IDOK);

    awaitText(IDC_MESSAGE, L"'Neu.txt' is saved, here and on the server.");
    EXPECT_EQ(read(L"workspace/Entw\xFCrfe/Neu.txt"), "F\xC3\xBCr sp\xC3\xA4ter");
    EXPECT_EQ(read(L"server/Entw\xFCrfe/Neu.txt"), "F\xC3\xBCr sp\xC3\xA4ter");
}

TEST_F(OpenDialog, ReplacesAFileOnlyIfTheUserSaysSo)
{
    openDrive(IDC_SAVE);
    SendMessageW(program->control(IDC_TEXT), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"new"));
    program->type(L"Plan.txt");
    program->press(IDOK);
    program->answerBox(IDNO);
    EXPECT_TRUE(program->isDialogOpen());
    EXPECT_EQ(read(L"workspace/Plan.txt"), "Quay wall");
    program->press(IDOK);
    program->answerBox(IDYES);

    awaitText(IDC_MESSAGE, L"'Plan.txt' is saved, here and on the server.");
    EXPECT_EQ(read(L"server/Plan.txt"), "new");
}

TEST_F(OpenDialog, SavesInAFolderThatIsOnlyOnTheServer)
{
    openDrive(IDC_SAVE);
    program->type(L"Drawings");
    program->press(IDOK);
    program->awaitRows(0);
    program->type(L"New.txt");
    program->press(IDOK);

    awaitText(IDC_MESSAGE, L"'New.txt' is saved, here and on the server.");
    EXPECT_TRUE(std::filesystem::exists(folder.path() / L"home/server/Drawings/New.txt"));
}

TEST_F(OpenDialog, SaysWhyItHasNothingToListAndTriesAgain)
{
    setState("not-running");
    start();
    program->openDialog(IDC_OPEN);
    program->awaitStatus(L"not running");
    EXPECT_NE(IsWindowVisible(program->inDialog(IDC_RETRY)), 0);
    setState("running");
    program->press(IDC_RETRY);

    program->awaitRows(Drives);
    EXPECT_THAT(textOf(program->inDialog(IDC_STATUS)), StrEq(L""));
    EXPECT_EQ(IsWindowVisible(program->inDialog(IDC_RETRY)), 0);
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
