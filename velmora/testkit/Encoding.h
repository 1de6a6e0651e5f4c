// Records and failures in the form in which the scripted service reads them. Internal.
#pragma once

#include <vector>

#include <nlohmann/json.hpp>

#include <velmora/api/Records.h>
#include <velmora/testkit/Call.h>
#include <velmora/testkit/Failure.h>
#include <velmora/testkit/ScriptedRecords.h>

namespace Quorvex::Velmora::TestKit
{

using Json = nlohmann::json;

[[nodiscard]] Json encoded(bool flag);
[[nodiscard]] Json encoded(const Common::QVString& string);
[[nodiscard]] Json encoded(const TessaportAPI::Item& item);
[[nodiscard]] Json encoded(const TessaportAPI::Drive& drive);
[[nodiscard]] Json encoded(const TessaportAPI::Command& command);
[[nodiscard]] Json encoded(const TessaportAPI::CommandResult& result);
[[nodiscard]] Json encoded(const TessaportAPI::PropertyDefinition& definition);
[[nodiscard]] Json encoded(const TessaportAPI::WorkspacePathToItemResult& result);
[[nodiscard]] Json encoded(const TessaportAPI::PermanentIdToItemResult& result);
[[nodiscard]] Json encoded(const ScriptedPermanentId& result);
[[nodiscard]] Json encoded(const std::vector<TessaportAPI::StringPropertyValue>& values);

template <class Record>
[[nodiscard]] Json encodedList(const Record* begin, const Record* end)
{
    Json list = Json::array();
    for (const Record* record = begin; record != end; ++record)
        list.push_back(encoded(*record));
    return list;
}

template <class Record>
[[nodiscard]] Json encoded(const std::vector<Record>& records)
{
    return encodedList(records.data(), records.data() + records.size());
}

/// An exception.
[[nodiscard]] Json encodedFailure(const Failure& failure);

/// The calls of requests. The service also records when it is done with a list, which is left out.
[[nodiscard]] std::vector<Call> decodedCalls(const Json& calls);

} // namespace Quorvex::Velmora::TestKit
