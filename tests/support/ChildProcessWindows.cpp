#include "tests/support/ChildProcess.h"

#include <algorithm>
#include <mutex>
#include <thread>

#include <windows.h>

#include "tests/support/ChildStartWindows.h"
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

Handle openForChild(const std::filesystem::path& path, DWORD access)
{
    const HANDLE handle = CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, CREATE_ALWAYS,
        FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        throw lastError("a stream of a child process could not be opened");
    return Handle(handle);
}

Handle startWith(const ChildProgram& program, Handle input, Handle output, Handle errors)
{
    // One at a time: every process that starts inherits all handles that can be inherited.
    static std::mutex starting;
    const std::lock_guard<std::mutex> lock(starting);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.get();
    startup.hStdOutput = output.get();
    startup.hStdError = errors.get();
    for (const HANDLE handle : {input.get(), output.get(), errors.get()})
        SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    Handle process = start(program, commandLineOf(program), startup, 0);
    for (Handle* const handle : {&input, &output, &errors})
        handle->close();
    return process;
}

void foldLineEnds(std::string& text) { text.erase(std::remove(text.begin(), text.end(), '\r'), text.end()); }

} // namespace

ChildResult run(const ChildProgram& program)
{
    const TemporaryFolder folder;
    const std::filesystem::path output = folder.path() / "output";
    const std::filesystem::path errors = folder.path() / "errors";
    Pipe inputPipe;
    Pipe outputPipe;
    ChildResult result;
    {
        Handle outputEnd = program.readAtMost
                               ? std::move(outputPipe.writer)
                               : openForChild(output, program.unwritableOutput ? GENERIC_READ : GENERIC_WRITE);
        const Handle process =
            startWith(program, std::move(inputPipe.reader), std::move(outputEnd), openForChild(errors, GENERIC_WRITE));
        std::thread sender([&] {
            send(program.input, inputPipe.writer.get());
            inputPipe.writer.close();
        });
        std::thread receiver([&] {
            if (program.readAtMost)
                result.output = receive(outputPipe.reader.get(), *program.readAtMost);
            outputPipe.reader.close();
        });
        wait(process.get(), program, result);
        sender.join();
        receiver.join();
    }
    if (!program.readAtMost)
        result.output = readText(output);
    result.errors = readText(errors);
    if (program.foldLineEnds) {
        foldLineEnds(result.output);
        foldLineEnds(result.errors);
    }
    return result;
}

} // namespace Quorvex::Velmora::TestSupport
