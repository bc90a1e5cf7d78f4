#pragma once

#include "mxauthor/TextForm.h"

#include <yaml-cpp/yaml.h>

#include <map>
#include <set>

namespace mxauthor {

/// The repetitions of a repeated line that an error or finding concerns.
class Repetitions
{
public:
    /// Adds a repetition. Returns false if it was added before.
    bool add(const Repetition& repetition);

    /// Returns " (in all 8 repetitions)", " (in 3 of 8 repetitions, first in repetition 2)" or
    /// " (in repetition 8 of 8)"; empty for a line that is not repeated.
    std::string text() const;

private:
    std::set<std::uint32_t> numbers;
    std::uint32_t count = 0; // of the whole line
};

/// Ends the building of a text with too many errors to be useful.
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

    /// At a generated node only the first error is kept, with the repetitions that have one: the
    /// others follow from it, or are the same for the next number.
    void add(const YAML::Node& node, const std::string& what);

    /// The same for `node` in a line that may be repeated: of errors that differ between the
    /// repetitions, the first is kept.
    void addInLine(const YAML::Node& line, const YAML::Node& node, const std::string& what);

    /// The same for `key` of `mapping`, reported before the errors in the values of the mapping,
    /// which may follow from it.
    void addCause(const YAML::Node& key, const YAML::Node& mapping, const std::string& what);

    /// Returns `made`, a node that is not in the text: its errors are reported at `mark`.
    YAML::Node madeFrom(const YAML::Node& made, const YAML::Mark& mark,
                        const Repetition& repetition);

    /// Returns where `node` is in the text, or what it was made from.
    YAML::Mark markOf(const YAML::Node& node) const;

    /// Returns the repetition that `node` was made for.
    Repetition repetitionOf(const YAML::Node& node) const;

    bool empty() const { return errors.empty(); }
    std::size_t size() const { return errors.size(); }

    /// Returns an error at `mark`, the start of the text for none, without adding it.
    SourceError located(const YAML::Mark& mark, const std::string& what) const;

    /// Returns the errors in the order of the text, each once, causes at the start of their
    /// mapping.
    std::vector<SourceError> sorted() const;

private:
    struct Origin
    {
        YAML::Mark mark;
        Repetition repetition;
    };

    struct Entry
    {
        SourceError error;
        int position;         // in the text
        YAML::Mark order;     // where the error is reported, null: first
        bool isCause = false; // reported before the others of its place

        bool isReportedBefore(const Entry& other) const;
    };

    /// Returns where `node` was made from, null for a node of the text.
    const Origin* originOf(const YAML::Node& node) const;

    /// Adds an error of one repetition, once for all of them.
    void addRepeated(const YAML::Mark& mark, const Repetition& repetition, const std::string& what);

    /// Adds an error. Returns false if it was added before.
    bool append(const YAML::Mark& mark, const std::string& what);

    const std::string& text;
    std::vector<std::size_t> lineStarts{0};
    std::vector<Entry> errors;
    std::set<std::pair<int, std::string>> known; // by position
    std::map<int, Repetitions> repeated;         // of the errors of repeated lines, by position
    std::vector<Origin> originsOfMade;           // by the numbers in their tags
    bool isComplete = true;                      // false: too many errors
};

} // namespace mxauthor
