#include "ManPage.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <sstream>

namespace mxtool::manual {

namespace {

// Moves past the UTF-8 character at `place` and returns its code point. The texts of the program
// are valid UTF-8.
unsigned takeCharacter(const std::string& text, std::size_t& place)
{
    const auto first = static_cast<unsigned char>(text[place++]);
    if (first < 0x80) {
        return first;
    }
    const unsigned behind = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    unsigned number = first & (0x3FU >> behind);
    for (unsigned i = 0; i < behind && place < text.size(); ++i) {
        number = number << 6 | (static_cast<unsigned char>(text[place++]) & 0x3FU);
    }
    return number;
}

std::string bold(const std::string& text)
{
    return "\\fB" + roffText(text) + "\\fR";
}

std::string italic(const std::string& text)
{
    return "\\fI" + roffText(text) + "\\fR";
}

// NAME descriptions start in lower case; acronyms keep their capitals.
std::string uncapitalised(std::string text)
{
    if (text.size() > 1 && std::islower(static_cast<unsigned char>(text[1])) != 0) {
        text[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[0])));
    }
    return text;
}

std::string withoutFullStop(std::string text)
{
    if (!text.empty() && text.back() == '.') {
        text.pop_back();
    }
    return text;
}

std::string header(const ProgramWords& words, std::string page)
{
    std::transform(page.begin(), page.end(), page.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return fmt::format(".TH {} 1 \"\" \"{}\" \"User commands\"\n", roffText(page),
                       roffText(words.version));
}

std::string nameSection(const std::string& page, const std::string& description)
{
    return fmt::format(".SH NAME\n{} \\- {}\n", roffText(page),
                       roffText(uncapitalised(withoutFullStop(description))));
}

// More choices are listed in a sentence of their own.
constexpr std::size_t choicesInTag = 5;

std::string valueText(const OptionWords& option)
{
    if (option.choices.size() > choicesInTag) {
        return italic(option.value);
    }
    std::string text;
    for (const std::string& choice : option.choices) {
        text += (text.empty() ? "" : "|") + italic(choice);
    }
    return text.empty() ? italic(option.value) : text;
}

std::string synopsisOf(const VerbWords& verb)
{
    std::string text = "[" + italic("options") + "]";
    for (const OptionWords& option : verb.options) {
        if (option.required) {
            text += " " + bold(option.names.back()) + " " + valueText(option);
        }
    }
    for (const OptionWords& argument : verb.arguments) {
        const std::string one = italic(argument.value) + (argument.repeatable ? "..." : "");
        text += argument.required ? " " + one : " [" + one + "]";
    }
    return text;
}

// Wraps `text`, which is roff source, into short lines.
std::string wrapped(const std::string& text)
{
    constexpr std::size_t widest = 78;
    std::string lines;
    std::size_t width = 0;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (width != 0 && width + 1 + word.size() > widest) {
            lines += "\n" + std::string(word[0] == '.' ? "\\&" : "");
            width = 0;
        }
        lines += (width == 0 ? "" : " ") + word;
        width += word.size() + 1;
    }
    return lines + "\n";
}

// `names` in bold, separated by commas.
std::string boldList(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : ", ") + bold(name);
    }
    return text;
}

// The tag of a list entry and its text.
std::string entry(const OptionWords& option)
{
    std::string tag = boldList(option.names);
    if (!option.value.empty()) {
        tag += (tag.empty() ? "" : " ") + valueText(option);
    }
    std::string text = wrapped(roffText(withoutFullStop(option.description)) + ".");
    if (option.choices.size() > choicesInTag) {
        text += wrapped("One of " + boldList(option.choices) + ".");
    }
    if (option.repeatable && !option.names.empty()) {
        text += "It may be given again.\n";
    }
    if (!option.excludes.empty()) {
        text += wrapped("Not together with " + boldList(option.excludes) + ".");
    }
    return ".TP\n" + tag + "\n" + text;
}

