#pragma once

/// Marks the data-model classes: they are defined in headers alone, and their type information has
/// to be the same object in the host and in every parser that the host loads.
#define DATAMODEL_API __attribute__((visibility("default")))
