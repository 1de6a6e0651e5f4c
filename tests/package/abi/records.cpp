// A small library whose interface has records, in place of the library itself, which takes minutes to build.
#include <velmora/api/Records.h>

namespace Quorvex::Velmora::TessaportAPI
{

void takeItem(const Item&);
void takeItem(const Item&) {}

void takeDrive(const Drive&);
void takeDrive(const Drive&) {}

} // namespace Quorvex::Velmora::TessaportAPI
