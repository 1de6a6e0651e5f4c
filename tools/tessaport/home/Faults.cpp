#include "tools/tessaport/home/Faults.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "tools/tessaport/commandline/Suggestion.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/text/Duration.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

constexpr const char* Faults = "faults";
constexpr const char* Delay = "delayMilliseconds";
constexpr const char* Text = "failure";
constexpr const char* Kind = "kind";
constexpr const char* Times = "times";

constexpr std::int64_t LongestDelay = std::chrono::milliseconds(std::chrono::hours(24)).count();

bool isRequest(std::string_view name)
{
    return std::any_of(
        RequestNames.begin(), RequestNames.end(), [name](const RequestName& request) { return name == request.name; });
}

bool isKind(std::string_view name)
{
    const std::vector<FailureKind> kinds = failureKinds();
    return std::any_of(kinds.begin(), kinds.end(), [name](const FailureKind& kind) { return name == kind.name; });
}

std::string quotedName(const std::string& name) { return '\'' + name + '\''; }

/// Reads the faults of a file, and names the file in failures.
class FaultReader
{
public:
    explicit FaultReader(const ServiceFile& source) : file(source) {}

    [[nodiscard]] std::vector<RequestFault> read(const Json& list) const
    {
        require(list.is_object(), std::string("'") + Faults + "' is not an object");
        std::vector<RequestFault> faults;
        for (const auto& [request, members] : list.items()) {
            require(isRequest(request), '\'' + request + "' is not the name of a request");
            require(members.is_object(), "the fault of '" + request + "' is not an object");
            faults.push_back(readFault(request, members));
        }
        return faults;
    }

private:
    [[nodiscard]] RequestFault readFault(const std::string& request, const Json& members) const
    {
        RequestFault fault{request, std::nullopt, std::nullopt};
        if (members.contains(Text))
            fault.failure.emplace();
        for (const auto& [name, value] : members.items()) {
            const std::string what = quotedName(name) + " of " + quotedName(request);
            require(name == Delay || name == Text || name == Kind || name == Times, what + " is unknown");
            if (name == Delay) {
                fault.delay = std::chrono::milliseconds(number(value, what, LongestDelay));
                continue;
            }
            require(fault.failure.has_value(), "the fault of '" + request + "' has no '" + Text + '\'');
            if (name == Times)
                fault.failure->times = static_cast<int>(number(value, what, std::numeric_limits<int>::max()));
            else
                (name == Text ? fault.failure->text : fault.failure->kind) = string(value, what);
        }
        if (fault.failure)
            require(
                isKind(fault.failure->kind), "the kind '" + fault.failure->kind + "' of '" + request + "' is unknown");
        return fault;
    }

    [[nodiscard]] std::int64_t number(const Json& value, const std::string& what, std::int64_t most) const
    {
        require(value.is_number_integer() && value >= 1 && value <= most,
            what + " is not a whole number from 1 to " + std::to_string(most));
        return value.get<std::int64_t>();
    }

    [[nodiscard]] std::string string(const Json& value, const std::string& what) const
    {
        require(value.is_string(), what + " is not a string");
        return value.get<std::string>();
    }

    void require(bool holds, const std::string& reason) const
    {
        if (!holds)
            throw Failure(ExitCode::Failure, "the faults that are set for requests cannot be read from '" +
                                                 toText(file.path()) + "': " + reason +
                                                 "; remove them all with 'tessaport service clear', or use the version "
                                                 "of Tessaport that set them");
    }

    const ServiceFile& file;
};

} // namespace

std::vector<FailureKind> failureKinds()
{
    std::vector<FailureKind> kinds{{PlainFailure, "any other failure"}};
    for (const ServiceStateName& state : ServiceStates) {
        if (state.code != ExitCode::Ok)
            kinds.push_back({state.name, state.meaning});
    }
    return kinds;
}

std::string requestNamed(const std::string& typed)
{
    std::vector<std::string> names;
    std::string list;
    for (const RequestName& request : RequestNames) {
        for (const char* name : {request.name, request.alias}) {
            if (name == nullptr)
                continue;
            if (asciiLower(typed) == asciiLower(name))
                return request.name;
            names.emplace_back(name);
        }
        list += (list.empty() ? "" : ", ") + std::string(request.name);
    }
    std::string message = "there is no request '" + typed + '\'';
    if (const auto meant = closest(typed, names))
        message += "; did you mean '" + *meant + "'?";
    else
        message += ';';
    throw Failure(ExitCode::Usage, message + " The requests are " + list);
}

std::vector<RequestFault> faultsIn(const ServiceFile& file, const Json& content)
{
    return content.contains(Faults) ? FaultReader(file).read(content[Faults]) : std::vector<RequestFault>();
}

void setDelay(Json& content, const std::string& request, std::chrono::milliseconds delay)
{
    content[Faults][request][Delay] = delay.count();
}

void setFailure(Json& content, const std::string& request, const RequestFailure& failure)
{
    Json& fault = content[Faults][request];
    fault[Text] = failure.text;
    if (failure.kind == PlainFailure)
        fault.erase(Kind);
    else
        fault[Kind] = failure.kind;
    if (failure.times)
        fault[Times] = *failure.times;
    else
        fault.erase(Times);
}

void clearFault(Json& content, const std::string& request)
{
    if (!content.contains(Faults))
        return;
    content[Faults].erase(request);
    if (content[Faults].empty())
        clearFaults(content);
}

void clearFaults(Json& content) { content.erase(Faults); }

std::string descriptionOf(const RequestFault& fault)
{
    std::string description;
    if (fault.delay)
        description = (fault.failure ? "after " : "answers after ") + toText(*fault.delay);
    if (!fault.failure)
        return description.empty() ? "answers" : description;
    description += std::string(description.empty() ? "" : " ") + "fails ";
    if (fault.failure->times)
        description += counted(static_cast<std::size_t>(*fault.failure->times), "more time");
    else
        description += "every time";
    if (fault.failure->kind != PlainFailure)
        description += " as " + fault.failure->kind;
    return description + ": " + fault.failure->text;
}

Json faultsAsJson(const Json& content) { return content.contains(Faults) ? content[Faults] : Json::object(); }

} // namespace Quorvex::Velmora::Tool
