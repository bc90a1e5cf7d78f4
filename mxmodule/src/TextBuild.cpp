#include "TextBuild.h"

#include "ExpectedKind.h"
#include "SourcePlace.h"

#include <filesystem>

namespace mxmodule {

namespace {

std::filesystem::path directoryOf(const std::string& name)
{
    return isPath(name) ? std::filesystem::path(name).parent_path() : std::filesystem::path();
}

} // namespace

mxauthor::BuildResult buildText(const std::string& name, const std::string& source,
                                Observer* observer)
{
    mxauthor::BuildResult result = buildText(name, source, mxauthor::readNamedFile);
    for (const std::filesystem::path& file : result.filesRead) {
        if (observer != nullptr) {
            observer->reads(file.string());
        }
    }
    return result;
}

mxauthor::BuildResult buildText(const std::string& name, const std::string& source,
                                const mxauthor::FileReader& read)
{
    return mxauthor::buildFromText(source, directoryOf(name), read);
}

std::vector<Finding> errorsInText(const std::string& name, const std::string& source,
                                  const std::vector<mxauthor::SourceError>& errors,
                                  const char* expected)
{
    if (errors.size() > 1) {
        requireKeyOfTextForm(name, source, expected);
    }
    std::vector<Finding> findings;
    findings.reserve(errors.size());
    for (const mxauthor::SourceError& error : errors) {
        findings.push_back(findingAt(name, source, error, Severity::Error));
    }
    return findings;
}

std::vector<char> bytesOf(const mxauthor::BuildResult& built)
{
    const mxauthor::Bytes bytes = mxauthor::writeMxFile(built.file);
    return {bytes.begin(), bytes.end()};
}

} // namespace mxmodule
