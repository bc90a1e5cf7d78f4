#include "Diagnostic.h"

#include "Progress.h"

#include <mxauthor/Utf8.h>
#include <text/ShownText.h>
#include <text/Utf8.h>

#include <fmt/format.h>

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace mxtool {

namespace {

const char* colourOf(const std::string& severity)
{
    if (severity == "error") {
        return "1;31";
    }
    return severity == "warning" ? "1;33" : "1;36";
}

// A diagnostic combines texts from several sources: an invalid byte must not change the others.
std::string shown(const std::string& text)
{
    return text::forTerminal(text::repairedUtf8(text));
}

} // namespace

std::string painted(const std::string& text, const char* colour, bool coloured)
{
    return coloured ? fmt::format("\033[{}m{}\033[0m", colour, text) : text;
}

std::string toText(const Diagnostic& diagnostic, bool coloured)
{
    std::string text = diagnostic.place.empty() ? "" : shown(diagnostic.place) + ": ";
    text += painted(diagnostic.severity + ":", colourOf(diagnostic.severity), coloured) + " " +
            shown(diagnostic.text) + "\n";
    if (!diagnostic.hint.empty()) {
        text += painted("hint:", "1;36", coloured) + " " + shown(diagnostic.hint) + "\n";
    }
    return text;
}

std::string beginningOfList(const std::vector<std::string>& items, std::size_t most,
                            const std::string& separator, const std::string& beforeRest)
{
    const auto end = items.begin() + static_cast<std::ptrdiff_t>(std::min(items.size(), most));
    const std::string rest =
        end == items.end() ? "" : fmt::format("{}and {} more", beforeRest, items.end() - end);
    return fmt::format("{}{}", fmt::join(items.begin(), end, separator), rest);
}

void report(const Diagnostic& diagnostic)
{
    clearProgressLine();
    std::cerr << toText(diagnostic, takesColour(STDERR_FILENO)) << std::flush;
}

std::string placeInFile(const std::string& file, std::size_t offset)
{
    return fmt::format("{}:{:#08x}", file, offset);
}

bool takesColour(int descriptor)
{
    const char* const noColour = std::getenv("NO_COLOR");
    return isatty(descriptor) == 1 && (noColour == nullptr || *noColour == '\0');
}

std::string placeInText(const std::string& file, const mxauthor::SourceError& where)
{
    return fmt::format("{}:{}:{}", file, where.line, where.column);
}

std::string shownExcerpt(const std::string& source, const mxauthor::SourceError& where)
{
    const auto excerpt = mxauthor::sourceExcerpt(source, where);
    return text::forTerminal(excerpt.line) + "\n" + excerpt.caret + "\n";
}

void reportAt(const std::string& file, const std::string& source,
              const mxauthor::SourceError& error, const std::string& severity,
              const std::string& hint)
{
    report({severity, placeInText(file, error), error.text, hint});
    std::cerr << shownExcerpt(source, error);
}

} // namespace mxtool
