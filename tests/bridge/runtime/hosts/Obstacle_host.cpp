// A host in whose process .NET cannot start.
//   Obstacle_host API_FOLDER stack KIB    opens its first connection on a thread with so small a stack
//   Obstacle_host API_FOLDER mdwe         may not make memory executable; prints "unsupported" where Linux lacks that
#include <cstddef>
#include <cstring>
#include <iostream>
#include <string>

#include <pthread.h>
#include <sys/mman.h>
#include <sys/prctl.h>

#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/native/RuntimeOptions.h>
#include "tests/bridge/runtime/hosts/HostText.h"

using namespace Quorvex::Velmora;

namespace
{

void* connect(void*)
{
    TestHosts::report([] {
        TessaportAPI::QvNativeTessaportAPI connection;
        std::cout << "connected" << std::endl;
    });
    return nullptr;
}

void connectOnThread(std::size_t stackSize)
{
    void* const stack =
        mmap(nullptr, stackSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_t thread{};
    if (pthread_attr_setstack(&attributes, stack, stackSize) != 0 ||
        pthread_create(&thread, &attributes, connect, nullptr) != 0)
        std::cout << "no thread" << std::endl;
    else
        pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

void denyWriteExecute()
{
    constexpr int SetMemoryDenyWriteExecute = 65;
    if (prctl(SetMemoryDenyWriteExecute, 1, 0, 0, 0) != 0)
        std::cout << "unsupported" << std::endl;
}

} // namespace

int main(int count, char** arguments)
{
    if (count < 3)
        return 2;
    TessaportAPI::setRuntimeOptions({arguments[1], {}});
    if (std::strcmp(arguments[2], "mdwe") == 0) {
        denyWriteExecute();
        connect(nullptr);
        return 7;
    }
    connectOnThread(std::stoul(arguments[3]) * 1024);
    // The obstacle was the thread's and not the process's.
    connect(nullptr);
    return 7;
}
