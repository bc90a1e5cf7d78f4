#include "MalformedFile.h"

#include "GroupEdits.h"
#include "MxBuffer.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace malformed {

namespace {

constexpr const char* baseName = "module.txt";

// The bytes of "text" from the opening quote at `pos`, which is then after the closing one.
Bytes quotedBytes(const std::string& line, std::size_t& pos)
{
    Bytes bytes;
    for (++pos; line.at(pos) != '"'; ++pos) {
        if (line[pos] != '\\') {
            bytes.push_back(static_cast<std::uint8_t>(line[pos]));
            continue;
        }
        switch (line.at(++pos)) {
        case 'r':
            bytes.push_back('\r');
            break;
        case 'n':
            bytes.push_back('\n');
            break;
        case 'x':
            bytes.push_back(
                static_cast<std::uint8_t>(std::stoul(line.substr(pos + 1, 2), nullptr, 16)));
            pos += 2;
            break;
        default:
            throw std::runtime_error("unknown escape");
        }
    }
    ++pos;
    return bytes;
}

// A line in which control characters are written \xNN.
std::string withoutEscapes(std::string line)
{
    for (std::size_t pos = line.find("\\x"); pos != std::string::npos;
         pos = line.find("\\x", pos + 1)) {
        line.replace(pos, 4, 1, static_cast<char>(std::stoi(line.substr(pos + 2, 2), nullptr, 16)));
    }
    return line;
}

// Hexadecimal digits and "texts" up to a "#".
Bytes bytesOfWords(const std::string& line)
{
    Bytes bytes;
    for (std::size_t pos = 0; pos < line.size() && line[pos] != '#';) {
        Bytes more;
        if (line[pos] == '"') {
            more = quotedBytes(line, pos);
        } else {
            const std::size_t end = std::min(line.find_first_of("\"#", pos), line.size());
            more = testkit::hexBytes(line.substr(pos, end - pos));
            pos = end;
        }
        bytes.insert(bytes.end(), more.begin(), more.end());
    }
    return bytes;
}

// A line of bytes; "255 times: BYTES" repeats them.
Bytes bytesOfLine(const std::string& line)
{
    const std::string times = " times: ";
    const std::size_t mark = line.find(times);
    if (mark == std::string::npos) {
        return bytesOfWords(line);
    }
    const Bytes once = bytesOfWords(line.substr(mark + times.size()));
    Bytes all;
    for (unsigned long count = std::stoul(line); count > 0; --count) {
        all.insert(all.end(), once.begin(), once.end());
    }
    return all;
}

class Reader
{
public:
    explicit Reader(const std::filesystem::path& path) { readFile(path); }

    MalformedFile file()
    {
        stated.bytes = edits.file();
        for (std::string& finding : stated.finds) {
            const std::size_t blank = finding.find(' ');
            char offset[16];
            std::snprintf(offset, sizeof offset, "0x%06zx",
                          edits.offsetOf(finding.substr(0, blank)));
            finding = offset + finding.substr(blank);
        }
        return stated;
    }

private:
    void readFile(const std::filesystem::path& path)
    {
        if (path.filename() != baseName) {
            readFile(path.parent_path() / baseName);
            stated = {};
        }
        std::ifstream input(path);
        unsigned number = 0;
        for (std::string line; std::getline(input, line);) {
            lines.push_back(line);
        }
        for (next = 0; next < lines.size();) {
            number = static_cast<unsigned>(next + 1);
            try {
                readLine(lines[next++]);
            } catch (const std::exception& failure) {
                throw std::runtime_error(path.string() + ":" + std::to_string(number) + ": " +
                                         failure.what());
            }
        }
        lines.clear();
    }

    // The bytes of the indented lines that follow.
    Bytes indentedBytes()
    {
        Bytes bytes;
        while (next < lines.size() && lines[next].rfind("  ", 0) == 0) {
            const Bytes more = bytesOfLine(lines[next++].substr(2));
            bytes.insert(bytes.end(), more.begin(), more.end());
        }
        return bytes;
    }

    void readLine(const std::string& line)
    {
        if (line.empty() || line[0] == '#') {
            return;
        }
        const std::size_t colon = line.find(": ");
        const std::string word = line.substr(0, std::min(line.find_first_of(" :"), line.size()));
        const std::string rest = colon == std::string::npos ? "" : line.substr(colon + 2);
        if (word == "defect") {
            stated.defect = rest;
        } else if (word == "parser") {
            stated.parser = rest;
        } else if (word == "finds") {
            stated.finds.push_back(withoutEscapes(rest));
        } else {
            edit(word, line.substr(std::min(word.size() + 1, line.size())), rest);
        }
    }

    void edit(const std::string& word, const std::string& what, const std::string& rest)
    {
        if (word == "content-length") {
            edits.setContentLength(static_cast<unsigned>(std::stoul(rest)));
        } else if (word == "cut") {
            edits.cut(std::stoul(rest));
        } else if (word == "tail") {
            edits.setTail(indentedBytes());
        } else if (word == "file") {
            edits.setFile(indentedBytes());
        } else {
            editGroup(word, what, rest);
        }
    }

    void editGroup(const std::string& word, const std::string& what, const std::string& rest)
    {
        const auto id = static_cast<unsigned>(std::stoul(what, nullptr, 16));
        if (word == "group") {
            edits.setPayload(id, indentedBytes());
        } else if (word == "again") {
            edits.addAgain(id, indentedBytes());
        } else if (word == "drop") {
            edits.drop(id);
        } else if (word == "length") {
            edits.setLength(id, static_cast<unsigned>(std::stoul(rest)));
        } else if (word == "at") {
            edits.writeOver(id, std::stoul(what.substr(what.find('+') + 1)), bytesOfLine(rest));
        } else {
            throw std::runtime_error("unknown word " + word);
        }
    }

    MalformedFile stated;
    GroupEdits edits;
    std::vector<std::string> lines;
    std::size_t next = 0;
};

} // namespace

MalformedFile readMalformedFile(const std::string& path)
{
    return Reader(path).file();
}

std::vector<std::string> malformedFiles()
{
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(MALFORMED_CASES)) {
        paths.push_back(entry.path().string());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

} // namespace malformed
