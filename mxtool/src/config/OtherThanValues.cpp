#include "config/OtherThanValues.h"

#include "FileKind.h"

#include <mxauthor/ForeignContent.h>
#include <text/ControlCharacters.h>
#include <text/Utf8.h>

namespace mxtool {

namespace {

// Many bytes of a parameter image are small numbers; a text may contain a stray zero byte.
bool isBinary(const std::string& content)
{
    return content.find('\0') != std::string::npos &&
           text::countOfControls(content) >= content.size() / 4;
}

// Whether `content` may be a parameter image, as bytes or as text. UTF-16 contains zeros too.
bool isImage(const std::string& content)
{
    const bool isHexadecimal =
        content.find_first_not_of("0123456789abcdefABCDEFx, \t\r\n") == std::string::npos;
    return !content.empty() && !text::isUtf16(content) && (isHexadecimal || isBinary(content));
}

// The kind of `content`; nothing if it may contain values.
std::optional<std::string> nameOfOther(const std::string& content, FileKind kind)
{
    if (kind == FileKind::Values || kind == FileKind::Configuration) {
        return std::nullopt;
    }
    if (kind != FileKind::Other) {
        return nameOf(kind);
    }
    const auto foreign = mxauthor::foreignContent(content);
    return !foreign && isImage(content) ? "an image of bytes" : foreign;
}

std::string hintForKind(const std::string& content, FileKind kind, const std::string& file)
{
    if (kind == FileKind::MxFile || kind == FileKind::TextForm) {
        return "mxtool config " + (file[0] == '<' ? "FILE" : file) +
               " --format values writes one to start from";
    }
    return kind == FileKind::Other && isImage(content)
               ? "--decode shows the values in bytes, --param-block sets values in them"
               : callThatTakes(kind, file);
}

} // namespace

std::optional<Failure> otherThanValues(const std::string& content, const std::string& file)
{
    const FileKind kind = kindOf(content);
    const auto found = nameOfOther(content, kind);
    if (!found) {
        return std::nullopt;
    }
    return Failure(ExitCode::Input, file,
                   "This is " + *found + ", expected a file of names and values",
                   hintForKind(content, kind, file));
}

} // namespace mxtool
