#include "ParameterWords.h"

#include "ModuleData.h"

#include <text/Beginning.h>
#include <text/ControlCharacters.h>
#include <text/Hexadecimal.h>

namespace mxfileext {

namespace {

std::string escaped(char byte)
{
    const auto code = static_cast<unsigned char>(byte);
    return code == 0 ? "\\0" : "\\x" + text::hexOf(code, 2);
}

// The text `id` of the file, ready to follow a number; empty where there is none.
std::string quotedText(std::uint8_t module, std::uint16_t id)
{
    const std::string text = moduleData(module).text(id);
    return text.empty() ? text : " " + quoted(text::shortened(text));
}

std::string enumeration(std::uint8_t module, const std::vector<mxformat::OptionRecord>& options,
                        const Parameter& parameter)
{
    constexpr std::size_t most = 20;
    std::string text;
    std::size_t count = 0;
    for (const mxformat::OptionRecord& option : options) {
        const std::uint64_t raw = parameter.field.fromSlot(option.value);
        if (!parameter.field.holds(parameter.field.number(raw)) || ++count > most) {
            continue;
        }
        text += (count == 1 ? "" : ", ") + parameter.text(raw) + quotedText(module, option.textId);
    }
    return count <= most ? text : text + " and " + std::to_string(count - most) + " more";
}

} // namespace

std::string quoted(const std::string& text)
{
    std::string shown;
    for (const char byte : text) {
        shown += text::isControl(byte) ? escaped(byte) : std::string(1, byte);
    }
    return '"' + shown + '"';
}

std::string parameterName(std::uint8_t module, const Parameter& parameter)
{
    return "Parameter " + std::to_string(parameter.record.number) +
           quotedText(module, parameter.record.nameId);
}

std::string optionsText(std::uint8_t module, const Parameter& parameter)
{
    if (parameter.isConverted()) {
        return {};
    }
    const auto options = moduleData(module).options(parameter.record.optionList);
    const std::string text = enumeration(module, options, parameter);
    return text.empty() ? text : "; its options: " + text;
}

} // namespace mxfileext
