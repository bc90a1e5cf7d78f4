#pragma once

#include "TemporaryDirectory.h"

#include <mxmodule/ModuleFolder.h>

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <string>

/// A text form that names no file.
inline const std::string smallText = "module: {type: 3, id: 0x01020304}\n";

/// A folder with files in it, and a file beside it that no one may read by the folder.
class FolderTest : public testing::Test
{
protected:
    FolderTest()
    {
        std::filesystem::create_directories(outer.path("row/modules"));
        outer.write("secret.yaml", chars(secret));
        write("small.yaml", smallText);
        write("modules/other.yaml", smallText);
    }

    static std::vector<char> chars(const std::string& text) { return {text.begin(), text.end()}; }

    /// Writes a file of the folder, last changed ten seconds ago.
    void write(const std::string& name, const std::string& content) const
    {
        writeNow(name, content);
        age(name);
    }

    /// Writes a file of the folder.
    void writeNow(const std::string& name, const std::string& content) const
    {
        outer.write("row/" + name, chars(content));
    }

    /// Makes a file of the folder as old as ten seconds.
    void age(const std::string& name) const
    {
        using std::filesystem::file_time_type;
        std::filesystem::last_write_time(path(name),
                                         file_time_type::clock::now() - std::chrono::seconds(10));
    }

    std::string path(const std::string& name) const { return outer.path("row/" + name); }

    void link(const std::string& target, const std::string& name) const
    {
        std::filesystem::create_symlink(target, path(name));
    }

    /// Returns every text of the failure of `operation`; empty if it does not fail. None of them
    /// quotes the file beside the folder.
    template <typename Operation>
    static std::string failureOf(Operation operation)
    {
        std::string all;
        try {
            operation();
        } catch (const mxmodule::Failure& failure) {
            for (const mxmodule::Finding& finding : failure.findings()) {
                all += finding.place + ": " + finding.text + "\n";
                EXPECT_THAT(finding.text + finding.hint + finding.excerpt + finding.place,
                            testing::Not(testing::HasSubstr("swordfish")));
                EXPECT_THAT(finding.accepted, testing::Not(testing::Contains("swordfish")));
            }
        }
        return all;
    }

    std::string failureOfFile(const std::string& name) const
    {
        return failureOf([&] { folder().file(name); });
    }

    mxmodule::ModuleFolder folder() const { return mxmodule::ModuleFolder(outer.path("row")); }

    const std::string secret = "swordfish: 1\nmodule: {type: swordfish}\n";
    testkit::TemporaryDirectory outer;
};
