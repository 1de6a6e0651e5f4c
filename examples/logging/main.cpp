// Logs events to a file of the current day, one JSON object on each line, and reads the file back.
//
//     daily_log [FOLDER]
#include <codecvt>
#include <ctime>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <locale>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include <velmora/logging/QVJsonLogTarget.h>
#include <velmora/logging/QVJsonParser.h>
#include <velmora/logging/QVKeyValueEvent.h>
#include <velmora/logging/QVLoggerBase.h>

namespace
{

using namespace Quorvex::Velmora;

/// @return a name such as "sync-2024-05-06.log".
std::string nameOfToday()
{
    const std::time_t now = std::time(nullptr);
    char date[16];
    if (std::strftime(date, sizeof date, "%Y-%m-%d", std::localtime(&now)) == 0)
        throw std::runtime_error("the date has no text");
    return std::string("sync-") + date + ".log";
}

/// @return a locale for log files, which are UTF-8 whatever the user's settings are.
std::locale utf8() { return std::locale(std::locale::classic(), new std::codecvt_utf8_utf16<wchar_t>); }

/// Appends to the log file of the day on which it was constructed.
class DailyLogger
{
public:
    explicit DailyLogger(const std::filesystem::path& folder) : logPath(folder / nameOfToday())
    {
        stream.imbue(utf8());
        stream.open(logPath, std::ios::app);
        if (!stream)
            throw std::runtime_error("cannot write " + logPath.string() + ": check that the folder exists");
    }

    [[nodiscard]] Logging::QVLoggerBase& logger() { return jsonLogger; }
    [[nodiscard]] const std::filesystem::path& path() const { return logPath; }

private:
    std::filesystem::path logPath;
    std::wofstream stream;
    Logging::QVLoggerBase jsonLogger{std::make_unique<Logging::QVJsonLogTarget>(stream, false)};
};

void logSomeWork(Logging::QVLoggerBase& logger)
{
    auto start = std::make_unique<Logging::QVKeyValueEvent>(L"start");
    start->putString(L"event", L"start");
    start->putString(L"folder", L"C:\\Drive\\Pl\xE4ne");
    logger.log(std::move(start));

    auto done = std::make_unique<Logging::QVKeyValueEvent>(L"done");
    done->putString(L"event", L"done");
    done->putUInt32(L"files", 12);
    done->putDouble(L"seconds", 0.25);
    done->putBool(L"offline", false);
    logger.log(std::move(done));

    logger.flush();
}

void printLog(const std::filesystem::path& path)
{
    std::wifstream stream;
    stream.imbue(utf8());
    stream.open(path);
    std::uint32_t records = 0;
    std::uint32_t files = 0;
    for (std::wstring line; std::getline(stream, line); ++records) {
        std::wistringstream record(line);
        const Logging::QVJsonParser parser(record);
        std::uint32_t value = 0;
        if (parser.getUInt32(L"files", value))
            files += value;
    }
    std::cout << path.filename().string() << ": " << records << " records, " << files << " files\n";
}

} // namespace

int main(int argc, char** argv)
try {
    DailyLogger log(argc > 1 ? argv[1] : ".");
    logSomeWork(log.logger());
    printLog(log.path());
    return 0;
} catch (const std::exception& error) {
    std::cerr << "daily_log: " << error.what() << '\n';
    return 1;
}
