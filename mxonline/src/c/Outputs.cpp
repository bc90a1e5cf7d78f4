#include "c/OnlineHandles.h"

namespace {

std::vector<mxonline::OutputValue> outputValues(const mxonline_output_value* values,
                                                std::size_t count)
{
    if (count != 0) {
        mxmodule::requirePointer(values, "values of outputs");
    }
    std::vector<mxonline::OutputValue> stated;
    for (std::size_t i = 0; i < count; ++i) {
        stated.push_back({mxmodule::requireText(values[i].channel, "the name of an output"),
                          mxmodule::requireText(values[i].value, "a value")});
    }
    return stated;
}

template <typename ResultOf>
mxmodule_bytes* ofOutputs(mxonline_outputs* handle, mxmodule_error** error,
                          const ResultOf& resultOf)
{
    return mxmodule::bytesOfHandle(handle, "outputs of a coupler", error,
                                   [&](mxonline_outputs& one) { return resultOf(one.setting); });
}

} // namespace

using mxonline::OutputSetting;

mxonline_outputs* mxonline_outputs_of(mxonline_coupler* coupler,
                                      const mxonline_output_value* values, size_t count,
                                      mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        const auto& shared = mxonline::sharedOf(coupler);
        return new mxonline_outputs{shared,
                                    OutputSetting(shared->coupler, outputValues(values, count))};
    });
}

void mxonline_outputs_free(mxonline_outputs* outputs)
{
    delete outputs;
}

mxmodule_bytes* mxonline_outputs_read(mxonline_outputs* outputs, mxmodule_error** error)
{
    return ofOutputs(outputs, error,
                     [](OutputSetting& setting) { return outputsJson(setting.read()); });
}

mxmodule_bytes* mxonline_outputs_write(mxonline_outputs* outputs, mxmodule_error** error)
{
    return ofOutputs(outputs, error,
                     [](OutputSetting& setting) { return outputsJson(setting.write()); });
}

mxmodule_bytes* mxonline_outputs_restore(mxonline_outputs* outputs, mxmodule_error** error)
{
    return ofOutputs(outputs, error,
                     [](OutputSetting& setting) { return outputsJson(setting.restore()); });
}
