// The system's declarations of its shell, which stand on others of its own.
#pragma once

// clang-format off
#include <windows.h>
#include <shellapi.h>
// clang-format on
