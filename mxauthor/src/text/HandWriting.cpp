#include "mxauthor/HandWriting.h"

#include "YamlTokens.h"

#include <algorithm>
#include <optional>

namespace mxauthor {

namespace {

// The column of the first key or value of a line, after the dashes of nested lists.
std::size_t columnOfContent(const std::string& line)
{
    return std::min(line.find_first_not_of(" -"), line.size());
}

// Whether the indented lines that follow are the text of a block (`|`, `>`).
bool opensBlock(const std::string& line)
{
    const std::size_t mark = line.find_last_of("|>");
    if (mark == std::string::npos || mark == 0 || line[mark - 1] != ' ') {
        return false;
    }
    const std::size_t rest = line.find_first_not_of("+-0123456789", mark + 1);
    return rest == std::string::npos || line.find_first_not_of(' ', rest) == std::string::npos;
}

// The lines of `text`, those of blocks empty.
std::vector<std::string> linesWithoutBlocks(const std::string& text)
{
    std::vector<std::string> lines = linesOf(text);
    std::optional<std::size_t> blockIndent; // of the line that opened the block
    for (std::string& line : lines) {
        if (blockIndent && line.find_first_not_of(' ') <= *blockIndent) {
            blockIndent.reset();
        }
        if (blockIndent) {
            line.clear();
        } else if (opensBlock(line)) {
            blockIndent = columnOfContent(line);
        }
    }
    return lines;
}

bool isRepeating(const std::string& key)
{
    return key == "repeat" || key == "each";
}

} // namespace

std::vector<HandWriting> handWritingIn(const std::string& text)
{
    const std::vector<std::string> lines = linesWithoutBlocks(text);
    std::vector<HandWriting> found;
    for (const YamlWord& word : tokensUpTo(lines, lines.size()).words) {
        if (word.text[0] == '#' || isRepeating(word.text)) {
            found.push_back({word.line + 1, word.text});
        }
    }
    return found;
}

} // namespace mxauthor
