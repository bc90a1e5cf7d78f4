#include "RequiredEntries.h"
#include "check/Checks.h"
#include "mxauthor/Counted.h"
#include "mxauthor/NearestWords.h"

#include <algorithm>
#include <set>

namespace mxauthor {

namespace {

constexpr std::size_t identitySize = 5;
constexpr std::size_t dateLimit = 9; // characters that readers take

const Entry* findEntry(const Entries& entries, const std::string& key)
{
    const auto found = std::find_if(entries.entries.begin(), entries.entries.end(),
                                    [&key](const Entry& entry) { return entry.key.value == key; });
    return found == entries.entries.end() ? nullptr : &*found;
}

// The entry whose key was most likely meant to be `key`: one that readers do not look for.
const Entry* findMisspelt(const Entries& entries, const std::string& key)
{
    std::vector<std::string> unknown;
    for (const Entry& entry : entries.entries) {
        const auto& known = catalogueKeys;
        if (std::find(known.begin(), known.end(), entry.key.value) == known.end()) {
            unknown.push_back(entry.key.value);
        }
    }
    const std::vector<std::string> near = nearestWords(key, unknown);
    return near.empty() ? nullptr : findEntry(entries, near.front());
}

void addMissing(const Group& group, const Entries& entries, const std::string& key,
                Findings& findings)
{
    const std::string text = "entry \"" + key + "\" is missing";
    if (const Entry* const misspelt = findMisspelt(entries, key)) {
        findings.add("entry-missing", misspelt->key.place, "",
                     text + ", did you mean it by \"" + shortened(misspelt->key.value) + "\"?");
    } else {
        findings.add("entry-missing", group.place, "", text);
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
        findings.add("entry-unreachable", entry->key.place, "entry \"" + key + "\"",
                     "is empty and stands last, where readers do not find it");
    }
}

void checkRepeatedKeys(const Entries& entries, Findings& findings)
{
    std::set<std::string> seen;
    for (const Entry& entry : entries.entries) {
        if (!seen.insert(entry.key.value).second) {
            findings.add("entry-repeated", entry.key.place, "entry \"" + entry.key.value + "\"",
                         "stands here again, only the first one is read");
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

} // namespace

void checkIdentity(const ModuleView& module, Findings& findings)
{
    const auto* const identity = module.content<Identity>(0x0001);
    if (identity == nullptr) {
        return;
    }
    for (const Dataset& dataset : identity->datasets) {
        if (dataset.id.value == identityDataset) {
            if (dataset.data.value.size() != identitySize) {
                findings.add("identity-size", dataset.size.place, "dataset 0xfb",
                             "has " + counted(dataset.data.value.size(), "byte") +
                                 ", expected 5: module type and identifier");
            }
            return;
        }
    }
    findings.add("identity-missing", module.group(0x0001)->place, "",
                 "no dataset 0xfb with the module type and identifier");
}

void checkEntries(const ModuleView& module, Findings& findings)
{
    checkEntriesOf(module, 0x0020, catalogueKeys, findings);
    checkEntriesOf(module, 0x0040, componentKeys, findings);
}

namespace {

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
        findings.add("gtin-digits", extension.gtinId.place, "GTIN",
                     "\"" + shortened(gtin) + "\", expected 8, 12, 13 or 14 digits");
    }
}

} // namespace

void checkExtension(const ModuleView& module, Findings& findings)
{
    const auto* const extension = module.content<Extension>(0x20F0);
    if (extension == nullptr) {
        return;
    }
    if (extension->version.value != 1) {
        findings.add("extension-version", extension->version.place, "",
                     "version " + std::to_string(extension->version.value) + ", expected 1");
    }
    checkGtin(module, *extension, findings);
    const Bytes& date = extension->date.value;
    const auto end = std::find_if(date.begin(), date.end(),
                                  [](std::uint8_t byte) { return byte == 0 || byte == '\r'; });
    if (static_cast<std::size_t>(end - date.begin()) > dateLimit) {
        findings.add("date-cut", extension->date.place, "calibration date",
                     "\"" + std::string(date.begin(), end) +
                         "\" has 10 characters, readers take 9");
    }
    if (!extension->rest.value.empty()) {
        findings.add("unread-bytes", extension->rest.place, "",
                     counted(extension->rest.value.size(), "byte") +
                         " behind the calibration date that nobody reads");
    }
}

} // namespace mxauthor
