#include "PostgresqlArray.h"

namespace devices::database {

namespace {

// The numbers of the types in the server's catalogue, which never change.
struct ArrayTypes
{
    Oid cell;
    Oid array;
};

ArrayTypes typesOf(CellType type)
{
    switch (type) {
    case CellType::Bytes:
        return {17, 1001}; // bytea
    case CellType::Text:
        return {25, 1009}; // text
    case CellType::Number:
    case CellType::NumberOrNull:
        break;
    }
    return {20, 1016}; // int8
}

// A number of the binary format: most significant byte first.
template <typename Unsigned>
std::string binary(Unsigned number)
{
    std::string bytes(sizeof(Unsigned), '\0');
    for (std::size_t i = bytes.size(); i > 0; --i) {
        bytes[i - 1] = static_cast<char>(number & 0xFFU);
        number >>= 8U;
    }
    return bytes;
}

constexpr std::size_t headSize = 20;

// Dimensions, whether there are NULLs, the type of a cell; count and first index of the dimension.
std::string headOf(Oid cellType, std::uint32_t count, bool holdsNull)
{
    constexpr std::uint32_t dimensions = 1;
    constexpr std::uint32_t firstIndex = 1;
    return binary(dimensions) + binary<std::uint32_t>(holdsNull ? 1 : 0) + binary(cellType) +
           binary(count) + binary(firstIndex);
}

} // namespace

PostgresqlArray::PostgresqlArray(CellType cellType) : cells(cellType), array(headSize, '\0') {}

void PostgresqlArray::add(const std::string& cell)
{
    constexpr std::uint32_t lengthOfNull = UINT32_MAX; // -1
    ++count;
    if (cells == CellType::Bytes || cells == CellType::Text) {
        array += binary(static_cast<std::uint32_t>(cell.size()));
        array += cell;
    } else if (cells == CellType::NumberOrNull && cell.empty()) {
        array += binary(lengthOfNull);
        holdsNull = true;
    } else {
        array += binary<std::uint32_t>(sizeof(std::uint64_t));
        array += binary(static_cast<std::uint64_t>(numberOf(cell)));
    }
}

const std::string& PostgresqlArray::bytes()
{
    return array.replace(0, headSize, headOf(typesOf(cells).cell, count, holdsNull));
}

Oid PostgresqlArray::type() const
{
    return typesOf(cells).array;
}

} // namespace devices::database
