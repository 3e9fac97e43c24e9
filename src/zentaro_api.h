// Marks what programs that link the shared library may use; everything else stays inside it. On Windows there
// is no such library: what a program sees there is the automation server.
#pragma once

#if __has_attribute(dllexport)
#define ZENTARO_API
#else
#define ZENTARO_API __attribute__((visibility("default")))
#endif
