#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace mxformat {

/// The keys of the lines of the group `dataSizes`, in the order in which readers try them.
constexpr const char* inDataKey = "InData";
constexpr const char* outDataKey = "OutData";
constexpr const char* parameterKey = "Parameter";
constexpr const char* diagnosisKey = "Diagnosis";
inline constexpr std::array<const char*, 4> dataSizeKeys = {inDataKey, outDataKey, parameterKey,
                                                            diagnosisKey};

/// Returns the bytes that the character `code` after a key means, 0 for a separator;
/// nothing for any other.
[[nodiscard]] constexpr std::optional<std::uint32_t> sizeOfDataCode(char code)
{
    switch (code) {
    case 'D':
        return 4;
    case 'W':
        return 2;
    case 'B':
        return 1;
    case 's':
    case ' ':
    case ',':
    case '=':
        return 0;
    default:
        return std::nullopt;
    }
}

} // namespace mxformat
