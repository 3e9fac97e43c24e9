// The calls that sell, for 32-bit programs whose language knows only the calling convention of the system: the same functions with "_std"
// behind their names, and callbacks of that convention.
#include "zentaro_till_c.h"

namespace {

using Progress = void(__stdcall*)(void* user, const char* line);

/// Where the lines go; the calls have ended before it does.
struct Listener {
  Progress progress;
  void* user;
};

void tell(void* listener, const char* line) {
  const auto& to = *static_cast<const Listener*>(listener);
  if (to.progress != nullptr) to.progress(to.user, line);
}

}  // namespace

extern "C" {

ZENTARO_C_API zentaro_object* __stdcall zentaro_create_std(const char* name) { return zentaro_create(name); }
ZENTARO_C_API int32_t __stdcall zentaro_release_std(zentaro_object* object) {
  return zentaro_release(object);
}
ZENTARO_C_API int32_t __stdcall zentaro_clear_std(zentaro_value* value) { return zentaro_clear(value); }
ZENTARO_C_API int32_t __stdcall zentaro_set_text_std(zentaro_value* value, const char* text, int32_t length) {
  return zentaro_set_text(value, text, length);
}
ZENTARO_C_API int32_t __stdcall zentaro_get_std(const zentaro_object* object, const char* name,
                                                zentaro_value* result) {
  return zentaro_get(object, name, result);
}
ZENTARO_C_API int32_t __stdcall zentaro_put_std(const zentaro_object* object, const char* name,
                                                const zentaro_value* value) {
  return zentaro_put(object, name, value);
}
ZENTARO_C_API int32_t __stdcall zentaro_call_std(const zentaro_object* object, const char* name,
                                                 zentaro_value* arguments, int32_t count,
                                                 zentaro_value* result) {
  return zentaro_call(object, name, arguments, count, result);
}
ZENTARO_C_API int32_t __stdcall zentaro_error_number_std() { return zentaro_error_number(); }
ZENTARO_C_API const char* __stdcall zentaro_error_description_std() { return zentaro_error_description(); }

ZENTARO_C_API int32_t __stdcall zentaro_till_sell_std(zentaro_object* printer, const char* document,
                                                      const char* options, Progress progress, void* user,
                                                      zentaro_value* verdict) {
  Listener listener{progress, user};
  return zentaro_till_sell(printer, document, options, tell, &listener, verdict);
}
ZENTARO_C_API int32_t __stdcall zentaro_till_check_std(const char* document, zentaro_value* result) {
  return zentaro_till_check(document, result);
}
ZENTARO_C_API int32_t __stdcall zentaro_till_close_std(zentaro_object* printer, const char* closing,
                                                       const char* options, Progress progress, void* user,
                                                       zentaro_value* verdict) {
  Listener listener{progress, user};
  return zentaro_till_close(printer, closing, options, tell, &listener, verdict);
}
ZENTARO_C_API int32_t __stdcall zentaro_till_settle_std(zentaro_object* printer, const char* options,
                                                        Progress progress, void* user,
                                                        zentaro_value* result) {
  Listener listener{progress, user};
  return zentaro_till_settle(printer, options, tell, &listener, result);
}
ZENTARO_C_API int32_t __stdcall zentaro_till_jobs_std(const char* id, int32_t most, zentaro_value* result) {
  return zentaro_till_jobs(id, most, result);
}
ZENTARO_C_API void __stdcall zentaro_till_stop_std(const zentaro_object* printer) {
  zentaro_till_stop(printer);
}
}
