// Tests read what is said in English, whatever the machine speaks.
#include <cstdlib>

[[maybe_unused]] static const int english = ::setenv("ZENTARO_LANG", "en", 1);
