// Marks what programs that link the shared library may use; everything else stays inside it.
#pragma once

#if __has_attribute(dllexport)
#define ZENTARO_API __attribute__((dllexport))
#else
#define ZENTARO_API __attribute__((visibility("default")))
#endif
