// Marks what programs that link the shared library may use; everything else stays inside it.
#pragma once

#if defined(_WIN32)
#define ZENTARO_API __declspec(dllexport)
#else
#define ZENTARO_API __attribute__((visibility("default")))
#endif
