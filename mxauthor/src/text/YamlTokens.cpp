#include "YamlTokens.h"

#include <algorithm>

namespace mxauthor {

namespace {

// Goes through the lines character by character.
class Tokenizer
{
public:
    explicit Tokenizer(const std::vector<std::string>& allLines) : lines(allLines) {}

    YamlTokens readUpTo(std::size_t last)
    {
        while (line < lines.size() && line <= last) {
            if (column >= lines[line].size()) {
                nextLine();
            } else {
                readCharacter(lines[line][column]);
            }
        }
        return std::move(tokens);
    }

private:
    void nextLine()
    {
        ++line;
        column = 0;
        startsValue = true;
    }

    void readCharacter(char c)
    {
        if (c == '#' && (column == 0 || lines[line][column - 1] == ' ')) {
            tokens.words.push_back({line, lines[line].substr(column)});
            nextLine();
        } else if (startsValue && (c == '"' || c == '\'')) {
            readQuoted(c);
        } else if ((startsValue || !tokens.open.empty()) && (c == '{' || c == '[')) {
            tokens.open.push_back({line, column++, c});
            startsValue = true;
        } else if (!tokens.open.empty() && (c == '}' || c == ']')) {
            close(c);
        } else {
            readPlain(c);
        }
    }

    void close(char c)
    {
        const OpenBracket bracket = tokens.open.back();
        if ((bracket.character == '{') != (c == '}') && !tokens.mismatched) {
            tokens.mismatched = bracket;
        }
        tokens.open.pop_back();
        ++column;
        startsValue = false;
    }

    void readPlain(char c)
    {
        const bool endsWord = column + 1 >= lines[line].size() || lines[line][column + 1] == ' ';
        if (c == ':' && endsWord) {
            takeKey();
        }
        const bool separates = (c == ',' && !tokens.open.empty()) ||
                               ((c == ':' || (c == '-' && startsValue)) && endsWord);
        startsValue = separates || (startsValue && c == ' ');
        ++column;
    }

    // The word before the colon.
    void takeKey()
    {
        const std::string before = lines[line].substr(0, column);
        const std::size_t begin = before.find_last_of(" ,{[") + 1;
        if (begin < column) {
            tokens.words.push_back({line, before.substr(begin)});
        }
    }

    void readQuoted(char mark)
    {
        QuotedText quoted{line, column++, mark};
        while (line < lines.size() && !quoted.isClosed) {
            if (column >= lines[line].size()) {
                ++line;
                column = 0;
                continue;
            }
            const char c = lines[line][column++];
            if (c == '\\' && mark == '"') {
                ++column;
            } else if (c == mark) {
                quoted.isClosed = !isDoubled(mark);
            }
        }
        quoted.lastLine = line;
        quoted.endsEntry = quoted.isClosed && isEndOfEntry();
        tokens.quotes.push_back(quoted);
        startsValue = false;
    }

    // Two single quotation marks mean one in the text.
    bool isDoubled(char mark)
    {
        const bool doubled =
            mark == '\'' && column < lines[line].size() && lines[line][column] == mark;
        column += doubled ? 1 : 0;
        return doubled;
    }

    bool isEndOfEntry() const
    {
        const std::size_t next = lines[line].find_first_not_of(" \t\r", column);
        return next == std::string::npos ||
               std::string(",]}:#").find(lines[line][next]) != std::string::npos;
    }

    const std::vector<std::string>& lines;
    YamlTokens tokens;
    std::size_t line = 0;
    std::size_t column = 0;
    bool startsValue = true; // only blanks since a place where a value may begin
};

} // namespace

std::vector<std::string> linesOf(const std::string& source)
{
    std::vector<std::string> lines;
    for (std::size_t from = 0; from <= source.size();) {
        const std::size_t end = std::min(source.find('\n', from), source.size());
        const bool hasReturn = end > from && source[end - 1] == '\r';
        lines.push_back(source.substr(from, end - from - (hasReturn ? 1 : 0)));
        from = end + 1;
    }
    return lines;
}

YamlTokens tokensUpTo(const std::vector<std::string>& lines, std::size_t last)
{
    return Tokenizer(lines).readUpTo(last);
}

} // namespace mxauthor
