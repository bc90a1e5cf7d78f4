#pragma once

#include "mxauthor/TextForm.h"

#include <yaml-cpp/yaml.h>

namespace mxauthor {

/// Ends the building of a text: it has more errors than anybody reads.
struct TooManyErrors
{};

/// Collects the errors of one text.
class SourceErrors
{
public:
    /// `source` outlives the object.
    explicit SourceErrors(const std::string& source);

    /// Throws `TooManyErrors` with the hundredth, which is kept.
    void add(const YAML::Mark& mark, const std::string& what);
    void add(const YAML::Node& node, const std::string& what) { add(node.Mark(), what); }

    bool empty() const { return errors.empty(); }

    /// Returns an error at `mark`, the start of the text for none, without adding it.
    SourceError located(const YAML::Mark& mark, const std::string& what) const;

    /// Returns the errors in the order of the text, each once.
    std::vector<SourceError> sorted() const;

private:
    void append(const YAML::Mark& mark, const std::string& what);

    const std::string& text;
    std::vector<std::size_t> lineStarts{0};
    std::vector<SourceError> errors;
};

} // namespace mxauthor
