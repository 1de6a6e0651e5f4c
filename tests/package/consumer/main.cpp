#include <iostream>
#include <memory>
#include <sstream>

#include <velmora/io/QVChecksum.h>
#include <velmora/logging/QVJsonLogTarget.h>
#include <velmora/logging/QVKeyValueEvent.h>
#include <velmora/logging/QVLoggerBase.h>

using namespace Quorvex::Velmora;

namespace
{

class Logger final : public Logging::QVLoggerBase
{
public:
    using QVLoggerBase::QVLoggerBase;
};

} // namespace

int main()
{
    IO::QVChecksum checksum;
    checksum.writeBytes("123456789", 9);

    std::wostringstream lines;
    Logger logger(std::make_unique<Logging::QVJsonLogTarget>(lines, false));
    auto event = std::make_unique<Logging::QVKeyValueEvent>(L"checksum");
    event->putUInt32(L"value", checksum.value());
    logger.log(std::move(event));
    logger.flush();

    std::wcout << lines.str();
    return checksum.value() == 0x0376E6E7 ? 0 : 1;
}
