// The format of the lines in the diagnostic log.
#include "velmora/native/DiagnosticLog.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

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
using ::testing::IsEmpty;

class DiagnosticLog : public ::testing::Test
{
protected:
    LogLines log;
};

TEST_F(DiagnosticLog, StartsEveryLineWithTheSamePrefix)
{
    logMessage({"narrow"});
    logMessage({L"wide"});

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] narrow", L"[TP] wide"));
}

TEST_F(DiagnosticLog, MarksErrors)
{
    logErrorText({"narrow"});
    logErrorText({L"wide"});

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: narrow", L"[TP] ERROR: wide"));
}

TEST_F(DiagnosticLog, AppendsTheExceptionToTheText)
{
    logError({L"Failed to get app version"}, std::runtime_error("gone"));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to get app version - gone"));
}

TEST_F(DiagnosticLog, WritesEmptyTexts)
{
    logMessage({L""});
    logError({L""}, std::runtime_error(""));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ", L"[TP] ERROR:  - "));
}

TEST_F(DiagnosticLog, WidensTheExceptionByteByByte)
{
    logError({L"x"}, std::runtime_error("\xC3\xA9\xFF\x80"));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: x - \xC3\xA9\xFF\x80"));
}

TEST_F(DiagnosticLog, WidensTheUtf8OfTheLibrarysOwnExceptions)
{
    logError({L"x"}, ApiException(L"\xE9", 1));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: x - \xC3\xA9"));
}

TEST_F(DiagnosticLog, ReadsNarrowTextsAsUtf8)
{
    logMessage({"\xC3\xA9"});

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] \xE9"));
}

TEST_F(DiagnosticLog, DoesNotCutALineOfAThousandCharacters)
{
    logMessage({std::wstring(995, L'w')});
    logMessage({std::string_view(std::string(995, 'n'))});

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] " + std::wstring(995, L'w'), L"[TP] " + std::wstring(995, L'n')));
}

TEST_F(DiagnosticLog, CutsALongerLineAndMarksTheCut)
{
    logMessage({std::wstring(996, L'w')});
    logMessage({std::string_view(std::string(100'000, 'n'))});

    EXPECT_THAT(log.take(),
        ElementsAre(L"[TP] " + std::wstring(995, L'w') + L"...", L"[TP] " + std::wstring(995, L'n') + L"..."));
}

TEST_F(DiagnosticLog, CountsTheWordErrorTowardsTheLimit)
{
    logErrorText({std::wstring(988, L'w')});
    logErrorText({std::wstring(989, L'w')});
    logErrorText({std::string_view(std::string(989, 'n'))});

    EXPECT_THAT(log.take(),
        ElementsAre(L"[TP] ERROR: " + std::wstring(988, L'w'), L"[TP] ERROR: " + std::wstring(988, L'w') + L"...",
            L"[TP] ERROR: " + std::wstring(988, L'n') + L"..."));
}

TEST_F(DiagnosticLog, CountsTheExceptionTowardsTheLimit)
{
    logError({L"x"}, std::runtime_error(std::string(2'000, 'e')));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: x - " + std::wstring(984, L'e') + L"..."));
}

TEST_F(DiagnosticLog, DropsLinesWithoutASink)
{
    Common::QVLog::setSink(nullptr);

    EXPECT_NO_THROW(logMessage({L"nobody reads this"}));
}

TEST_F(DiagnosticLog, DropsExceptionsFromTheSink)
{
    Common::QVLog::setSink([](const Common::QVString&, bool) { throw std::runtime_error("disk full"); });

    EXPECT_NO_THROW(logMessage({L"text"}));
}

TEST_F(DiagnosticLog, JoinsThePartsOfALine)
{
    logMessage({L"one ", std::wstring(L"two"), L" three"});
    logErrorText({"narrow ", Common::QVString(L"\xE9"), std::string_view(" end")});
    logError({L"Failed to find item ", L"D:\\x"}, std::runtime_error("gone"));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] one two three", L"[TP] ERROR: narrow \xE9 end",
                                L"[TP] ERROR: Failed to find item D:\\x - gone"));
}

TEST(DiagnosticLogFlag, IsAlwaysFalse)
{
    std::vector<bool> flags;
    Common::QVLog::setSink([&](const Common::QVString&, bool flag) { flags.push_back(flag); });

    logMessage({"a"});
    logErrorText({L"a"});
    logError({L"a"}, std::runtime_error("b"));
    Common::QVLog::setSink(nullptr);

    EXPECT_THAT(flags, ElementsAre(false, false, false));
}

class Logged : public DiagnosticLog
{
};

TEST_F(Logged, ReturnsWhatTheOperationReturns)
{
    EXPECT_EQ(logged(L"Failed", [] { return std::wstring(L"answer"); }), L"answer");
    EXPECT_FALSE(logged(L"Failed", [] { return false; }));
    EXPECT_TRUE(logged(L"Failed", [] {}));

    EXPECT_THAT(log.take(), IsEmpty());
}

template <class Result>
Result fail()
{
    throw std::runtime_error("gone");
}

TEST_F(Logged, ReportsAnExceptionByOneLineAndTheResultOfAFailure)
{
    EXPECT_FALSE(logged(L"Failed to sync ", L"D:\\x", fail<bool>));
    EXPECT_EQ(logged(L"Failed to ask", fail<Common::QVCode>), Common::QVCode::Failure);
    EXPECT_EQ(logged(L"Failed to read", fail<std::wstring>), L"");
    EXPECT_FALSE(logged(L"Failed to close", fail<void>));

    EXPECT_THAT(log.take(), ElementsAre(L"[TP] ERROR: Failed to sync D:\\x - gone", L"[TP] ERROR: Failed to ask - gone",
                                L"[TP] ERROR: Failed to read - gone", L"[TP] ERROR: Failed to close - gone"));
}

TEST_F(Logged, LetsOtherExceptionsThrough)
{
    EXPECT_THROW(logged(L"Failed", [] { throw 1; }), int);

    EXPECT_THAT(log.take(), IsEmpty());
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
