#include "Process.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

extern char** environ;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

[[noreturn]] void failWith(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

class Descriptor
{
public:
    explicit Descriptor(int number = -1) : descriptor(number) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    void reset(int number)
    {
        close();
        descriptor = number;
    }
    void close()
    {
        if (descriptor >= 0)
            ::close(descriptor);
        descriptor = -1;
    }
    [[nodiscard]] int get() const { return descriptor; }
    [[nodiscard]] bool isOpen() const { return descriptor >= 0; }

private:
    int descriptor;
};

struct Pipe {
    Pipe()
    {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0)
            failWith("pipe");
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
    void changeFolder(const std::filesystem::path& folder)
    {
        if (!folder.empty())
            posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    }
    void openTerminal(const std::string& name)
    {
        posix_spawn_file_actions_addopen(&actions, 0, name.c_str(), O_RDWR, 0);
        use(0, 1);
        use(0, 2);
    }

    posix_spawn_file_actions_t actions{};
};

std::vector<std::string> environmentFor(const Start& start)
{
    std::vector<std::string> all;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string text = *variable;
        if (start.environment.count(text.substr(0, text.find('='))) == 0)
            all.push_back(text);
    }
    for (const auto& [name, value] : start.environment) {
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

pid_t spawn(const Start& start, const Actions& actions, short flags)
{
    std::vector<std::string> arguments{TESSAPORT_TOOL};
    arguments.insert(arguments.end(), start.arguments.begin(), start.arguments.end());
    std::vector<std::string> environment = environmentFor(start);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, flags);
    pid_t process = 0;
    errno = posix_spawn(&process, TESSAPORT_TOOL, &actions.actions, &attributes, pointersTo(arguments).data(),
        pointersTo(environment).data());
    posix_spawnattr_destroy(&attributes);
    if (errno != 0)
        failWith("cannot start " TESSAPORT_TOOL);
    return process;
}

/// Moves what is ready through the pipes until both outputs are closed or the time is over.
class Exchange
{
public:
    Exchange(const Start& processStart, Descriptor& input, Descriptor& output, Descriptor& errors, Finished& result)
        : start(processStart), finished(result), in(input), out(output), err(errors)
    {
        if (in.isOpen())
            fcntl(in.get(), F_SETFL, O_NONBLOCK);
    }

    void run(pid_t process)
    {
        const auto begin = std::chrono::steady_clock::now();
        while (out.isOpen() || err.isOpen()) {
            sendInput();
            int timeout = -1;
            if (start.killAfter && !killed) {
                const auto left = *start.killAfter - (std::chrono::steady_clock::now() - begin);
                if (left <= left.zero()) {
                    kill(process, SIGKILL);
                    killed = true;
                    continue;
                }
                timeout = static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(left).count());
            }
            wait(timeout);
        }
    }

private:
    void sendInput()
    {
        if (!in.isOpen())
            return;
        const ssize_t count = ::write(in.get(), start.input.data() + sent, start.input.size() - sent);
        if (count > 0)
            sent += static_cast<std::size_t>(count);
        if (sent == start.input.size() || (count < 0 && errno != EAGAIN))
            in.close();
    }

    void wait(int timeout)
    {
        std::array<pollfd, 3> ready{
            {{out.get(), POLLIN, 0}, {err.get(), POLLIN, 0}, {in.isOpen() ? in.get() : -1, POLLOUT, 0}}};
        if (poll(ready.data(), ready.size(), timeout) <= 0)
            return;
        if (ready[0].revents != 0)
            receive(out, finished.output);
        if (ready[1].revents != 0)
            receive(err, finished.errors);
        if (start.readAtMost && finished.output.size() >= *start.readAtMost)
            out.close();
    }

    static void receive(Descriptor& from, std::string& to)
    {
        std::array<char, 4096> bytes{};
        const ssize_t count = ::read(from.get(), bytes.data(), bytes.size());
        if (count > 0)
            to.append(bytes.data(), static_cast<std::size_t>(count));
        else
            from.close();
    }

    const Start& start;
    Finished& finished;
    Descriptor& in;
    Descriptor& out;
    Descriptor& err;
    std::size_t sent = 0;
    bool killed = false;
};

void waitFor(pid_t process, Finished& finished)
{
    int status = 0;
    if (waitpid(process, &status, 0) != process)
        failWith("waitpid");
    if (WIFEXITED(status))
        finished.exitCode = WEXITSTATUS(status);
    else
        finished.signal = WTERMSIG(status);
}

} // namespace

Finished runTool(const Start& start)
{
    std::signal(SIGPIPE, SIG_IGN);
    Pipe input;
    Pipe output;
    Pipe errors;
    Descriptor file;
    Actions actions;
    actions.use(input.reader.get(), 0);
    if (start.outputFile.empty()) {
        actions.use(output.writer.get(), 1);
    } else {
        file.reset(open(start.outputFile.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
        if (!file.isOpen())
            failWith(start.outputFile.c_str());
        actions.use(file.get(), 1);
    }
    actions.use(errors.writer.get(), 2);
    actions.changeFolder(start.workingFolder);
    const pid_t process = spawn(start, actions, 0);
    input.reader.close();
    output.writer.close();
    errors.writer.close();
    Finished finished;
    Exchange(start, input.writer, output.reader, errors.reader, finished).run(process);
    waitFor(process, finished);
    return finished;
}

Finished runToolOnTerminal(const Start& start)
{
    Descriptor terminal(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!terminal.isOpen() || grantpt(terminal.get()) != 0 || unlockpt(terminal.get()) != 0)
        failWith("no pseudo terminal");
    Actions actions;
    actions.openTerminal(ptsname(terminal.get()));
    actions.changeFolder(start.workingFolder);
    const pid_t process = spawn(start, actions, POSIX_SPAWN_SETSID);
    if (!start.input.empty() && ::write(terminal.get(), start.input.data(), start.input.size()) < 0)
        failWith("cannot type");
    Finished finished;
    Descriptor none;
    Descriptor noErrors;
    Exchange(start, none, terminal, noErrors, finished).run(process);
    waitFor(process, finished);
    return finished;
}

} // namespace Quorvex::Velmora::ToolTest
