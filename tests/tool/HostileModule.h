#pragma once

#include <string>
#include <vector>

namespace tooltest {

/// A text with a special meaning to a program that reads it, with its UTF-8.
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

/// How many of the texts the module `number` holds: all except the last one, whose line feed hides
/// the text table from strict readers; the last module holds all of them.
unsigned hostileTextCount(unsigned number);

/// The bytes of an mx file in which each of its texts is the name of a parameter and of a channel,
/// a unit and the text of an option, and text `number` is in every entry of the identity.
std::vector<char> hostileModule(unsigned number);

} // namespace tooltest