std::string entries(const std::vector<OptionWords>& options)
{
    std::string text;
    for (const OptionWords& option : options) {
        text += entry(option);
    }
    return text;
}

// The heading in manual pages for a section of the help.
std::string headingOf(const std::string& title)
{
    if (title == "Exit codes") {
        return "EXIT STATUS";
    }
    std::string heading = title == "Example" ? "Examples" : title;
    std::transform(heading.begin(), heading.end(), heading.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return heading;
}

// Unfilled lines in a monospaced font.
std::string verbatim(const Section& section)
{
    std::string text = fmt::format(".SH {}\n.EX\n", roffText(headingOf(section.title)));
    std::istringstream lines(section.text);
    for (std::string line; std::getline(lines, line);) {
        text += line.empty() ? ".sp\n" : roffText(line) + "\n";
    }
    return text + ".EE\n";
}

std::string sections(const VerbWords& verb)
{
    std::string text;
    for (const Section& section : verb.sections) {
        text += verbatim(section);
    }
    return text;
}

std::string pageOf(const ProgramWords& words, const VerbWords& verb)
{
    return words.program.name + "-" + verb.name;
}

// A reference to another page; its name is not broken across lines.
std::string reference(const std::string& page)
{
    return ".BR \\%" + roffText(page) + " (1)";
}

} // namespace

std::string roffText(const std::string& text)
{
    std::string result = !text.empty() && (text[0] == '.' || text[0] == '\'') ? "\\&" : "";
    for (std::size_t place = 0; place < text.size();) {
        const unsigned character = takeCharacter(text, place);
        switch (character) {
        case '\\':
            result += "\\e";
            break;
        case '-':
            result += "\\-";
            break;
        case '"':
            result += "\\(dq";
            break;
        case '\'':
            result += "\\(aq";
            break;
        case '^':
            result += "\\(ha";
            break;
        case '~':
            result += "\\(ti";
            break;
        case '`':
            result += "\\(ga";
            break;
        default:
            result += character < 0x80 ? std::string(1, static_cast<char>(character))
                                       : fmt::format("\\[u{:04X}]", character);
        }
    }
    return result;
}

std::string programPage(const ProgramWords& words)
{
    std::string page = header(words, words.program.name) +
                       nameSection(words.program.name, words.program.description);
    page += ".SH SYNOPSIS\n" + bold(words.program.name) + " " + italic("verb") + " [" +
            italic("options") + "] " + italic("arguments") + "\n.SH VERBS\n";
    std::string others;
    for (const VerbWords& verb : words.verbs) {
        page += ".TP\n" + bold(verb.name) + "\n" + roffText(withoutFullStop(verb.description)) +
                "; see\n" + reference(pageOf(words, verb)) + ".\n";
        others += (others.empty() ? "" : " ,\n") + reference(pageOf(words, verb));
    }
    page += ".SH OPTIONS\nEvery verb accepts these, before and after its name.\n" +
            entries(words.program.options);
    return page + sections(words.program) + ".SH SEE ALSO\n" + others + "\n";
}

std::string verbPage(const ProgramWords& words, const VerbWords& verb)
{
    const std::string& program = words.program.name;
    std::string page =
        header(words, pageOf(words, verb)) + nameSection(pageOf(words, verb), verb.description);
    page += ".SH SYNOPSIS\n" + bold(program + " " + verb.name) + " " + synopsisOf(verb) + "\n";
    page += ".SH DESCRIPTION\n" + roffText(withoutFullStop(verb.description)) + ".\n";
    page += entries(verb.arguments);
    page += ".SH OPTIONS\nThe options of\n.BR " + roffText(program) +
            " (1)\nare accepted as well.\n" + entries(verb.options);
    return page + sections(verb) + ".SH SEE ALSO\n.BR " + roffText(program) + " (1)\n";
}

} // namespace mxtool::manual
