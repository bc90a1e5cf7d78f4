#pragma once

#include "module/ModuleView.h"

#include <mxformat/PhysicalScale.h>

namespace mxauthor {

/// How the raw value of a parameter becomes the displayed value: raw x factor + offset, and its
/// unit.
struct ParameterScale
{
    mxformat::PhysicalScale numbers;
    std::string unit;         ///< Empty: none.
    bool isConverted = false; ///< Whether a conversion is used.

    std::string text() const; ///< Of the conversion: "x 0.1 + 0" or "none".
};

/// Returns the shortest decimal text of `number`; "inf" and "nan" where it is not finite.
std::string numberText(float number);

/// Returns the scale by which readers show `parameter`. A conversion that readers ignore counts as
/// none.
ParameterScale scaleOf(const ModuleView& module, const ModuleView::Parameter& parameter);

/// Whether a raw value means the same number under both.
bool giveSameNumbers(const ParameterScale& a, const ParameterScale& b);

} // namespace mxauthor
