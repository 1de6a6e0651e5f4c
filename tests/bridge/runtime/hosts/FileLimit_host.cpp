// A host that has hardly any file descriptors left after its first connection.
//   FileLimit_host API_FOLDER LEFT
// Connects, leaves itself so many descriptors, makes requests, then lifts the limit again and makes one more.
#include <cstdint>
#include <iostream>
#include <optional>
#include <string>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/native/RuntimeOptions.h>
#include "tests/bridge/runtime/hosts/HostText.h"

using namespace Quorvex::Velmora;
using TessaportAPI::QvNativeTessaportAPI;

namespace
{

rlim_t setLimit(rlim_t files)
{
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    const rlim_t before = limit.rlim_cur;
    limit.rlim_cur = files;
    setrlimit(RLIMIT_NOFILE, &limit);
    return before;
}

rlim_t firstFree()
{
    const int descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
    close(descriptor);
    return static_cast<rlim_t>(descriptor);
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 3)
        return 2;
    TessaportAPI::setRuntimeOptions({arguments[1], {}});
    std::optional<QvNativeTessaportAPI> connection;
    TestHosts::report([&] { connection.emplace(); });
    if (!connection)
        return 7;
    const rlim_t before = setLimit(firstFree() + std::stoul(arguments[2]));
    for (int i = 0; i < 2; ++i) {
        TestHosts::report([&] {
            for (const auto& drive : connection->getDrives())
                (void)connection->getFolderContents(drive.root);
        });
    }
    setLimit(before);
    std::cout << "lifted" << std::endl;
    TestHosts::report([&] {
        const std::uint32_t drives = connection->getDrives().GetSize();
        std::cout << "drives " << drives << std::endl;
    });
    return 7;
}
