#pragma once

#include <cstddef>
#include <string>

/// The elements of the pictures that the libraries draw. Lengths are pixels.
namespace text {

/// Returns `text`, UTF-8 without control characters, with the two other characters that XML does
/// not have, U+FFFE and U+FFFF, replaced by U+FFFD.
std::string xmlAllowed(const std::string& text);

/// Returns the same with the characters that XML reserves in the text of an element escaped.
std::string xmlEscaped(const std::string& text);

/// Returns an element with `text`, escaped, its baseline at `y`. `attributes` begin with a blank,
/// or are empty.
std::string svgText(std::size_t x, std::size_t y, const std::string& text,
                    const std::string& attributes = "");

/// Returns a rectangle with its left upper corner at `x`, `y`.
std::string svgRectangle(std::size_t x, std::size_t y, std::size_t width, std::size_t height,
                         const std::string& attributes);

/// Returns a line of a class of the style sheet.
std::string svgLine(std::size_t x1, std::size_t y1, std::size_t x2, std::size_t y2,
                    const char* className);

/// Returns the beginning of a document of this size.
std::string svgBegin(std::size_t width, std::size_t height);

} // namespace text
