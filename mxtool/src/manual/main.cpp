// Writes the manual pages and shell completions from the definitions with which the program parses
// its command line.

#include "ManPage.h"
#include "ShellCompletion.h"

#include "../Verbs.h"

#include <filesystem>
#include <fstream>
#include <iostream>

namespace {

namespace fs = std::filesystem;

void write(const fs::path& file, const std::string& content)
{
    fs::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream << content;
    stream.close();
    if (!stream) {
        throw std::runtime_error("Cannot write " + file.string());
    }
}

// Removes the pages of an earlier build: a verb may no longer exist.
void removePages(const fs::path& directory, const std::string& program)
{
    if (!fs::exists(directory)) {
        return;
    }
    for (const auto& entry : fs::directory_iterator(directory)) {
        if (entry.path().filename().string().compare(0, program.size(), program) == 0) {
            fs::remove(entry.path());
        }
    }
}

void writeManual(const fs::path& share)
{
    CLI::App program;
    mxtool::GlobalOptions options;
    mxtool::defineProgram(program, options, [](const mxtool::VerbAction&) {});
    const auto words = mxtool::manual::wordsOf(program);
    const std::string& name = words.program.name;

    removePages(share / "man/man1", name);
    write(share / "man/man1" / (name + ".1"), mxtool::manual::programPage(words));
    for (const auto& verb : words.verbs) {
        write(share / "man/man1" / (pageName(words, verb) + ".1"),
              mxtool::manual::verbPage(words, verb));
    }
    write(share / "bash-completion/completions" / name, mxtool::manual::bashCompletion(words));
    write(share / "zsh/site-functions" / ("_" + name), mxtool::manual::zshCompletion(words));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr
            << "Usage: mxtool-manual DIRECTORY   write man, bash-completion and zsh below it\n";
        return 2;
    }
    try {
        writeManual(argv[1]);
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << "mxtool-manual: " << failure.what() << '\n';
        return 1;
    }
}
