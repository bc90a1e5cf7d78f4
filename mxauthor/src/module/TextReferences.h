#pragma once

#include "module/ModuleView.h"

namespace mxauthor {

/// A reference to a text of the file.
struct TextReference
{
    std::uint16_t id;
    Place place;         ///< Of the identifier, where it is referred to.
    std::string subject; ///< What refers to it, as findings name it.
    const char* what;    ///< "name", "unit", "option" or "GTIN".
};

/// Returns every reference of `module`; identifiers 0 that mean "none" are left out.
std::vector<TextReference> textReferences(const ModuleView& module);

} // namespace mxauthor
