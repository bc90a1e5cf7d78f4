#pragma once

#include "TemporaryDirectory.h"
#include "api/Api.h"

#include <gtest/gtest.h>
#include <mxmodule/ReplaceFile.h>
#include <text/JsonText.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

/// The API with a folder of example modules and the file "row.yaml" opened from it.
class ApiTest : public testing::Test
{
protected:
    ApiTest()
    {
        for (const char* name : {"MX0001", "MX0116", "MX0208", "MX0304"}) {
            std::filesystem::copy(std::string(EXAMPLE_MODULES) + "/" + name + ".bin",
                                  path(std::string(name) + ".bin"));
        }
    }

    std::string path(const std::string& name) const { return directory.path(name); }

    void write(const std::string& name, const std::string& content) const
    {
        mxmodule::replaceFile(path(name), content);
    }

    /// Opens the file `name` of the folder; empty: none.
    void open(const std::string& name, const std::string& catalogueUrl = "")
    {
        place = std::make_unique<workbench::Workplace>(name.empty() ? "" : path(name),
                                                       directory.path(), catalogueUrl);
        api = std::make_unique<workbench::Api>(*place, nullptr);
    }

    /// Writes and opens the station `text`.
    void openStation(const std::string& text)
    {
        write("row.yaml", text);
        open("row.yaml");
    }

    workbench::Response answer(const std::string& method, const std::string& callPath,
                               const std::string& body = "") const
    {
        workbench::Request request;
        request.method = method;
        request.path = "/api/v1" + callPath;
        request.body = body;
        return api->answer(request);
    }

    /// Returns the answer of a call, which has the status `status`.
    text::Json call(const std::string& method, const std::string& callPath,
                    const text::Json& body = nullptr, unsigned status = 200) const
    {
        const auto response = answer(method, callPath, body.is_null() ? "" : body.dump());
        EXPECT_EQ(response.status, status) << response.body;
        return text::Json::parse(response.body);
    }

    /// Returns the texts of the findings of a call that fails with `status`.
    std::vector<std::string> failure(const std::string& method, const std::string& callPath,
                                     const text::Json& body, unsigned status) const
    {
        std::vector<std::string> texts;
        const text::Json answered = call(method, callPath, body, status);
        for (const auto& finding : answered.at("findings")) {
            texts.push_back(finding.at("text"));
        }
        return texts;
    }

    testkit::TemporaryDirectory directory;
    std::unique_ptr<workbench::Workplace> place;
    std::unique_ptr<workbench::Api> api;
};
