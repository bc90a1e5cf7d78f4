#include "ExpectedKind.h"

#include "SourcePlace.h"

#include <mxmodule/FileKind.h>
#include <mxmodule/Finding.h>

#include <mxauthor/ForeignContent.h>
#include <mxauthor/TextForm.h>

namespace mxmodule {

void requireModule(const std::string& path, const std::string& content, const std::string& expected)
{
    const FileKind kind = kindOf(content);
    if (kind == FileKind::MxFile || kind == FileKind::TextForm) {
        return;
    }
    const auto found = kind == FileKind::Other ? mxauthor::foreignContent(content) : nameOf(kind);
    if (found) {
        throw Failure(Origin::Input, path, "This is " + *found + ", expected " + expected,
                      callThatTakes(kind, path));
    }
}

void requireKeyOfTextForm(const std::string& path, const std::string& source,
                          const std::string& expected)
{
    if (!mxauthor::hasKeyOfTextForm(source)) {
        throw Failure(Origin::Input, path,
                      "This text has no key of the text form, such as \"module:\", expected " +
                          expected,
                      "mxtool config FILE --values " + (isPath(path) ? path : "-") +
                          " takes a file of parameter values");
    }
}

} // namespace mxmodule
