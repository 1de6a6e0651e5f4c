// A host on Windows with handlers of its own, which exit with 7.
//   Handlers_host API_FOLDER before|after HANDLER
// The handlers: unhandled, vectored and SEGV for a fault, C for the keys that interrupt at a console, and TERM.
#include <csignal>
#include <filesystem>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include <windows.h>

#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/native/RuntimeOptions.h>
#include "tests/bridge/runtime/hosts/HostArguments.h"

using namespace Quorvex::Velmora;

namespace
{

constexpr UINT ExitCode = 7;

// The runtime raises exceptions of its own, which every vectored handler sees.
bool faultExpected = false;

[[noreturn]] void endAtOnce()
{
    TerminateProcess(GetCurrentProcess(), ExitCode);
    for (;;)
        Sleep(INFINITE);
}

LONG WINAPI handleFault(EXCEPTION_POINTERS* exception)
{
    if (faultExpected && exception->ExceptionRecord->ExceptionCode == EXCEPTION_ACCESS_VIOLATION)
        endAtOnce();
    return EXCEPTION_CONTINUE_SEARCH;
}

BOOL WINAPI handleConsole(DWORD event)
{
    if (event == CTRL_C_EVENT)
        endAtOnce();
    return FALSE;
}

void fault()
{
    faultExpected = true;
    volatile int* const nowhere = nullptr;
    *nowhere = 1; // NOLINT
}

void pressControlC()
{
    if (GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) == 0)
        std::cerr << "no event: error " << GetLastError() << std::endl;
}

// Opens a new console, because every process of a console gets its keys.
void openConsole()
{
    FreeConsole();
    if (AllocConsole() == 0)
        std::cerr << "no console: error " << GetLastError() << std::endl;
}

struct Handler {
    std::function<void()> install;
    std::function<void()> provoke;
};

const std::map<std::string, Handler> Handlers = {
    {"unhandled", {[] { SetUnhandledExceptionFilter(handleFault); }, fault}},
    {"vectored", {[] { AddVectoredExceptionHandler(0, handleFault); }, fault}},
    {"SEGV", {[] { std::signal(SIGSEGV, [](int) { endAtOnce(); }); }, fault}},
    {"C", {[] { SetConsoleCtrlHandler(handleConsole, TRUE); }, pressControlC}},
    {"TERM", {[] { std::signal(SIGTERM, [](int) { endAtOnce(); }); }, [] { std::raise(SIGTERM); }}},
};

} // namespace

int main(int count, char** values)
{
    const std::vector<std::string> arguments = TestHosts::argumentsOf(count, values);
    if (arguments.size() != 3)
        return 2;
    openConsole();
    const Handler& handler = Handlers.at(arguments[2]);
    const bool before = arguments[1] == "before";
    TessaportAPI::setRuntimeOptions({std::filesystem::u8path(arguments[0]), {}});
    if (before)
        handler.install();
    TessaportAPI::QvNativeTessaportAPI connection;
    if (!before)
        handler.install();
    (void)connection.getDrives();
    handler.provoke();
    Sleep(5000);
    return 1;
}
