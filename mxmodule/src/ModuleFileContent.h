#pragma once

#include <mxmodule/ModuleFile.h>

#include <mxauthor/TextForm.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace mxmodule {

/// What a module file shares with its copies.
struct __attribute__((visibility("hidden"))) ModuleFile::Content
{
    std::string name;
    std::vector<char> bytes;
    std::shared_ptr<const std::vector<char>> loaded; ///< The bytes and 0xFF, for translations.
    std::string source;                              ///< Of the text form.
    std::optional<mxauthor::BuildResult> built;

    /// Builds the text form `source` of the file `name`.
    using Build =
        std::function<mxauthor::BuildResult(const std::string& name, const std::string& source)>;

    /// Returns the content of `bytes`, an mx file or the text form of one, called `name`. Throws a
    /// `Failure` if they are neither, or if the text has errors.
    static std::shared_ptr<const Content> of(std::string name, std::vector<char> bytes,
                                             const Build& build);
};

} // namespace mxmodule
