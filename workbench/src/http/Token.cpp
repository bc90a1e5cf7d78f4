#include "http/Token.h"

#include <text/Base64.h>

#include <sys/random.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

namespace workbench {

namespace {

constexpr std::size_t tokenBytes = 32;

} // namespace

std::string newToken()
{
    std::array<std::uint8_t, tokenBytes> random{};
    // So few bytes are never given in part.
    if (getrandom(random.data(), random.size(), 0) != static_cast<ssize_t>(random.size())) {
        throw std::system_error(errno, std::generic_category(), "getrandom");
    }
    std::string token = text::toBase64(random.data(), random.size());
    token.erase(token.find_last_not_of('=') + 1);
    std::replace(token.begin(), token.end(), '+', '-');
    std::replace(token.begin(), token.end(), '/', '_');
    return token;
}

bool isSameSecret(const std::string& one, const std::string& other)
{
    if (one.size() != other.size()) {
        return false;
    }
    volatile unsigned char difference = 0; // volatile: no early end
    for (std::size_t index = 0; index < one.size(); ++index) {
        difference = static_cast<unsigned char>(difference | (one[index] ^ other[index]));
    }
    return difference == 0;
}

} // namespace workbench
