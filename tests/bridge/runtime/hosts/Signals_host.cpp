// A host with signal handlers of its own, which exit with 7.
//   Signals_host API_FOLDER before|after SEGV|INT|TERM|PIPE
#include <csignal>
#include <cstring>
#include <map>
#include <string>

#include <unistd.h>

#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/native/RuntimeOptions.h>

using namespace Quorvex::Velmora::TessaportAPI;

namespace
{

const std::map<std::string, int> Signals = {{"SEGV", SIGSEGV}, {"INT", SIGINT}, {"TERM", SIGTERM}, {"PIPE", SIGPIPE}};

void install(int signal)
{
    struct sigaction action {
    };
    action.sa_handler = [](int) { _exit(7); };
    sigaction(signal, &action, nullptr);
}

// Faults in the host's own code, instead of only raising the signal.
void fault()
{
    volatile int* const nowhere = nullptr;
    *nowhere = 1; // NOLINT
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 4)
        return 2;
    const int signal = Signals.at(arguments[3]);
    const bool before = std::strcmp(arguments[2], "before") == 0;
    setRuntimeOptions({arguments[1], {}});
    if (before)
        install(signal);
    QvNativeTessaportAPI connection;
    if (!before)
        install(signal);
    (void)connection.getDrives();
    if (signal == SIGSEGV)
        fault();
    else
        raise(signal);
    sleep(5);
    return 1;
}
