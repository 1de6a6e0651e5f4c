// What became of each of many things: one line each, or a JSON list.
#pragma once

#include <memory>
#include <string>

#include "../Context.h"
#include "Json.h"

namespace Quorvex::Velmora::Tool
{

/// Things done go to standard output, things not done to standard error with the reason; with --json both are in the
/// list, too.
class Outcomes
{
public:
    explicit Outcomes(Context& commandContext);

    /// @param what  "added", "deleted", …
    void done(const std::string& path, const std::string& what);

    void failed(const std::string& path, const std::string& reason, ExitCode code = ExitCode::Failure);

    [[nodiscard]] std::size_t doneCount() const { return count; }

    /// Ends the list and returns the code for the whole.
    ExitCode finish();

private:
    Context& context;
    std::unique_ptr<JsonList> json;
    ExitCode worst = ExitCode::Ok;
    std::size_t count = 0;
};

} // namespace Quorvex::Velmora::Tool
