#include "PayloadWriter.h"

#include <stdexcept>

namespace mxauthor {

void PayloadWriter::number(std::uint64_t value, unsigned size)
{
    for (unsigned shift = 8 * size; shift > 0; shift -= 8) {
        payload.push_back(static_cast<std::uint8_t>(value >> (shift - 8)));
    }
}

void PayloadWriter::rest(const Field<Bytes>& field)
{
    payload.insert(payload.end(), field.value.begin(), field.value.end());
}

std::uint8_t byteCount(std::size_t parts)
{
    if (parts > 0xFF) {
        throw std::length_error(std::to_string(parts) + " parts, 255 at most");
    }
    return static_cast<std::uint8_t>(parts);
}

void PayloadWriter::text(const Field<std::string>& field)
{
    payload.insert(payload.end(), field.value.begin(), field.value.end());
}

} // namespace mxauthor
