#include "mxmodule/Observer.h"

#include <Poco/Exception.h>
#include <Poco/Logger.h>

namespace mxmodule {

Observer::~Observer() = default;

void Observer::notice(const Finding& /*finding*/) {}

void Observer::progress(std::size_t /*done*/, std::size_t /*total*/, const char* /*things*/) {}

void Observer::reads(const std::string& /*path*/) {}

bool isLogLevel(const std::string& level)
{
    try {
        Poco::Logger::parseLevel(level);
        return true;
    } catch (const Poco::Exception&) {
        return false;
    }
}

std::string Observer::logLevel() const
{
    return "information";
}

} // namespace mxmodule
