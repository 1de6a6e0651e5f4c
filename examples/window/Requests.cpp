#include "Requests.h"

#include <new>

#include <velmora/api/Exceptions.h>
#include "Text.h"

namespace DriveWindow
{

Failure describe(const std::exception& exception, const QString& doing)
{
    const auto* const known = dynamic_cast<const Api::ApiException*>(&exception);
    const QString message =
        known == nullptr ? QString(exception.what()) : toQString(QVString(known->getErrorMessage()));
    const auto because = [&](const char* why, const char* remedy) {
        return Failure{QString("Cannot %1: %2").arg(doing, why), remedy, message};
    };
    try {
        throw;
    } catch (const Api::TessaportNotInstalledException&) {
        return because("Tessaport is not installed.", "Install Tessaport, then try again.");
    } catch (const Api::TessaportNotRunningException&) {
        return because("Tessaport is not running.", "Start Tessaport, then try again.");
    } catch (const Api::TessaportForcedUpdateException&) {
        return because(
            "an update of Tessaport is waiting to be installed.", "Let Tessaport install its update, then try again.");
    } catch (const Api::TessaportRequiresUpdateException&) {
        return because("this version of Tessaport is too old.", "Update Tessaport, then try again.");
    } catch (const Api::TessaportApiRequiresUpdateException&) {
        return because(
            "Tessaport and this program do not fit together.", "Update both of them, then start this program again.");
    } catch (const Api::ApiException&) {
        return because("Tessaport reports a failure.",
            "Try again. If it fails again, pass the message on to those who look after Tessaport.");
    } catch (const std::bad_alloc&) {
        return because("there is not enough memory.", "Close other programs, then try again.");
    } catch (const std::exception&) {
        return because("something unexpected happened.", "Try again, or start this program again.");
    }
}

} // namespace DriveWindow
