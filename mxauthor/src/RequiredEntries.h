#pragma once

#include <array>

namespace mxauthor {

/// Keys of the entries that every module must have in its catalogue (group 0020).
constexpr std::array<const char*, 7> catalogueKeys = {
    "BrandLabelName", "BrandVersion",   "BrandId",        "BrandSerialNumber",
    "ProductVersion", "BrandOrderCode", "BrandHwRevision"};

/// The same in its component (group 0040).
constexpr std::array<const char*, 1> componentKeys = {"Component"};

} // namespace mxauthor
