#include "tests/support/ChildProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <limits>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/TemporaryFolder.h"

extern char** environ;

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using Clock = std::chrono::steady_clock;

[[noreturn]] void failWith(const std::string& what) { throw std::system_error(errno, std::generic_category(), what); }

class Descriptor
{
public:
    explicit Descriptor(int number = -1) : number(number) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    void reset(int number)
    {
        close();
        this->number = number;
    }
    void close()
    {
        if (number >= 0)
            ::close(number);
        number = -1;
    }
    [[nodiscard]] int get() const { return number; }
    [[nodiscard]] bool isOpen() const { return number >= 0; }

private:
    int number;
};

struct Pipe {
    Pipe()
    {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0)
            failWith("no pipe could be made");
        reader.reset(ends[0]);
        writer.reset(ends[1]);
    }
    Descriptor reader;
    Descriptor writer;
};

class Actions
{
public:
    Actions() { posix_spawn_file_actions_init(&actions); }
    ~Actions() { posix_spawn_file_actions_destroy(&actions); }
    Actions(const Actions&) = delete;
    Actions& operator=(const Actions&) = delete;

    void use(int descriptor, int as) { posix_spawn_file_actions_adddup2(&actions, descriptor, as); }
    void writeTo(const std::string& file, int as)
    {
        posix_spawn_file_actions_addopen(&actions, as, file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    }
    void useTerminal(const std::string& name)
    {
        posix_spawn_file_actions_addopen(&actions, 0, name.c_str(), O_RDWR, 0);
        use(0, 1);
        use(0, 2);
    }
    void changeFolder(const std::filesystem::path& folder)
    {
        if (!folder.empty())
            posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    }
    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions; }

private:
    posix_spawn_file_actions_t actions{};
};

std::vector<std::string> environmentOf(const ChildProgram& program)
{
    std::vector<std::string> all;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string text = *variable;
        if (program.environment.count(text.substr(0, text.find('='))) == 0)
            all.push_back(text);
    }
    for (const auto& [name, value] : program.environment) {
        if (!value.empty())
            all.push_back(name + '=' + value);
    }
    return all;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

pid_t start(const ChildProgram& program, const Actions& actions, short flags = 0)
{
    std::vector<std::string> arguments{program.program.string()};
    arguments.insert(arguments.end(), program.arguments.begin(), program.arguments.end());
    std::vector<std::string> environment = environmentOf(program);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, flags);
    pid_t process = 0;
    errno = posix_spawn(&process, program.program.c_str(), actions.get(), &attributes, pointersTo(arguments).data(),
        pointersTo(environment).data());
    posix_spawnattr_destroy(&attributes);
    if (errno != 0)
        failWith("'" + program.program.string() + "' could not be started");
    return process;
}

void send(const std::string& input, int to)
{
    for (std::size_t sent = 0; sent < input.size();) {
        const ssize_t count = ::write(to, input.data() + sent, input.size() - sent);
        if (count < 0)
            return;
        sent += static_cast<std::size_t>(count);
    }
}

// Runs on a thread of its own, so that the blocked signal for a closed reader ends with that thread.
void sendAll(const std::string& input, Descriptor& to)
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    send(input, to.get());
    to.close();
}

// Reads until the end, or until `wanted` bytes have arrived.
std::string receive(int from, std::size_t wanted = std::numeric_limits<std::size_t>::max())
{
    std::string received;
    std::array<char, 4096> bytes{};
    while (received.size() < wanted) {
        const ssize_t count = ::read(from, bytes.data(), bytes.size());
        if (count <= 0)
            break;
        received.append(bytes.data(), static_cast<std::size_t>(count));
    }
    return received;
}

std::chrono::duration<double> durationOf(const timeval& time)
{
    return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
}

void setEnd(ChildResult& result, int status, const rusage& usage, bool killed)
{
    constexpr std::size_t kibibyte = 1024;
    result.peakMemory = static_cast<std::size_t>(usage.ru_maxrss) * kibibyte;
    result.processorTime = durationOf(usage.ru_utime) + durationOf(usage.ru_stime);
    result.timedOut = killed && WIFSIGNALED(status);
    if (WIFSIGNALED(status))
        result.signal = WTERMSIG(status);
    else
        result.exitCode = WEXITSTATUS(status);
}

void wait(pid_t process, std::chrono::microseconds timeLimit, ChildResult& result)
{
    const auto deadline = Clock::now() + timeLimit;
    bool killed = false;
    int status = 0;
    rusage usage{};
    pid_t ended = 0;
    while ((ended = wait4(process, &status, WNOHANG, &usage)) == 0) {
        if (!killed && Clock::now() >= deadline)
            killed = kill(process, SIGKILL) == 0;
        std::this_thread::sleep_for(std::chrono::microseconds(500));
    }
    if (ended != process)
        failWith("the end of a process could not be awaited");
    setEnd(result, status, usage, killed);
}

} // namespace

ChildResult run(const ChildProgram& program)
{
    const TemporaryFolder folder;
    const std::filesystem::path output = folder.path() / "output";
    const std::filesystem::path errors = folder.path() / "errors";
    Pipe inputPipe;
    Pipe outputPipe;
    Actions actions;
    actions.use(inputPipe.reader.get(), 0);
    if (program.readAtMost)
        actions.use(outputPipe.writer.get(), 1);
    else
        actions.writeTo(program.unwritableOutput ? "/dev/full" : output.string(), 1);
    actions.writeTo(errors.string(), 2);
    actions.changeFolder(program.currentFolder);

    const pid_t process = start(program, actions);
    inputPipe.reader.close();
    outputPipe.writer.close();
    ChildResult result;
    std::thread sender([&] { sendAll(program.input, inputPipe.writer); });
    std::thread receiver([&] {
        if (program.readAtMost)
            result.output = receive(outputPipe.reader.get(), *program.readAtMost);
        outputPipe.reader.close();
    });
    wait(process, program.timeLimit, result);
    sender.join();
    receiver.join();
    if (!program.readAtMost)
        result.output = readText(output);
    result.errors = readText(errors);
    return result;
}

ChildResult runOnTerminal(const ChildProgram& program)
{
    Descriptor terminal(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!terminal.isOpen() || grantpt(terminal.get()) != 0 || unlockpt(terminal.get()) != 0)
        failWith("no pseudo terminal could be made");
    const winsize size{50, 200, 0, 0};
    ioctl(terminal.get(), TIOCSWINSZ, &size);
    Actions actions;
    actions.useTerminal(ptsname(terminal.get()));
    actions.changeFolder(program.currentFolder);

    const pid_t process = start(program, actions, POSIX_SPAWN_SETSID);
    send(program.input, terminal.get());
    ChildResult result;
    std::thread receiver([&] { result.output = receive(terminal.get()); });
    wait(process, program.timeLimit, result);
    receiver.join();
    return result;
}

} // namespace Quorvex::Velmora::TestSupport
