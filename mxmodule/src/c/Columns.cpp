#include "c/Handles.h"

#include <mxmodule/c/CallFromC.h>
#include <text/JsonText.h>

namespace {

using mxmodule::ChannelColumns;
using mxmodule::Module;

// By the numbers of mxmodule_number_column.
constexpr std::array numberColumns{&ChannelColumns::module,      &ChannelColumns::number,
                                   &ChannelColumns::area,        &ChannelColumns::kind,
                                   &ChannelColumns::byteAddress, &ChannelColumns::bitOffset,
                                   &ChannelColumns::bitLength,   &ChannelColumns::mask};

// Returns the array of what `textOf` returns for each of `modules`.
std::string ofEach(const std::vector<Module>& modules, std::string (Module::*textOf)() const)
{
    return text::listJson(modules, [&](const Module& one) { return (one.*textOf)(); }).dump();
}

mxmodule_columns* newColumns(const std::vector<Module>& modules)
{
    ChannelColumns columns = mxmodule::channelColumns(modules);
    // By the numbers of mxmodule_text_column.
    std::array<std::string, 5> texts{
        text::textsJson(columns.id).dump(), text::textsJson(columns.name).dump(),
        text::textsJson(columns.symbol).dump(), ofEach(modules, &Module::moduleId),
        ofEach(modules, &Module::label)};
    return new mxmodule_columns{std::move(columns), std::move(texts)};
}

} // namespace

mxmodule_columns* mxmodule_columns_of(const mxmodule_module* const* modules, size_t count,
                                      mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        if (count != 0) {
            mxmodule::requirePointer(modules, "modules");
        }
        std::vector<Module> listed;
        for (std::size_t i = 0; i < count; ++i) {
            listed.push_back(mxmodule::requirePointer(modules[i], "a module").module);
        }
        return newColumns(listed);
    });
}

void mxmodule_columns_free(mxmodule_columns* columns)
{
    delete columns;
}

size_t mxmodule_columns_rows(const mxmodule_columns* columns)
{
    return columns == nullptr ? 0 : columns->numbers.module.size();
}

const uint32_t* mxmodule_columns_numbers(const mxmodule_columns* columns,
                                         mxmodule_number_column column)
{
    const auto index = static_cast<std::size_t>(column);
    return columns == nullptr || index >= numberColumns.size()
               ? nullptr
               : (columns->numbers.*numberColumns.at(index)).data();
}

const char* mxmodule_columns_texts(const mxmodule_columns* columns, mxmodule_text_column column)
{
    const auto index = static_cast<std::size_t>(column);
    return columns == nullptr || index >= columns->texts.size() ? nullptr
                                                                : columns->texts.at(index).c_str();
}
