#include "mxstation/StationPicture.h"

#include "export/Provenance.h"
#include "export/RowDrawing.h"

#include <text/Counted.h>
#include <text/ShownText.h>
#include <text/Svg.h>
#include <text/TextWidth.h>

#include <fmt/format.h>

#include <algorithm>

namespace mxstation {

namespace {

using text::svgRectangle;
using text::svgText;

constexpr std::size_t pictureMargin = 20; // in pixels
constexpr std::size_t leastWidth = 680;   // that of the legend

constexpr const char* pictureStyle = R"(<style>
text { font: 10px "DejaVu Sans Mono", "Liberation Mono", Consolas, Menlo, monospace; fill: #222; }
.title { font-size: 14px; font-weight: bold; }
.image, .module { font-weight: bold; }
.faint { fill: #505050; }
.alarm { fill: #b00020; }
.none { fill: url(#none); stroke: #ccc; }
.padding { fill: url(#padding); stroke: #aaa; }
.reserved { fill: #fff; stroke: #555; stroke-dasharray: 4 3; }
.status { fill: #d8d8d8; stroke: #777; }
.outside { fill: #fff; stroke: #ccc; }
.cell { stroke: #555; }
.foreign { stroke: #d00020; stroke-width: 2; }
.seam { fill: none; stroke: #555; stroke-opacity: 0.35; stroke-dasharray: 2 3; }
.c0 { fill: #a6cee3; } .c1 { fill: #fdd0a2; } .c2 { fill: #b8e0a8; } .c3 { fill: #e3c9ec; } .c4 { fill: #fff3a3; }
.c5 { fill: #f7b6b6; } .c6 { fill: #bfe5e0; } .c7 { fill: #c6cbef; } .c8 { fill: #e2d3c0; } .c9 { fill: #d9e8a0; }
.light { fill-opacity: 0.45; }
</style>
<defs><pattern id="none" width="6" height="6" patternUnits="userSpaceOnUse">
<rect width="6" height="6" fill="#f6f6f6"/><path d="M0 6L6 0" stroke="#d4d4d4"/></pattern>
<pattern id="padding" width="4" height="4" patternUnits="userSpaceOnUse">
<rect width="4" height="4" fill="#eee"/><path d="M0 0L4 4M4 0L0 4" stroke="#ccc"/></pattern></defs>
)";

// One process image with its title.
struct ImagePicture
{
    std::string shapes;
    std::size_t width;
    std::size_t height;
};

std::string bitNumbers(std::size_t left, std::size_t y)
{
    const char* const attributes = " class=\"faint\" text-anchor=\"middle\"";
    std::string numbers =
        svgText(left + byteGutter - besideText, y, "byte", " class=\"faint\" text-anchor=\"end\"");
    for (unsigned bit = 8; bit-- > 0;) {
        numbers += svgText(cellLeft(left, bit) + cellWidth / 2, y, std::to_string(bit), attributes);
    }
    return numbers;
}

ImagePicture imagePicture(const Plan& plan, bool isInput, std::size_t top)
{
    const ImageBytes& image = isInput ? plan.input : plan.output;
    const std::string size =
        image.size == 0
            ? "no bytes"
            : fmt::format("{}, {}", text::counted(image.size, "byte"), bytesText(image));
    ImagePicture picture{svgText(pictureMargin, top + textBase,
                                 fmt::format("{} image: {}", isInput ? "Input" : "Output", size),
                                 " class=\"image\""),
                         0, pictureLine};
    const std::vector<PictureBlock> blocks = pictureBlocks(plan, isInput);
    const PictureColumns columns = inColumns(blocks);
    for (std::size_t column = 0; column < columns.count; ++column) {
        picture.shapes +=
            bitNumbers(pictureMargin + column * pictureColumn, top + pictureLine + textBase);
    }
    RowDrawing drawing(pictureMargin, top + 2 * pictureLine);
    for (const PlacedRow& row : columns.rows) {
        picture.shapes += drawing.draw(row);
    }
    picture.width = columns.count * pictureColumn;
    picture.height += columns.count == 0 ? 0 : pictureLine + columns.height;
    return picture;
}

// The legend of the marks.
std::string pictureKey(std::size_t top)
{
    std::string shapes;
    std::size_t left = pictureMargin;
    for (const auto& [kind, words] :
         {std::pair("none", "no channel"), std::pair("padding", "padding"),
          std::pair("reserved", "reserved"), std::pair("status", "status of the coupler"),
          std::pair("outside foreign", "channel outside its module's data")}) {
        shapes += svgRectangle(left, top + 3, 14, 12, fmt::format("class=\"{}\"", kind));
        shapes += svgText(left + 20, top + textBase, words);
        left += 44 + glyphWidth * std::string(words).size();
    }
    return shapes;
}

std::string provenanceText(const Provenance& provenance)
{
    std::string text;
    for (const std::string& line : provenance.lines()) {
        text += text::xmlEscaped(text::forTerminal(line)) + "\n";
    }
    return text;
}

} // namespace

std::string stationSvg(const Plan& plan)
{
    const Provenance provenance(plan);
    const std::string title = "Station " + text::forTerminal(plan.station);
    const std::string summary =
        fmt::format("{}, layout {}", text::counted(plan.modules.size(), "module"),
                    text::forTerminal(plan.layout.name));
    const std::size_t inputTop = pictureMargin + 3 * pictureLine;
    const ImagePicture input = imagePicture(plan, true, inputTop);
    const std::size_t outputTop = inputTop + input.height + pictureLine;
    const ImagePicture output = imagePicture(plan, false, outputTop);
    const std::size_t keyTop = outputTop + output.height + pictureLine;
    const std::size_t least = std::max(leastWidth, 9 * text::columnsOf(title));
    const std::size_t width = 2 * pictureMargin + std::max({input.width, output.width, least});
    const std::size_t height = keyTop + pictureLine + pictureMargin;
    return text::svgBegin(width, height) + "<title>" + text::xmlEscaped(title) +
           "</title>\n<desc>" + provenanceText(provenance) + "</desc>\n" + pictureStyle +
           svgRectangle(0, 0, width, height, "fill=\"#fff\"") +
           svgText(pictureMargin, pictureMargin + textBase, title, " class=\"title\"") +
           svgText(pictureMargin, pictureMargin + pictureLine + textBase, summary) + input.shapes +
           output.shapes + pictureKey(keyTop) + "</svg>\n";
}

} // namespace mxstation
