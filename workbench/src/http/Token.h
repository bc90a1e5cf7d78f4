#pragma once

#include <string>

namespace workbench {

/// Returns a new secret: 32 random bytes as base64 for addresses (RFC 4648, section 5), 43
/// characters.
std::string newToken();

/// Returns whether the texts are equal, in a time that depends on their lengths alone.
bool isSameSecret(const std::string& one, const std::string& other);

} // namespace workbench
