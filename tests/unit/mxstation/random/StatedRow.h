#pragma once

#include <mxstation/StationEdit.h>

#include <cstddef>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace randomstations {

/// Parameters and channels of MX0304 that rows have.
extern const std::vector<std::string> rowParameters;
extern const std::vector<std::string> rowChannels;

/// What an entry states, as plain data. Parameters and channels are those of MX0304.
struct RowContent
{
    std::string reference;
    std::string name = {}; ///< Of a reserved place too.
    std::pair<std::uint32_t, std::uint32_t> reserve = {};
    std::pair<std::optional<std::uint32_t>, std::optional<std::uint32_t>> at = {};
    std::map<std::string, std::string> values = {};                        ///< By call name.
    std::map<std::string, std::pair<std::string, std::string>> notes = {}; ///< Alias and comment.
    std::set<std::string> comments = {}; ///< Those that are removed with it; not compared.

    bool operator==(const RowContent& other) const;
    bool isPlace() const { return reference.empty(); }
};

/// A text of a station and what it states.
struct StatedRow
{
    std::vector<RowContent> entries;
    std::string text;
    std::set<std::string> comments; ///< All of them.
};

/// Writes rows and changes at random.
class RowWriter
{
public:
    explicit RowWriter(unsigned seed) : random(seed) {}

    /// Returns a row, written in one of many ways.
    StatedRow row();

    /// Returns a change of a row of `entries`.
    mxstation::StationEdit edit(const std::vector<RowContent>& entries);

private:
    std::uint32_t below(std::uint32_t count);
    bool oneOf(std::uint32_t count) { return below(count) == 0; }
    std::string word();
    std::string comment(std::set<std::string>& owner);
    std::string scalar(const std::string& text);
    RowContent content();
    // The members of an entry as text, and who owns the comments among them.
    struct Parts
    {
        std::vector<std::string> members;
        std::set<std::string>* owner;
    };

    std::string key(const std::string& name) const;
    void addMap(const std::string& name, const std::vector<std::string>& inner, bool isFlow,
                Parts& parts);
    void addPlace(const RowContent& entry, bool isFlow, Parts& parts);
    void addValues(const RowContent& entry, bool isFlow, Parts& parts);
    void addNotes(const RowContent& entry, bool isFlow, Parts& parts);
    std::vector<std::string> members(const RowContent& entry, bool isFlow,
                                     std::set<std::string>& comments);
    std::string map(const std::vector<std::string>& parts) const;
    void addLines(const RowContent& entry, std::set<std::string>& owner);
    void addBlockRow(StatedRow& row);
    void addFlowRow(StatedRow& row);

    std::mt19937 random;
    std::string text;
    std::string indent;
    bool isJson = false;
    unsigned commentCount = 0;
};

/// Changes `entries` as `edit` says. The rules are those of the documentation.
void apply(const mxstation::StationEdit& edit, std::vector<RowContent>& entries);

/// Returns the change that undoes `edit` of `entries`; nothing if it takes more than one.
std::optional<mxstation::StationEdit> inverse(const mxstation::StationEdit& edit,
                                              const std::vector<RowContent>& entries);

} // namespace randomstations
