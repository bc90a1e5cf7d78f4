// Calls that C can make wrongly: null pointers, and numbers that are no enumerators.
#include "CallsOfC.h"

#include <functional>

namespace {

// A call with a wrong argument, and what was expected.
struct WrongCall
{
    const char* expected;
    std::function<bool(mxmodule_error**)> hasResult;
};

void expectMisuse(const std::vector<WrongCall>& calls)
{
    for (std::size_t i = 0; i < calls.size(); ++i) {
        const auto error = errorOf(calls[i].hasResult);
        EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_MISUSE) << i;
        EXPECT_STREQ(mxmodule_error_text(error.get()), calls[i].expected) << i;
        EXPECT_STREQ(mxmodule_error_place(error.get()), "") << i;
    }
}

// Returns a call of `function`, which takes a handle and an error, without the handle.
template <typename Handle>
std::function<bool(mxmodule_error**)> withNone(mxmodule_bytes* (*function)(Handle,
                                                                           mxmodule_error**))
{
    return [function](auto** error) { return function(nullptr, error) != nullptr; };
}

TEST(CMisuse, isAModuleThatIsNull)
{
    const char* text = "Found a null pointer, expected a module";
    std::vector<WrongCall> calls;
    for (auto* function :
         {mxmodule_name, mxmodule_module_id, mxmodule_label, mxmodule_json, mxmodule_text,
          mxmodule_raw_texts, mxmodule_datasheet, mxmodule_product_picture, mxmodule_default_image,
          mxmodule_channels_json, mxmodule_channels_text, mxmodule_channels_declarations,
          mxmodule_channels_svg}) {
        calls.push_back({text, withNone(function)});
    }
    std::size_t position = 0;
    calls.insert(
        calls.end(),
        {{text, [](auto** e) { return mxmodule_at(nullptr, 0, 0, e) != nullptr; }},
         {text,
          [&](auto** e) { return mxmodule_parameter_called(nullptr, "", &position, e) != 0; }},
         {text, [](auto** e) { return mxmodule_channels_csv(nullptr, ',', 0, e) != nullptr; }},
         {text, [](auto** e) { return mxmodule_channels_drawing(nullptr, 0, e) != nullptr; }},
         {text,
          [](auto** e) {
              return mxmodule_compose(nullptr, nullptr, 0, nullptr, 0, MXMODULE_FULL, e) != nullptr;
          }},
         {text,
          [](auto** e) {
              return mxmodule_compose_file(nullptr, "", 0, "a", MXMODULE_FULL, e) != nullptr;
          }},
         {text,
          [](auto** e) { return mxmodule_decode(nullptr, "", 0, MXMODULE_RAW, "", e) != nullptr; }},
         {text, [](auto** e) {
              return mxmodule_configure(nullptr, nullptr, 0, MXMODULE_RAW, e) != nullptr;
          }}});
    expectMisuse(calls);
}

TEST(CMisuse, isAConfigurationThatIsNull)
{
    const char* text = "Found a null pointer, expected a configuration";
    const auto made = exampleForC("MX0502.bin");
    const auto defaults = done([&](auto** error) {
        return mxmodule_configure(made.get(), nullptr, 0, MXMODULE_RAW, error);
    });
    std::vector<WrongCall> calls = {
        {text, withNone(mxmodule_configuration_image)},
        {text, withNone(mxmodule_configuration_bytes)},
        {text, withNone(mxmodule_configuration_findings)},
        {text,
         [](auto** e) {
             return mxmodule_configuration_csv(nullptr, MXMODULE_ALL, ',', 0, e) != nullptr;
         }},
        {text,
         [&](auto** e) { return mxmodule_compare(nullptr, defaults.get(), "", e) != nullptr; }},
        {text,
         [&](auto** e) { return mxmodule_compare(defaults.get(), nullptr, "", e) != nullptr; }},
        {"Found a null pointer, expected a comparison", withNone(mxmodule_comparison_json)},
        {"Found a null pointer, expected a comparison", withNone(mxmodule_comparison_text)},
        {"Found a null pointer, expected a comparison", withNone(mxmodule_comparison_findings)},
        {"Found a null pointer, expected a comparison",
         [](auto** e) { return mxmodule_comparison_csv(nullptr, ',', 0, e) != nullptr; }}};
    for (auto* function : {mxmodule_configuration_json, mxmodule_configuration_text,
                           mxmodule_configuration_values}) {
        calls.push_back(
            {text, [function](auto** e) { return function(nullptr, MXMODULE_ALL, e) != nullptr; }});
    }
    expectMisuse(calls);
}

