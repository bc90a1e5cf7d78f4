#include "SourceReport.h"

#include "Diagnostic.h"

#include <text/ShownText.h>

#include <fmt/format.h>

#include <iostream>

namespace mxtool {

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
