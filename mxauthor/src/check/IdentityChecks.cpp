#include "RequiredEntries.h"
#include "check/Checks.h"
#include "mxauthor/Drawing.h"
#include <text/Counted.h>

#include <text/Beginning.h>
#include <text/NearestWords.h>

#include <algorithm>
#include <set>

namespace mxauthor {

namespace {

const CheckRule identityRows[] = {
    {"identity-missing", error, "Group 0001 holds no dataset 0xfb with module type and identifier.",
     "group 0001: no dataset 0xfb with the module type and identifier"},
    {"identity-size", error, "The dataset 0xfb has to have 5 bytes: module type and identifier.",
     "group 0001, dataset 0xfb: has 4 bytes, expected 5: module type and identifier"},
    {"entry-missing", error, "An entry that every module must have is missing.",
     "group 0020: entry \"BrandId\" is missing, is \"BrandiD\" misspelt?"},
    {"entry-unreachable", error,
     "An empty entry at the end of its group is not found: readers try a line only while more "
     "bytes than its shortest form are left.",
     "group 0020, entry \"BrandHwRevision\": is empty and the last one, where readers do not find "
     "it"},
    {"entry-repeated", warning, "A key occurs twice in a group. Only the first entry is read.",
     "group 0040, entry \"Component\": is repeated here, only the first one is read"},
    {"extension-version", error, "The version of group 20f0 has to be 1.",
     "group 20f0: version 2, expected 1"},
    {"date-cut", note,
     "The calibration date has ten characters. Readers use nine; databases hold no more.",
     "group 20f0, calibration date: \"2024-05-31\" has 10 characters, readers use 9"},
    {"gtin-digits", warning, "A GTIN has 8, 12, 13 or 14 digits. Readers show any text.",
     "group 20f0, GTIN: \"200000000001X\", expected 8, 12, 13 or 14 digits"},
    {"image-empty", warning, "Group 20f1 exists, but holds no product image.",
     "group 20f1: the product image is empty"},
    {"image-unreadable", error,
     "The product image has to be an SVG compressed with gzip (SVGZ): it is inflated, and has to "
     "be well-formed XML with the root element \"svg\".",
     "group 20f1: 1 byte after the compressed data",
     "the build compresses a file whose name ends in .svg"},
};
const auto& [identityMissing, identitySize, entryMissing, entryUnreachable, entryRepeated,
             extensionVersion, dateCut, gtinDigits, imageEmpty, imageUnreadable] = identityRows;

const Entry* findEntry(const Entries& entries, const std::string& key)
{
    const auto found = std::find_if(entries.entries.begin(), entries.entries.end(),
                                    [&key](const Entry& entry) { return entry.key.value == key; });
    return found == entries.entries.end() ? nullptr : &*found;
}

// The entry whose key was most likely meant to be `key` and that readers do not look for.
const Entry* findMisspelt(const Entries& entries, const std::string& key)
{
    std::vector<std::string> unknown;
    for (const Entry& entry : entries.entries) {
        const auto& known = catalogueKeys;
        if (std::find(known.begin(), known.end(), entry.key.value) == known.end()) {
            unknown.push_back(entry.key.value);
        }
    }
    const std::vector<std::string> near = text::nearestWords(key, unknown);
    return near.empty() ? nullptr : findEntry(entries, near.front());
}

void addMissing(const Group& group, const Entries& entries, const std::string& key,
                Findings& findings)
{
    const std::string text = "entry \"" + key + "\" is missing";
    if (const Entry* const misspelt = findMisspelt(entries, key)) {
        findings.add(entryMissing, misspelt->key.place, "",
                     text + ", is \"" + text::shortened(misspelt->key.value) + "\" misspelt?");
    } else {
        findings.add(entryMissing, group.place, "", text);
    }
}

void checkKey(const Group& group, const Entries& entries, const std::string& key,
              Findings& findings)
{
    const Entry* const entry = findEntry(entries, key);
    if (entry == nullptr) {
        addMissing(group, entries, key, findings);
    } else if (entry == &entries.entries.back() && entry->value.value.empty()) {
        // Readers try a line only while more bytes than its shortest form are left.
        findings.add(entryUnreachable, entry->key.place, "entry \"" + key + "\"",
                     "is empty and the last one, where readers do not find it");
    }
}

void checkRepeatedKeys(const Entries& entries, Findings& findings)
{
    std::set<std::string> seen;
    for (const Entry& entry : entries.entries) {
        if (!seen.insert(entry.key.value).second) {
            findings.add(entryRepeated, entry.key.place, "entry \"" + entry.key.value + "\"",
                         "is repeated here, only the first one is read");
        }
    }
}

template <typename Keys>
void checkEntriesOf(const ModuleView& module, std::uint16_t id, const Keys& keys,
                    Findings& findings)
{
    const auto* const entries = module.content<Entries>(id);
    if (entries == nullptr) {
        return;
    }
    for (const char* key : keys) {
        checkKey(*module.group(id), *entries, key, findings);
    }
    checkRepeatedKeys(*entries, findings);
}

void checkIdentity(const ModuleView& module, Findings& findings)
{
    const auto* const identity = module.content<Identity>(mxformat::group::identity);
    if (identity == nullptr) {
        return;
    }
    for (const Dataset& dataset : identity->datasets) {
        if (dataset.id.value == mxformat::identityDataset) {
            if (dataset.data.value.size() != mxformat::identitySize) {
                findings.add(identitySize, dataset.size.place, "dataset 0xfb",
                             "has " + text::counted(dataset.data.value.size(), "byte") +
                                 ", expected 5: module type and identifier");
            }
            return;
        }
    }
    findings.add(identityMissing, module.group(mxformat::group::identity)->place, "",
                 "no dataset 0xfb with the module type and identifier");
}

void checkEntries(const ModuleView& module, Findings& findings)
{
    checkEntriesOf(module, mxformat::group::catalogue, catalogueKeys, findings);
    checkEntriesOf(module, mxformat::group::component, componentKeys, findings);
}

// A GTIN has 8, 12, 13 or 14 digits.
bool isGtin(const std::string& text)
{
    const bool hasLength = text.size() == 8 || (text.size() >= 12 && text.size() <= 14);
    return hasLength && text.find_first_not_of("0123456789") == std::string::npos;
}

void checkGtin(const ModuleView& module, const Extension& extension, Findings& findings)
{
    const std::string gtin = module.textOf(extension.gtinId.value);
    if (extension.gtinId.value != 0 && !gtin.empty() && !isGtin(gtin)) {
        findings.add(gtinDigits, extension.gtinId.place, "GTIN",
                     "\"" + text::shortened(gtin) + "\", expected 8, 12, 13 or 14 digits");
    }
}

void checkExtension(const ModuleView& module, Findings& findings)
{
    const auto* const extension = module.content<Extension>(mxformat::group::extension);
    if (extension == nullptr) {
        return;
    }
    if (extension->version.value != mxformat::extensionVersion) {
        findings.add(extensionVersion, extension->version.place, "",
                     "version " + std::to_string(extension->version.value) + ", expected 1");
    }
    checkGtin(module, *extension, findings);
    const std::string date = dateText(*extension);
    if (date.size() > mxformat::calibrationDateReadLength) {
        findings.add(dateCut, extension->date.place, "calibration date",
                     "\"" + date + "\" has 10 characters, readers use 9");
    }
}

void checkImage(const ModuleView& module, Findings& findings)
{
    const auto* const image = module.content<ProductImage>(mxformat::group::productImage);
    if (image == nullptr) {
        return;
    }
    if (image->bytes.value.empty()) {
        findings.add(imageEmpty, module.group(mxformat::group::productImage)->place, "",
                     "the product image is empty");
        return;
    }
    if (const auto problem = unpackedDrawing(image->bytes.value).problem) {
        findings.add(imageUnreadable, image->bytes.place, "", *problem);
    }
}

void checkIdentityAndImage(const ModuleView& module, Findings& findings)
{
    checkIdentity(module, findings);
    checkEntries(module, findings);
    checkExtension(module, findings);
    checkImage(module, findings);
}

} // namespace

const Check identityCheck(identityRows, checkIdentityAndImage);

} // namespace mxauthor
