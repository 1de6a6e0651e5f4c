// A host whose arguments are the steps that it takes, each of which writes one line or more:
//   api=FOLDER, dotnet=FOLDER   sets the runtime options
//   api-of-no-text=FOLDER       sets a folder below it whose name is not text
//   rename=FROM>TO              renames a file or folder
//   connect, drives, folders, in-workspace   makes a request on a new connection
#include <chrono>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>

#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/native/RuntimeOptions.h>
#include "tests/bridge/runtime/hosts/HostArguments.h"
#include "tests/bridge/runtime/hosts/HostText.h"
#include "tests/bridge/runtime/hosts/WineFrames.h"

using namespace Quorvex::Velmora;
using TessaportAPI::QvNativeTessaportAPI;

namespace
{

#ifdef _WIN32
constexpr const wchar_t* NameOfNoText = L"\xD800";
#else
constexpr const char* NameOfNoText = "\xFF";
#endif

TessaportAPI::RuntimeOptions options;

void setOptions()
{
    try {
        TessaportAPI::setRuntimeOptions(options);
    } catch (const std::logic_error& e) {
        std::cout << "failed std::logic_error: " << e.what() << std::endl;
    }
}

void connect()
{
    const auto start = std::chrono::steady_clock::now();
    const QvNativeTessaportAPI connection;
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    std::cout << "connected " << connection.getVersion().c_str() << std::endl;
    std::cerr << "first connection: " << time.count() << " ms" << std::endl;
}

void listDrives()
{
    QvNativeTessaportAPI connection;
    for (const TessaportAPI::Drive& drive : connection.getDrives()) {
        std::cout << "drive " << drive.name.c_str() << " at " << drive.workspaceLocation.c_str() << " of "
                  << drive.root.lastModifiedDate << std::endl;
    }
}

void listFolders()
{
    QvNativeTessaportAPI connection;
    const auto drives = connection.getDrives();
    const auto folders = connection.getChildFolders(drives[0]->root);
    std::cout << "folders " << folders.GetSize() << std::endl;
}

void askWhetherInWorkspace()
{
    QvNativeTessaportAPI connection;
    const bool answer = connection.isFileInWorkspace(L"C:\\a");
    std::cout << "in workspace " << answer << std::endl;
}

void rename(std::string_view fromTo)
{
    const std::size_t separator = fromTo.find('>');
    std::filesystem::rename(
        std::filesystem::u8path(fromTo.substr(0, separator)), std::filesystem::u8path(fromTo.substr(separator + 1)));
}

void take(std::string_view step)
{
    const std::string_view name = step.substr(0, step.find('='));
    const std::string_view value = step.substr(step.find('=') + 1);
    if (name == "connect") {
        TestHosts::report(connect);
    } else if (name == "drives") {
        TestHosts::report(listDrives);
    } else if (name == "folders") {
        TestHosts::report(listFolders);
    } else if (name == "in-workspace") {
        TestHosts::report(askWhetherInWorkspace);
    } else if (name == "api") {
        options.apiFolder = std::filesystem::u8path(value);
        setOptions();
    } else if (name == "api-of-no-text") {
        options.apiFolder = std::filesystem::u8path(value) / NameOfNoText;
        setOptions();
    } else if (name == "dotnet") {
        options.dotnetRoot = std::filesystem::u8path(value);
        setOptions();
    } else if (name == "rename") {
        rename(value);
    } else {
        throw std::invalid_argument("unknown step: " + std::string(step));
    }
}

} // namespace

int main(int count, char** arguments)
{
    TestHosts::forgetWineFramesThatAreGone();
    try {
        for (const std::string& step : TestHosts::argumentsOf(count, arguments))
            take(step);
        return 0;
    } catch (const std::exception& e) {
        std::cerr << e.what() << std::endl;
        return 1;
    }
}
