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

/// Returns the input or output bytes of the module `moduleId`, whose file states `stated`: two
/// kinds of modules have others.
constexpr std::uint32_t correctedDataSize(std::uint32_t moduleId, std::uint32_t stated)
{
    constexpr std::uint32_t moduleWithoutData = 0x0BC1E800;
    constexpr std::uint32_t moduleWithStatusWord = 0x0E81276D;
    constexpr std::uint32_t statusWordSize = 2;
    if (moduleId == moduleWithoutData) {
        return 0;
    }
    return moduleId == moduleWithStatusWord ? stated + statusWordSize : stated;
}

} // namespace mxformat
