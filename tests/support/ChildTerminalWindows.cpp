#include <algorithm>
#include <thread>
#include <vector>

#include <windows.h>

#include <velmora/text/Unicode.h>
#include "tests/support/ChildProcess.h"
#include "tests/support/ChildStartWindows.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

class PseudoConsole
{
public:
    PseudoConsole()
    {
        Pipe input;
        Pipe output;
        const COORD size{200, 50};
        const HRESULT made = CreatePseudoConsole(size, input.reader.get(), output.writer.get(), 0, &console);
        if (made < 0)
            throw std::system_error(made, std::system_category(), "no pseudo console could be made");
        keyboard = std::move(input.writer);
        screen = std::move(output.reader);
    }
    ~PseudoConsole() { close(); }
    PseudoConsole(const PseudoConsole&) = delete;
    PseudoConsole& operator=(const PseudoConsole&) = delete;

    /// Ends the programs that still run on the console. Its output must be read meanwhile.
    void close()
    {
        if (console != nullptr)
            ClosePseudoConsole(console);
        console = nullptr;
    }
    [[nodiscard]] HPCON get() const { return console; }

    Handle keyboard;
    Handle screen;

private:
    HPCON console = nullptr;
};

class ConsoleAttribute
{
public:
    explicit ConsoleAttribute(HPCON console)
    {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        memory.resize(size);
        if (InitializeProcThreadAttributeList(list(), 1, 0, &size) == 0 ||
            UpdateProcThreadAttribute(
                list(), 0, PROC_THREAD_ATTRIBUTE_PSEUDOCONSOLE, console, sizeof console, nullptr, nullptr) == 0)
            throw lastError("a process could not be given a console");
    }
    ~ConsoleAttribute() { DeleteProcThreadAttributeList(list()); }
    ConsoleAttribute(const ConsoleAttribute&) = delete;
    ConsoleAttribute& operator=(const ConsoleAttribute&) = delete;

    [[nodiscard]] LPPROC_THREAD_ATTRIBUTE_LIST list()
    {
        return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory.data());
    }

private:
    std::vector<char> memory;
};

Handle startOn(HPCON console, const ChildProgram& program)
{
    ConsoleAttribute attribute(console);
    STARTUPINFOEXW startup{};
    startup.StartupInfo.cb = sizeof startup;
    startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES; // No streams, so that it inherits none from this process.
    startup.lpAttributeList = attribute.list();
    const std::wstring line =
        quotedArgument(Common::Unicode::fromUtf8(VELMORA_ON_CONSOLE)) + L' ' + commandLineOf(program);
    return start(program, line, startup.StartupInfo, EXTENDED_STARTUPINFO_PRESENT);
}

// The key for the end of a line sends a carriage return.
std::string keysFor(std::string text)
{
    std::replace(text.begin(), text.end(), '\n', '\r');
    return text;
}

} // namespace

ChildResult runOnTerminal(const ChildProgram& program)
{
    PseudoConsole console;
    const Handle process = startOn(console.get(), program);
    ChildResult result;
    std::thread receiver([&] { result.output = receive(console.screen.get()); });
    send(keysFor(program.input), console.keyboard.get());
    wait(process.get(), program, result);
    console.close();
    receiver.join();
    return result;
}

} // namespace Quorvex::Velmora::TestSupport
