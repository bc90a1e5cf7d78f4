#include "report/Sha256.h"

#include <Poco/DigestEngine.h>
#include <Poco/SHA2Engine.h>

namespace mxonline {

std::string sha256(const std::vector<char>& bytes)
{
    Poco::SHA2Engine engine(Poco::SHA2Engine::SHA_256);
    engine.update(bytes.data(), bytes.size());
    return Poco::DigestEngine::digestToHex(engine.digest());
}

} // namespace mxonline
