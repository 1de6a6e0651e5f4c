// Logs what a program does to a file of the day, one JSON object a line, and reads the file back.
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

/// Such as "sync-2024-05-06.log".
std::string nameOfToday()
{
    const std::time_t now = std::time(nullptr);
    char date[16];
    if (std::strftime(date, sizeof date, "%Y-%m-%d", std::localtime(&now)) == 0)
        throw std::runtime_error("the date has no text");
    return std::string("sync-") + date + ".log";
}

/// Log files are UTF-8, whatever the user's settings are.
std::locale utf8() { return std::locale(std::locale::classic(), new std::codecvt_utf8_utf16<wchar_t>); }

/// Appends to the file of the day it was made on.
class DailyLogger
{
public:
    explicit DailyLogger(const std::filesystem::path& folder) : m_path(folder / nameOfToday())
    {
        m_stream.imbue(utf8());
        m_stream.open(m_path, std::ios::app);
        if (!m_stream)
            throw std::runtime_error("cannot write " + m_path.string() + ": check that the folder exists");
    }

    [[nodiscard]] Logging::QVLoggerBase& logger() { return m_logger; }
    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
    std::wofstream m_stream;
    Logging::QVLoggerBase m_logger{std::make_unique<Logging::QVJsonLogTarget>(m_stream, false)};
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
