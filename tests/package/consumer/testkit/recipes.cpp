// Tests of a small host, as docs/testing-a-host.md shows them.
#include <chrono>
#include <cstdint>
#include <exception>
#include <future>
#include <string>
#include <vector>

#include <velmora/api/Interop.h>
#include <velmora/native/CommandImage.h>
#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/native/RequestQueue.h>
#include <velmora/testkit/ScriptedService.h>
#include "../Expect.h"

using namespace Quorvex::Velmora::TessaportAPI;
using namespace Quorvex::Velmora::TestKit;
using namespace std::chrono_literals;

namespace
{

// The host: the names in the first drive, or what its window says instead.
std::wstring namesInFirstDrive()
{
    try {
        QvNativeTessaportAPI tessaport;
        std::wstring names;
        for (const Item& item : tessaport.getFolderContents(tessaport.getDrives()[0]->root))
            names += toWide(item.name) + L"\n";
        return names;
    } catch (const TessaportNotRunningException&) {
        return L"Start Tessaport, then choose Retry.";
    } catch (const ApiException& e) {
        return L"The folder cannot be shown: " + std::wstring(e.getErrorMessage());
    }
}

void aDriveWithFiles()
{
    ScriptedService service;
    const Drive drive = makeDrive(L"Harbour Project");
    service.getDrives.answer({drive});
    service.getFolderContents.answer({makeFile(drive, L"Plan.txt"), makeFile(drive, L"Übersicht.txt")});

    EXPECT(namesInFirstDrive() == L"Plan.txt\nÜbersicht.txt\n");
}

void notRunning()
{
    ScriptedService service;
    service.connect.fail(FailureKind::NotRunning);

    EXPECT(namesInFirstDrive() == L"Start Tessaport, then choose Retry.");

    service.connect.reset(); // The user starts it.
    EXPECT(namesInFirstDrive().empty());
}

void failsTwiceThenWorks()
{
    ScriptedService service;
    service.syncFiles.failNext(L"Quota exceeded.", 2);

    const Item root = QvNativeTessaportAPI().getDrives()[0]->root;
    EXPECT(!QvNativeTessaportAPI::syncItem(nullptr, root));
    EXPECT(!QvNativeTessaportAPI::syncItem(nullptr, root));
    EXPECT(QvNativeTessaportAPI::syncItem(nullptr, root));
}

void failsAfterThreeItems()
{
    ScriptedService service;
    const Drive drive = makeDrive(L"Harbour Project");
    const std::vector<Item> three = {makeFile(drive, L"a"), makeFile(drive, L"b"), makeFile(drive, L"c")};
    service.getFolderContents.failAfter(three, L"The network is down.");

    EXPECT(namesInFirstDrive() == L"The folder cannot be shown: The network is down.");
}

void answersAfterThreeSeconds()
{
    ScriptedService service;
    service.getDrives.delay(3s);

    RequestQueue queue;
    auto drives = queue.ask([](QvNativeTessaportAPI& tessaport) { return tessaport.getDrives(); });

    EXPECT(drives.wait_for(2s) == std::future_status::timeout); // The host says that it waits.
    EXPECT(drives.get().GetSize() == 1);
}

void answersWhenItIsReleased()
{
    ScriptedService service;
    service.getDrives.hold();

    RequestQueue queue;
    auto drives = queue.ask([](QvNativeTessaportAPI& tessaport) { return tessaport.getDrives(); });

    EXPECT(service.getDrives.waitUntilHeld()); // Now the request runs, and goes on running.
    EXPECT(drives.wait_for(0s) == std::future_status::timeout);
    service.getDrives.release();
    EXPECT(drives.get().GetSize() == 1);
}

void aMenu()
{
    const std::vector<std::uint8_t> icon = {0x89, 'P', 'N', 'G'}; // The bytes of a picture.
    Command open = makeCommand(L"open", L"Open", icon);
    open.isDefaultCommand = true;
    Command pin = makeCommand(L"pin", L"Keep on this computer");
    pin.isBeginningOfGroup = true;
    pin.isChecked = true;
    Command share = makeCommand(L"share", L"Share…");
    share.isEnabled = false;

    ScriptedService service;
    service.getCommands.answer({open, pin, share});

    QvNativeTessaportAPI tessaport;
    CommandContext context;
    context.itemId = tessaport.getDrives()[0]->root.id;
    const QVBuffer<Command> menu = tessaport.getCommands(context);
    EXPECT(menu.GetSize() == 3);
    EXPECT(menu[1]->isChecked && menu[1]->isBeginningOfGroup);
    EXPECT(commandImage(*menu[0]) == icon);

    tessaport.executeCommand(*menu[1], context);
    EXPECT(service.executeCommand.takeCalls().at(0).commandId == L"pin");
}

void callsAreReadBack()
{
    ScriptedService service;
    const Drive drive = makeDrive(L"Harbour Project", L"D:\\Harbour");
    service.getDrives.answer({drive});
    service.getFolderContents.answer({makeFile(drive, L"Plan.txt")});

    QvNativeTessaportAPI tessaport;
    tessaport.syncFiles(tessaport.getFolderContents(tessaport.getDrives()[0]->root));

    const std::vector<Call> calls = service.takeCalls();
    EXPECT(calls.size() == 4);
    EXPECT(calls[0].request == "connect");
    EXPECT(calls[1].request == "getDrives");
    EXPECT(calls[2].request == "getFolderContents" && calls[2].item == L"D:\\Harbour");
    EXPECT(calls[3].request == "syncFiles" && calls[3].items.at(0) == L"D:\\Harbour\\Plan.txt");
}

void aTreeOfFolders()
{
    ScriptedService service;
    const Drive drive = makeDrive(L"Harbour Project");
    const Item plans = makeFolder(drive, L"Plans");
    service.getDrives.answer({drive});
    service.getFolderContents.answerFor(drive.root, {plans});
    service.getFolderContents.answerFor(plans, {makeFile(drive, L"Plans\\Quay.txt")});
    service.getChildFolders.failFor(plans, L"Access denied.");

    QvNativeTessaportAPI tessaport;
    const QVBuffer<Item> top = tessaport.getFolderContents(tessaport.getDrives()[0]->root);
    EXPECT(tessaport.getFolderContents(*top[0])[0]->name == QVString(L"Quay.txt"));
}

} // namespace

int main()
{
    try {
        aDriveWithFiles();
        notRunning();
        failsTwiceThenWorks();
        failsAfterThreeItems();
        aMenu();
        callsAreReadBack();
        aTreeOfFolders();
        // From here on every request goes through a queue.
        answersAfterThreeSeconds();
        answersWhenItIsReleased();
    } catch (const std::exception& e) {
        std::cerr << e.what() << '\n';
        return 1;
    }
    std::cout << "all recipes work\n";
    return 0;
}
