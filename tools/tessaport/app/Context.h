// What every command works with: the options of the whole tool, the output and the connection.
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

struct GlobalOptions {
    bool json = false;
    bool noColor = false;
    bool verbose = false;
    std::string home;
    std::string apiFolder;
    std::string dotnetRoot;
};

class Context
{
public:
    Context() = default;
    ~Context();
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    /// Applies the options once they are read: environment, runtime options, diagnostic log, colour.
    void prepare();

    /// The one connection of this run, opened when first asked for.
    TessaportAPI::QvNativeTessaportAPI& connection();

    /// The folder of the sync application's assembly that is used.
    [[nodiscard]] std::filesystem::path apiFolder() const;

    /// How the tool is called to work with a home: with --home where it is not the one used anyway.
    [[nodiscard]] std::string commandFor(const Home& home) const;

    /// The last error line that the library wrote to its log, without its prefix; empty when there is none. A static
    /// operation says there why it failed.
    [[nodiscard]] const std::string& lastLoggedError() const { return loggedError; }

    void forgetLoggedError() { loggedError.clear(); }

    /// For a static operation that failed: reports why. A connection of one's own says best what state the sync
    /// application is in; when it has no complaint, what the library logged is the reason.
    ExitCode reportStaticFailure(const std::string& what);

    GlobalOptions options;
    Output output;

private:
    void takeLogLine(const std::string& line);

    std::unique_ptr<TessaportAPI::QvNativeTessaportAPI> opened;
    std::string loggedError;
};

} // namespace Quorvex::Velmora::Tool
