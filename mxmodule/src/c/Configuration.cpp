#include "c/Handles.h"

#include <mxmodule/WantedValues.h>
#include <mxmodule/c/CallFromC.h>

namespace {

using mxmodule::Comparison;
using mxmodule::Configuration;
using mxmodule::requirePointer;

mxmodule::ValueCheck checkOf(mxmodule_value_check check)
{
    switch (check) {
    case MXMODULE_FULL:
        return mxmodule::ValueCheck::Full;
    case MXMODULE_NUMBER_ONLY:
        return mxmodule::ValueCheck::NumberOnly;
    }
    mxmodule::misused("Found the check " + std::to_string(int{check}) + ", expected 0 or 1");
}

mxmodule::Listing listingOf(mxmodule_listing listing)
{
    switch (listing) {
    case MXMODULE_ALL:
        return mxmodule::Listing::All;
    case MXMODULE_CHANGED:
        return mxmodule::Listing::Changed;
    }
    mxmodule::misused("Found the listing " + std::to_string(int{listing}) + ", expected 0 or 1");
}

std::vector<mxmodule::Assignment> assignmentsOf(const mxmodule_assignment* values,
                                                std::size_t count)
{
    if (count != 0) {
        requirePointer(values, "values of parameters");
    }
    std::vector<mxmodule::Assignment> assignments;
    assignments.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        assignments.push_back({mxmodule::requireText(values[i].name, "the name of a parameter"),
                               mxmodule::requireText(values[i].value, "a value")});
    }
    return assignments;
}

// Empty if there are none: most compositions have none, and are made often.
std::string jsonOf(const std::vector<mxmodule::Finding>& findings)
{
    return findings.empty() ? std::string() : mxmodule::findingsJson(findings);
}

// Returns `made` for C. Throws its findings if there is no image.
mxmodule_composition* newComposition(mxmodule::Composition made)
{
    if (!made.ok()) {
        throw mxmodule::Failure(std::move(made.findings));
    }
    std::string findings = jsonOf(made.findings);
    std::string noRegisters =
        made.noRegisters ? mxmodule::findingsJson({*made.noRegisters}) : std::string();
    return new mxmodule_composition{std::move(made), std::move(findings), std::move(noRegisters)};
}

// Stores the number of elements of `list`, if there is a place for it, and returns the first.
template <typename Element>
const Element* firstOf(const std::vector<Element>& list, std::size_t* count)
{
    if (count != nullptr) {
        *count = list.size();
    }
    return list.data();
}

// Returns `text` of `made`, or null if it is empty or there is no composition.
const char* unlessEmpty(const mxmodule_composition* made, std::string mxmodule_composition::*text)
{
    return made == nullptr || (made->*text).empty() ? nullptr : (made->*text).c_str();
}

template <typename ResultOf>
mxmodule_bytes* ofConfiguration(const mxmodule_configuration* handle, mxmodule_error** error,
                                const ResultOf& resultOf)
{
    return mxmodule::bytesOfHandle(
        handle, "a configuration", error,
        [&](const mxmodule_configuration& one) { return resultOf(one.configuration); });
}

template <typename ResultOf>
mxmodule_bytes* ofComparison(const mxmodule_comparison* handle, mxmodule_error** error,
                             const ResultOf& resultOf)
{
    return mxmodule::bytesOfHandle(
        handle, "a comparison", error,
        [&](const mxmodule_comparison& one) { return resultOf(one.comparison); });
}

} // namespace

mxmodule_composition* mxmodule_compose(const mxmodule_module* module,
                                       const mxmodule_assignment* values, size_t count,
                                       const void* image, size_t imageSize,
                                       mxmodule_value_check check, mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        mxmodule::ComposeOptions options;
        options.check = checkOf(check);
        if (image != nullptr) {
            options.image = mxmodule::requireBytes(image, imageSize, "a parameter image");
        }
        return newComposition(requirePointer(module, "a module")
                                  .module.compose(assignmentsOf(values, count), options));
    });
}

mxmodule_composition* mxmodule_compose_file(const mxmodule_module* module, const void* content,
                                            size_t size, const char* file,
                                            mxmodule_value_check check, mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        const mxmodule::Module& configured = requirePointer(module, "a module").module;
        const std::string name = mxmodule::requireText(file, "the name of a file of values");
        const std::vector<char> bytes = mxmodule::requireBytes(content, size, "a file of values");
        mxmodule::WantedValues wanted(configured);
        wanted.add(mxmodule::readValues({bytes.begin(), bytes.end()}, name), name);
        return newComposition(configured.compose(
            wanted.assignments(), {checkOf(check), wanted.image(), wanted.imageFile()}));
    });
}

void mxmodule_composition_free(mxmodule_composition* composition)
{
    delete composition;
}

const unsigned char* mxmodule_composition_image(const mxmodule_composition* composition,
                                                size_t* size)
{
    static const std::vector<char> none;
    return reinterpret_cast<const unsigned char*>(
        firstOf(composition == nullptr ? none : composition->made.image, size));
}

