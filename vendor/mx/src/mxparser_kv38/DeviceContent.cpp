#include "devices/parser/mx/ByteReaders.h"
#include "devices/parser/mx/HexText.h"
#include "devices/parser/mx/Parser_kv38.h"

#include "DecimalText.h"
#include "LogLine.h"

#include <mxformat/ChannelRecord.h>
#include <mxformat/Extension.h>
#include <mxformat/Groups.h>
#include <mxformat/ParameterRecord.h>
#include <mxformat/TextTable.h>
#include <text/Base64.h>

#include <stdexcept>

namespace devices::parser::mx {

namespace {

namespace group = mxformat::group;

constexpr std::size_t objectsOfEveryDevice = 24; // static properties, image, sets and role

// The static properties that repeat an entry of the catalogue group, in their order.
struct CatalogueProperty
{
    std::string name;
    std::string entry;
};

const CatalogueProperty catalogueProperties[] = {
    {"brandVersion", "BrandVersion"},           {"brandId", "BrandId"},
    {"brandSerialNumber", "BrandSerialNumber"}, {"productVersion", "ProductVersion"},
    {"brandOrderCode", "BrandOrderCode"},       {"brandLabelName", "BrandLabelName"},
    {"brandHwRevision", "BrandHwRevision"},
};

// Checks the extension block before anything of it is used.
void checkExtension(const std::uint8_t* payload, std::uint32_t size)
{
    if (size < mxformat::extensionSize) {
        throw std::runtime_error("Invalid length of group 0x20f0");
    }
    if (readU8(payload) != mxformat::extensionVersion) {
        throw std::runtime_error("Invalid mx extension version in group 0x20f0");
    }
}

std::string calibrationDate(const std::uint8_t* extension)
{
    const std::uint8_t* text = extension + mxformat::calibrationDateOffset;
    std::uint32_t length = 0;
    while (length < mxformat::calibrationDateReadLength && !mxformat::endsText(text[length])) {
        ++length;
    }
    return {text, text + length};
}

std::shared_ptr<datamodel::BinaryObject> makeProductImage(const std::uint8_t* data,
                                                          std::uint32_t size)
{
    auto image = std::make_shared<datamodel::BinaryObject>();
    image->name = "productImage";
    image->mimeType = "image/svgz";
    image->encoding = "base64";
    image->data = text::toBase64(data, size);
    return image;
}

void fillRecord(devices::database::DeviceProperties& record, std::uint32_t moduleId,
                const std::string& label)
{
    record.family = "kv38";
    record.moduleIdText = u32AsHex(moduleId);
    record.brandLabelName = label;
    // Readers of the database record see a length of 1 in these two.
    record.text4.assign(1, '\0');
    record.text5.assign(1, '\0');
}

} // namespace

std::size_t Parser_kv38::attributesExpected()
{
    std::uint32_t parameters = 0;
    std::uint32_t channels = 0;
    getGroup(group::parameters, &parameters);
    getGroup(group::channels, &channels);
    // A channel may have a set of its own.
    return objectsOfEveryDevice + parameters / mxformat::parameterRecordSize +
           2 * channels / mxformat::channelRecordHeaderSize;
}

void Parser_kv38::parseContent()
{
    traceEntry(logger, "parseContent");
    std::uint8_t moduleType = 0;
    getModuleIdAndType(&moduleId, &moduleType);
    dev->brandLabelName = getGroupEntry(group::catalogue, "BrandLabelName");
    mxVersion = getGroupEntry(group::component, "Component");
    dev->deviceTypeId = "kv38." + u32AsHex(moduleId);

    dev->attributes.reserve(attributesExpected());
    addStaticProperty("moduleId", u32AsHex(moduleId));
    addStaticProperty("moduleType", u8AsHex(moduleType));
    for (const CatalogueProperty& property : catalogueProperties) {
        addStaticProperty(property.name, getGroupEntry(group::catalogue, property.entry));
    }
    addStaticProperty("mxVersion", mxVersion);

    std::uint32_t size = 0;
    if (const std::uint8_t* extension = getGroup(group::extension, &size)) {
        checkExtension(extension, size);
        if (const std::uint16_t gtinTextId = readU16BE(extension + mxformat::gtinOffset)) {
            addStaticProperty("gtin", getTextStringById(gtinTextId));
        }
        addStaticProperty("calibrationDate", calibrationDate(extension));
    }

    std::uint32_t paramDataSize = 0;
    getDataArraySizes(&inDataSize, &outDataSize, &paramDataSize, &diagDataSize);
    if (paramBufferSize != paramDataSize) {
        throw std::runtime_error("The current parameter array size does not match the value given "
                                 "in group 0x0011");
    }
    addStaticProperty("inDataSize", decimalText(inDataSize));
    addStaticProperty("outDataSize", decimalText(outDataSize));
    addStaticProperty("inDataOffset", decimalText(inDataOffset));
    addStaticProperty("outDataOffset", decimalText(outDataOffset));
    addStaticProperty("paramDataSize", decimalText(paramDataSize));
    addStaticProperty("diagDataSize", decimalText(diagDataSize));

    if (const std::uint8_t* image = getGroup(group::productImage, &size)) {
        assignIdAndAddAttribute(makeProductImage(image, size));
    }
    // The last record of either group may end after its payload, but not after the mx buffer.
    if (const std::uint8_t* records = getGroup(group::parameters, &size)) {
        for (std::uint32_t pos = 0; pos < size;) {
            pos += parseParameter(
                bytesAt(records, pos, mxformat::parameterRecordSize, group::parameters));
        }
    }
    if (const std::uint8_t* records = getGroup(group::channels, &size)) {
        for (std::uint32_t pos = 0; pos < size;) {
            pos += parseChannel(
                bytesAt(records, pos, mxformat::channelRecordHeaderSize, group::channels));
        }
    }
    setupReferences();

    fillRecord(dev->privateProps, moduleId, getGroupEntry(group::catalogue, "BrandLabelName"));
    dev->privateProps.inDataSize = inDataSize;
    dev->privateProps.outDataSize = outDataSize;
}

} // namespace devices::parser::mx
