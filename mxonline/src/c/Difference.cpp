#include "c/OnlineHandles.h"

namespace {

mxonline::DifferenceUse differenceUseOf(mxonline_difference_use use)
{
    switch (use) {
    case MXONLINE_PLAN:
        return mxonline::DifferenceUse::Plan;
    case MXONLINE_APPLY:
        return mxonline::DifferenceUse::Apply;
    case MXONLINE_VERIFY:
        return mxonline::DifferenceUse::Verify;
    }
    mxmodule::misused("Found the use " + std::to_string(int{use}) +
                      " of a difference, expected 0 to 2");
}

template <typename ResultOf>
mxmodule_bytes* ofDifference(const mxonline_difference* handle, mxmodule_error** error,
                             const ResultOf& resultOf)
{
    return mxmodule::bytesOfHandle(
        handle, "a difference", error,
        [&](const mxonline_difference& one) { return resultOf(one.difference); });
}

} // namespace

using mxonline::CouplerDifference;

void mxonline_difference_free(mxonline_difference* difference)
{
    delete difference;
}

int mxonline_difference_is_same(const mxonline_difference* difference)
{
    return difference != nullptr && difference->difference.isSame() ? 1 : 0;
}

mxmodule_bytes* mxonline_difference_json(const mxonline_difference* difference,
                                         mxmodule_error** error)
{
    return ofDifference(difference, error, [](const CouplerDifference& one) { return one.json(); });
}

mxmodule_bytes* mxonline_difference_text(const mxonline_difference* difference,
                                         mxonline_difference_use use, mxmodule_error** error)
{
    return ofDifference(difference, error, [&](const CouplerDifference& one) {
        return one.text(differenceUseOf(use));
    });
}

mxmodule_bytes* mxonline_difference_question(const mxonline_difference* difference,
                                             mxmodule_error** error)
{
    return ofDifference(difference, error,
                        [](const CouplerDifference& one) { return one.question(); });
}

mxmodule_bytes* mxonline_difference_findings(const mxonline_difference* difference,
                                             mxmodule_error** error)
{
    return ofDifference(difference, error, [](const CouplerDifference& one) {
        return mxmodule::findingsJson(one.identityErrors());
    });
}
