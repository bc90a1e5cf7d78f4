#pragma once

#include "mxmodule/Finding.h"
#include "mxmodule/Observer.h"

#include <optional>
#include <string>
#include <vector>

namespace mxmodule {

/// How a text form is built.
struct BuildOptions
{
    bool force = false;           ///< Also give the bytes of a file that the device parser refuses.
    Observer* observer = nullptr; ///< Learns which files the text names; may be null.
};

/// What became of a text form.
struct BuiltFile
{
    /// The bytes of the mx file; empty if the text has errors or, without `BuildOptions::force`,
    /// the device parser refuses the file.
    std::optional<std::vector<char>> bytes;

    /// The errors of the text; if it has none, the violations of rules in the built file. Each with
    /// line, column and excerpt of the text, in its order.
    std::vector<Finding> findings;

    bool isRefused = false; ///< The device parser refuses the built file.
};

/// Builds the mx file that the text form `content`, called `name`, describes. The same text always
/// gives the same bytes. Files that it names are looked for in the directory of `name`, or in the
/// current directory if `name` is in angle brackets, such as "<standard input>". Throws a `Failure`
/// when the content is empty or no text form at all.
MXMODULE_API BuiltFile build(const std::string& content, const std::string& name,
                             const BuildOptions& options = {});

} // namespace mxmodule
