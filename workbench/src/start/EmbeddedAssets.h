#pragma once

#include <array>
#include <cstddef>

namespace workbench {

/// A file of the page as the build compiled it in.
struct EmbeddedAsset
{
    const char* path;           ///< At the server.
    const char* type;           ///< Content type.
    const unsigned char* bytes; ///< A gzip file.
    std::size_t size;
};

using EmbeddedAssets = std::array<EmbeddedAsset, 4>;

/// Written by the build.
extern const EmbeddedAssets embeddedAssets;

} // namespace workbench
