// Every failure of every request: a sentence in the window, and a retry.
#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>
#include <QTreeView>
#include <QTreeWidget>
#include <functional>

#include "tests/window/ScriptedWindow.h"

namespace Quorvex::Velmora::WindowTest
{
namespace
{

using TestSupport::failure;

class Failures : public ScriptedWindow
{
public:
    /// What the user does to make the request.
    using Act = void (*)(Failures& test);

    void trigger(const QString& action) { ScriptedWindow::trigger(action); }
    void select(const QString& name) { ScriptedWindow::select(name); }
    void openFolderOfTree() { part<QTreeView>("tree").expand(part<QTreeView>("tree").model()->index(0, 0)); }
    void addFile() { window->addFiles({"/tmp/new.txt"}); }
    void openMenuOnly() { (void)openMenu(); }
    void runCommand() { openMenu().value(0)->trigger(); }

protected:
    void openDrive()
    {
        openWindow();
        ASSERT_TRUE(waitForRow("a.txt")) << noticeText().toStdString();
    }
};

struct FailingRequest {
    const char* member;
    const char* sentence;
    Failures::Act act;
};

void PrintTo(const FailingRequest& request, std::ostream* stream) { *stream << request.member; }

class FailingRequests : public Failures, public testing::WithParamInterface<FailingRequest>
{
};

const FailingRequest AllRequests[] = {
    {"GetFolderContents", "Cannot list the folder “Drive 1”: ", [](Failures& test) { test.trigger("Refresh"); }},
    {"GetPropertyDefinitions",
        "Cannot read the properties of the selection: ", [](Failures& test) { test.select("a.txt"); }},
    {"GetProperties", "Cannot read the properties of the selection: ", [](Failures& test) { test.select("a.txt"); }},
    {"GetCommands", "Cannot list the commands: ", [](Failures& test) { test.openMenuOnly(); }},
    {"ExecuteCommand", "Cannot run the command “Command 1”: ", [](Failures& test) { test.runCommand(); }},
    {"SyncFiles", "Cannot sync the folder “Drive 1”: ", [](Failures& test) { test.trigger("Sync"); }},
    {"AddFiles", "Cannot add files to “Drive 1”: ", [](Failures& test) { test.addFile(); }},
};

TEST_P(FailingRequests, AreASentenceWithARemedyAndTheMessage)
{
    service.answer("GetPropertyDefinitions", Json::array({{{"id", "Name"}, {"displayName", "Name"}}}));
    Json command = TestSupport::command(1);
    command["isEnabled"] = true;
    service.answer("GetCommands", Json::array({command}));
    openDrive();
    service.fail(GetParam().member,
        failure("InvalidOperationException", L"quota <b>exceeded</b>, see https://example.com/q?a=1&b=2"));

    GetParam().act(*this);

    ASSERT_TRUE(waitForNotice(GetParam().sentence)) << noticeText().toStdString();
    EXPECT_TRUE(noticeText().contains("Try again.")) << noticeText().toStdString();
    EXPECT_TRUE(messages().contains("quota <b>exceeded</b>, see https://example.com/q?a=1&b=2"))
        << messages().toStdString();
    EXPECT_TRUE(part<QTextBrowser>("messages").toHtml().contains("href=\"https://example.com/q?a=1&amp;b=2\""));
}

INSTANTIATE_TEST_SUITE_P(Window, FailingRequests, testing::ValuesIn(AllRequests),
    [](const auto& info) { return std::string(info.param.member); });

struct FailingStart {
    const char* member;
    const char* kind;
    const char* why;
};

void PrintTo(const FailingStart& start, std::ostream* stream) { *stream << start.member << start.kind; }

class FailingStarts : public Failures, public testing::WithParamInterface<FailingStart>
{
};

TEST_P(FailingStarts, AreShownUntilARetrySucceeds)
{
    service.fail(GetParam().member, failure(GetParam().kind, L"words of the application"));
    openWindow();
    ASSERT_TRUE(waitForNotice(GetParam().why)) << noticeText().toStdString();
    EXPECT_TRUE(messages().contains("words of the application"));

    service.answerInTurn(GetParam().member, {});
    QTest::mouseClick(&part<QPushButton>("retry"), Qt::LeftButton);

    EXPECT_TRUE(waitForRow("a.txt"));
    EXPECT_EQ(noticeText(), "");
}

INSTANTIATE_TEST_SUITE_P(Window, FailingStarts,
    testing::Values(FailingStart{"TessaportService", "TessaportNotInstalledException", "Tessaport is not installed."},
        FailingStart{"TessaportService", "TessaportNotRunningException", "Tessaport is not running."},
        FailingStart{"Discover", "TessaportRequiresUpdateException", "this version of Tessaport is too old."},
        FailingStart{"Discover", "TessaportForcedUpdateException", "an update of Tessaport is waiting"},
        FailingStart{"GetDrives", "TessaportApiRequiresUpdateException", "do not fit together"},
        FailingStart{"GetDrives", "InvalidOperationException", "Tessaport reports a failure."}),
    [](const auto& info) { return std::string(info.param.member) + info.param.kind; });

TEST_F(Failures, OfATreeFolderAreRetried)
{
    service.fail("GetChildFolders", failure("InvalidOperationException", L"no"));
    openDrive();
    ASSERT_TRUE(waitForNotice("Cannot open the folder “Drive 1”: "));

    Json folder = TestSupport::item(21);
    folder["name"] = "inside";
    service.answer("GetChildFolders", Json::array({folder}));
    QTest::mouseClick(&part<QPushButton>("retry"), Qt::LeftButton);

    auto* model = part<QTreeView>("tree").model();
    EXPECT_TRUE(waitFor([&] { return model->rowCount(model->index(0, 0)) == 1; }));
}

TEST_F(Failures, OfAListHalfWayShowNothingOfIt)
{
    service.answer("GetFolderContents", TestSupport::failingList(Json::array({fileNamed(1, "a"), fileNamed(2, "b"),
                                                                     fileNamed(3, "c"), fileNamed(4, "d")}),
                                            3, failure("InvalidOperationException", L"connection lost")));

    openWindow();

    EXPECT_TRUE(waitForNotice("Cannot list the folder “Drive 1”: "));
    EXPECT_EQ(column(0), QStringList());
}

TEST_F(Failures, OfASyncEndItAndARetryGoesOnWhereItFailed)
{
    Json files = Json::array();
    for (int i = 0; i < 45; ++i)
        files.push_back(fileNamed(100 + i, "file " + std::to_string(i) + ".txt"));
    service.answer("GetFolderContents", files);
    openWindow();
    ASSERT_TRUE(waitForRow("file 44.txt"));
    (void)service.takeCalls();
    const Json done = TestSupport::outcome(true);
    service.answerInTurn(
        "SyncFiles", {Json::object({{"value", done}}),
                         Json::object({{"throw", failure("InvalidOperationException", L"quota exceeded")}}),
                         Json::object({{"value", done}})});

    trigger("Sync");
    ASSERT_TRUE(waitForNotice("Cannot sync the folder “Drive 1”: "));
    EXPECT_FALSE(window->findChild<QProgressDialog*>()->isVisible());
    QTest::mouseClick(&part<QPushButton>("retry"), Qt::LeftButton);

    EXPECT_TRUE(waitForMessage("Sync the folder “Drive 1”: "));
    std::vector<std::size_t> batches;
    for (const Json& call : service.takeCalls()) {
        if (call["member"] == "SyncFiles")
            batches.push_back(call["ids"].size());
    }
    EXPECT_EQ(batches, (std::vector<std::size_t>{20, 20, 20, 6}));
}

TEST_F(Failures, OfPartsOfASyncAreListedWithTheirReasons)
{
    service.answer("GetPropertyDefinitions", Json::array({{{"id", "SyncError"}, {"displayName", "Error"}}}));
    openDrive();
    service.answer("SyncFiles", TestSupport::outcome(false));
    Json value = TestSupport::propertyValue(L"SyncError", "the disk is full");
    value["relativePath"] = "b.txt";
    service.answer("GetProperties", TestSupport::propertyValues(Json::array({value})));

    trigger("Sync");

    EXPECT_TRUE(waitForNotice("Cannot sync the folder “Drive 1” completely."));
    EXPECT_TRUE(messages().contains("“b.txt”: the disk is full")) << messages().toStdString();
}

TEST_F(Failures, WithLinksOpenThemAlsoWithoutAScheme)
{
    openDrive();

    emit part<QTextBrowser>("messages").anchorClicked(QUrl("https://example.com/q"));
    emit part<QTextBrowser>("messages").anchorClicked(QUrl("www.example.com"));

    EXPECT_EQ(opened, (std::vector<QUrl>{QUrl("https://example.com/q"), QUrl("http://www.example.com")}));
}

TEST_F(Failures, OfAnIconAreReportedAndTheCommandIsShown)
{
    openDrive();
    service.answer("GetCommands",
        Json::array({TestSupport::commandWithFailingImage(1, 1, failure("InvalidOperationException", L"no picture"))}));

    const auto actions = openMenu();

    ASSERT_EQ(actions.size(), 1);
    EXPECT_EQ(actions[0]->text(), "Command 1");
    EXPECT_TRUE(messages().contains("The icon of the command “Command 1” is missing: no picture"));
}

} // namespace
} // namespace Quorvex::Velmora::WindowTest
