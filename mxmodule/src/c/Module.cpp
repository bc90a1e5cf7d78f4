#include "c/Handles.h"

#include <mxmodule/Datasheet.h>
#include <mxmodule/ProductPicture.h>
#include <mxmodule/c/CallFromC.h>

namespace mxmodule {

namespace {

ModuleOptions optionsAt(std::uint32_t input, std::uint32_t output)
{
    ModuleOptions options;
    options.offsets = {input, output};
    return options;
}

const Module& moduleOf(const mxmodule_module* handle)
{
    return requirePointer(handle, "a module").module;
}

// Returns what `resultOf` returns for the module of `handle`.
template <typename ResultOf>
mxmodule_bytes* bytesOf(const mxmodule_module* handle, mxmodule_error** error,
                        const ResultOf& resultOf)
{
    return callFromC(error, [&] { return newBytes(resultOf(moduleOf(handle))); });
}

} // namespace

mxmodule_module* newModule(const Module& module)
{
    return new mxmodule_module{module};
}

} // namespace mxmodule

using mxmodule::bytesOf;
using mxmodule::callFromC;
using mxmodule::Module;
using mxmodule::moduleOf;
using mxmodule::newModule;

mxmodule_module* mxmodule_load(const char* path, uint32_t inputOffset, uint32_t outputOffset,
                               mxmodule_error** error)
{
    return callFromC(error, [&] {
        return newModule(Module::fromFile(mxmodule::requireText(path, "the path of a file"),
                                          mxmodule::optionsAt(inputOffset, outputOffset)));
    });
}

mxmodule_module* mxmodule_from_bytes(const void* data, size_t size, const char* name,
                                     uint32_t inputOffset, uint32_t outputOffset,
                                     mxmodule_error** error)
{
    return callFromC(error, [&] {
        return newModule(Module::fromBytes(mxmodule::requireBytes(data, size, "an mx file"),
                                           mxmodule::requireText(name, "a name for messages"),
                                           mxmodule::optionsAt(inputOffset, outputOffset)));
    });
}

mxmodule_module* mxmodule_at(const mxmodule_module* module, uint32_t inputOffset,
                             uint32_t outputOffset, mxmodule_error** error)
{
    return callFromC(error, [&] {
        return newModule(moduleOf(module).at({inputOffset, outputOffset}));
    });
}

void mxmodule_free(mxmodule_module* module)
{
    delete module;
}

mxmodule_bytes* mxmodule_name(const mxmodule_module* module, mxmodule_error** error)
{
    return bytesOf(module, error, [](const Module& one) { return one.name(); });
}

mxmodule_bytes* mxmodule_label(const mxmodule_module* module, mxmodule_error** error)
{
    return bytesOf(module, error, [](const Module& one) { return one.label(); });
}

mxmodule_bytes* mxmodule_module_id(const mxmodule_module* module, mxmodule_error** error)
{
    return bytesOf(module, error, [](const Module& one) { return one.moduleId(); });
}

mxmodule_bytes* mxmodule_json(const mxmodule_module* module, mxmodule_error** error)
{
    return bytesOf(module, error, [](const Module& one) { return one.json(); });
}

mxmodule_bytes* mxmodule_text(const mxmodule_module* module, mxmodule_error** error)
{
    return bytesOf(module, error, [](const Module& one) { return one.text(); });
}

mxmodule_bytes* mxmodule_raw_texts(const mxmodule_module* module, mxmodule_error** error)
{
    return bytesOf(module, error, [](const Module& one) { return one.rawTexts().json(); });
}

mxmodule_bytes* mxmodule_datasheet(const mxmodule_module* module, mxmodule_error** error)
{
    return bytesOf(module, error, [](const Module& one) { return mxmodule::datasheet(one); });
}

mxmodule_bytes* mxmodule_product_picture(const mxmodule_module* module, mxmodule_error** error)
{
    return bytesOf(module, error, [](const Module& one) {
        const std::optional<mxmodule::ProductPicture> picture = mxmodule::pictureOf(one);
        return picture ? mxmodule::dataUrl(*picture) : std::string();
    });
}

mxmodule_bytes* mxmodule_default_image(const mxmodule_module* module, mxmodule_error** error)
{
    return bytesOf(module, error, [](const Module& one) { return one.defaultImage(); });
}

int mxmodule_parameter_called(const mxmodule_module* module, const char* name, size_t* position,
                              mxmodule_error** error)
{
    return callFromC(error, [&] {
        const Module& one = moduleOf(module);
        const std::string called = mxmodule::requireText(name, "the name of a parameter");
        mxmodule::requirePointer(position, "a place for the position");
        *position = one.parameterCalled(called);
        return 1;
    });
}
