#include "SourcePlace.h"

#include <fmt/format.h>
#include <text/ShownText.h>

namespace mxmodule {

bool isPath(const std::string& name)
{
    return !name.empty() && name.front() != '<';
}

std::string placeInFile(const std::string& file, std::size_t offset)
{
    return fmt::format("{}:{:#08x}", file, offset);
}

std::string placeInText(const std::string& file, const mxauthor::SourceError& where)
{
    return fmt::format("{}:{}:{}", file, where.line, where.column);
}

std::string excerptOf(const std::string& source, const mxauthor::SourceError& where)
{
    const auto excerpt = mxauthor::sourceExcerpt(source, where);
    return text::forTerminal(excerpt.line) + "\n" + excerpt.caret + "\n";
}

Finding findingAt(const std::string& file, const std::string& source,
                  const mxauthor::SourceError& error, Severity severity, const std::string& hint)
{
    Finding finding{severity, placeInText(file, error), error.text, hint};
    finding.excerpt = excerptOf(source, error);
    return finding;
}

} // namespace mxmodule
