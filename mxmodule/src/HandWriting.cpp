#include "mxmodule/HandWriting.h"

#include "ValuesComment.h"

#include <mxmodule/FileKind.h>

#include <mxauthor/HandWriting.h>

#include <algorithm>
#include <vector>

namespace mxmodule {

namespace {

using mxauthor::HandWriting;

bool isTextOfPeople(FileKind kind, const std::string& content)
{
    return kind == FileKind::TextForm || kind == FileKind::Values ||
           (kind == FileKind::Other && content.find('\0') == std::string::npos);
}

bool isAmong(const std::vector<HandWriting>& kept, const HandWriting& one)
{
    return std::any_of(kept.begin(), kept.end(),
                       [&](const HandWriting& other) { return other.text == one.text; });
}

std::string shownHandWriting(const HandWriting& writing)
{
    constexpr std::size_t longest = 60;
    if (writing.text[0] != '#') {
        return "the key \"" + writing.text + "\"";
    }
    const bool isLong = writing.text.size() > longest;
    return "the comment \"" + writing.text.substr(0, longest) + (isLong ? "..." : "") + "\"";
}

} // namespace

std::optional<LostWriting> writingLostBy(const std::string& output, const std::string& present)
{
    const FileKind kind = kindOf(output);
    if ((kind != FileKind::TextForm && kind != FileKind::Values) ||
        !isTextOfPeople(kindOf(present), present)) {
        return std::nullopt;
    }
    const bool isOwn = hasValuesMark(present);
    const std::vector<HandWriting> kept = mxauthor::handWritingIn(output);
    const std::vector<HandWriting> all = mxauthor::handWritingIn(present);
    const auto lost = std::find_if(all.begin(), all.end(), [&](const HandWriting& one) {
        return !(isOwn && isValuesComment(one.text, one.line)) && !isAmong(kept, one);
    });
    return lost == all.end() ? std::nullopt
                             : std::optional(LostWriting{static_cast<std::size_t>(lost->line),
                                                         shownHandWriting(*lost)});
}

} // namespace mxmodule
