#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include <velmora/native/QvNativeTessaportAPI.h>
#include "tools/tessaport/errors/ExitCode.h"
#include "tools/tessaport/home/Home.h"
#include "tools/tessaport/output/Output.h"

namespace Quorvex::Velmora::Tool
{

/// The options of every command.
struct GlobalOptions {
    bool json = false;
    bool noColor = false;
    std::string color = "auto"; ///< Or "always" or "never".
    bool verbose = false;
    std::string home;
    std::string apiFolder;
    std::string dotnetRoot;
};

/// What every command works with: the options, the output and the connection.
class Context
{
public:
    Context() = default;
    ~Context();
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    /// Applies the options after they have been read: environment, runtime options, diagnostic log, colours.
    void prepare();

    /// Returns the one connection of this run, and opens it on first use.
    TessaportAPI::QvNativeTessaportAPI& connection();

    /// The folder of the sync application's assembly.
    [[nodiscard]] std::filesystem::path apiFolder() const;

    /// What a user types to work with a home: with --home unless it is the default one.
    [[nodiscard]] std::string commandFor(const Home& home) const;

    /// The last error line that the library wrote to its log, without its prefix; empty if it wrote none. One-shot
    /// operations report there why they failed.
    [[nodiscard]] const std::string& lastLoggedError() const { return loggedError; }

    void forgetLoggedError() { loggedError.clear(); }

    /// Reports why a one-shot operation failed. A connection tells best what state the sync application is in; if that
    /// succeeds, the reason is what the library logged.
    ///
    /// @return the exit code for the failure.
    ExitCode reportStaticFailure(const std::string& what);

    GlobalOptions options;
    Output output;

private:
    void takeLogLine(const std::string& line);

    std::unique_ptr<TessaportAPI::QvNativeTessaportAPI> opened;
    std::string loggedError;
};

} // namespace Quorvex::Velmora::Tool
