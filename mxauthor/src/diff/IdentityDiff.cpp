#include "diff/Differences.h"
#include <text/Counted.h>

#include <devices/parser/mx/HexText.h>

#include <map>

namespace mxauthor {

namespace {

std::string inQuotes(const std::string& text)
{
    return "\"" + text + "\"";
}

std::string moduleIdText(const ModuleView& module)
{
    const auto id = module.moduleId();
    return id ? devices::parser::mx::u32AsHex(*id) : "none";
}

std::map<std::string, std::string> entriesOf(const ModuleView& module, std::uint16_t id)
{
    std::map<std::string, std::string> all;
    for (const Entry& entry : module.contentOrNone<Entries>(id).entries) {
        all.emplace(entry.key.value, inQuotes(entry.value.value));
    }
    return all;
}

void compareEntries(const ModuleView& before, const ModuleView& after, std::uint16_t id,
                    Differences& differences)
{
    const auto old = entriesOf(before, id);
    const auto now = entriesOf(after, id);
    for (const auto& [key, value] : old) {
        const auto found = now.find(key);
        differences.changed(Effect::Cosmetic, "module", "", key, value,
                            found == now.end() ? "none" : found->second);
    }
    for (const auto& [key, value] : now) {
        if (old.count(key) == 0) {
            differences.changed(Effect::Cosmetic, "module", "", key, "none", value);
        }
    }
}

std::string gtinOf(const ModuleView& module)
{
    const auto& extension = module.contentOrNone<Extension>(mxformat::group::extension);
    return extension.gtinId.value == 0 ? "none" : inQuotes(module.textOf(extension.gtinId.value));
}

std::string dateOf(const ModuleView& module)
{
    const auto* const extension = module.content<Extension>(mxformat::group::extension);
    return extension == nullptr ? "none" : inQuotes(dateText(*extension));
}

const Bytes& imageOf(const ModuleView& module)
{
    return module.contentOrNone<ProductImage>(mxformat::group::productImage).bytes.value;
}

} // namespace

void compareIdentity(const ModuleView& before, const ModuleView& after, Differences& differences)
{
    differences.changedBreakingImage("module", "", "module identifier", moduleIdText(before),
                                     moduleIdText(after));
    compareEntries(before, after, mxformat::group::catalogue, differences);
    compareEntries(before, after, mxformat::group::component, differences);
    differences.changed(Effect::Cosmetic, "module", "", "GTIN", gtinOf(before), gtinOf(after));
    differences.changed(Effect::Cosmetic, "module", "", "calibration date", dateOf(before),
                        dateOf(after));
    if (imageOf(before) != imageOf(after)) {
        differences.add(Effect::Cosmetic, "image", "",
                        "the product image of " + text::counted(imageOf(before).size(), "byte") +
                            " becomes another one of " +
                            text::counted(imageOf(after).size(), "byte"));
    }
}

void compareSizes(const ModuleView& before, const ModuleView& after, Differences& differences)
{
    for (const char* key : {"InData", "OutData", "Diagnosis"}) {
        const bool isProcessData = key != std::string("Diagnosis");
        differences.changed(isProcessData ? Effect::Breaking : Effect::Compatible, "size", key,
                            "size", text::counted(before.dataSize(key), "byte"),
                            text::counted(after.dataSize(key), "byte"));
    }
    differences.changedBreakingImage("size", "parameter block", "size",
                                     text::counted(before.block().size(), "byte"),
                                     text::counted(after.block().size(), "byte"));
}

} // namespace mxauthor
