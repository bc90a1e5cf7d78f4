#include "DatabaseWait.h"

#include <Poco/NumberParser.h>

#include <cstdlib>

namespace devices::database {

unsigned secondsToWait()
{
    constexpr unsigned standard = 30;
    constexpr unsigned most = 3600;
    const char* const stated = std::getenv("DEVICE_DATABASE_WAIT");
    unsigned seconds = 0;
    if (stated == nullptr || !Poco::NumberParser::tryParseUnsigned(stated, seconds)) {
        return standard;
    }
    return seconds < most ? seconds : most;
}

} // namespace devices::database
