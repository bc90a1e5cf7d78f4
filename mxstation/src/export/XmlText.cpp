#include "export/XmlText.h"

#include "export/CommentText.h"

#include <text/ShownText.h>
#include <text/Utf8.h>

namespace mxstation {

namespace {

// Of UTF-8 without control characters, all others are characters of XML.
std::string allowedIn(const std::string& utf8)
{
    std::string allowed;
    for (const char32_t point : text::codePoints(utf8)) {
        allowed += point == 0xFFFE || point == 0xFFFF ? "\uFFFD" : text::toUtf8(point);
    }
    return allowed;
}

std::string entityOf(char c)
{
    switch (c) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    default:
        return {c};
    }
}

} // namespace

std::string xmlText(const std::string& bytes)
{
    std::string escaped;
    for (const char c : allowedIn(text::forTerminal(bytes))) {
        escaped += entityOf(c);
    }
    return escaped;
}

std::string xmlComment(const std::string& bytes)
{
    return "<!-- " + allowedIn(commentText(bytes, {"--"})) + " -->";
}

} // namespace mxstation
