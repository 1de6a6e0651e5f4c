#include "ChildProcess.h"

#include <fstream>
#include <iterator>
#include <thread>

#include <boost/process.hpp>

#include "TemporaryFolder.h"

#include <sys/wait.h>

namespace Quorvex::Velmora::TestSupport
{
namespace
{

namespace process = boost::process;
using Clock = std::chrono::steady_clock;

process::environment environmentOf(const ChildProgram& program)
{
    process::environment environment = boost::this_process::environment();
    for (const auto& [name, value] : program.environment) {
        if (value.empty())
            environment.erase(name);
        else
            environment[name] = value;
    }
    return environment;
}

std::string contentOf(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// True when the process has ended by itself.
bool waitUntil(process::child& child, Clock::time_point deadline)
{
    while (child.running()) {
        if (Clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

void setEnd(ChildResult& result, process::child& child)
{
    if (WIFSIGNALED(child.native_exit_code()))
        result.signal = WTERMSIG(child.native_exit_code());
    else
        result.exitCode = child.exit_code();
}

} // namespace

ChildResult run(const ChildProgram& program)
{
    const TemporaryFolder folder;
    const std::filesystem::path output = folder.path() / "output";
    const std::filesystem::path errors = folder.path() / "errors";
    const std::filesystem::path current =
        program.currentFolder.empty() ? std::filesystem::current_path() : program.currentFolder;

    process::child child(program.program.string(), process::args(program.arguments), environmentOf(program),
        process::start_dir(current.string()), process::std_in<process::null, process::std_out> output.string(),
        process::std_err > errors.string());
    ChildResult result;
    if (waitUntil(child, Clock::now() + program.timeLimit)) {
        setEnd(result, child);
    } else {
        result.timedOut = true;
        child.terminate();
    }
    child.wait();
    result.output = contentOf(output);
    result.errors = contentOf(errors);
    return result;
}

} // namespace Quorvex::Velmora::TestSupport
