#pragma once

/// Marks what libdevice-database exports.
#define DEVICE_DATABASE_API __attribute__((visibility("default")))
