#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/tessaport/items/ItemLookup.h"
#include "tools/tessaport/output/JsonFwd.h"

namespace Quorvex::Velmora::Tool
{

class JsonList;

/// For a result that lists everything as done and still is no success.
inline constexpr const char* NotRemembered = "all of it was done, but the sync application could not save what it has "
                                             "to remember of it; is the disk full?";

/// Reports what became of each of many things: one line each, or a JSON list.
///
/// Things done go to standard output, things not done to standard error with the reason; with --json both are also in
/// the list. Output that cannot be written does not stop the work: a failure is thrown by finish(), and a reader that
/// has left is ignored.
class Outcomes
{
public:
    explicit Outcomes(Context& commandContext);
    ~Outcomes();
    Outcomes(const Outcomes&) = delete;
    Outcomes& operator=(const Outcomes&) = delete;

    /// From now on, reports nothing but what fails, as messages.
    void beQuiet() { isQuiet = true; }

    [[nodiscard]] bool isJson() const;

    /// @param what         "added", "deleted", …
    /// @param explanation  appended to the line for people.
    /// @param details      further members of the JSON element.
    void done(const std::string& path, const std::string& what, const std::string& explanation, const Json& details);
    void done(const std::string& path, const std::string& what, const std::string& explanation = "");

    /// Adds an answer to the JSON list.
    void add(const Json& answer);

    /// Writes a line for people.
    void line(const std::string& text);

    /// @param key  the member of the JSON element that says what failed.
    void failed(const std::string& subject, const std::string& reason, ExitCode code = ExitCode::Failure,
        const char* key = "path");

    /// Reports a path for which there is no item.
    void notFound(const Lookup& lookup);

    /// Reports something that is wrong with all things together.
    void failedAsAWhole(const std::string& reason);

    /// What became of how many: "2 uploaded, 1 failed". Empty if nothing was reported.
    [[nodiscard]] std::string total() const;

    /// Makes the run end with this code, unless something fails differently.
    void endWith(ExitCode code) { combine(worst, code); }

    /// Ends the list and returns the exit code for everything. @throws Failure if something could not be written.
    ExitCode finish();

private:
    void count(const std::string& what);
    void put(const std::function<void()>& writeOut);
    JsonList& list();

    Context& context;
    std::unique_ptr<JsonList> json;
    std::vector<std::pair<std::string, std::size_t>> counts; // In the order of their first appearance.
    std::exception_ptr writeFailure;
    bool readerGone = false;
    bool isQuiet = false;
    ExitCode worst = ExitCode::Ok;
};

} // namespace Quorvex::Velmora::Tool
