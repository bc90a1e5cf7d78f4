// Writes an export of a station to a file, for the scripts beside it.
//
// Usage: export-station STATION EXPORT FILE
// EXPORT is "c", "plcopen-global" or "plcopen-program".

#include <mxstation/Declarations.h>

#include <fstream>
#include <iostream>

namespace {

mxstation::Declarations exportOf(const mxstation::Plan& plan, const std::string& what)
{
    if (what == "c") {
        return mxstation::cHeader(plan);
    }
    mxstation::DeclarationOptions options;
    options.address = mxstation::AddressStyle::Index;
    options.scope = what == "plcopen-program" ? mxstation::VariableScope::Program
                                              : mxstation::VariableScope::Global;
    return mxstation::plcopenXml(plan, options);
}

} // namespace

int main(int count, char** words)
{
    if (count != 4) {
        std::cerr << "usage: export-station STATION EXPORT FILE\n";
        return 2;
    }
    try {
        const mxstation::Plan plan = mxstation::plan(mxstation::readStation(words[1]));
        std::ofstream(words[3], std::ios::binary) << exportOf(plan, words[2]).text;
        return 0;
    } catch (const mxmodule::Failure& failure) {
        std::cerr << failure.reason().place << ": " << failure.reason().text << "\n";
        return 1;
    }
}
