// A host that unloads its plugin, and with it the library, and loads both again. Exits with 7 when both uses succeed.
//   Unload_host PLUGIN API_FOLDER [LIBRARY]
#include <dlfcn.h>
#include <iostream>

namespace
{

int countItemsOf(const char* plugin, const char* apiFolder)
{
    void* const library = dlopen(plugin, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        std::cerr << dlerror() << std::endl;
        return -1;
    }
    const auto countItems = reinterpret_cast<int (*)(const char*)>(dlsym(library, "countItems"));
    const int count = countItems == nullptr ? -1 : countItems(apiFolder);
    return dlclose(library) == 0 ? count : -1;
}

bool loadsAndUnloads(const char* path)
{
    void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    return library != nullptr && dlclose(library) == 0;
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 4)
        return 2;
    if (!loadsAndUnloads(arguments[3]))
        return 3;
    if (countItemsOf(arguments[1], arguments[2]) != 5000)
        return 4;
    if (!loadsAndUnloads(arguments[3]))
        return 5;
    return countItemsOf(arguments[1], nullptr) == 5000 ? 7 : 6;
}
