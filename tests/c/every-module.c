/* Uses the C interface of libmxmodule on every mx file that is named: what one function gives goes
   into others, and all of it is freed. Values of MX0502 are compared with those worked out by hand.
   Prints what differs, then how many modules and findings there were.

   Usage: every-module FOLDER FILE... */
#include <mxmodule/mxmodule.h>

#include <stdio.h>
#include <string.h>

enum
{
    LONGEST_PATH = 4096,
    MOST_PARAMETER_BYTES = 255
};

static int failures = 0;

#define EXPECT(condition) expect((condition) != 0, #condition, __LINE__)

static void expect(int holds, const char* condition, int line)
{
    if (!holds) {
        printf("line %d: not so: %s\n", line, condition);
        ++failures;
    }
}

/* Prints an error, if there is one, and frees it. */
static void report(mxmodule_error* error)
{
    if (error != NULL) {
        printf("error %d: %s: %s\n", (int)mxmodule_error_code(error), mxmodule_error_place(error),
               mxmodule_error_text(error));
        ++failures;
    }
    mxmodule_error_free(error);
}

/* Whether two results are the same bytes. Frees both. */
static int same(mxmodule_bytes* one, mxmodule_bytes* other)
{
    const size_t size = mxmodule_bytes_size(one);
    const int equal = one != NULL && other != NULL && size == mxmodule_bytes_size(other) &&
                      memcmp(mxmodule_bytes_data(one), mxmodule_bytes_data(other), size) == 0;
    mxmodule_bytes_free(one);
    mxmodule_bytes_free(other);
    return equal;
}

/* Whether a result is this text. Frees it. */
static int is_text(mxmodule_bytes* bytes, const char* text)
{
    const int equal = bytes != NULL && strcmp(mxmodule_bytes_data(bytes), text) == 0;
    mxmodule_bytes_free(bytes);
    return equal;
}

/* Whether a result contains this text. Frees it. */
static int contains(mxmodule_bytes* bytes, const char* text)
{
    const int found = bytes != NULL && strstr(mxmodule_bytes_data(bytes), text) != NULL;
    mxmodule_bytes_free(bytes);
    return found;
}

typedef mxmodule_bytes* (*description)(const mxmodule_module*, mxmodule_error**);

/* Whether a module that begins at byte 0 again has all that the original has. */
static void compare_copy(const mxmodule_module* module)
{
    static const description all[] = {
        mxmodule_name,          mxmodule_module_id,       mxmodule_json,
        mxmodule_text,          mxmodule_raw_texts,       mxmodule_datasheet,
        mxmodule_default_image, mxmodule_channels_json,   mxmodule_channels_text,
        mxmodule_channels_svg,  mxmodule_product_picture, mxmodule_channels_declarations};
    mxmodule_error* error = NULL;
    mxmodule_module* moved = mxmodule_at(module, 64, 8, &error);
    mxmodule_module* back = NULL;
    size_t i;
    report(error);
    back = mxmodule_at(moved, 0, 0, &error);
    report(error);
    mxmodule_free(moved);
    for (i = 0; i < sizeof all / sizeof all[0]; ++i) {
        EXPECT(same(all[i](module, NULL), all[i](back, NULL)));
    }
    EXPECT(same(mxmodule_channels_csv(module, ';', 1, NULL),
                mxmodule_channels_csv(back, ';', 1, NULL)));
    EXPECT(
        same(mxmodule_channels_drawing(module, 0, NULL), mxmodule_channels_drawing(back, 0, NULL)));
    mxmodule_free(back);
}

/* Whether the bytes of `fieldbus`, decoded, are the default configuration. */
static void compare_decoded(const mxmodule_module* module, mxmodule_fieldbus fieldbus)
{
    mxmodule_error* error = NULL;
    mxmodule_configuration* defaults = mxmodule_configure(module, NULL, 0, fieldbus, &error);
    mxmodule_bytes* bytes = mxmodule_configuration_bytes(defaults, NULL);
    mxmodule_configuration* decoded = NULL;
    mxmodule_comparison* compared = NULL;
    report(error);
    decoded = mxmodule_decode(module, mxmodule_bytes_data(bytes), mxmodule_bytes_size(bytes),
                              fieldbus, NULL, &error);
    report(error);
    mxmodule_bytes_free(bytes);
    compared = mxmodule_compare(defaults, decoded, NULL, &error);
    report(error);
    EXPECT(same(mxmodule_configuration_image(decoded, NULL), mxmodule_default_image(module, NULL)));
    EXPECT(same(mxmodule_configuration_text(decoded, MXMODULE_ALL, NULL),
                mxmodule_configuration_text(defaults, MXMODULE_ALL, NULL)));
    mxmodule_configuration_free(defaults);
    mxmodule_configuration_free(decoded);
    EXPECT(contains(mxmodule_comparison_json(compared, NULL), "\"same\": true"));
    mxmodule_comparison_free(compared);
}

