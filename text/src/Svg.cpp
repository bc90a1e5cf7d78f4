#include "text/Svg.h"

#include "text/Utf8.h"

namespace text {

namespace {

std::string attribute(const char* name, std::size_t value)
{
    return " " + std::string(name) + "=\"" + std::to_string(value) + "\"";
}

} // namespace

std::string xmlAllowed(const std::string& text)
{
    std::string allowed;
    for (const char32_t point : codePoints(text)) {
        allowed += point == 0xFFFE || point == 0xFFFF ? "\uFFFD" : toUtf8(point);
    }
    return allowed;
}

std::string xmlEscaped(const std::string& text)
{
    std::string escaped;
    for (const char c : xmlAllowed(text)) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string svgText(std::size_t x, std::size_t y, const std::string& text,
                    const std::string& attributes)
{
    return "<text" + attribute("x", x) + attribute("y", y) + attributes + ">" + xmlEscaped(text) +
           "</text>\n";
}

std::string svgRectangle(std::size_t x, std::size_t y, std::size_t width, std::size_t height,
                         const std::string& attributes)
{
    return "<rect" + attribute("x", x) + attribute("y", y) + attribute("width", width) +
           attribute("height", height) + " " + attributes + "/>\n";
}

std::string svgLine(std::size_t x1, std::size_t y1, std::size_t x2, std::size_t y2,
                    const char* className)
{
    return "<path class=\"" + std::string(className) + "\" d=\"M" + std::to_string(x1) + " " +
           std::to_string(y1) + "L" + std::to_string(x2) + " " + std::to_string(y2) + "\"/>\n";
}

std::string svgBegin(std::size_t width, std::size_t height)
{
    const std::string w = std::to_string(width);
    const std::string h = std::to_string(height);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + w + "\" height=\"" + h +
           "\" viewBox=\"0 0 " + w + " " + h + "\">\n";
}

} // namespace text
