#pragma once

#include <map>
#include <set>
#include <string>

namespace mxtool {

/// Returns the bytes of an mx text as an IEC 61131-3 identifier: letters, digits and single
/// underscores, at most 100 characters. Umlauts and accented letters are written with plain ones; a
/// text that would begin with a digit or be a word of the language gets "Ch_" in front. Empty when
/// nothing of the text can be kept.
std::string iecIdentifier(const std::string& bytes);

/// Returns `bytes` as they may stand in a comment: neither ends nor opens one.
std::string iecCommentText(const std::string& bytes);

/// Hands out identifiers that differ from one another, whatever the case of their letters.
class IecNames
{
public:
    /// Returns `identifier`, with _2, _3, ... behind it where it was handed out before.
    std::string unique(const std::string& identifier);

private:
    std::set<std::string> used;           // in upper case
    std::map<std::string, unsigned> next; // the number to try next, by identifier in upper case
};

} // namespace mxtool