TEST(CMisuse, isACatalogueThatIsNull)
{
    const char* text = "Found a null pointer, expected a catalogue";
    const mxmodule_search all = {};
    expectMisuse(
        {{text, withNone(mxmodule_catalogue_name)},
         {text,
          [](auto** e) {
              return mxmodule_catalogue_search(nullptr, "", nullptr, 0, e) != nullptr;
          }},
         {text,
          [](auto** e) {
              return mxmodule_catalogue_search_findings(nullptr, "", nullptr, 0, e) != nullptr;
          }},
         {text,
          [&](auto** e) {
              return mxmodule_catalogue_search_page(nullptr, &all, nullptr, e) != nullptr;
          }},
         {text,
          [&](auto** e) { return mxmodule_catalogue_explain_json(nullptr, &all, e) != nullptr; }},
         {text,
          [&](auto** e) { return mxmodule_catalogue_explain_text(nullptr, &all, e) != nullptr; }},
         {text, [](auto** e) { return mxmodule_catalogue_find(nullptr, "", e) != nullptr; }},
         {text, [](auto** e) { return mxmodule_catalogue_file(nullptr, "", e) != nullptr; }},
         {text,
          [](auto** e) { return mxmodule_catalogue_module(nullptr, "", 0, 0, e) != nullptr; }},
         {text, [](auto** e) { return mxmodule_catalogue_remove(nullptr, "", e) != 0; }},
         {text, [](auto** e) {
              return mxmodule_catalogue_populate(nullptr, EXAMPLE_MODULES, 0, nullptr, e) !=
                     nullptr;
          }}});
}

TEST(CMisuse, isASearchThatIsNull)
{
    const char* text = "Found a null pointer, expected a search";
    const auto catalogue =
        done([](auto** error) { return mxmodule_catalogue_open("sqlite::memory:", 1, error); });
    const mxmodule_search none = {nullptr, nullptr, 1, 0, nullptr, nullptr};
    expectMisuse(
        {{text,
          [&](auto** e) {
              return mxmodule_catalogue_search_page(catalogue.get(), nullptr, nullptr, e) !=
                     nullptr;
          }},
         {text,
          [&](auto** e) {
              return mxmodule_catalogue_explain_json(catalogue.get(), nullptr, e) != nullptr;
          }},
         {text,
          [&](auto** e) {
              return mxmodule_catalogue_explain_text(catalogue.get(), nullptr, e) != nullptr;
          }},
         {"Found a null pointer, expected conditions of a search", [&](auto** e) {
              return mxmodule_catalogue_search_page(catalogue.get(), &none, nullptr, e) != nullptr;
          }}});
}

TEST(CMisuse, isATextThatIsNull)
{
    const auto made = exampleForC("MX0502.bin");
    const auto catalogue =
        done([](auto** error) { return mxmodule_catalogue_open("sqlite::memory:", 1, error); });
    const char* const none[] = {nullptr};
    const mxmodule_assignment nameless = {nullptr, "1"};
    const mxmodule_assignment valueless = {"Wires", nullptr};
    std::size_t position = 0;
    const auto compose = [&](const mxmodule_assignment* values) {
        return [&, values](auto** e) {
            return mxmodule_compose(made.get(), values, 1, nullptr, 0, MXMODULE_FULL, e) != nullptr;
        };
    };
    const char* id = "Found a null pointer, expected a module identifier";
    expectMisuse(
        {{"Found a null pointer, expected the path of a file",
          [](auto** e) { return mxmodule_load(nullptr, 0, 0, e) != nullptr; }},
         {"Found a null pointer, expected a name for messages",
          [](auto** e) { return mxmodule_from_bytes("", 1, nullptr, 0, 0, e) != nullptr; }},
         {"Found a null pointer, expected the name of a parameter",
          [&](auto** e) {
              return mxmodule_parameter_called(made.get(), nullptr, &position, e) != 0;
          }},
         {"Found a null pointer, expected the name of a parameter", compose(&nameless)},
         {"Found a null pointer, expected a value", compose(&valueless)},
         {"Found a null pointer, expected values of parameters", compose(nullptr)},
         {"Found a null pointer, expected the name of a file of values",
          [&](auto** e) {
              return mxmodule_compose_file(made.get(), "", 0, nullptr, MXMODULE_FULL, e) != nullptr;
          }},
         {"Found a null pointer, expected paths of files",
          [](auto** e) { return mxmodule_check(nullptr, 1, e) != nullptr; }},
         {"Found a null pointer, expected the path of a file",
          [&](auto** e) { return mxmodule_check_sarif(none, 1, e) != nullptr; }},
         {"Found a null pointer, expected conditions of a search",
          [&](auto** e) {
              return mxmodule_catalogue_search(catalogue.get(), "", nullptr, 1, e) != nullptr;
          }},
         {"Found a null pointer, expected a condition",
          [&](auto** e) {
              return mxmodule_catalogue_search_findings(catalogue.get(), "", none, 1, e) != nullptr;
          }},
         {id,
          [&](auto** e) {
              return mxmodule_catalogue_find(catalogue.get(), nullptr, e) != nullptr;
          }},
         {id,
          [&](auto** e) {
              return mxmodule_catalogue_file(catalogue.get(), nullptr, e) != nullptr;
          }},
         {id,
          [&](auto** e) {
              return mxmodule_catalogue_module(catalogue.get(), nullptr, 0, 0, e) != nullptr;
          }},
         {id,
          [&](auto** e) { return mxmodule_catalogue_remove(catalogue.get(), nullptr, e) != 0; }},
         {"Found a null pointer, expected the path of a directory", [&](auto** e) {
              return mxmodule_catalogue_populate(catalogue.get(), nullptr, 0, nullptr, e) !=
                     nullptr;
          }}});
}

