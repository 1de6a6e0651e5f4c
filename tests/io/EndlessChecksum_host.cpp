// usage: velmora_endless_checksum_host FILE
// Prints a line before and after it computes the checksum of the file.
#include <cstdio>

#include <velmora/io/QVChecksum.h>
#include <velmora/text/Unicode.h>

int main(int count, char** arguments)
{
    if (count != 2)
        return 2;
    std::puts("begin");
    std::fflush(stdout);
    (void)Quorvex::Velmora::IO::checksumOfFile(Quorvex::Velmora::Common::Unicode::fromUtf8(arguments[1]));
    std::puts("end");
    return 0;
}
