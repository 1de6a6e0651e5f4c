#include "Failure.h"

#include <new>

#include <velmora/api/Exceptions.h>
#include "Text.h"

namespace DriveWindow
{
namespace
{

Failure failure(const QString& doing, const char* why, const char* remedy, const QString& message)
{
    return {QString("Cannot %1: %2").arg(doing, QString(why)), remedy, message};
}

QString messageOf(const Api::ApiException& exception)
{
    const wchar_t* message = exception.getErrorMessage();
    return message == nullptr ? QString() : QString::fromWCharArray(message);
}

} // namespace

Failure describe(const std::exception_ptr& exception, const QString& doing)
{
    try {
        std::rethrow_exception(exception);
    } catch (const Api::TessaportNotInstalledException& e) {
        return failure(doing, "Tessaport is not installed.", "Install Tessaport, then try again.", messageOf(e));
    } catch (const Api::TessaportNotRunningException& e) {
        return failure(doing, "Tessaport is not running.", "Start Tessaport, then try again.", messageOf(e));
    } catch (const Api::TessaportForcedUpdateException& e) {
        return failure(doing, "an update of Tessaport is waiting to be installed.",
            "Let Tessaport install its update, then try again.", messageOf(e));
    } catch (const Api::TessaportRequiresUpdateException& e) {
        return failure(
            doing, "this version of Tessaport is too old.", "Update Tessaport, then try again.", messageOf(e));
    } catch (const Api::TessaportApiRequiresUpdateException& e) {
        return failure(doing, "Tessaport and this program do not fit together.",
            "Update both of them, then start this program again.", messageOf(e));
    } catch (const Api::ApiException& e) {
        return failure(doing, "Tessaport reports a failure.",
            "Try again. If it fails again, pass the message on to those who look after Tessaport.", messageOf(e));
    } catch (const std::bad_alloc&) {
        return failure(doing, "there is not enough memory.", "Close other programs, then try again.", {});
    } catch (const std::exception& e) {
        return failure(doing, "something unexpected happened.", "Try again, or start this program again.", e.what());
    } catch (...) {
        return failure(doing, "something unexpected happened.", "Try again, or start this program again.", {});
    }
}

} // namespace DriveWindow
