#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// A dataset record of group 0x0001.
struct Dataset
{
    Field<std::uint8_t> id;
    Field<std::uint8_t> size; ///< Of `data`, in bytes, below 128.
    Field<std::uint8_t> unread;
    Field<Bytes> data;
    Field<std::uint16_t> trailer; ///< Not read by anybody.
};

/// The dataset that identifies the module: type (u8) and module identifier (u32).
constexpr std::uint8_t identityDataset = 0xFB;

/// Group 0x0001.
struct Identity
{
    std::vector<Dataset> datasets;
};

} // namespace mxauthor
