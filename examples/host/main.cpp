#include <fstream>
#include <iostream>
#include <string>

#include <velmora/api/Interop.h>
#include <velmora/native/QvNativeTessaportAPI.h>

using namespace Quorvex::Velmora::TessaportAPI;

void print(const Item& item)
{
    std::cout << "  " << item.name << (item.isFolder ? "/" : "");
    if (!item.isFolder && item.isInWorkspace) {
        std::ifstream file(localPath(item));
        std::string firstLine;
        std::getline(file, firstLine);
        std::cout << ": " << firstLine;
    }
    std::cout << '\n';
}

int main(int argc, char** argv)
try {
    if (argc > 1) // The folder that holds the sync application's Quorvex.Tessaport.API.dll.
        setRuntimeOptions({argv[1], {}});
    QvNativeTessaportAPI tessaport;
    for (const Drive& drive : tessaport.getDrives()) {
        std::cout << drive.name << ":\n";
        for (const Item& item : tessaport.getFolderContents(drive.root))
            print(item);
    }
} catch (const ApiException& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
