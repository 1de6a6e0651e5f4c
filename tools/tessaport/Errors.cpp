#include "Errors.h"

#include <filesystem>
#include <new>

#include <velmora/api/Exceptions.h>

#include "Paths.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

// One line: the service's messages may hold several.
std::string oneLine(std::string text)
{
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
        return {ExitCode::Failure, "'" + toText(e.path1()) + "': " + e.code().message()};
    } catch (const std::bad_alloc&) {
        return {ExitCode::Failure, "out of memory"};
    } catch (const std::exception& e) {
        return {ExitCode::Failure, oneLine(e.what())};
    }
}

} // namespace Quorvex::Velmora::Tool
