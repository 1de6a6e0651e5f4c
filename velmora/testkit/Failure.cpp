#include "velmora/testkit/Failure.h"

#include <utility>

namespace Quorvex::Velmora::TestKit
{
namespace
{

const wchar_t* usualMessage(FailureKind kind)
{
    switch (kind) {
    case FailureKind::NotInstalled:
        return L"Tessaport is not installed.";
    case FailureKind::NotRunning:
        return L"Tessaport is not running.";
    case FailureKind::RequiresUpdate:
        return L"Tessaport must be updated.";
    case FailureKind::ApiRequiresUpdate:
        return L"The programming interface of Tessaport must be updated.";
    case FailureKind::ForcedUpdate:
        return L"An update of Tessaport must be installed first.";
    case FailureKind::Other:
        break;
    }
    return L"The request failed.";
}

} // namespace

Failure::Failure(FailureKind kind) : Failure(kind, usualMessage(kind)) {}

Failure::Failure(FailureKind kind, Common::QVString message) : kind(kind), message(std::move(message)) {}

} // namespace Quorvex::Velmora::TestKit
