#pragma once

#include <map>
#include <set>
#include <string>

namespace text {

/// Returns the bytes of an mx text as an IEC 61131-3 identifier: letters, digits and single
/// underscores, at most 100 characters. Umlauts and accented letters become ASCII letters; "Ch_" is
/// put before a digit at the beginning and before a keyword. Empty if no character can be kept.
std::string iecIdentifier(const std::string& bytes);

/// Returns `bytes` as text that neither begins nor ends a comment.
std::string iecCommentText(const std::string& bytes);

/// Makes identifiers unique, ignoring case.
class IecNames
{
public:
    /// Returns `identifier`, with _2, _3, ... appended if it was returned before.
    std::string unique(const std::string& identifier);

private:
    std::set<std::string> used;           // in upper case
    std::map<std::string, unsigned> next; // the number to try next, by identifier in upper case
};

} // namespace text
