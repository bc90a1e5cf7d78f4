#pragma once

#include "mxauthor/TextForm.h"

#include <yaml-cpp/yaml.h>

#include <set>

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

    /// At a node that was made, only the first error is kept: the others follow from it, or are the
    /// same for the next number.
    void add(const YAML::Node& node, const std::string& what);

    /// Returns `made`, a node that is not in the text: its errors are told at `mark`.
    YAML::Node madeFrom(const YAML::Node& made, const YAML::Mark& mark);

    /// Returns where `node` is in the text, or what it was made from.
    YAML::Mark markOf(const YAML::Node& node) const;

    bool empty() const { return errors.empty(); }

    /// Returns an error at `mark`, the start of the text for none, without adding it.
    SourceError located(const YAML::Mark& mark, const std::string& what) const;

    /// Returns the errors in the order of the text, each once.
    std::vector<SourceError> sorted() const;

private:
    /// Returns false when the same error is there already.
    bool append(const YAML::Mark& mark, const std::string& what);

    const std::string& text;
    std::vector<std::size_t> lineStarts{0};
    std::vector<SourceError> errors;
    std::set<std::pair<int, std::string>> known; // by position
    std::set<int> knownOfMade;                   // positions that nodes were made from
    std::vector<YAML::Mark> marksOfMade;         // by the numbers in their tags
};

} // namespace mxauthor
