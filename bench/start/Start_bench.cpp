// The start of programs, as whole processes in turns: one that opens the first connection beside a bare host of .NET,
// and the tool beside the smallest program of .NET. Run with "--one" it only opens the connection.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <velmora/native/QvNativeTessaportAPI.h>
#include "bench/support/Goals.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ScriptedRuntime.h"
#include "tests/support/TemporaryFolder.h"

namespace
{

using namespace Quorvex::Velmora;
using Bench::Side;

constexpr int Rounds = 20;

int connectOnce()
{
    TestSupport::useScriptedService();
    const TessaportAPI::QvNativeTessaportAPI connection;
    return 0;
}

class Program
{
public:
    Program(std::string name, TestSupport::ChildProgram program) : name(std::move(name)), program(std::move(program)) {}

    void run()
    {
        const auto begin = std::chrono::steady_clock::now();
        const auto result = TestSupport::run(program);
        wall.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
        processor.push_back(result.processorTime.count());
        if (!result.exitedWith(0))
            throw std::runtime_error(name + " failed: " + result.description());
    }

    [[nodiscard]] double wallTime() const { return median(wall); }
    [[nodiscard]] double processorTime() const { return median(processor); }

    void show() const
    {
        std::printf("%-30s %6.1f ms of processor time, %6.1f ms in all\n", name.c_str(), 1e3 * processorTime(),
            1e3 * wallTime());
    }

private:
    static double median(std::vector<double> times)
    {
        const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
        std::nth_element(times.begin(), middle, times.end());
        return *middle;
    }

    std::string name;
    TestSupport::ChildProgram program;
    std::vector<double> wall;
    std::vector<double> processor;
};

void runInTurns(std::initializer_list<Program*> programs)
{
    for (int i = 0; i < Rounds; ++i) {
        for (Program* const program : programs)
            program->run();
    }
    for (const Program* const program : programs)
        program->show();
    std::printf("\nRatios of this run, medians of %d processes each:\n", Rounds);
}

// Only the first ratio has a goal under Wine, which does not count the processor time of other processes.
bool compare(const std::string& what, const Program& program, const Program& peer, double bound,
    std::optional<double> boundOnWindows = {})
{
    const Bench::Figure figures[] = {
        {what + ", time in all", program.wallTime() / peer.wallTime(), Side::AtMost, bound, boundOnWindows},
        {what + ", processor time", program.processorTime() / peer.processorTime(), Side::AtMost, bound},
    };
    bool met = true;
    for (const Bench::Figure& figure : figures)
        met = Bench::report(figure) && met;
    return met;
}

#ifdef _WIN32

bool measure(const char* self)
{
    Program connection("first connection", {self, {"--one"}});
    Program bare("bare host", {VELMORA_BARE_HOST});
    runInTurns({&bare, &connection});
    return compare("first connection / bare host", connection, bare, 1.25, 1.5);
}

#else

bool measure(const char* self)
{
    const TestSupport::TemporaryFolder folder;
    const std::string home = (folder.path() / "home").u8string();
    Program connection("first connection", {self, {"--one"}});
    Program bare("bare host", {VELMORA_BARE_HOST});
    Program hello("dotnet hello.dll", {DOTNET_EXECUTABLE, {VELMORA_HELLO_FOLDER "/hello.dll"}});
    Program version("tessaport version", {TESSAPORT_TOOL, {"--home", home, "version"}});
    Program list("tessaport ls", {TESSAPORT_TOOL, {"--home", home, "ls", "Harbour Project"}});
    Program("tessaport demo", {TESSAPORT_TOOL, {"demo", "--home", home}}).run();
    runInTurns({&bare, &connection, &hello, &version, &list});
    const bool met[] = {
        compare("first connection / bare host", connection, bare, 1.25, 1.5),
        compare("tessaport version / dotnet hello.dll", version, hello, 1.5),
        compare("tessaport ls / dotnet hello.dll", list, hello, 1.7),
    };
    return std::all_of(std::begin(met), std::end(met), [](bool one) { return one; });
}

#endif

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1 && std::string_view(argv[1]) == "--one")
        return connectOnce();
    try {
        return measure(argv[0]) ? 0 : 2;
    } catch (const std::exception& e) {
        std::printf("%s\n", e.what());
        return 1;
    }
}
