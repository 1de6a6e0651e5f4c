// Syncs of many small files beside rsync, and the status beside git's, in one run. "--files=N" takes another number of
// files than 100,000.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <string>
#include <string_view>

#include "bench/support/Goals.h"
#include "bench/sync/SyncHome.h"

namespace
{

using namespace Quorvex::Velmora::Bench;

constexpr int Repetitions = 3;
constexpr int Renames = 5'000;

int numberOfFiles(int argc, char** argv)
{
    constexpr std::string_view Option = "--files=";
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument.substr(0, Option.size()) == Option)
            return std::atoi(argv[i] + Option.size());
    }
    return 100'000;
}

Run show(const char* what, Run run)
{
    std::printf("%-40s %8.2f s %8.0f MB\n", what, run.seconds, run.peakMegabytes);
    std::fflush(stdout);
    return run;
}

Run best(const std::function<Run()>& step)
{
    Run fastest = step();
    for (int i = 1; i < Repetitions; ++i) {
        const Run run = step();
        if (run.seconds < fastest.seconds)
            fastest = run;
    }
    return fastest;
}

bool measureTree(int files)
{
    const SyncHome home;
    home.writeFiles(files, 100);
    const Run copied = show("rsync -a", home.rsync());
    const Run first = show("first sync", home.sync());
    const Run copiedAgain = show("rsync -a, nothing changed", best([&] { return home.rsync(); }));
    const Run again = show("sync, nothing changed", best([&] { return home.sync(); }));
    const Run look = best([&] { return home.lookAtBothSides(); });
    const Run start = best([&] { return home.version(); });
    home.commit();
    const Run committed = show("git status, nothing changed", best([&] { return home.gitStatus(); }));
    const Run status = show("status, nothing changed", best([&] { return home.status(); }));

    std::printf("\nRatios of this run, %d files:\n", files);
    const double peak = std::max(first.peakMegabytes, again.peakMegabytes);
    const bool met[] = {
        report({"first sync / rsync -a", first.seconds / copied.seconds, Side::AtMost, 2}),
        report({"nothing changed, seconds", again.seconds, Side::AtMost, 2}),
        report({"nothing changed / rsync -a", again.seconds / copiedAgain.seconds, Side::AtMost, 4}),
        report({"status / git status, processor time", status.processorSeconds / committed.processorSeconds,
            Side::AtMost, 2}),
        report({"for comparison: the system's part and the start alone",
            (look.processorSeconds + start.processorSeconds) / committed.processorSeconds, Side::AtLeast, 0}),
        report({"peak memory, MB", peak, Side::AtMost, 200}),
    };
    return std::all_of(std::begin(met), std::end(met), [](bool one) { return one; });
}

bool measureRenames()
{
    const SyncHome home;
    home.writeFiles(Renames, Renames);
    const Run first = show("\nfirst sync of one folder", home.sync());
    home.renameFiles();
    const Run renamed = show("sync after all files were renamed", home.sync());

    std::printf("\nRatios of this run, %d renames in one folder:\n", Renames);
    return report({"renames / first sync", renamed.seconds / first.seconds, Side::AtMost, 1.5});
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const bool isTreeMet = measureTree(numberOfFiles(argc, argv));
        const bool areRenamesMet = measureRenames();
        return isTreeMet && areRenamesMet ? 0 : 2;
    } catch (const std::exception& e) {
        std::printf("%s\n", e.what());
        return 1;
    }
}
