// The tool's listing of a folder of 100,000 files that are in sync, beside `ls -l` of its workspace, in turns.
#include <algorithm>
#include <cstdio>
#include <exception>

#include "bench/support/Goals.h"
#include "bench/sync/SyncHome.h"

namespace
{

using namespace Quorvex::Velmora::Bench;

constexpr int Files = 100'000;
constexpr int Rounds = 5;

bool measure()
{
    const SyncHome home;
    home.writeFiles(Files, Files);
    static_cast<void>(home.sync());
    double tool = 1e9;
    double system = 1e9;
    for (int i = 0; i < Rounds; ++i) {
        tool = std::min(tool, home.listFolder().processorSeconds);
        system = std::min(system, home.systemListFolder().processorSeconds);
    }
    std::printf(
        "%d files: tessaport ls %.3f s of processor time, ls -l %.3f s\n\nRatios of this run:\n", Files, tool, system);
    return report({"tessaport ls / ls -l of 100,000 files, processor time", tool / system, Side::AtMost, 1.5});
}

} // namespace

int main()
{
    try {
        return measure() ? 0 : 2;
    } catch (const std::exception& e) {
        std::printf("%s\n", e.what());
        return 1;
    }
}
