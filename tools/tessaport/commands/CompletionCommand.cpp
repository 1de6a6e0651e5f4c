#include <memory>
#include <utility>

#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/completion/Candidates.h"
#include "tools/tessaport/completion/Scripts.h"
#include "tools/tessaport/text/Display.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

ExitCode complete(Context& context, const CLI::App& app, const std::vector<std::string>& words)
{
    for (const Candidate& candidate : candidatesFor(context, app, words))
        context.output.write(asOneLine(candidate.word) + '\t' + asOneLine(candidate.description) + '\n');
    return ExitCode::Ok;
}

} // namespace

void addCompletionCommand(const CommandLine& line)
{
    const auto shell = std::make_shared<std::string>();
    addCommand(line, "completion", "Print a script that completes commands, options and their values",
        "source <(tessaport completion bash)\n"
        "tessaport completion zsh > ~/.zfunc/_tessaport\n"
        "tessaport completion fish > ~/.config/fish/completions/tessaport.fish",
        [shell](Context& context) {
            context.output.write(completionScript(*shell));
            return ExitCode::Ok;
        })
        .addOption("shell", *shell, "bash, zsh or fish")
        .valueName("SHELL")
        .oneOf({"bash", "zsh", "fish"})
        .required();

    const auto words = std::make_shared<std::vector<std::string>>();
    const auto hidden = line.under("");
    addCommand(hidden, CompletionCommand, "", "", [words, &app = std::as_const(line.app)](Context& context) {
        return complete(context, app, *words);
    }).addOption("word", *words, "");
}

} // namespace Quorvex::Velmora::Tool
