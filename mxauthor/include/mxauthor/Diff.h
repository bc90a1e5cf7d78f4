#pragma once

#include "mxauthor/MxFile.h"

namespace mxauthor {

/// What a difference means for a module that is configured and wired already.
enum class Effect
{
    Cosmetic,   ///< Only what people read changes.
    Compatible, ///< Existing parameter images and process images keep their meaning.
    Breaking    ///< The meaning of one of them changes.
};

/// Returns "cosmetic", "compatible" or "breaking".
const char* effectName(Effect effect);

/// A difference between two mx files. Texts hold bytes of the files.
struct Difference
{
    Effect effect = Effect::Cosmetic;
    bool breaksImage = false; ///< A parameter image of one is not valid for the other.
    std::string area;    ///< "module", "text", "parameter", "channel", "size", "image", "group".
    std::string subject; ///< Such as `parameter 3 "Filter"`; may be empty.
    std::string text;    ///< "default 1 becomes 2".
};

struct Comparison
{
    std::vector<Difference> differences; ///< Empty: the files are equal byte for byte.
    bool imageStaysValid = true;         ///< Of a parameter image stored for the first file.
    std::string because;                 ///< Why the image stays valid, or does not.
};

/// Compares what the mx files `before` and `after` describe.
Comparison compare(const MxFile& before, const MxFile& after);

} // namespace mxauthor
