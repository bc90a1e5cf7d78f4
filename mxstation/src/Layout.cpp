#include "mxstation/Layout.h"

namespace mxstation {

namespace {

// The same for both images.
Layout layoutOf(const std::string& name, const ImageLayout& image)
{
    Layout layout;
    layout.name = name;
    layout.input = image;
    layout.output = image;
    return layout;
}

NamedLayout plain()
{
    return {layoutOf("plain", {}), "as in the row, without padding, at most 64 modules"};
}

NamedLayout words()
{
    ImageLayout image;
    image.alignment = 2;
    image.modulePadding = 2;
    return {layoutOf("words", image),
            "as in the row; each module begins at an even byte and takes whole words"};
}

NamedLayout bytesFirst()
{
    ImageLayout image;
    image.order = ImageOrder::BytesFirst;
    image.statusBefore = 2;
    image.imagePadding = 2;
    return {layoutOf("bytes-first", image),
            "modules with a channel of a byte or more before modules of bits alone, after two "
            "bytes of status; the whole takes whole words"};
}

NamedLayout aligned()
{
    ImageLayout image;
    image.alignment = 8;
    image.statusBehind = 1;
    NamedLayout named{layoutOf("aligned", image),
                      "as in the row; each module begins at a multiple of 8, where its channels "
                      "lie as at byte 0; a byte of status after them, the least significant byte "
                      "first, at most 250 modules"};
    named.layout.mostModules = 250;
    named.layout.byteOrder = ByteOrder::Little;
    return named;
}

} // namespace

const std::vector<NamedLayout>& namedLayouts()
{
    static const std::vector<NamedLayout> all = {plain(), words(), bytesFirst(), aligned()};
    return all;
}

} // namespace mxstation
