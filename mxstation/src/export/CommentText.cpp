#include "export/CommentText.h"

#include <text/ShownText.h>

#include <algorithm>

namespace mxstation {

std::string commentText(const std::string& bytes, std::initializer_list<const char*> pairs)
{
    std::string comment;
    for (const char c : text::forTerminal(bytes)) {
        const bool isPair =
            !comment.empty() && std::any_of(pairs.begin(), pairs.end(), [&](const char* pair) {
                return comment.back() == pair[0] && c == pair[1];
            });
        comment += isPair ? " " : "";
        comment += c;
    }
    return comment;
}

} // namespace mxstation
