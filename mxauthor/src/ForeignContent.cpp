#include "mxauthor/ForeignContent.h"

#include <algorithm>
#include <array>

namespace mxauthor {

namespace {

struct Form
{
    std::string begin;
    const char* name;
};

// The bytes with which each form begins, whatever the version.
const std::array<Form, 19>& forms()
{
    static const std::array<Form, 19> all = {{
        {"\x89PNG\r\n\x1a\n", "a PNG picture"},
        {"\xFF\xD8\xFF", "a JPEG picture"},
        {"GIF87a", "a GIF picture"},
        {"GIF89a", "a GIF picture"},
        {std::string("II*\0", 4), "a TIFF picture"},
        {std::string("MM\0*", 4), "a TIFF picture"},
        {"\x1F\x8B\x08", "gzip data"},
        {"BZh", "bzip2 data"},
        {std::string("\xFD"
                     "7zXZ\0",
                     6),
         "xz data"},
        {"\x28\xB5\x2F\xFD", "Zstandard data"},
        {"PK\x03\x04", "a ZIP archive"},
        {"7z\xBC\xAF\x27\x1C", "a 7z archive"},
        {"%PDF-", "a PDF document"},
        {"\x7F"
         "ELF",
         "a program (ELF)"},
        {"<svg", "an SVG drawing"},
        {"<html", "an HTML page"},
        {"<!DOCTYPE html", "an HTML page"},
        {"<!doctype html", "an HTML page"},
        {"<?xml", "an XML document"},
    }};
    return all;
}

bool beginsWith(const std::string& content, std::size_t from, const std::string& begin)
{
    return content.compare(from, begin.size(), begin) == 0;
}

// A bitmap states its size from byte 2, and has zeros from byte 6.
bool isBitmap(const std::string& content)
{
    return beginsWith(content, 0, "BM") && beginsWith(content, 6, std::string(4, '\0'));
}

bool isWebP(const std::string& content)
{
    return beginsWith(content, 0, "RIFF") && content.size() > 12 && beginsWith(content, 8, "WEBP");
}

// An XML declaration and comments may come before the root element.
bool isDrawing(const std::string& content)
{
    constexpr std::size_t judged = 4096;
    return content.substr(0, judged).find("<svg") != std::string::npos;
}

} // namespace

std::optional<std::string> foreignContent(const std::string& content)
{
    if (content.size() > 10 && isBitmap(content)) {
        return "a BMP picture";
    }
    if (isWebP(content)) {
        return "a WebP picture";
    }
    const std::string byteOrderMark = "\xEF\xBB\xBF";
    const std::size_t start = beginsWith(content, 0, byteOrderMark) ? byteOrderMark.size() : 0;
    const auto form = std::find_if(forms().begin(), forms().end(), [&](const Form& one) {
        return beginsWith(content, start, one.begin);
    });
    if (form == forms().end()) {
        return std::nullopt;
    }
    return form->begin == "<?xml" && isDrawing(content) ? "an SVG drawing" : form->name;
}

} // namespace mxauthor
