#include "tests/examples/OpenDialogDriverWindows.h"

#include <chrono>
#include <stdexcept>
#include <thread>

#include <commctrl.h>

#include "examples/open_dialog/Controls.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

constexpr const wchar_t* DialogClass = L"#32770";
constexpr auto TimeLimit = std::chrono::seconds(60);
constexpr auto Pause = std::chrono::milliseconds(20);

std::filesystem::path setting(const wchar_t* variable, const char* usual)
{
    const wchar_t* const set = _wgetenv(variable);
    return set == nullptr ? std::filesystem::u8path(usual) : std::filesystem::path(set);
}

struct Search {
    DWORD processId;
    const wchar_t* className;
    HWND other;
    HWND found;
};

BOOL CALLBACK compare(HWND window, LPARAM parameter)
{
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    wchar_t name[64] = L"";
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    if (owner == search.processId && window != search.other && IsWindowVisible(window) != 0 &&
        std::wstring(name) == search.className)
        search.found = window;
    return search.found == nullptr ? TRUE : FALSE;
}

} // namespace

void waitFor(const std::string& what, const std::function<bool()>& condition)
{
    const auto end = std::chrono::steady_clock::now() + TimeLimit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            throw std::runtime_error("waited in vain for " + what);
        std::this_thread::sleep_for(Pause);
    }
}

std::wstring textOf(HWND window)
{
    std::wstring text(static_cast<std::size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
    text.resize(
        static_cast<std::size_t>(SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

OpenDialogDriver::OpenDialogDriver(const std::filesystem::path& home)
{
    ChildProgram program;
    program.program = setting(L"VELMORA_OPEN_DIALOG", OPEN_DIALOG_PROGRAM).make_preferred();
    program.arguments = {setting(L"VELMORA_LOCAL_SERVICE", LOCAL_SERVICE_FOLDER).u8string()};
    program.environment = {{"TESSAPORT_HOME", home.u8string()}};
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    process = start(program, commandLineOf(program), startup, 0);
    processId = GetProcessId(process.get());
    waitFor("the window", [&] { return (window = find(L"VelmoraOpenDialog", nullptr)) != nullptr; });
}

OpenDialogDriver::~OpenDialogDriver()
{
    TerminateProcess(process.get(), 1);
    WaitForSingleObject(process.get(), INFINITE);
}

HWND OpenDialogDriver::find(const wchar_t* className, HWND other) const
{
    Search search{processId, className, other, nullptr};
    EnumWindows(compare, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void OpenDialogDriver::openDialog(int button)
{
    PostMessageW(window, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), reinterpret_cast<LPARAM>(control(button)));
    waitFor("the dialog", [&] { return (dialog = find(DialogClass, nullptr)) != nullptr; });
}

void OpenDialogDriver::awaitClosedDialog() const
{
    waitFor("the end of the dialog", [&] { return !isDialogOpen(); });
}

void OpenDialogDriver::awaitRows(int count) const
{
    waitFor(std::to_string(count) + " rows",
        [&] { return SendMessageW(inDialog(IDC_LIST), LVM_GETITEMCOUNT, 0, 0) == count; });
}

void OpenDialogDriver::awaitStatus(const std::wstring& part) const
{
    waitFor("the status", [&] { return textOf(inDialog(IDC_STATUS)).find(part) != std::wstring::npos; });
}

void OpenDialogDriver::press(int button) const
{
    PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), reinterpret_cast<LPARAM>(inDialog(button)));
}

void OpenDialogDriver::key(int number, WPARAM key) const
{
    SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(inDialog(number)), TRUE);
    PostMessageW(inDialog(number), WM_KEYDOWN, key, 1);
    PostMessageW(inDialog(number), WM_KEYUP, key, 1);
}

void OpenDialogDriver::type(const std::wstring& name) const
{
    const HWND edit = inDialog(IDC_NAME);
    SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(edit), TRUE);
    SendMessageW(edit, EM_SETSEL, 0, -1);
    for (const wchar_t c : name)
        SendMessageW(edit, WM_CHAR, c, 1);
}

void OpenDialogDriver::answerBox(int button) const
{
    HWND box = nullptr;
    waitFor("the message box", [&] { return (box = find(DialogClass, dialog)) != nullptr; });
    PostMessageW(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(box, button)));
    waitFor("the end of the message box", [&] { return IsWindow(box) == 0; });
}

void OpenDialogDriver::nameFolder(const std::wstring& name) const
{
    HWND edit = nullptr;
    waitFor("the editor of the name", [&] {
        edit = reinterpret_cast<HWND>(SendMessageW(inDialog(IDC_LIST), LVM_GETEDITCONTROL, 0, 0));
        return edit != nullptr;
    });
    SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
    PostMessageW(edit, WM_KEYDOWN, VK_RETURN, 1);
}

DWORD OpenDialogDriver::close()
{
    PostMessageW(window, WM_CLOSE, 0, 0);
    DWORD code = STILL_ACTIVE;
    if (WaitForSingleObject(process.get(), static_cast<DWORD>(std::chrono::milliseconds(TimeLimit).count())) !=
        WAIT_OBJECT_0)
        throw std::runtime_error("the program does not end");
    GetExitCodeProcess(process.get(), &code);
    return code;
}

} // namespace Quorvex::Velmora::TestSupport
