#include <memory>
#include <utility>

#include "tools/tessaport/commandline/Completion.h"
#include "tools/tessaport/commands/Commands.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

std::string scriptFor(const std::string& shell, const CLI::App& app)
{
    if (shell == "bash")
        return bashCompletion(app);
    return shell == "zsh" ? zshCompletion(app) : fishCompletion(app);
}

} // namespace

void addCompletionCommand(const CommandLine& line)
{
    const auto shell = std::make_shared<std::string>();
    addCommand(line, "completion", "Print a script that completes commands and options",
        "source <(tessaport completion bash)\n"
        "tessaport completion zsh > ~/.zfunc/_tessaport\n"
        "tessaport completion fish > ~/.config/fish/completions/tessaport.fish",
        [shell, &app = std::as_const(line.app)](Context& context) {
            context.output.write(scriptFor(*shell, app));
            return ExitCode::Ok;
        })
        .add_option("shell", *shell, "bash, zsh or fish")
        ->type_name("SHELL")
        ->check(CLI::IsMember({"bash", "zsh", "fish"}).description(""))
        ->required();
}

} // namespace Quorvex::Velmora::Tool
