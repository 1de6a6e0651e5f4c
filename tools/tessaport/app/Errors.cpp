#include "tools/tessaport/app/Errors.h"

#include <filesystem>
#include <new>
#include <string_view>
#include <utility>

#include <velmora/api/Exceptions.h>
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Paths.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

struct Spelling {
    std::string_view ofLibrary;
    std::string_view ofTool;
};

// What hosts set in their code, users of the tool give as an option.
constexpr Spelling Options[] = {
    {"RuntimeOptions::apiFolder", "--api-folder"},
    {"RuntimeOptions::dotnetRoot", "--dotnet-root"},
};

std::string withToolOptions(std::string text)
{
    for (const Spelling& option : Options) {
        for (std::size_t at = 0; (at = text.find(option.ofLibrary, at)) != std::string::npos;)
            text.replace(at, option.ofLibrary.size(), option.ofTool);
    }
    return text;
}

// Messages of a service may have several lines.
std::string oneLine(std::string text)
{
    text = withToolOptions(std::move(text));
    for (char& c : text)
        c = c == '\n' || c == '\r' ? ' ' : c;
    return text.empty() ? "the sync application gave no reason" : text;
}

} // namespace

Explanation explainCurrentException()
{
    using namespace TessaportAPI;
    try {
        throw;
    } catch (const Failure& e) {
        return {e.code, e.what()};
    } catch (const TessaportNotInstalledException& e) {
        return {ExitCode::NotInstalled, oneLine(e.what())};
    } catch (const TessaportNotRunningException& e) {
        return {ExitCode::NotRunning, oneLine(e.what())};
    } catch (const TessaportRequiresUpdateException& e) {
        return {ExitCode::UpdateNeeded, oneLine(e.what())};
    } catch (const TessaportApiRequiresUpdateException& e) {
        return {ExitCode::UpdateNeeded, oneLine(e.what())};
    } catch (const TessaportForcedUpdateException& e) {
        return {ExitCode::UpdateNeeded, oneLine(e.what())};
    } catch (const std::filesystem::filesystem_error& e) {
        return {ExitCode::Failure, "'" + toText(e.path1()) + "': " + Platform::messageOf(e.code())};
    } catch (const std::bad_alloc&) {
        return {ExitCode::Failure, "out of memory"};
    } catch (const std::exception& e) {
        return {ExitCode::Failure, oneLine(e.what())};
    }
}

} // namespace Quorvex::Velmora::Tool
