#pragma once

#include <string>
#include <vector>

namespace tooltest {

/// A text that means something to a program that reads it, with the UTF-8 that it stands for.
struct HostileText
{
    std::string bytes;
    std::string utf8;
};

/// Terminal sequences, line ends, quotes, formulas, markup, format strings, special characters of
/// YAML, paths, bytes that are no UTF-8.
const std::vector<HostileText>& hostileTexts();

/// The identifier of a module with number `number`, as eight hexadecimal digits.
std::string hostileModuleId(unsigned number);

/// How many of the texts the module `number` holds: all but the last one, whose line feed hides the
/// text table from strict readers; the last module holds them all.
unsigned hostileTextCount(unsigned number);

/// The bytes of an mx file in which each of its texts is the name of a parameter and of a channel,
/// a unit and the text of an option, and text `number` stands in every entry of the identity.
std::vector<char> hostileModule(unsigned number);

} // namespace tooltest
