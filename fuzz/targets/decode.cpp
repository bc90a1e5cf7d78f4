// Parameter images and Modbus registers read back, as `mxtool config --decode` does. Words: 'm' for
// Modbus, else the raw image; then the bytes to decode. Without words the module's own bytes.
#include "FuzzInput.h"
#include "FuzzTarget.h"

#include "InvalidInput.h"
#include "configuration/Composition.h"
#include "configuration/ConfigurationOutput.h"
#include "configuration/DecodedImage.h"
#include "configuration/ValuesFile.h"

#include <cstdlib>

namespace {

using devices::parser::FieldbusType;
using mxtool::TranslatedModule;

// Writes an image in every output format.
void show(TranslatedModule& module, const std::vector<char>& image, FieldbusType fieldbus)
{
    const auto configuration = mxtool::configurationOf(module, image, fieldbus);
    mxtool::notesOf(configuration, "words");
    mxtool::configurationText(configuration);
    mxtool::configurationCsv(configuration);
    const auto values =
        mxtool::readValues(mxtool::configurationJson(configuration, "words"), "words.json");
    if (values.image != image) {
        std::abort(); // the JSON must be readable
    }
}

void decode(TranslatedModule& module, const std::vector<char>& bytes, FieldbusType fieldbus)
{
    try {
        const std::vector<char> image = mxtool::decodedImage(bytes, fieldbus, module, "words");
        const auto again = mxtool::configurationOf(module, image, fieldbus);
        if (again.bytes != bytes) {
            std::abort(); // the image must give the same bytes again
        }
        show(module, image, FieldbusType::Raw);
        show(module, image, fieldbus);
    } catch (const mxtool::Failure&) {
        // a valid result
    }
}

// The bytes of the module's default configuration.
std::vector<char> ownBytes(TranslatedModule& module, FieldbusType fieldbus)
{
    return mxtool::configurationOf(module, module.report().parameterBlock, fieldbus).bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool silent = (fuzz::silence(), true);
    static_cast<void>(silent);
    fuzz::FuzzInput input(data, size);
    try {
        TranslatedModule module("fuzz.bin", input.file, "error");
        if (input.words.empty()) {
            for (const FieldbusType fieldbus : {FieldbusType::Raw, FieldbusType::Modbus}) {
                decode(module, ownBytes(module, fieldbus), fieldbus);
            }
            return 0;
        }
        const auto fieldbus =
            input.words.takeByte() == 'm' ? FieldbusType::Modbus : FieldbusType::Raw;
        const auto bytes = input.words.takeRest();
        decode(module, {bytes.begin(), bytes.end()}, fieldbus);
    } catch (const mxtool::Failure&) {
        // a valid result
    }
    return 0;
}
