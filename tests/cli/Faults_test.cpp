#include <chrono>
#include <future>
#include <thread>

#include <gmock/gmock.h>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "tests/cli/ToolTest.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::ToolTest
{
namespace
{

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using Json = nlohmann::json;

/// Delays and failures that a user sets for requests.
class Faults : public ToolTest
{
protected:
    Faults() { makeDemo(); }

    Json set() { return Json::parse(run({"service", "--json"}).output)["faults"]; }
};

TEST_F(Faults, DelayMakesTheRequestAnswerLateUntilItIsCleared)
{
    expectOk({"service", "delay", "getDrives", "1s"});

    const auto begin = std::chrono::steady_clock::now();
    expectOk({"drives"});
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
    EXPECT_EQ(set(), Json::parse(R"({"getDrives": {"delayMilliseconds": 1000}})"));

    expectOk({"service", "clear"});
    EXPECT_EQ(readFile(home / "service.json"), "{\"state\":\"running\"}\n");
}

TEST_F(Faults, FailMakesTheRequestFailAsOftenAsItSays)
{
    expectOk({"service", "fail", "sync", "quota exceeded", "--times", "2"});

    for (int i = 0; i < 2; ++i) {
        const ChildResult finished = run({"sync", readme()});
        EXPECT_EQ(finished.exitCode, 1);
        EXPECT_THAT(finished.errors, HasSubstr("quota exceeded"));
    }
    expectOk({"sync", readme()});
    EXPECT_EQ(readFile(home / "service.json"), "{\"state\":\"running\"}\n");
}

TEST_F(Faults, FailWithoutANumberFailsUntilItIsCleared)
{
    expectOk({"service", "fail", "getDrives", "no network"});

    for (int i = 0; i < 3; ++i)
        EXPECT_THAT(run({"drives"}).errors, HasSubstr("no network"));

    expectOk({"service", "clear", "getDrives"});
    expectOk({"drives"});
}

TEST_F(Faults, FailAsAStateEndsWithTheCodeOfThatState)
{
    for (const auto& [kind, code] : std::map<std::string, int>{{"not-running", 5}, {"not-installed", 4},
             {"requires-update", 6}, {"forced-update", 6}, {"api-requires-update", 6}, {"error", 1}}) {
        expectOk({"service", "fail", "getDrives", "in its own words", "--as", kind});

        const ChildResult finished = run({"drives"});
        EXPECT_EQ(finished.exitCode, code) << kind;
        EXPECT_THAT(finished.errors, HasSubstr("in its own words"));
    }
}

TEST_F(Faults, EveryNameThatIsOfferedIsARequestOfTheService)
{
    const std::string offered = expectOk({"__complete", "--", "service", "delay", ""});
    int names = 0;
    for (const std::string& line : linesOf(offered)) {
        const std::string name = line.substr(0, line.find('\t'));
        if (name.front() == '-')
            continue;
        expectOk({"service", "fail", name, "unused", "--times", "1000"});
        ++names;
    }
    EXPECT_EQ(names, 24);
    EXPECT_EQ(set().size(), 20U);

    // The service reads all of them at any request and refuses names that it does not know.
    EXPECT_THAT(run({"drives"}).errors, HasSubstr("unused"));
}

TEST_F(Faults, AreShownByServiceAndItsStatus)
{
    expectOk({"service", "delay", "getfoldercontents", "1500 ms"});
    expectOk({"service", "fail", "deleteFilesOrFolders", "read only", "--times", "1", "--as", "not-running"});
    expectOk({"service", "delay", "deleteItems", "2min"});

    for (const auto& arguments : std::vector<std::vector<std::string>>{{"service"}, {"service", "status"}})
        EXPECT_THAT(linesOf(expectOk(arguments)),
            ElementsAre("running: requests are served", "Home: " + text(home), "getFolderContents answers after 1500ms",
                "deleteItems after 2min fails 1 more time as not-running: read only"));
}

TEST_F(Faults, OfTheSameRequestReplaceEachOther)
{
    expectOk({"service", "fail", "sync", "first", "--times", "3", "--as", "not-running"});
    expectOk({"service", "fail", "syncFiles", "second"});

    EXPECT_EQ(set(), Json::parse(R"({"syncFiles": {"failure": "second"}})"));
}

TEST_F(Faults, StayWhenTheStateChanges)
{
    expectOk({"service", "fail", "getDrives", "no network"});
    expectOk({"service", "stop"});
    EXPECT_EQ(run({"drives"}).exitCode, 5);
    expectOk({"service", "start"});

    EXPECT_THAT(run({"drives"}).errors, HasSubstr("no network"));
}

TEST_F(Faults, MistypedRequestGetsASuggestionAndTheList)
{
    const ChildResult finished = run({"service", "delay", "getFolderContent", "5s"});

    EXPECT_EQ(finished.exitCode, 2);
    EXPECT_THAT(
        finished.errors, AllOf(HasSubstr("there is no request 'getFolderContent'"),
                             HasSubstr("did you mean 'getFolderContents'?"), HasSubstr("getItemsByPermanentIds")));
    EXPECT_EQ(set(), Json::object());
}

TEST_F(Faults, DelayThatIsNoneSaysWhatToGive)
{
    for (const std::string delay : {"", "5", "s", "5 hours", "-5s", "0s", "1.5s", "99999999999s", "1441min", "5s5s"}) {
        const ChildResult finished = run({"service", "delay", "sync", "--", delay});

        EXPECT_EQ(finished.exitCode, 2) << delay;
        EXPECT_THAT(finished.errors, AnyOf(HasSubstr("250ms, 5s, 2min"), HasSubstr("is missing"))) << delay;
    }
    EXPECT_EQ(set(), Json::object());
}

TEST_F(Faults, UnknownEntryIsAnErrorThatLosesNothing)
{
    for (const std::string faults :
        {R"(5)", R"({"syncEverything": {"failure": "a"}})", R"({"getDrives": {"dealy": 5}})",
            R"({"getDrives": {"failure": "a", "times": 0}})", R"({"getDrives": {"failure": "a", "kind": "fire"}})",
            R"({"getDrives": {"delayMilliseconds": 18446744073709551615}})", R"({"getDrives": {"times": 2}})"}) {
        const std::string content = R"({"state": "running", "faults": )" + faults + '}';
        writeFile(home / "service.json", content);

        for (const auto& arguments : std::vector<std::vector<std::string>>{
                 {"service"}, {"drives"}, {"service", "delay", "sync", "5s"}, {"service", "fail", "sync", "a"}}) {
            const ChildResult finished = run(arguments);
            EXPECT_EQ(finished.exitCode, 1) << faults;
            EXPECT_THAT(
                finished.errors, AllOf(HasSubstr(text(home / "service.json")), HasSubstr("tessaport service clear")))
                << faults;
        }
        EXPECT_EQ(readFile(home / "service.json"), content);
        expectOk({"service", "clear"});
        expectOk({"drives"});
    }
}

TEST_F(Faults, UnknownMembersOfTheFileStay)
{
    writeFile(home / "service.json", R"({"state": "running", "note": "Übersicht"})");

    expectOk({"service", "delay", "sync", "5s"});
    expectOk({"service", "set-state", "forced-update"});
    expectOk({"service", "clear"});

    EXPECT_EQ(Json::parse(readFile(home / "service.json")),
        Json::parse(R"({"state": "forced-update", "note": "Übersicht"})"));
}

TEST_F(Faults, NeedAServiceThatIsInstalled)
{
    EXPECT_EQ(run({"--home", text(folder / "none"), "service", "delay", "sync", "5s"}).exitCode, 4);
    EXPECT_FALSE(fs::exists(folder / "none"));

    expectOk({"service", "set-state", "not-installed"});
    const ChildResult finished = run({"service", "fail", "sync", "a"});
    EXPECT_EQ(finished.exitCode, 4);
    EXPECT_THAT(finished.errors, HasSubstr("tessaport service start"));
}

TEST_F(Faults, OfOneProcessAreSeenByARequestThatWaitsInAnother)
{
    expectOk({"service", "delay", "getDrives", "10min"});
    auto waiting = std::async(std::launch::async, [&] { return run({"drives"}); });
    EXPECT_EQ(waiting.wait_for(std::chrono::seconds(1)), std::future_status::timeout);

    expectOk({"service", "fail", "getDrives", "gave up"});
    EXPECT_EQ(waiting.wait_for(std::chrono::seconds(1)), std::future_status::timeout);
    expectOk({"service", "delay", "getDrives", "1ms"});

    const ChildResult finished = waiting.get();
    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, HasSubstr("gave up"));
}

TEST_F(Faults, AreSetByManyProcessesAtOnceWithoutLoss)
{
    std::vector<std::future<ChildResult>> running;
    for (const std::string request : {"getDrives", "getVersion", "sync", "discover", "addFiles", "getCommands"})
        running.push_back(std::async(std::launch::async, [&, request] {
            return run({"service", "delay", request, "1ms"});
        }));
    for (auto& finished : running)
        EXPECT_EQ(finished.get().exitCode, 0);

    EXPECT_EQ(set().size(), 6U);
}

#ifndef _WIN32

TEST_F(Faults, PipeInThePlaceOfTheStateIsAnErrorAndStays)
{
    fs::remove(home / "service.json");
    ASSERT_EQ(mkfifo((home / "service.json").c_str(), 0600), 0);

    for (const auto& arguments : std::vector<std::vector<std::string>>{{"service"}, {"service", "start"},
             {"service", "clear"}, {"service", "delay", "sync", "5s"}, {"drives"}, {"doctor"}}) {
        const ChildResult finished = run(arguments);
        EXPECT_EQ(finished.exitCode, 1) << arguments.back();
        EXPECT_THAT(finished.errors + finished.output, HasSubstr("is a pipe, a socket or a device and not a file"));
    }
    EXPECT_TRUE(fs::is_fifo(home / "service.json"));
}

#endif

} // namespace
} // namespace Quorvex::Velmora::ToolTest
