#include "CallsFromC.h"

namespace {

std::string taken(mxmodule_bytes* bytes)
{
    std::string text(mxmodule_bytes_data(bytes), mxmodule_bytes_size(bytes));
    mxmodule_bytes_free(bytes);
    return text;
}

// The image with this value, or the error.
std::string imageWith(const mxmodule_module* module, const char* name, const char* value)
{
    const mxmodule_assignment assignment = {name, value};
    mxmodule_error* error = nullptr;
    mxmodule_composition* made =
        mxmodule_compose(module, &assignment, 1, nullptr, 0, MXMODULE_FULL, &error);
    std::size_t size = 0;
    const unsigned char* image = mxmodule_composition_image(made, &size);
    std::string found(image, image + size);
    found += mxmodule_error_findings(error);
    mxmodule_composition_free(made);
    mxmodule_error_free(error);
    return found;
}

std::string configurationOf(const mxmodule_module* module)
{
    mxmodule_configuration* found =
        mxmodule_configure(module, nullptr, 0, MXMODULE_MODBUS, nullptr);
    std::string text = taken(mxmodule_configuration_json(found, MXMODULE_ALL, nullptr));
    mxmodule_configuration_free(found);
    return text;
}

} // namespace

HandleOfC loadedByC(const char* path)
{
    return {mxmodule_load(path, 0, 0, nullptr), mxmodule_free};
}

std::string foundByC(const mxmodule_module* shared)
{
    const HandleOfC own(mxmodule_at(shared, 64, 8, nullptr), mxmodule_free);
    return imageWith(shared, "channel_1/Wires", "-2") + imageWith(shared, "channel_1/Wires", "7") +
           imageWith(own.get(), "Wire", "-2") + configurationOf(shared) +
           taken(mxmodule_json(shared, nullptr)) + taken(mxmodule_raw_texts(shared, nullptr)) +
           taken(mxmodule_channels_svg(own.get(), nullptr));
}
