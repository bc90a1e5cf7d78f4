// Stations written in many ways, changed at random: after each change the text states what the same
// change makes of plain data, and has all comments besides those of removed entries. With
// RANDOM_STATIONS in the environment as many as it says, otherwise a few for everyday use.

#include "StatedStation.h"
#include "random/StatedRow.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

namespace {

using mxstation::Station;
using randomstations::RowContent;
using randomstations::StatedRow;

// The names of what a station may call by a number or an identifier.
class CallNames
{
public:
    const std::string& parameter(const std::string& name)
    {
        const auto [known, isNew] = names.try_emplace(name, name);
        const auto found = isNew ? module.parametersCalled(name) : std::vector<std::size_t>();
        if (found.size() == 1) {
            known->second = module.parameters()[found.front()].callName;
        }
        return known->second;
    }

private:
    const mxmodule::Module module = mxmodule::Module::fromFile(EXAMPLE_MODULES "/MX0304.bin");
    std::map<std::string, std::string> names;
};

RowContent contentOf(const mxstation::Entry& entry, CallNames& names)
{
    const auto number = [](const auto& stated) { return stated ? stated->value : 0; };
    const auto optional = [](const auto& stated) {
        return stated ? std::optional<std::uint32_t>(stated->value) : std::nullopt;
    };
    RowContent content;
    content.reference = entry.reference;
    content.name = entry.name;
    if (entry.reserve) {
        content.reserve = {number(entry.reserve->size.input), number(entry.reserve->size.output)};
        content.name = content.isPlace() ? entry.reserve->name : content.name;
    }
    content.at = {optional(entry.at.input), optional(entry.at.output)};
    for (const auto& value : entry.parameters) {
        EXPECT_TRUE(content.values.emplace(names.parameter(value.name), value.value).second);
    }
    for (const auto& note : entry.channels) {
        content.notes[note.channel] = {note.alias, note.comment};
    }
    return content;
}

std::vector<RowContent> contentsOf(const std::string& text, CallNames& names)
{
    const Station station = statedStation(text);
    std::vector<RowContent> contents;
    for (const auto& entry : station.entries) {
        contents.push_back(contentOf(entry, names));
    }
    for (const auto& finding : station.findings) {
        EXPECT_NE(finding.text.find("There is no mx file"), std::string::npos) << finding.text;
    }
    return contents;
}

std::string changed(const std::string& text, const mxstation::StationEdit& edit)
{
    try {
        return mxstation::edited(statedStation(text), edit);
    } catch (const mxmodule::Failure& failure) {
        ADD_FAILURE() << failure.reason().place << ": " << failure.reason().text << "\nkind "
                      << edit.index() << " of\n"
                      << text;
        return text;
    }
}

void expectComments(const StatedRow& row, const std::string& text)
{
    for (const std::string& comment : row.comments) {
        EXPECT_NE(text.find(comment), std::string::npos) << comment << " of\n"
                                                         << row.text << "\nis gone in\n"
                                                         << text;
    }
}

TEST(RandomEdits, ChangeWhatTheySayAndNothingElse)
{
    const char* const stated = std::getenv("RANDOM_STATIONS");
    CallNames names;
    randomstations::RowWriter writer(19);
    for (int left = stated == nullptr ? 40 : std::atoi(stated); left > 0 && !HasFailure(); --left) {
        StatedRow row = writer.row();
        ASSERT_EQ(contentsOf(row.text, names), row.entries) << row.text;
        for (int edits = 6; edits > 0 && !HasFailure(); --edits) {
            const auto edit = writer.edit(row.entries);
            const auto undone = inverse(edit, row.entries);
            const auto before = row.entries;
            const std::string text = changed(row.text, edit);
            if (const auto* const removed = std::get_if<mxstation::RemoveEntry>(&edit)) {
                for (const std::string& comment : row.entries[removed->entry].comments) {
                    row.comments.erase(comment);
                }
            }
            apply(edit, row.entries);
            ASSERT_EQ(contentsOf(text, names), row.entries) << "kind " << edit.index() << " of\n"
                                                            << row.text << "\nbecame\n"
                                                            << text;
            expectComments(row, text);
            if (undone) {
                ASSERT_EQ(contentsOf(changed(text, *undone), names), before) << text;
            }
            row.text = text;
        }
    }
}

} // namespace
