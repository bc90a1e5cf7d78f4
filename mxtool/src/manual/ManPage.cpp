#include "ManPage.h"

#include <Poco/String.h>
#include <Poco/TextIterator.h>
#include <Poco/UTF8Encoding.h>

#include <fmt/format.h>

#include <cctype>
#include <sstream>

namespace mxtool::manual {

namespace {

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

std::string header(const ProgramWords& words, const std::string& page)
{
    return fmt::format(".TH {} 1 \"\" \"{}\" \"User commands\"\n", roffText(Poco::toUpper(page)),
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
    return Poco::toUpper(title == "Example" ? "Examples" : title);
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

// A reference to another page; its name is not broken across lines.
std::string reference(const std::string& page)
{
    return ".BR \\%" + roffText(page) + " (1)";
}

} // namespace

std::string roffText(const std::string& text)
{
    std::string result = !text.empty() && (text[0] == '.' || text[0] == '\'') ? "\\&" : "";
    const Poco::UTF8Encoding utf8;
    for (Poco::TextIterator place(text, utf8), end(text); place != end; ++place) {
        const int character = *place;
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

std::string pageName(const ProgramWords& words, const VerbWords& verb)
{
    return words.program.name + "-" + Poco::replace(verb.name, " ", "-");
}

namespace {

std::string verbsSection(const ProgramWords& words, const std::string& group)
{
    std::string text = ".SH VERBS\n";
    for (const VerbWords& verb : words.verbs) {
        if (verb.group == group) {
            text += ".TP\n" + bold(lastWord(verb)) + "\n" +
                    roffText(withoutFullStop(verb.description)) + "; see\n" +
                    reference(pageName(words, verb)) + ".\n";
        }
    }
    return text;
}

std::string referencesToVerbs(const ProgramWords& words, const std::string& group)
{
    std::string text;
    for (const VerbWords& verb : words.verbs) {
        if (verb.group == group) {
            text += (text.empty() ? "" : " ,\n") + reference(pageName(words, verb));
        }
    }
    return text;
}

} // namespace

std::string programPage(const ProgramWords& words)
{
    std::string page = header(words, words.program.name) +
                       nameSection(words.program.name, words.program.description);
    page += ".SH SYNOPSIS\n" + bold(words.program.name) + " " + italic("verb") + " [" +
            italic("options") + "] " + italic("arguments") + "\n" + verbsSection(words, "");
    page += ".SH OPTIONS\nEvery verb accepts these, before and after its name.\n" +
            entries(words.program.options);
    return page + sections(words.program) + ".SH SEE ALSO\n" + referencesToVerbs(words, "") + "\n";
}

std::string verbPage(const ProgramWords& words, const VerbWords& verb)
{
    const std::string& program = words.program.name;
    std::string page =
        header(words, pageName(words, verb)) + nameSection(pageName(words, verb), verb.description);
    page += ".SH SYNOPSIS\n" + bold(program + " " + verb.name) + " " +
            (verb.hasVerbs ? italic("verb") + " " : "") + synopsisOf(verb) + "\n";
    page += ".SH DESCRIPTION\n" + roffText(withoutFullStop(verb.description)) + ".\n";
    page += entries(verb.arguments) + (verb.hasVerbs ? verbsSection(words, verb.name) : "");
    page += ".SH OPTIONS\nThe options of\n.BR " + roffText(program) +
            " (1)\nare accepted as well.\n" + entries(verb.options);
    page += sections(verb) + ".SH SEE ALSO\n.BR " + roffText(program) + " (1)";
    return page + (verb.hasVerbs ? " ,\n" + referencesToVerbs(words, verb.name) : "") + "\n";
}

} // namespace mxtool::manual