/* Whether nothing, and the values of the module's own file of values, give the default image. */
static void compare_composed(const mxmodule_module* module)
{
    mxmodule_error* error = NULL;
    mxmodule_bytes* image = mxmodule_default_image(module, NULL);
    mxmodule_configuration* defaults = mxmodule_configure(module, NULL, 0, MXMODULE_RAW, NULL);
    mxmodule_bytes* values = mxmodule_configuration_values(defaults, MXMODULE_ALL, NULL);
    mxmodule_composition* made[2];
    int i;
    mxmodule_configuration_free(defaults);
    made[0] = mxmodule_compose(module, NULL, 0, NULL, 0, MXMODULE_FULL, &error);
    report(error);
    made[1] =
        mxmodule_compose_file(module, mxmodule_bytes_data(values), mxmodule_bytes_size(values),
                              "values.yaml", MXMODULE_NUMBER_ONLY, &error);
    report(error);
    for (i = 0; i < 2; ++i) {
        size_t size = 0;
        size_t count = 0;
        const unsigned char* bytes = mxmodule_composition_image(made[i], &size);
        const uint16_t* registers = mxmodule_composition_registers(made[i], &count);
        EXPECT(size == mxmodule_bytes_size(image) && size <= MOST_PARAMETER_BYTES);
        EXPECT(size == 0 || memcmp(bytes, mxmodule_bytes_data(image), size) == 0);
        EXPECT(count == 0 || registers != NULL);
        EXPECT(size == 0 || (count == 0) == (mxmodule_composition_no_registers(made[i]) != NULL));
        if (count != 0) {
            compare_decoded(module, MXMODULE_MODBUS);
        }
        mxmodule_composition_free(made[i]);
    }
    mxmodule_bytes_free(image);
    mxmodule_bytes_free(values);
}

/* Returns whether there is a module in this file. */
static int try_module(const char* path)
{
    mxmodule_error* error = NULL;
    mxmodule_module* module = mxmodule_load(path, 0, 0, &error);
    if (module == NULL) {
        EXPECT(mxmodule_error_code(error) == MXMODULE_INPUT);
        EXPECT(strcmp(mxmodule_error_place(error), path) == 0);
        mxmodule_error_free(error);
        return 0;
    }
    report(error);
    compare_copy(module);
    compare_composed(module);
    compare_decoded(module, MXMODULE_RAW);
    mxmodule_free(module);
    return 1;
}

/* Pt1000 is the number 1 and the second option, 100 degrees are 1000 = 0x03e8, -2 is 0xfe. The
   other values are the defaults: -3 = 0xfd, Potentiometer, the number 6 and the fifth option, 450
   degrees, 4500 = 0x1194. */
static void compare_values(const mxmodule_module* module)
{
    static const mxmodule_assignment values[] = {
        {"Temperature 1/Sensor type", "Pt1000"},
        {"Temperature 1/Temperature limit", "100 \xc2\xb0\x43"},
        {"channel_1/Wires", "-2"}};
    static const unsigned char image[] = {0x01, 0x03, 0xe8, 0xfd, 0x06, 0x11, 0x94, 0xfe};
    static const uint16_t registers[] = {0x0100, 0x03e8, 0xfd00, 0x0400, 0x1194, 0xfe00};
    mxmodule_error* error = NULL;
    mxmodule_composition* made =
        mxmodule_compose(module, values, 3, NULL, 0, MXMODULE_FULL, &error);
    size_t count = 0;
    report(error);
    EXPECT(memcmp(mxmodule_composition_image(made, &count), image, sizeof image) == 0);
    EXPECT(count == sizeof image);
    EXPECT(memcmp(mxmodule_composition_registers(made, &count), registers, sizeof registers) == 0);
    EXPECT(count == sizeof registers / sizeof registers[0]);
    EXPECT(mxmodule_composition_findings(made) == NULL);
    mxmodule_composition_free(made);
}

