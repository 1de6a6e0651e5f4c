// What became of each of many things: one line each, or a JSON list.
#pragma once

#include <memory>
#include <string>

#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/output/Json.h"

namespace Quorvex::Velmora::Tool
{

/// For a result that lists everything as done and is no success all the same.
inline constexpr const char* NotRemembered = "all of it was done, but the sync application could not save what it has "
                                             "to remember of it; is the disk full?";

/// Things done go to standard output, things not done to standard error with the reason; with --json both are in the
/// list, too.
class Outcomes
{
public:
    explicit Outcomes(Context& commandContext);

    /// @param what  "added", "deleted", …
    void done(const std::string& path, const std::string& what);

    void failed(const std::string& path, const std::string& reason, ExitCode code = ExitCode::Failure);

    /// A path that the user named and that has no item.
    void notFound(const Lookup& lookup);

    /// Something that went wrong with all of it.
    void failedAsAWhole(const std::string& reason);

    /// Ends the list and returns the code for the whole.
    ExitCode finish();

private:
    Context& context;
    std::unique_ptr<JsonList> json;
    ExitCode worst = ExitCode::Ok;
};

} // namespace Quorvex::Velmora::Tool
