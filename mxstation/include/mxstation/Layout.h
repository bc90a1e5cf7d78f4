#pragma once

#include "mxstation/MxstationApi.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Modules in a row with one process image: a station file, its plan, and what is made of the plan.
/// Results are plain values, problems are findings of libmxmodule. Texts are UTF-8.
namespace mxstation {

/// The order of the modules' data in a process image.
enum class ImageOrder
{
    Row,       ///< As in the row.
    BytesFirst ///< First the modules with a channel of a byte or more, then those of bits alone.
};

/// The order of the bytes of a value in the process images.
enum class ByteOrder
{
    Big,   ///< The most significant byte first.
    Little ///< The least significant byte first.
};

/// How a coupler lays out one process image. Numbers are bytes.
///
/// An image is, in this order: the status bytes before, the data of the modules, the status bytes
/// after them, the padding of the whole.
struct ImageLayout
{
    std::uint32_t start = 0;                ///< Address of the first byte of the image.
    ImageOrder order = ImageOrder::Row;     ///< Of the modules' data.
    std::uint32_t alignment = 1;            ///< Data of a module begin at a multiple of it.
    std::uint32_t modulePadding = 1;        ///< Data of a module take a multiple of it.
    std::uint32_t imagePadding = 1;         ///< The whole image takes a multiple of it.
    std::uint32_t statusBefore = 0;         ///< Bytes of the coupler before the modules' data.
    std::uint32_t statusBehind = 0;         ///< Bytes of the coupler after the modules' data.
    std::optional<std::uint64_t> mostBytes; ///< Largest size of the image; empty: no limit.
};

/// How a coupler lays out its process images.
struct Layout
{
    std::string name = "plain";           ///< For messages.
    ImageLayout input;                    ///< The input image.
    ImageLayout output;                   ///< The output image.
    std::uint32_t mostModules = 64;       ///< Largest number of modules in the row.
    ByteOrder byteOrder = ByteOrder::Big; ///< Of the values of channels of several bytes.
};

/// A layout that a station may name.
struct NamedLayout
{
    Layout layout;       ///< With its name.
    std::string meaning; ///< What it is, for lists.
};

/// Returns the named layouts: "plain", which is the default, and examples. None claims to be that
/// of a certain coupler.
MXSTATION_API const std::vector<NamedLayout>& namedLayouts();

/// The largest `Layout::mostModules`.
constexpr std::uint32_t mostModulesOfAnyLayout = 10000;

/// The largest address, size or alignment that a station may state, in bytes.
constexpr std::uint32_t mostBytesStated = 0x7FFFFFFF;

} // namespace mxstation
