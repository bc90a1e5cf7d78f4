#include "TerminalColour.h"

#include <unistd.h>

#include <cstdlib>

namespace mxtool {

bool takesColour(int descriptor)
{
    const char* const noColour = std::getenv("NO_COLOR");
    return isatty(descriptor) == 1 && (noColour == nullptr || *noColour == '\0');
}

} // namespace mxtool
