#include "c/StationHandles.h"

mxstation_comparison* mxstation_compare(const mxstation_plan* a, const mxstation_plan* b,
                                        mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        return new mxstation_comparison{
            mxstation::compare(mxstation::planOf(a), mxstation::planOf(b))};
    });
}

void mxstation_comparison_free(mxstation_comparison* comparison)
{
    delete comparison;
}

int mxstation_comparison_is_same(const mxstation_comparison* comparison)
{
    return comparison != nullptr && comparison->difference.isSame() ? 1 : 0;
}

int mxstation_comparison_same_values(const mxstation_comparison* comparison)
{
    return comparison != nullptr && comparison->difference.sameValues() ? 1 : 0;
}

mxmodule_bytes* mxstation_comparison_json(const mxstation_comparison* comparison,
                                          mxmodule_error** error)
{
    return mxmodule::bytesOfHandle(
        comparison, "a comparison", error,
        [](const mxstation_comparison& one) { return one.difference.json(); });
}

mxmodule_bytes* mxstation_comparison_text(const mxstation_comparison* comparison,
                                          mxmodule_error** error)
{
    return mxmodule::bytesOfHandle(
        comparison, "a comparison", error,
        [](const mxstation_comparison& one) { return one.difference.text(); });
}
