#include "velmora/testkit/RequestScript.h"

#include <cstddef>
#include <utility>

#include <velmora/api/Records.h>
#include "velmora/testkit/Channel.h"
#include "velmora/testkit/Encoding.h"
#include "velmora/testkit/ScriptedRecords.h"

namespace Quorvex::Velmora::TestKit
{
namespace
{

Json orderTo(const char* name, const char* member) { return {{"order", name}, {"member", member}}; }

Json orderToAnswer(const char* name, const char* member, const Json& answer, unsigned times = 1)
{
    Json given = orderTo(name, member);
    given["answers"] = Json(std::vector<Json>(times, answer));
    return given;
}

Json throwing(const Failure& failure) { return Json::object({{"throw", encodedFailure(failure)}}); }

Json returning(Json value) { return Json::object({{"value", std::move(value)}}); }

Json failingAfter(std::size_t count, Json list, const Failure& failure)
{
    return {{"list", std::move(list)}, {"after", count}, {"failsIn", "MoveNext"}, {"throw", encodedFailure(failure)}};
}

template <class Record>
Json failingList(const std::vector<Record>& records, const Failure& failure)
{
    return failingAfter(records.size(), encoded(records), failure);
}

// The values come inside another record.
Json failingList(const std::vector<TessaportAPI::StringPropertyValue>& values, const Failure& failure)
{
    Json answer = encoded(values);
    answer["values"] = failingAfter(values.size(), answer["values"], failure);
    return answer;
}

} // namespace

void RequestScript::fail(const Failure& failure) { order(orderToAnswer("answer", member, throwing(failure))); }

void RequestScript::failNext(const Failure& failure, unsigned times)
{
    order(orderToAnswer("next", member, throwing(failure), times));
}

void RequestScript::delay(std::chrono::milliseconds time)
{
    Json given = orderTo("delay", member);
    given["milliseconds"] = time.count();
    order(given);
}

void RequestScript::hold() { order(orderTo("hold", member)); }

void RequestScript::release() { order(orderTo("release", member)); }

bool RequestScript::waitUntilHeld(std::chrono::milliseconds limit)
{
    Json given = orderTo("awaitHeld", member);
    given["milliseconds"] = limit.count();
    return order(given);
}

std::vector<Call> RequestScript::takeCalls() { return decodedCalls(order(orderTo("calls", member))); }

void RequestScript::reset() { order(orderTo("forget", member)); }

template <class Answer>
void AnsweringScript<Answer>::answer(const Answer& answer)
{
    order(orderToAnswer("answer", member, returning(encoded(answer))));
}

template <class Answer>
void AnsweringScript<Answer>::answerNext(const Answer& answer, unsigned times)
{
    order(orderToAnswer("next", member, returning(encoded(answer)), times));
}

template <class Record>
void ListScript<Record>::failAfter(const std::vector<Record>& records, const Failure& failure)
{
    order(orderToAnswer("answer", this->member, returning(failingList(records, failure))));
}

void FolderScript::answerFor(const TessaportAPI::Item& folder, const std::vector<TessaportAPI::Item>& items)
{
    Json given = orderToAnswer("answerFor", member, returning(encoded(items)));
    given["item"] = encoded(folder.workspacePath);
    order(given);
}

void FolderScript::failFor(const TessaportAPI::Item& folder, const Failure& failure)
{
    Json given = orderToAnswer("answerFor", member, throwing(failure));
    given["item"] = encoded(folder.workspacePath);
    order(given);
}

template class AnsweringScript<bool>;
template class AnsweringScript<Common::QVString>;
template class AnsweringScript<TessaportAPI::Item>;
template class AnsweringScript<TessaportAPI::CommandResult>;

template class AnsweringScript<std::vector<TessaportAPI::Command>>;
template class AnsweringScript<std::vector<TessaportAPI::Drive>>;
template class AnsweringScript<std::vector<TessaportAPI::Item>>;
template class AnsweringScript<std::vector<TessaportAPI::PermanentIdToItemResult>>;
template class AnsweringScript<std::vector<TessaportAPI::PropertyDefinition>>;
template class AnsweringScript<std::vector<TessaportAPI::StringPropertyValue>>;
template class AnsweringScript<std::vector<TessaportAPI::WorkspacePathToItemResult>>;
template class AnsweringScript<std::vector<ScriptedPermanentId>>;

template class ListScript<TessaportAPI::Command>;
template class ListScript<TessaportAPI::Drive>;
template class ListScript<TessaportAPI::Item>;
template class ListScript<TessaportAPI::PermanentIdToItemResult>;
template class ListScript<TessaportAPI::PropertyDefinition>;
template class ListScript<TessaportAPI::StringPropertyValue>;
template class ListScript<TessaportAPI::WorkspacePathToItemResult>;
template class ListScript<ScriptedPermanentId>;

} // namespace Quorvex::Velmora::TestKit
