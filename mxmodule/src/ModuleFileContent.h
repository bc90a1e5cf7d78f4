#pragma once

#include <mxmodule/ModuleFile.h>

#include <mxauthor/TextForm.h>

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
};

} // namespace mxmodule
