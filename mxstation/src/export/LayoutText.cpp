#include "export/LayoutText.h"

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/ShownText.h>

#include <vector>

namespace mxstation {

namespace {

// What differs from an image that holds the modules' data alone.
std::vector<std::string> traitsOf(const ImageLayout& image)
{
    std::vector<std::string> traits = {
        image.order == ImageOrder::Row ? "as in the row" : "modules of bits alone last"};
    const auto add = [&traits](bool isStated, const std::string& trait) {
        if (isStated) {
            traits.push_back(trait);
        }
    };
    add(image.start != 0, fmt::format("from byte {}", image.start));
    add(image.statusBefore != 0, text::counted(image.statusBefore, "byte") + " of status before");
    add(image.statusBehind != 0, text::counted(image.statusBehind, "byte") + " of status after");
    add(image.alignment != 1, fmt::format("a module begins at a multiple of {}", image.alignment));
    add(image.modulePadding != 1,
        fmt::format("a module takes a multiple of {} bytes", image.modulePadding));
    add(image.imagePadding != 1,
        fmt::format("the image takes a multiple of {} bytes", image.imagePadding));
    add(image.mostBytes.has_value(),
        "at most " + text::counted(image.mostBytes.value_or(0), "byte"));
    return traits;
}

} // namespace

std::string layoutText(const Layout& layout)
{
    const std::string input = fmt::format("{}", fmt::join(traitsOf(layout.input), ", "));
    const std::string output = fmt::format("{}", fmt::join(traitsOf(layout.output), ", "));
    const std::string images =
        input == output ? input : fmt::format("input image {}; output image {};", input, output);
    return fmt::format(
        "{}: {}{} at most {}, {} byte of a value first", text::forTerminal(layout.name), images,
        input == output ? "," : "", text::counted(layout.mostModules, "module"),
        layout.byteOrder == ByteOrder::Big ? "most significant" : "least significant");
}

} // namespace mxstation
