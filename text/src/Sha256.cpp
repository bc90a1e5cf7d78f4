#include "text/Sha256.h"

#include <Poco/DigestEngine.h>
#include <Poco/SHA2Engine.h>

namespace text {

std::string sha256(std::string_view bytes)
{
    Poco::SHA2Engine engine(Poco::SHA2Engine::SHA_256);
    engine.update(bytes.data(), bytes.size());
    return Poco::DigestEngine::digestToHex(engine.digest());
}

} // namespace text
