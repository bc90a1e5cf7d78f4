/* A host in C that sets parameters of a module by their names and prints the Modbus registers of
   the module, in hexadecimal. */
#include <mxmodule/mxmodule.h>

#include <stdio.h>
#include <stdlib.h>

/* Prints what is wrong, and frees it. */
static int refused(mxmodule_error* error)
{
    fprintf(stderr, "error: %s: %s\n", mxmodule_error_place(error), mxmodule_error_text(error));
    if (mxmodule_error_hint(error)[0] != '\0') {
        fprintf(stderr, "hint: %s\n", mxmodule_error_hint(error));
    }
    mxmodule_error_free(error);
    return 1;
}

static void print_registers(const mxmodule_composition* made)
{
    size_t count = 0;
    const uint16_t* registers = mxmodule_composition_registers(made, &count);
    size_t i;
    for (i = 0; i < count; ++i) {
        printf("%04x\n", (unsigned)registers[i]);
    }
    if (mxmodule_composition_findings(made) != NULL) { /* JSON, such as a value that was rounded */
        fputs(mxmodule_composition_findings(made), stderr);
    }
}

/* Sets each name to the value after it. */
static int configure(const mxmodule_module* module, char** words, size_t count)
{
    mxmodule_assignment* values = calloc(count + 1, sizeof *values);
    mxmodule_composition* made = NULL;
    mxmodule_error* error = NULL;
    size_t i;
    if (values == NULL) {
        fputs("error: no memory\n", stderr);
        return 1;
    }
    for (i = 0; i < count; ++i) {
        values[i].name = words[2 * i];
        values[i].value = words[2 * i + 1];
    }
    made = mxmodule_compose(module, values, count, NULL, 0, MXMODULE_FULL, &error);
    free(values);
    if (made == NULL) {
        return refused(error);
    }
    print_registers(made);
    mxmodule_composition_free(made);
    return 0;
}

int main(int argc, char** argv)
{
    mxmodule_error* error = NULL;
    mxmodule_module* module = NULL;
    int result = 0;
    if (argc < 2 || argc % 2 != 0) {
        fputs("Usage: from-c MX-FILE [NAME VALUE]...\n", stderr);
        return 2;
    }
    module = mxmodule_load(argv[1], 0, 0, &error);
    if (module == NULL) {
        return refused(error);
    }
    result = configure(module, argv + 2, ((size_t)argc - 2) / 2);
    mxmodule_free(module);
    return result;
}
