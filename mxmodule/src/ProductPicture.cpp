#include "mxmodule/ProductPicture.h"

#include <mxauthor/Drawing.h>
#include <text/Base64.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace mxmodule {

namespace {

using namespace std::string_view_literals;

// The first bytes of pictures that browsers show as they are.
struct PictureType
{
    std::string_view mimeType;
    std::string_view begin;
};

constexpr std::array<PictureType, 4> pictureTypes{{{"image/png", "\x89PNG\r\n\x1A\n"sv},
                                                   {"image/jpeg", "\xFF\xD8\xFF"sv},
                                                   {"image/gif", "GIF87a"sv},
                                                   {"image/gif", "GIF89a"sv}}};

std::optional<ProductPicture> drawingOf(const std::vector<std::uint8_t>& bytes)
{
    mxauthor::Drawing drawing = mxauthor::unpackedDrawing(bytes);
    if (drawing.problem) {
        return std::nullopt;
    }
    return ProductPicture{"image/svg+xml", std::move(drawing.svg)};
}

} // namespace

std::optional<ProductPicture> pictureOf(const BinaryObject& object)
{
    const auto bytes = object.encoding == "base64" ? text::fromBase64(object.data) : std::nullopt;
    if (!bytes) {
        return std::nullopt;
    }
    if (object.mimeType == "image/svgz") {
        return drawingOf(*bytes);
    }
    std::string content(bytes->begin(), bytes->end());
    const bool isPicture =
        std::any_of(pictureTypes.begin(), pictureTypes.end(), [&](const PictureType& type) {
            return type.mimeType == object.mimeType &&
                   content.compare(0, type.begin.size(), type.begin) == 0;
        });
    return isPicture ? std::optional(ProductPicture{object.mimeType, std::move(content)})
                     : std::nullopt;
}

std::optional<ProductPicture> pictureOf(const Module& module)
{
    for (const BinaryObject& object : module.binaryObjects()) {
        if (auto picture = pictureOf(object)) {
            return picture;
        }
    }
    return std::nullopt;
}

std::string dataUrl(const ProductPicture& picture)
{
    const auto* const data = reinterpret_cast<const std::uint8_t*>(picture.bytes.data());
    return "data:" + picture.mimeType + ";base64," + text::toBase64(data, picture.bytes.size());
}

} // namespace mxmodule
