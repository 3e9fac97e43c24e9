// The functions of the C interface: each a call into the library behind the one guard that no
// exception passes.
#include "zentaro_c.h"

#include <cstdlib>
#include <string>
#include <vector>

#include "automation/automation_error.h"
#include "errors.h"
#include "interface/description_json.h"
#include "interface/library.h"
#include "platform/host.h"
#include "platform/per_thread.h"
#include "text/unicode.h"
#include "values.h"

// What programs were compiled against.
static_assert(sizeof(zentaro_value) == 16 && offsetof(zentaro_value, as) == 8);

namespace {

using namespace zentaro;
using namespace zentaro::c;

struct LastError {
  int32_t number = 0;
  std::string source, description;
};

}  // namespace

int32_t zentaro::c::failed(int32_t number, std::string source, std::string description) {
  perThread<LastError>() = {number, std::move(source), std::move(description)};
  return number;
}

int32_t zentaro_clear(zentaro_value* value) {
  return guarded([&] { clear(*value); });
}

int32_t zentaro_set_text(zentaro_value* value, const char* text, int32_t length) {
  return guarded([&] {
    const auto view = length < 0 ? std::string_view(text) : std::string_view(text, std::size_t(length));
    replace(*value, textValue(view));
  });
}

int32_t zentaro_set_array(zentaro_value* value, int32_t count) {
  return guarded([&] {
    if (count < 0) throw AutomationError(ErrorNumber::SubscriptOutOfRange);
    replace(*value, arrayValue(static_cast<std::size_t>(count)));
  });
}

int32_t zentaro_set_object(zentaro_value* value, const zentaro_object* object) {
  return guarded([&] { replace(*value, valueOf(object == nullptr ? Object() : objectOf(object))); });
}

void zentaro_free_text(char* text) { std::free(text); }

zentaro_object* zentaro_create(const char* class_name) {
  zentaro_object* handle = nullptr;
  guarded([&] { handle = new zentaro_object{createObject(class_name)}; });
  return handle;
}

int32_t zentaro_release(zentaro_object* object) {
  if (object == nullptr) return 0;
  return guarded([&] {
    objectOf(object);  // of this thread
    delete object;
  });
}

const char* zentaro_class_name(const zentaro_object* object) {
  return object->object.description().name.data();  // a literal
}

int32_t zentaro_get(const zentaro_object* object, const char* name, zentaro_value* result) {
  return guarded([&] { replace(*result, valueOf(objectOf(object).get(name))); });
}

int32_t zentaro_put(const zentaro_object* object, const char* name, const zentaro_value* value) {
  return guarded([&] { objectOf(object).put(name, variantOf(*value)); });
}

int32_t zentaro_call(const zentaro_object* object, const char* name, zentaro_value* arguments, int32_t count,
                     zentaro_value* result) {
  // Stays empty when an argument cannot be read: then there is nothing to give back.
  std::vector<Variant> values;
  Variant returned;
  const int32_t outcome = guarded([&] {
    values = variantsOf(arguments, count);
    returned = objectOf(object).call(name, values);
  });
  const int32_t delivered = guarded([&] {
    for (std::size_t index = 0; index < values.size(); ++index)
      replace(arguments[index], valueOf(values[index]));
    if (outcome == 0 && result != nullptr) replace(*result, valueOf(returned));
  });
  return outcome != 0 ? outcome : delivered;
}

int32_t zentaro_describe(const char* class_name, zentaro_value* result) {
  return guarded([&] {
    const ClassDescription* known = class_name == nullptr ? nullptr : findClass(class_name);
    if (class_name != nullptr && known == nullptr) throw AutomationError(ErrorNumber::CannotCreateObject);
    replace(*result, textValue(known == nullptr ? libraryJson() : classJson(*known, known->members)));
  });
}

int32_t zentaro_error_number(void) { return perThread<LastError>().number; }
const char* zentaro_error_source(void) { return perThread<LastError>().source.c_str(); }
const char* zentaro_error_description(void) { return perThread<LastError>().description.c_str(); }

void zentaro_set_yield(zentaro_yield callback, void* user) {
  if (callback == nullptr) return setYieldCallback({});
  setYieldCallback([callback, user] {
    const int32_t number = callback(user);
    if (number != 0) throw AutomationError(number, u"Zentaro", u"The host ended the operation");
  });
}

void zentaro_set_message_box(zentaro_message_box callback, void* user) {
  if (callback == nullptr) return setMessageBoxCallback({});
  setMessageBoxCallback([callback, user](std::u16string_view title, std::u16string_view text) {
    callback(user, utf8(title).c_str(), utf8(text).c_str());
  });
}

const char* zentaro_version(void) { return ZENTARO_VERSION; }
