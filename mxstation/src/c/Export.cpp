#include "c/StationHandles.h"

#include <mxstation/ChannelExport.h>
#include <mxstation/Datasheet.h>
#include <mxstation/Declarations.h>
#include <mxstation/StationPicture.h>

namespace mxstation {

namespace {

AddressStyle addressStyleOf(mxstation_address_style address)
{
    switch (address) {
    case MXSTATION_BYTE:
        return AddressStyle::Byte;
    case MXSTATION_INDEX:
        return AddressStyle::Index;
    case MXSTATION_SEPARATE:
        return AddressStyle::Separate;
    }
    mxmodule::misused("Found the address style " + std::to_string(int{address}) +
                      ", expected 0 to 2");
}

VariableScope scopeOf(mxstation_variable_scope scope)
{
    switch (scope) {
    case MXSTATION_GLOBAL:
        return VariableScope::Global;
    case MXSTATION_PROGRAM:
        return VariableScope::Program;
    }
    mxmodule::misused("Found the scope " + std::to_string(int{scope}) + ", expected 0 or 1");
}

struct BytesFree
{
    void operator()(mxmodule_bytes* bytes) const { mxmodule_bytes_free(bytes); }
};

// Returns the text of what `declare` makes of the plan, and stores its findings.
template <typename Declare>
mxmodule_bytes* declared(const mxstation_plan* handle, mxmodule_bytes** findings,
                         mxmodule_error** error, const Declare& declare)
{
    if (findings != nullptr) {
        *findings = nullptr;
    }
    return mxmodule::callFromC(error, [&] {
        const Declarations made = declare(planOf(handle));
        std::unique_ptr<mxmodule_bytes, BytesFree> text(mxmodule::newBytes(made.text));
        if (findings != nullptr) {
            *findings = mxmodule::newBytes(mxmodule::findingsJson(made.findings));
        }
        return text.release();
    });
}

// Unlike its data, that of a vector without bytes is not null.
const char emptyFile = 0;

} // namespace

} // namespace mxstation

using mxstation::bytesOfPlan;
using mxstation::Plan;

mxmodule_bytes* mxstation_channels_json(const mxstation_plan* plan, mxmodule_error** error)
{
    return bytesOfPlan(plan, error, mxstation::channelsJson);
}

mxmodule_bytes* mxstation_channels_text(const mxstation_plan* plan, mxmodule_error** error)
{
    return bytesOfPlan(plan, error, mxstation::channelsText);
}

mxmodule_bytes* mxstation_channels_csv(const mxstation_plan* plan, char separator,
                                       int byteOrderMark, mxmodule_error** error)
{
    return bytesOfPlan(plan, error, [&](const Plan& one) {
        return channelsCsv(one, mxmodule::csvStyleOf(separator, byteOrderMark));
    });
}

mxmodule_bytes* mxstation_declarations(const mxstation_plan* plan, mxstation_address_style address,
                                       mxstation_variable_scope scope, mxmodule_bytes** findings,
                                       mxmodule_error** error)
{
    return mxstation::declared(plan, findings, error, [&](const Plan& one) {
        return declarations(one, {mxstation::addressStyleOf(address), mxstation::scopeOf(scope)});
    });
}

mxmodule_bytes* mxstation_plcopen(const mxstation_plan* plan, mxstation_address_style address,
                                  mxstation_variable_scope scope, mxmodule_bytes** findings,
                                  mxmodule_error** error)
{
    return mxstation::declared(plan, findings, error, [&](const Plan& one) {
        return plcopenXml(one, {mxstation::addressStyleOf(address), mxstation::scopeOf(scope)});
    });
}

mxmodule_bytes* mxstation_c_header(const mxstation_plan* plan, mxmodule_bytes** findings,
                                   mxmodule_error** error)
{
    return mxstation::declared(plan, findings, error, mxstation::cHeader);
}

mxmodule_bytes* mxstation_svg(const mxstation_plan* plan, mxmodule_error** error)
{
    return bytesOfPlan(plan, error, mxstation::stationSvg);
}

mxmodule_bytes* mxstation_datasheet(const mxstation_plan* plan, mxmodule_error** error)
{
    return bytesOfPlan(plan, error, mxstation::datasheet);
}

mxmodule_bytes* mxstation_parameters_json(const mxstation_plan* plan, mxmodule_fieldbus fieldbus,
                                          mxmodule_error** error)
{
    return bytesOfPlan(plan, error, [&](const Plan& one) {
        return parametersJson(one, mxmodule::fieldbusOf(fieldbus));
    });
}

mxmodule_bytes* mxstation_parameters_text(const mxstation_plan* plan, mxmodule_fieldbus fieldbus,
                                          mxmodule_error** error)
{
    return bytesOfPlan(plan, error, [&](const Plan& one) {
        return parametersText(one, mxmodule::fieldbusOf(fieldbus));
    });
}

mxstation_files* mxstation_parameter_files(const mxstation_plan* plan, mxmodule_fieldbus fieldbus,
                                           mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        return new mxstation_files{
            parameterFiles(mxstation::planOf(plan), mxmodule::fieldbusOf(fieldbus))};
    });
}

void mxstation_files_free(mxstation_files* files)
{
    delete files;
}

size_t mxstation_files_count(const mxstation_files* files)
{
    return files == nullptr ? 0 : files->files.size();
}

const char* mxstation_files_name(const mxstation_files* files, size_t index)
{
    return index < mxstation_files_count(files) ? files->files[index].name.c_str() : nullptr;
}

const unsigned char* mxstation_files_data(const mxstation_files* files, size_t index, size_t* size)
{
    if (size != nullptr) {
        *size = 0;
    }
    if (index >= mxstation_files_count(files)) {
        return nullptr;
    }
    const std::vector<char>& bytes = files->files[index].bytes;
    if (size != nullptr) {
        *size = bytes.size();
    }
    return reinterpret_cast<const unsigned char*>(bytes.empty() ? &mxstation::emptyFile
                                                                : bytes.data());
}
