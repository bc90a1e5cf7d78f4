// Builds the mx files of the example texts as seeds for the targets. Usage: fuzz-seeds FROM TO
#include <mxauthor/TextForm.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

void build(const fs::path& text, const fs::path& file)
{
    std::ifstream stream(text, std::ios::binary);
    const std::string source{std::istreambuf_iterator<char>(stream), {}};
    const mxauthor::BuildResult result = mxauthor::buildFromText(source, text.parent_path());
    if (!result.errors.empty()) {
        throw std::runtime_error(text.string() + ": " + result.errors.front().text);
    }
    const mxauthor::Bytes bytes = mxauthor::writeMxFile(result.file);
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

} // namespace

int main(int count, char** words)
{
    try {
        if (count != 3) {
            throw std::invalid_argument("fuzz-seeds FROM TO");
        }
        fs::create_directories(words[2]);
        for (const auto& entry : fs::directory_iterator(words[1])) {
            if (entry.path().extension() == ".yaml") {
                build(entry.path(), words[2] / entry.path().stem().concat(".bin"));
            }
        }
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
    return 0;
}
