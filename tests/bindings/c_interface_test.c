/* The C interface as a program in C sees it: layout, ownership (judged by ASan and valgrind), errors, threads, callbacks. */
#define _POSIX_C_SOURCE 200809L
#include <pthread.h>
#include <stddef.h>
#include <stdio.h>
#include <string.h>
#include <zentaro_c.h>

static int failures = 0;

#define CHECK(condition) \
  do { \
    if (!(condition)) { \
      ++failures; \
      printf("%d: %s (last error %d: %s)\n", __LINE__, #condition, (int)zentaro_error_number(), zentaro_error_description()); \
    } \
  } while (0)

static int holds(const zentaro_value* value, const char* text) {
  return value->kind == ZENTARO_TEXT && value->count == (int32_t)strlen(text) && strcmp(value->as.text, text) == 0;
}

static void the_layout_stays(void) {
  CHECK(sizeof(zentaro_value) == 16 && offsetof(zentaro_value, count) == 4 && offsetof(zentaro_value, as) == 8);
  CHECK(ZENTARO_MISSING == 2 && ZENTARO_INT32 == 5 && ZENTARO_CURRENCY == 7 && ZENTARO_TEXT == 9 && ZENTARO_OBJECT == 11);
}

/* CommPort is a Variant: it gives back what it was given. */
static void every_kind_of_value_comes_back(zentaro_object* printer) {
  zentaro_value array = {0}, back = {0};
  CHECK(zentaro_set_array(&array, 12) == 0);
  zentaro_value* items = array.as.items;
  items[1].kind = ZENTARO_NULL;
  items[2].kind = ZENTARO_BOOLEAN, items[2].as.boolean = 1;
  items[3].kind = ZENTARO_INT16, items[3].as.int16 = -2;
  items[4].kind = ZENTARO_INT32, items[4].as.int32 = 70000;
  items[5].kind = ZENTARO_DOUBLE, items[5].as.number = 0.525;
  items[6].kind = ZENTARO_CURRENCY, items[6].as.currency = INT64_C(-922337203685477580);
  items[7].kind = ZENTARO_DATE, items[7].as.number = 45366.5;
  CHECK(zentaro_set_text(&items[8], "Caf\xC3\xA9\0x", 7) == 0);
  CHECK(zentaro_set_object(&items[9], printer) == 0);
  items[10].kind = ZENTARO_ARRAY, items[10].count = -1; /* never given bounds */
  items[11].kind = ZENTARO_OBJECT;                      /* the null reference */
  CHECK(zentaro_put(printer, "commport", &array) == 0);
  CHECK(zentaro_get(printer, "CommPort", &back) == 0 && back.kind == ZENTARO_ARRAY && back.count == 12);
  for (int i = 0; i < 12 && back.count == 12; ++i) {
    const zentaro_value *in = &items[i], *out = &back.as.items[i];
    CHECK(in->kind == out->kind && in->count == out->count);
    CHECK(i > 7 || memcmp(&in->as, &out->as, i == 3 ? 2 : i == 2 || i == 4 ? 4 : 8) == 0);
  }
  CHECK(memcmp(back.as.items[8].as.text, "Caf\xC3\xA9\0x", 8) == 0);
  CHECK(strcmp(zentaro_class_name(back.as.items[9].as.object), "CZentaro") == 0);
  CHECK(zentaro_clear(&array) == 0 && array.kind == ZENTARO_EMPTY);
  CHECK(zentaro_put(printer, "CommPort", &array) == 0); /* it held itself */
  CHECK(zentaro_clear(&back) == 0);
}

static void errors_are_numbers_with_texts(zentaro_object* printer) {
  zentaro_value value = {ZENTARO_INT16, 0, {0}};
  value.as.int16 = 1;
  CHECK(zentaro_create("Zentaro.statusN") == NULL && zentaro_error_number() == 429);
  CHECK(zentaro_get(NULL, "CommPort", &value) == 91 && zentaro_get(printer, "Nope", &value) == 438);
  CHECK(zentaro_describe("Zentaro.Nope", &value) == 429 && value.kind == ZENTARO_INT16);
  CHECK(zentaro_put(printer, "CommPort", &value) == 0 && zentaro_put(printer, "PortOpen", &value) == 40001);
  CHECK(zentaro_error_number() == 40001 && strcmp(zentaro_error_source(), "CZentaro.Let PortOpen") == 0);
  CHECK(strlen(zentaro_error_description()) > 0);
  value.kind = 12;
  CHECK(zentaro_put(printer, "CommPort", &value) == 13 && zentaro_call(printer, "PasarLineaExtra", &value, 1, NULL) == 13);
  value.kind = ZENTARO_EMPTY;
  CHECK(zentaro_set_array(&value, -1) == 9);
}

struct Calls {
  int yields, boxes;
  int32_t answer;
};
static int32_t count_yield(void* calls) { return ++((struct Calls*)calls)->yields, ((struct Calls*)calls)->answer; }
static void count_box(void* calls, const char* title, const char* text) {
  ((struct Calls*)calls)->boxes += strcmp(title, "modComm") == 0 && strstr(text, "/nonexistent/trace") != NULL;
}

/* The port is closed, and this operation does not look: it waits for the time-out of a second. */
static void a_call_waits_with_callbacks_and_writes_back(zentaro_object* printer) {
  struct Calls calls = {0, 0, 0};
  zentaro_value result = {0}, arguments[2] = {{0}, {ZENTARO_DOUBLE, 0, {0}}};
  arguments[1].as.number = 12.5;
  zentaro_set_yield(count_yield, &calls);
  CHECK(zentaro_set_text(&arguments[0], "T", -1) == 0);
  CHECK(zentaro_call(printer, "CerrarComprobanteIGTF", arguments, 2, &result) == 0);
  CHECK(result.kind == ZENTARO_INT32 && result.as.int32 == 1 && holds(&arguments[0], "U") && calls.yields > 10);
  calls.answer = 1234;
  arguments[1].as.number = 0;
  CHECK(zentaro_call(printer, "CerrarComprobanteIGTF", arguments, 2, &result) == 1234);
  CHECK(holds(&arguments[0], "T") && result.kind == ZENTARO_INT32);
  zentaro_set_yield(NULL, NULL);
  CHECK(zentaro_clear(&arguments[0]) == 0);
  arguments[0].kind = ZENTARO_BOOLEAN, arguments[0].as.boolean = 0;
  zentaro_set_message_box(count_box, &calls);
  CHECK(zentaro_put(printer, "PortOpen", &arguments[0]) == 0);
  arguments[0].as.boolean = 1;
  CHECK(zentaro_put(printer, "PortOpen", &arguments[0]) == 40001 && calls.boxes == 1);
  zentaro_set_message_box(NULL, NULL);
}

static int32_t release_once(void* printer) {
  zentaro_object** const held = printer;
  CHECK(zentaro_release(*held) == 0);
  *held = NULL;
  zentaro_set_yield(NULL, NULL);
  return 0;
}

/* Under ASan and valgrind: the object lasts as long as its call. */
static void an_object_may_be_released_inside_its_own_call(void) {
  zentaro_object* printer = zentaro_create("CZentaro");
  zentaro_value result = {0};
  zentaro_set_yield(release_once, &printer);
  CHECK(zentaro_call(printer, "Subtotal", NULL, 0, &result) == 0 && result.as.int16 == 1 && printer == NULL);
}

static void deep_arrays_are_refused_and_given_back(zentaro_object* printer) {
  zentaro_value outer = {0}, inner = {0};
  for (int depth = 1; depth <= 200000; ++depth) {
    if (depth == 65) CHECK(zentaro_put(printer, "CommPort", &inner) == 0);
    CHECK(zentaro_set_array(&outer, 2) == 0 && zentaro_set_text(&outer.as.items[1], "x", 1) == 0);
    outer.as.items[0] = inner;
    inner = outer;
    memset(&outer, 0, sizeof outer);
  }
  CHECK(zentaro_put(printer, "CommPort", &inner) == 13);
  CHECK(zentaro_clear(&inner) == 0 && inner.kind == ZENTARO_EMPTY);
  CHECK(zentaro_put(printer, "CommPort", &inner) == 0);
}

static void* on_another_thread(void* printer) {
  zentaro_value value = {0};
  CHECK(zentaro_error_number() == 0 && zentaro_error_description()[0] == '\0');
  CHECK(zentaro_get(printer, "CommPort", &value) == 5 && zentaro_release(printer) == 5 && zentaro_error_number() == 5);
  CHECK(zentaro_set_object(&value, printer) == 5 && value.kind == ZENTARO_EMPTY);
  CHECK(zentaro_set_array(&value, 1) == 0);
  value.as.items[0].kind = ZENTARO_OBJECT, value.as.items[0].as.object = printer;
  CHECK(zentaro_clear(&value) == 5 && value.kind == ZENTARO_ARRAY && value.as.items[0].kind == ZENTARO_OBJECT);
  value.as.items[0].kind = ZENTARO_EMPTY;
  CHECK(zentaro_clear(&value) == 0);
  return NULL;
}

int main(void) {
  zentaro_object* printer = zentaro_create("zentaro.czentaro");
  pthread_t thread;
  the_layout_stays();
  every_kind_of_value_comes_back(printer);
  an_object_may_be_released_inside_its_own_call();
  deep_arrays_are_refused_and_given_back(printer);
  errors_are_numbers_with_texts(printer);
  a_call_waits_with_callbacks_and_writes_back(printer);
  CHECK(pthread_create(&thread, NULL, on_another_thread, printer) == 0 && pthread_join(thread, NULL) == 0);
  CHECK(zentaro_error_number() == 40001); /* each thread has its own */
  CHECK(zentaro_release(printer) == 0 && zentaro_release(NULL) == 0);
  printf("%d failed, version %s\n", failures, zentaro_version());
  return failures != 0;
}
