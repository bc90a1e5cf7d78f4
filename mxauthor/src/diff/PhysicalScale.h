#pragma once

#include "module/ModuleView.h"

namespace mxauthor {

/// How the raw value of a parameter becomes what people read: raw x factor + offset, and its unit.
struct PhysicalScale
{
    float factor = 1;
    float offset = 0;
    std::string unit;         ///< Empty: none.
    bool isConverted = false; ///< Whether a conversion is used.

    std::string text() const; ///< Of the conversion: "x 0.1 + 0" or "none".
};

/// Returns the scale by which readers show `parameter`. A conversion that they leave out is none.
PhysicalScale scaleOf(const ModuleView& module, const ModuleView::Parameter& parameter);

/// Whether a raw value stands for the same number under both.
bool giveSameNumbers(const PhysicalScale& a, const PhysicalScale& b);

} // namespace mxauthor