const uint16_t* mxmodule_composition_registers(const mxmodule_composition* composition,
                                               size_t* count)
{
    static const std::vector<std::uint16_t> none;
    return firstOf(composition == nullptr ? none : composition->made.registers, count);
}

const char* mxmodule_composition_findings(const mxmodule_composition* composition)
{
    return unlessEmpty(composition, &mxmodule_composition::findings);
}

const char* mxmodule_composition_no_registers(const mxmodule_composition* composition)
{
    return unlessEmpty(composition, &mxmodule_composition::noRegisters);
}

mxmodule_configuration* mxmodule_decode(const mxmodule_module* module, const void* bytes,
                                        size_t size, mxmodule_fieldbus fieldbus, const char* place,
                                        mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        return new mxmodule_configuration{
            requirePointer(module, "a module")
                .module.decode(mxmodule::requireBytes(bytes, size, "a configuration"),
                               mxmodule::fieldbusOf(fieldbus), place == nullptr ? "" : place)};
    });
}

mxmodule_configuration* mxmodule_configure(const mxmodule_module* module, const void* image,
                                           size_t size, mxmodule_fieldbus fieldbus,
                                           mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        const mxmodule::Module& configured = requirePointer(module, "a module").module;
        if (image == nullptr) {
            return new mxmodule_configuration{configured.defaults(mxmodule::fieldbusOf(fieldbus))};
        }
        return new mxmodule_configuration{
            configured.configuration(mxmodule::requireBytes(image, size, "a parameter image"),
                                     mxmodule::fieldbusOf(fieldbus), "")};
    });
}

void mxmodule_configuration_free(mxmodule_configuration* configuration)
{
    delete configuration;
}

mxmodule_bytes* mxmodule_configuration_image(const mxmodule_configuration* configuration,
                                             mxmodule_error** error)
{
    return ofConfiguration(configuration, error,
                           [](const Configuration& one) { return one.image(); });
}

mxmodule_bytes* mxmodule_configuration_bytes(const mxmodule_configuration* configuration,
                                             mxmodule_error** error)
{
    return ofConfiguration(configuration, error,
                           [](const Configuration& one) { return one.bytes(); });
}

mxmodule_bytes* mxmodule_configuration_json(const mxmodule_configuration* configuration,
                                            mxmodule_listing listing, mxmodule_error** error)
{
    return ofConfiguration(configuration, error,
                           [&](const Configuration& one) { return one.json(listingOf(listing)); });
}

mxmodule_bytes* mxmodule_configuration_text(const mxmodule_configuration* configuration,
                                            mxmodule_listing listing, mxmodule_error** error)
{
    return ofConfiguration(configuration, error,
                           [&](const Configuration& one) { return one.text(listingOf(listing)); });
}

mxmodule_bytes* mxmodule_configuration_csv(const mxmodule_configuration* configuration,
                                           mxmodule_listing listing, char separator,
                                           int byteOrderMark, mxmodule_error** error)
{
    return ofConfiguration(configuration, error, [&](const Configuration& one) {
        return one.csv(mxmodule::csvStyleOf(separator, byteOrderMark), listingOf(listing));
    });
}

mxmodule_bytes* mxmodule_configuration_values(const mxmodule_configuration* configuration,
                                              mxmodule_listing listing, mxmodule_error** error)
{
    return ofConfiguration(configuration, error, [&](const Configuration& one) {
        return one.valuesFile(listingOf(listing));
    });
}

mxmodule_bytes* mxmodule_configuration_findings(const mxmodule_configuration* configuration,
                                                mxmodule_error** error)
{
    return ofConfiguration(configuration, error, [](const Configuration& one) {
        return mxmodule::findingsJson(one.findings());
    });
}

mxmodule_comparison* mxmodule_compare(const mxmodule_configuration* wanted,
                                      const mxmodule_configuration* read, const char* place,
                                      mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        return new mxmodule_comparison{Comparison(
            requirePointer(wanted, "a configuration").configuration,
            requirePointer(read, "a configuration").configuration, place == nullptr ? "" : place)};
    });
}

void mxmodule_comparison_free(mxmodule_comparison* comparison)
{
    delete comparison;
}

mxmodule_bytes* mxmodule_comparison_json(const mxmodule_comparison* comparison,
                                         mxmodule_error** error)
{
    return ofComparison(comparison, error, [](const Comparison& one) { return one.json(); });
}

mxmodule_bytes* mxmodule_comparison_text(const mxmodule_comparison* comparison,
                                         mxmodule_error** error)
{
    return ofComparison(comparison, error, [](const Comparison& one) { return one.text(); });
}

mxmodule_bytes* mxmodule_comparison_csv(const mxmodule_comparison* comparison, char separator,
                                        int byteOrderMark, mxmodule_error** error)
{
    return ofComparison(comparison, error, [&](const Comparison& one) {
        return one.csv(mxmodule::csvStyleOf(separator, byteOrderMark));
    });
}

mxmodule_bytes* mxmodule_comparison_findings(const mxmodule_comparison* comparison,
                                             mxmodule_error** error)
{
    return ofComparison(comparison, error, [](const Comparison& one) {
        return mxmodule::findingsJson(one.findings());
    });
}
