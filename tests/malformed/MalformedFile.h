#pragma once

#include <string>
#include <vector>

namespace malformed {

/// An mx file stated as text: what is wrong with it, how it is made, and the results of parser and
/// checker. README.md has the notation.
struct MalformedFile
{
    std::string defect;
    std::string parser;             ///< "accepted", or the message of the device parser.
    std::vector<std::string> finds; ///< "0x0001a4 [rule] what the checker says", in file order.
    std::vector<char> bytes;        ///< Those of the mx file.
};

/// Reads the file at `path`. Throws `std::runtime_error` naming the line that it cannot read.
MalformedFile readMalformedFile(const std::string& path);

/// Returns the paths of all files of the folder of this test, ordered by name.
std::vector<std::string> malformedFiles();

} // namespace malformed
