#include <iostream>

#include <velmora/native/QvNativeTessaportAPI.h>

using namespace Quorvex::Velmora::TessaportAPI;

int main(int argc, char** argv)
try {
    if (argc > 1) // The folder that holds the sync application's Quorvex.Tessaport.API.dll.
        setRuntimeOptions({argv[1], {}});
    QvNativeTessaportAPI tessaport;
    for (const Drive& drive : tessaport.getDrives()) {
        std::cout << drive.name.c_str() << ":\n";
        for (const Item& item : tessaport.getFolderContents(drive.root))
            std::cout << "  " << item.name.c_str() << (item.isFolder ? "/\n" : "\n");
    }
} catch (const ApiException& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
