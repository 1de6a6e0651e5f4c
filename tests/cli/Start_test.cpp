#include <algorithm>

#include "tests/cli/ToolTest.h"

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using Start = ToolTest;

bool isOfThisProject(const std::string& compiledMethod)
{
    return compiledMethod.find("JIT compiled Velmora.") != std::string::npos ||
           compiledMethod.find("JIT compiled Quorvex.") != std::string::npos;
}

// Without the native code in the assemblies, .NET compiles about two hundred of their methods for this.
TEST_F(Start, UsesTheNativeCodeOfTheManagedParts)
{
    makeDemo();
    ChildProgram program;
    program.arguments = {"sync"};
    program.environment = {{"DOTNET_JitDisasmSummary", "1"}, {"DOTNET_JitStdOutFile", text(folder / "compiled.txt")}};
#ifndef _WIN32
    program.environment["DOTNET_ROOT"] = VELMORA_DOTNET_ROOT;
#endif
    const ChildResult finished = runProgram(program);
    ASSERT_EQ(finished.exitCode, 0) << finished.errors;

    const std::string compiled = readFile(folder / "compiled.txt");

    const auto methods = linesOf(compiled);
    ASSERT_FALSE(methods.empty());
    EXPECT_LE(std::count_if(methods.begin(), methods.end(), isOfThisProject), 20) << compiled;
}

} // namespace
} // namespace Quorvex::Velmora::ToolTest
