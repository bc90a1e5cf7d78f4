#include "start/ReturnedMemory.h"

#include <malloc.h>
#include <unistd.h>

#include <fstream>

namespace workbench {

ReturnedMemory::ReturnedMemory(std::size_t growth) : step(growth), before(bytesInUse()) {}

void ReturnedMemory::giveBack()
{
    if (bytesInUse() > before + step) {
        malloc_trim(0);
        before = bytesInUse();
    }
}

std::size_t ReturnedMemory::bytesInUse()
{
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages; // the second is what is in memory
    return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

} // namespace workbench
