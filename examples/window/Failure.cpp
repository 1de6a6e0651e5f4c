#include "Failure.h"

#include <algorithm>
#include <iterator>
#include <new>

#include <velmora/api/Exceptions.h>
#include "Text.h"

namespace DriveWindow
{
namespace
{

template <class Exception>
bool is(const std::exception* exception)
{
    return dynamic_cast<const Exception*>(exception) != nullptr;
}

struct Explanation {
    bool (*fits)(const std::exception*);
    const char* why;
    const char* remedy;
};

// The first that fits holds: the exceptions of the library are all ApiExceptions.
constexpr Explanation Explanations[] = {
    {is<Api::TessaportNotInstalledException>, "Tessaport is not installed.", "Install Tessaport, then try again."},
    {is<Api::TessaportNotRunningException>, "Tessaport is not running.", "Start Tessaport, then try again."},
    {is<Api::TessaportForcedUpdateException>, "an update of Tessaport is waiting to be installed.",
        "Let Tessaport install its update, then try again."},
    {is<Api::TessaportRequiresUpdateException>, "this version of Tessaport is too old.",
        "Update Tessaport, then try again."},
    {is<Api::TessaportApiRequiresUpdateException>, "Tessaport and this program do not fit together.",
        "Update both of them, then start this program again."},
    {is<Api::ApiException>, "Tessaport reports a failure.",
        "Try again. If it fails again, pass the message on to those who look after Tessaport."},
    {is<std::bad_alloc>, "there is not enough memory.", "Close other programs, then try again."},
    {is<std::exception>, "something unexpected happened.", "Try again, or start this program again."},
};

QString messageOf(const std::exception& exception)
{
    const auto* known = dynamic_cast<const Api::ApiException*>(&exception);
    return known == nullptr ? QString(exception.what()) : toQString(QVString(known->getErrorMessage()));
}

} // namespace

Failure describe(const std::exception& exception, const QString& doing)
{
    const auto* found = std::find_if(std::begin(Explanations), std::end(Explanations),
        [&](const Explanation& explanation) { return explanation.fits(&exception); });
    return {QString("Cannot %1: %2").arg(doing, found->why), found->remedy, messageOf(exception)};
}

} // namespace DriveWindow
