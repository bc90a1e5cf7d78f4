#pragma once

#include <mxmodule/Catalogue.h>
#include <mxmodule/ChannelColumns.h>
#include <mxmodule/Configuration.h>
#include <mxmodule/Module.h>
#include <mxmodule/c/bytes.h>
#include <mxmodule/c/catalogue.h>
#include <mxmodule/c/columns.h>
#include <mxmodule/c/configuration.h>
#include <mxmodule/c/error.h>
#include <mxmodule/c/module.h>

#include <array>
#include <string>
#include <utility>

// What the handles of the C interface are. Each owns all that it needs.

struct mxmodule_bytes
{
    std::string content;
};

struct mxmodule_error
{
    mxmodule_code code;
    std::string text;
    std::string place;
    std::string hint;
    std::string findings; // JSON
};

struct mxmodule_module
{
    mxmodule::Module module;
};

struct mxmodule_composition
{
    mxmodule::Composition made;
    std::string findings;    // JSON; empty: none
    std::string noRegisters; // the same
};

struct mxmodule_configuration
{
    mxmodule::Configuration configuration;
};

struct mxmodule_comparison
{
    mxmodule::Comparison comparison;
};

struct mxmodule_catalogue
{
    mxmodule::Catalogue catalogue;
};

struct mxmodule_columns
{
    mxmodule::ChannelColumns numbers;
    std::array<std::string, 5> texts; // JSON
};
