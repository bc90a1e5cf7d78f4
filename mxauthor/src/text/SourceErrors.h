#pragma once

#include "mxauthor/TextForm.h"

#include <yaml-cpp/yaml.h>

namespace mxauthor {

/// Collects the errors of one text.
class SourceErrors
{
public:
    /// `source` outlives the object.
    explicit SourceErrors(const std::string& source);

    void add(const YAML::Mark& mark, const std::string& what);
    void add(const YAML::Node& node, const std::string& what) { add(node.Mark(), what); }

    bool empty() const { return errors.empty(); }

    /// Returns the errors in the order of the text, each once.
    std::vector<SourceError> sorted() const;

private:
    const std::string& text;
    std::vector<std::size_t> lineStarts{0};
    std::vector<SourceError> errors;
};

} // namespace mxauthor
