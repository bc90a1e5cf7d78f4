#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace mxauthor {

using Bytes = std::vector<std::uint8_t>;

/// A place in an mx file.
struct Place
{
    std::uint16_t group = 0;  ///< Identifier of the group that holds it.
    std::uint32_t offset = 0; ///< From the start of the file, in bytes.
    std::uint32_t length = 0; ///< In bytes.

    std::uint32_t end() const { return offset + length; }
};

/// A value of an mx file and the place that it was read from. The place of a value that was never
/// read is empty; changing the value leaves the place as it was.
template <typename T>
struct Field
{
    Field() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): a field stands where its value would.
    Field(T initial) : value(std::move(initial)) {}

    T value{};
    Place place;
};

} // namespace mxauthor
