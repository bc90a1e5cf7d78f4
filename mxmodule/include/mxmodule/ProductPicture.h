#pragma once

#include "mxmodule/Module.h"
#include "mxmodule/MxmoduleApi.h"

#include <optional>
#include <string>

namespace mxmodule {

/// A picture in a form that browsers show.
///
/// It comes from a file of someone else: an SVG drawing may contain scripts and links. Show it as
/// an image (`<img>`), never as part of a page.
struct ProductPicture
{
    std::string mimeType; ///< "image/svg+xml", "image/png", "image/jpeg" or "image/gif".
    std::string bytes;    ///< The content; a drawing is XML text, not compressed.
};

/// Returns the picture in `object`; nothing if it is of another type, is damaged, is a drawing of
/// more than 1 MiB, or is not what its type says.
MXMODULE_API std::optional<ProductPicture> pictureOf(const BinaryObject& object);

/// Returns the picture of the product, the first picture among the binary objects of `module`;
/// nothing if there is none.
MXMODULE_API std::optional<ProductPicture> pictureOf(const Module& module);

/// Returns `picture` as a URL that contains it: "data:image/png;base64,...".
MXMODULE_API std::string dataUrl(const ProductPicture& picture);

} // namespace mxmodule
