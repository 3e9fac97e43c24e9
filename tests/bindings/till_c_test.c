/* The safe sale as a program in C sees it, on the printer at COM1, whose third close gets no answer (till_c.sh). */
#define _POSIX_C_SOURCE 200809L
#include <pthread.h>
#include <stdio.h>
#include <string.h>
#include <zentaro_till_c.h>

static int failures = 0;
static zentaro_object* printer;
static zentaro_value answer;

static void expect(int line, int32_t number, int32_t expected, const char* piece) {
  const char* seen = number != 0 ? zentaro_error_description() : answer.kind == ZENTARO_TEXT ? answer.as.text : "";
  if (number == expected && strstr(seen, piece) != NULL) return;
  ++failures;
  printf("%d: %d, %s instead of %d, %s\n", line, (int)number, seen, (int)expected, piece);
}
#define EXPECT(call, number, piece) expect(__LINE__, call, number, piece)

#define SALE(price) \
  "{\"documento\": \"factura\", \"cliente\": {\"nombre\": \"Ana P\xC3\xA9rez\", \"rif\": \"V-12345678\"}, \"renglones\": " \
  "[{\"descripcion\": \"Pan\", \"precio\": \"" price "\", \"impuesto\": 16}], \"pagos\": [{\"monto\": 40}]}"
static const char* const credit_note =
    "{\"document\": \"credit note\", \"customer\": {\"name\": \"Ana\", \"rif\": \"V-12345678\"}, \"invoice\": {\"number\": \"1\", "
    "\"serial\": \"ZZZ0000001\", \"date\": \"2024-03-15\", \"time\": \"14:05:00\"}, \"lines\": "
    "[{\"description\": \"Pan\", \"price\": 10, \"tax\": 16}]}";

static int32_t sell(const char* document, const char* options) {
  return zentaro_till_sell(printer, document, options, NULL, NULL, &answer);
}

static void what_a_document_is_worth(void) {
  EXPECT(zentaro_till_check(SALE("10"), &answer), 0, "\"problems\":[],\"warnings\":[],\"net\":\"10.00\",\"tax\":\"1.60\"");
  EXPECT(zentaro_till_check(SALE("1O"), &answer), 0, "\"path\":\"renglones[0].precio\"");
}

static void what_the_program_did_wrong(void) {
  zentaro_object* closed = zentaro_create("CZentaro");
  EXPECT(sell(SALE("1O"), NULL), 5, "renglones[0].precio");
  EXPECT(sell("", NULL), 5, "");
  EXPECT(sell(SALE("10"), "{\"id\": \"a b\"}"), 5, "a b");
  EXPECT(sell(SALE("10"), "{\"identity\": \"F-1\"}"), 5, "options.identity");
  EXPECT(sell(SALE("10"), "[]"), 5, "options");
  EXPECT(sell(SALE("10"), "{\"wait\": -1}"), 5, "options.wait");
  EXPECT(zentaro_till_close(printer, "Y", NULL, NULL, NULL, &answer), 5, "\"X\"");
  EXPECT(zentaro_till_sell(closed, SALE("10"), NULL, NULL, NULL, &answer), 5, "PortOpen");
  EXPECT(zentaro_till_settle(NULL, NULL, NULL, NULL, &answer), 91, "");
  zentaro_release(closed);
}

static void each_document_once(void) {
  EXPECT(sell(SALE("10"), "{\"id\": \"F-1\"}"), 0, "\"verdict\":\"printed\",\"number\":1,\"total\":\"11.60\"");
  EXPECT(sell(SALE("10"), "{\"id\": \"F-1\"}"), 0, "\"verdict\":\"already-printed\",\"number\":1");
  EXPECT(sell(SALE("11"), "{\"id\": \"F-1\"}"), 0, "\"verdict\":\"other-content\"");
  EXPECT(sell(credit_note, "{\"id\": \"N-1\"}"), 0, "\"verdict\":\"printed\",\"number\":1");
  EXPECT(sell(SALE("12"), "{\"id\": \"F-2\", \"giveUp\": 20}"), 0, "\"verdict\":\"printed\",\"number\":2");
  EXPECT(zentaro_till_jobs("F-2", 1, &answer), 0, "[{\"id\":\"F-2\",\"printer\":\"COM1\"");
  EXPECT(zentaro_till_jobs("F-9", 1, &answer), 0, "[]");
  EXPECT(zentaro_till_jobs(NULL, 2, &answer), 0, "[{\"id\":\"N-1\"");
}

/* At the item: calls inside a call are refused, and another thread has the sale stopped. */
static void* stop(void* unused) {
  zentaro_till_stop(printer);
  return unused;
}
static void at_each_line(void* count, const char* line) {
  pthread_t thread;
  ++*(int*)count;
  if (strstr(line, "Pan") == NULL) return;
  EXPECT(zentaro_till_settle(printer, NULL, NULL, NULL, &answer), 5, "");
  pthread_create(&thread, NULL, stop, NULL);
  pthread_join(thread, NULL);
}

/* Released by the program while it is sold on. */
static void release(void* handle, const char* line) {
  if (strstr(line, "Pan") != NULL) zentaro_release(*(zentaro_object**)handle), *(zentaro_object**)handle = NULL;
}

static void what_callbacks_do(void) {
  int lines = 0;
  zentaro_till_stop(printer); /* nothing is under way, and nothing stays behind */
  EXPECT(zentaro_till_sell(printer, SALE("13"), "{\"id\": \"F-3\"}", at_each_line, &lines, &answer), 0, "\"verdict\":\"not-printed\"");
  if (lines < 3) EXPECT(lines, 3, "lines told");
  EXPECT(zentaro_till_settle(printer, "{\"wait\": 1}", NULL, NULL, &answer), 0, "\"refusal\":null,\"cause\":null,\"machine\":\"");
  EXPECT(zentaro_till_close(printer, "x", NULL, NULL, NULL, &answer), 0, "\"closing\":\"X\",\"verdict\":\"printed\"");
  EXPECT(zentaro_till_close(printer, "Z", "{\"id\": \"Z-1\"}", NULL, NULL, &answer), 0, "\"number\":1");
  EXPECT(zentaro_till_close(printer, "Z", "{\"id\": \"Z-1\"}", NULL, NULL, &answer), 0, "\"verdict\":\"already-printed\"");
  EXPECT(zentaro_till_sell(printer, SALE("14"), "{\"id\": \"F-4\"}", release, &printer, &answer), 0, "\"verdict\":\"printed\",\"number\":4");
}

int main(void) {
  zentaro_value one = {ZENTARO_INT16, 0, {0}};
  one.as.int16 = 1;
  printer = zentaro_create("Zentaro.CZentaro");
  EXPECT(zentaro_put(printer, "CommPort", &one), 0, "");
  EXPECT(zentaro_put(printer, "PortOpen", &one), 0, "");
  what_a_document_is_worth();
  what_the_program_did_wrong();
  each_document_once();
  what_callbacks_do();
  zentaro_release(printer);
  zentaro_clear(&answer);
  return failures == 0 ? 0 : 1;
}