TEST(CMisuse, isAPlaceOrBytesThatAreNull)
{
    const auto made = exampleForC("MX0502.bin");
    expectMisuse(
        {{"Found a null pointer, expected a place for the position",
          [&](auto** e) {
              return mxmodule_parameter_called(made.get(), "Wires", nullptr, e) != 0;
          }},
         {"Found a null pointer, expected an mx file",
          [](auto** e) { return mxmodule_from_bytes(nullptr, 1, "a", 0, 0, e) != nullptr; }},
         {"Found a null pointer, expected a file of values",
          [&](auto** e) {
              return mxmodule_compose_file(made.get(), nullptr, 1, "a", MXMODULE_FULL, e) !=
                     nullptr;
          }},
         {"Found a null pointer, expected a configuration", [&](auto** e) {
              return mxmodule_decode(made.get(), nullptr, 1, MXMODULE_RAW, "", e) != nullptr;
          }}});
}

TEST(CMisuse, isANumberThatIsNoEnumerator)
{
    const auto made = exampleForC("MX0502.bin");
    const auto defaults = done([&](auto** error) {
        return mxmodule_configure(made.get(), nullptr, 0, MXMODULE_RAW, error);
    });
    const auto fieldbus = static_cast<mxmodule_fieldbus>(2);
    const auto check = static_cast<mxmodule_value_check>(-1);
    const auto listing = static_cast<mxmodule_listing>(7);
    const char* separators = "Found the separator of number 58, expected ',', ';' or a tab";
    std::vector<WrongCall> calls = {
        {"Found the fieldbus 2, expected 0 or 1",
         [&](auto** e) { return mxmodule_decode(made.get(), "", 0, fieldbus, "", e) != nullptr; }},
        {"Found the fieldbus 2, expected 0 or 1",
         [&](auto** e) {
             return mxmodule_configure(made.get(), nullptr, 0, fieldbus, e) != nullptr;
         }},
        {"Found the check -1, expected 0 or 1",
         [&](auto** e) {
             return mxmodule_compose(made.get(), nullptr, 0, nullptr, 0, check, e) != nullptr;
         }},
        {"Found the check -1, expected 0 or 1",
         [&](auto** e) {
             return mxmodule_compose_file(made.get(), "{}", 2, "a", check, e) != nullptr;
         }},
        {"Found the listing 7, expected 0 or 1",
         [&](auto** e) {
             return mxmodule_configuration_csv(defaults.get(), listing, ',', 0, e) != nullptr;
         }},
        {separators,
         [&](auto** e) {
             return mxmodule_configuration_csv(defaults.get(), MXMODULE_ALL, ':', 0, e) != nullptr;
         }},
        {separators,
         [&](auto** e) { return mxmodule_channels_csv(made.get(), ':', 0, e) != nullptr; }}};
    for (auto* function : {mxmodule_configuration_json, mxmodule_configuration_text,
                           mxmodule_configuration_values}) {
        calls.push_back({"Found the listing 7, expected 0 or 1", [&, function](auto** e) {
                             return function(defaults.get(), listing, e) != nullptr;
                         }});
    }
    expectMisuse(calls);
}

} // namespace