static void compare_refusal(const mxmodule_module* module)
{
    static const mxmodule_assignment value = {"channel_1/Wires", "7"};
    mxmodule_error* error = NULL;
    EXPECT(mxmodule_compose(module, &value, 1, NULL, 0, MXMODULE_FULL, &error) == NULL);
    EXPECT(mxmodule_error_code(error) == MXMODULE_REQUEST);
    EXPECT(strcmp(mxmodule_error_place(error), "channel_1/Wires") == 0);
    EXPECT(strstr(mxmodule_error_text(error), "expected a whole number, -4 to -2") != NULL);
    EXPECT(strstr(mxmodule_error_findings(error), "\"-4 to -2\"") != NULL);
    mxmodule_error_free(error);
    EXPECT(mxmodule_json(NULL, &error) == NULL);
    EXPECT(mxmodule_error_code(error) == MXMODULE_MISUSE);
    mxmodule_error_free(error);
}

/* Two inputs of 16 bits; the third parameter of the first channel is "Wires". */
static void compare_by_hand(const char* folder)
{
    char path[LONGEST_PATH];
    mxmodule_error* error = NULL;
    mxmodule_module* module = NULL;
    size_t position = 0;
    snprintf(path, sizeof path, "%s/MX0502.bin", folder);
    module = mxmodule_load(path, 2, 0, &error);
    report(error);
    EXPECT(is_text(mxmodule_module_id(module, NULL), "5a050502"));
    EXPECT(is_text(mxmodule_product_picture(module, NULL), ""));
    EXPECT(contains(mxmodule_channels_declarations(module, NULL), "AT %IW2 : INT;"));
    EXPECT(contains(mxmodule_channels_declarations(module, NULL), "AT %IW4 : INT;"));
    EXPECT(mxmodule_parameter_called(module, "Temperature 1/Wires", &position, NULL) == 1);
    EXPECT(position == 2);
    compare_values(module);
    compare_refusal(module);
    mxmodule_free(module);
}

static int on_progress(void* context, size_t done, size_t total)
{
    *(int*)context += done <= total;
    return 0;
}

/* A module of a catalogue is used after the catalogue is closed. */
static void compare_catalogue(const char* folder, int modules)
{
    char inserted[LONGEST_PATH];
    int calls = 0;
    mxmodule_observer observer = {NULL, NULL, on_progress};
    mxmodule_error* error = NULL;
    mxmodule_catalogue* catalogue = mxmodule_catalogue_open("sqlite::memory:", 1, &error);
    mxmodule_module* found = NULL;
    static const char* const conditions[] = {"in_bytes=4", "out_bytes=0"};
    observer.context = &calls;
    report(error);
    snprintf(inserted, sizeof inserted, "\"inserted\": %d,", modules);
    EXPECT(
        contains(mxmodule_catalogue_populate(catalogue, folder, 0, &observer, &error), inserted));
    report(error);
    EXPECT(calls > modules);
    EXPECT(contains(mxmodule_catalogue_search(catalogue, "rtd PT100", conditions, 2, NULL),
                    "\"5a050502\""));
    found = mxmodule_catalogue_module(catalogue, "5a050502", 0, 0, &error);
    report(error);
    EXPECT(mxmodule_catalogue_remove(catalogue, "5a050502", NULL) == 1);
    EXPECT(mxmodule_catalogue_find(catalogue, "5a050502", &error) == NULL);
    EXPECT(mxmodule_error_code(error) == MXMODULE_REQUEST);
    mxmodule_catalogue_free(catalogue);
    mxmodule_error_free(error);
    compare_values(found);
    mxmodule_free(found);
}

/* Prints how many findings there are: the last members of the JSON. */
static void print_findings(const char* const* paths, size_t count)
{
    mxmodule_error* error = NULL;
    mxmodule_bytes* checked = mxmodule_check(paths, count, &error);
    const char* totals = strstr(mxmodule_bytes_data(checked), "\"errors\":");
    int errors = -1;
    int warnings = -1;
    int notes = -1;
    report(error);
    EXPECT(totals != NULL);
    EXPECT(totals != NULL && sscanf(totals, "\"errors\": %d, \"warnings\": %d, \"notes\": %d",
                                    &errors, &warnings, &notes) == 3);
    printf("%u files checked: %d errors, %d warnings, %d notes\n", (unsigned)count, errors,
           warnings, notes);
    mxmodule_bytes_free(checked);
}

int main(int argc, char** argv)
{
    int modules = 0;
    int i;
    if (argc < 3) {
        fputs("Usage: every-module FOLDER FILE...\n", stderr);
        return 2;
    }
    for (i = 2; i < argc; ++i) {
        modules += try_module(argv[i]);
    }
    printf("%d modules\n", modules);
    compare_by_hand(argv[1]);
    compare_catalogue(argv[1], modules);
    print_findings((const char* const*)argv + 2, (size_t)argc - 2);
    return failures == 0 ? 0 : 1;
}
