#pragma once

#include "mxauthor/Field.h"

#include <mxformat/Extension.h>
#include <mxformat/ModuleIdentity.h>

namespace mxauthor {

/// Group `header`.
struct Header
{
    Field<std::uint16_t> contentLength; ///< Meaningful bytes of the file, from its start.
    Field<Bytes> rest;                  ///< Bytes that are not read.
};

/// A dataset record of the group `identity`.
struct Dataset
{
    Field<std::uint8_t> id;
    Field<std::uint8_t> size; ///< Of `data`, in bytes, below 128.
    Field<std::uint8_t> unread;
    Field<Bytes> data;
    Field<std::uint16_t> trailer; ///< Not read.
};

/// Group `identity`.
struct Identity
{
    std::vector<Dataset> datasets;
};

/// Group `extension`.
struct Extension
{
    Field<std::uint8_t> version;
    Field<std::uint16_t> gtinId; ///< Text identifier, 0 = none.
    Field<Bytes> date;           ///< 10 bytes, ended early by 0x00 or CR.
    Field<Bytes> rest;           ///< Bytes that are not read.
};

/// Group `productImage`.
struct ProductImage
{
    Field<Bytes> bytes;
};

/// The payload of a group whose identifier is unknown, or that does not have the shape of its
/// identifier.
struct RawGroup
{
    Field<Bytes> bytes;
};

} // namespace mxauthor
