#include <functional>
#include <string>
#include <vector>

#include "tests/testkit/KitTest.h"

namespace Quorvex::Velmora::TestKit
{
namespace
{

using namespace TessaportAPI;

class Failures : public KitTest
{
};

template <class Exception>
void expectFailure(ScriptedService& service, FailureKind kind, const wchar_t* message)
{
    service.discover.fail({kind, message});
    try {
        QvNativeTessaportAPI().discover();
        ADD_FAILURE() << "did not fail";
    } catch (const ApiException& e) {
        EXPECT_EQ(typeid(e), typeid(Exception));
        EXPECT_STREQ(e.getErrorMessage(), message);
    }
}

TEST_F(Failures, HaveEveryKindOfException)
{
    expectFailure<ApiException>(service, FailureKind::Other, L"Quota exceeded.");
    expectFailure<TessaportNotInstalledException>(service, FailureKind::NotInstalled, L"a");
    expectFailure<TessaportNotRunningException>(service, FailureKind::NotRunning, L"ö \U0001F600");
    expectFailure<TessaportRequiresUpdateException>(service, FailureKind::RequiresUpdate, L"");
    expectFailure<TessaportApiRequiresUpdateException>(service, FailureKind::ApiRequiresUpdate, L"d");
    expectFailure<TessaportForcedUpdateException>(service, FailureKind::ForcedUpdate, L"e");
}

TEST_F(Failures, HaveAMessageThatFitsTheirKind)
{
    EXPECT_EQ(Failure(FailureKind::NotRunning).message, Common::QVString(L"Tessaport is not running."));
    EXPECT_EQ(Failure(L"Quota exceeded.").kind, FailureKind::Other);
    EXPECT_EQ(Failure("Quota exceeded.").message, Common::QVString(L"Quota exceeded."));
}

TEST_F(Failures, OfAConnectionLeaveTheNextOneAlone)
{
    service.connect.failNext(FailureKind::NotRunning);

    EXPECT_THROW(QvNativeTessaportAPI(), TessaportNotRunningException);
    EXPECT_NO_THROW(QvNativeTessaportAPI().discover());
}

TEST_F(Failures, CanComeAfterSomeItems)
{
    const std::vector<Item> items = {makeFile(drive, L"a"), makeFile(drive, L"b"), makeFile(drive, L"c")};
    service.getFolderContents.failAfter(items, L"The connection was lost.");
    service.getStringPropertyValues.failAfter({}, L"No properties.");
    QvNativeTessaportAPI tessaport;
    const Item root = tessaport.getDrives()[0]->root;

    EXPECT_THROW((void)tessaport.getFolderContents(root), ApiException);
    EXPECT_THROW((void)tessaport.getStringPropertyValues({}, {}), ApiException);
    service.getFolderContents.answer(items);
    EXPECT_EQ(tessaport.getFolderContents(root).GetSize(), 3U);
}

TEST_F(Failures, ReachEveryRequest)
{
    QvNativeTessaportAPI tessaport;
    service.getCommands.answer({makeCommand(L"open", L"Open")});
    const Item root = tessaport.getDrives()[0]->root;
    CommandContext context;
    context.itemId = root.id;
    const Command command = *tessaport.getCommands(context)[0];

    const std::vector<std::pair<RequestScript*, std::function<void()>>> requests = {
        {&service.connect, [] { QvNativeTessaportAPI(); }},
        {&service.discover, [&] { tessaport.discover(); }},
        {&service.getVersion, [&] { (void)tessaport.getVersion(); }},
        {&service.getDrives, [&] { (void)tessaport.getDrives(); }},
        {&service.getFolderContents, [&] { (void)tessaport.getFolderContents(root); }},
        {&service.getChildFolders, [&] { (void)tessaport.getChildFolders(root); }},
        {&service.getOrCreateFolder, [&] { tessaport.getOrCreateFolder(root, L"a"); }},
        {&service.isFileInWorkspace, [&] { (void)tessaport.isFileInWorkspace(L"D:\\a"); }},
        {&service.canAddFiles, [&] { (void)tessaport.canAddFiles(root, {}); }},
        {&service.addFiles, [&] { tessaport.addFiles(root, {}); }},
        {&service.syncFiles, [&] { tessaport.syncFiles({}); }},
        {&service.deleteFilesOrFolders, [&] { tessaport.deleteFilesOrFolders({}); }},
        {&service.getItemsByRelativePaths, [&] { (void)tessaport.getItemsByRelativePaths(drive.id, {}); }},
        {&service.getItemsByWorkspacePaths, [&] { (void)tessaport.getItemsByWorkspacePaths({}); }},
        {&service.fileClosedWithinRunningProcess, [&] { tessaport.fileClosedWithinRunningProcess(1, L"D:\\a"); }},
        {&service.getPropertyDefinitions, [&] { (void)tessaport.getPropertyDefinitions(drive.id); }},
        {&service.getStringPropertyValues, [&] { (void)tessaport.getStringPropertyValues({}, {}); }},
        {&service.getCommands, [&] { (void)tessaport.getCommands(context); }},
        {&service.executeCommand, [&] { tessaport.executeCommand(command, context); }},
        {&service.getPermanentIds, [&] { (void)tessaport.getPermanentIds({}); }},
        {&service.getItemsByPermanentIds, [&] { (void)tessaport.getItemsByPermanentIds({}); }},
    };
    for (const auto& [script, request] : requests) {
        (void)script->takeCalls();
        script->fail(FailureKind::NotRunning);
        EXPECT_THROW(request(), TessaportNotRunningException);
        const std::vector<Call> calls = script->takeCalls();
        ASSERT_EQ(calls.size(), 1U);
        script->reset();
        EXPECT_NO_THROW(request()) << calls[0].request;
    }
}

} // namespace
} // namespace Quorvex::Velmora::TestKit
