// The form of the lines in the host's log.
#include "velmora/native/DiagnosticLog.h"

#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/api/Exceptions.h>
#include "tests/support/LogLines.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using ::testing::ElementsAre;

class DiagnosticLog : public ::testing::Test
{
protected:
    LogLines log;
};

TEST_F(DiagnosticLog, BeginsEveryLineAlike)
{
    logMessage(std::string("narrow"), false);
    logMessage(std::wstring(L"wide"), false);

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] narrow", L"[TP] wide"));
}

TEST_F(DiagnosticLog, MarksErrors)
{
    logErrorText(std::string("narrow"), false);
    logErrorText(std::wstring(L"wide"), false);

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: narrow", L"[TP] ERROR: wide"));
}

TEST_F(DiagnosticLog, PutsTheExceptionBehindTheText)
{
    logError(L"Failed to get app version", std::runtime_error("gone"), false);

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to get app version - gone"));
}

TEST_F(DiagnosticLog, TakesEmptyTexts)
{
    logMessage(std::wstring(), false);
    logError(L"", std::runtime_error(""), false);

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ", L"[TP] ERROR:  - "));
}

TEST_F(DiagnosticLog, WidensTheExceptionByteByByte)
{
    logError(L"x", std::runtime_error("\xC3\xA9\xFF\x80"), false);

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: x - \xC3\xA9\xFF\x80"));
}

TEST_F(DiagnosticLog, WidensTheUtf8OfTheLibrarysOwnExceptions)
{
    logError(L"x", ApiException(L"\xE9", 1), false);

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: x - \xC3\xA9"));
}

TEST_F(DiagnosticLog, ReadsNarrowTextsAsUtf8)
{
    logMessage(std::string("\xC3\xA9"), false);

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] \xE9"));
}

TEST_F(DiagnosticLog, KeepsALineOfAThousandCharactersWhole)
{
    logMessage(std::wstring(995, L'w'), false);
    logMessage(std::string(995, 'n'), false);

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] " + std::wstring(995, L'w'), L"[TP] " + std::wstring(995, L'n')));
}

TEST_F(DiagnosticLog, CutsALongerLineAndSaysSo)
{
    logMessage(std::wstring(996, L'w'), false);
    logMessage(std::string(100'000, 'n'), false);

    EXPECT_THAT(log.take(),
        ElementsAre(L"[TP] " + std::wstring(995, L'w') + L"...", L"[TP] " + std::wstring(995, L'n') + L"..."));
}

TEST_F(DiagnosticLog, CountsTheWordErrorWhenItCuts)
{
    logErrorText(std::wstring(988, L'w'), false);
    logErrorText(std::wstring(989, L'w'), false);
    logErrorText(std::string(989, 'n'), false);

    EXPECT_THAT(log.take(),
        ElementsAre(L"[TP] ERROR: " + std::wstring(988, L'w'), L"[TP] ERROR: " + std::wstring(988, L'w') + L"...",
            L"[TP] ERROR: " + std::wstring(988, L'n') + L"..."));
}

TEST_F(DiagnosticLog, CountsTheExceptionWhenItCuts)
{
    logError(L"x", std::runtime_error(std::string(2'000, 'e')), false);

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: x - " + std::wstring(984, L'e') + L"..."));
}

TEST_F(DiagnosticLog, DropsLinesWithoutASink)
{
    Common::QVLog::setSink(nullptr);

    EXPECT_NO_THROW(logMessage(std::wstring(L"nobody reads this"), false));
}

TEST_F(DiagnosticLog, DropsWhatASinkThrows)
{
    Common::QVLog::setSink([](const Common::QVString&, bool) { throw std::runtime_error("disk full"); });

    EXPECT_NO_THROW(logMessage(std::wstring(L"text"), false));
}

TEST(DiagnosticLogFlag, GoesToTheSinkAsItIs)
{
    std::vector<bool> flags;
    Common::QVLog::setSink([&](const Common::QVString&, bool flag) { flags.push_back(flag); });

    logMessage(std::string("a"), true);
    logMessage(std::wstring(L"a"), false);
    logErrorText(std::string("a"), true);
    logError(L"a", std::runtime_error("b"), true);
    Common::QVLog::setSink(nullptr);

    EXPECT_THAT(flags, ElementsAre(true, false, true, true));
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
