/* A small sale that is never printed twice. `sale-c 2` prints at COM2; without a port it prints on a virtual printer. */
#define _POSIX_C_SOURCE 200809L
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <zentaro_c.h>

#include "virtual_printer.h"

typedef zentaro_value value;

static value number(double amount) {
  value made = {ZENTARO_DOUBLE, 0, {0}};
  made.as.number = amount;
  return made;
}

static value text(const char* utf8) {
  value made = {ZENTARO_EMPTY, 0, {0}};
  zentaro_set_text(&made, utf8, -1);
  return made;
}

/* A whole number, a flag or a currency amount. */
static long long whole(value result) {
  long long is = result.kind == ZENTARO_INT16      ? result.as.int16
                 : result.kind == ZENTARO_CURRENCY ? result.as.currency
                                                   : result.as.int32;
  zentaro_clear(&result);
  return is;
}

static value get(zentaro_object* object, const char* name) {
  value result = {ZENTARO_EMPTY, 0, {0}};
  if (zentaro_get(object, name, &result) != 0) fprintf(stderr, "%s: %s\n", name, zentaro_error_description());
  return result;
}

static int put(zentaro_object* object, const char* name, int32_t flag) {
  value given = {ZENTARO_INT32, 0, {0}};
  given.as.int32 = flag;
  return zentaro_put(object, name, &given) == 0;
}

/* The arguments are given back. */
static value call(zentaro_object* object, const char* name, int32_t count, value first, value second) {
  value result = {ZENTARO_EMPTY, 0, {0}}, arguments[2];
  arguments[0] = first, arguments[1] = second;
  if (zentaro_call(object, name, arguments, count, &result) != 0) fprintf(stderr, "%s: %s\n", name, zentaro_error_description());
  for (int i = 0; i < 2; ++i) zentaro_clear(&arguments[i]);
  return result;
}

static const value none = {ZENTARO_EMPTY, 0, {0}};

/* Done; the first field of an answer is the command that it answers. */
static int answered(zentaro_object* printer) {
  return whole(get(printer, "nEnvironmentError")) == 0 &&
         whole(call(printer, "response", 1, number(0), none)) == whole(get(printer, "nLastCommand"));
}

/* The amount sold today; nothing is printed. -1 when the printer does not say. */
static long long sold(zentaro_object* printer) {
  const char* names[] = {"VentasExentas", "BaseGravable1", "BaseGravable2", "BaseGravable3"};
  long long amount = 0;
  value flag = {ZENTARO_BOOLEAN, 0, {0}}, day;
  call(printer, "RealizarCierre", 2, number(0), flag);
  if (!answered(printer)) return -1;
  day = call(printer, "GetResultadoCierre", 0, none, none);
  for (int i = 0; i < 4; ++i) amount += whole(get(day.as.object, names[i]));
  zentaro_clear(&day);
  return amount;
}

/* The status of the document, as soon as an answer is the one to its question; -1 when that takes longer than half a minute. */
static long long in_step(zentaro_object* printer) {
  for (int pause = 500; pause <= 16000; pause *= 2) {
    struct timespec wait = {pause / 1000, pause % 1000 * 1000000L};
    value status;
    long long document = -1;
    nanosleep(&wait, NULL); /* late answers gather while the port is open, and opening it throws them away */
    put(printer, "PortOpen", 0);
    if (!put(printer, "PortOpen", 1)) continue; /* an adapter that was pulled out */
    status = call(printer, "GetStatusHASAR", 0, none, none);
    if (status.as.object != NULL && answered(printer)) document = whole(get(status.as.object, "statusDocumento"));
    zentaro_clear(&status);
    if (document >= 0) return document;
  }
  return -1;
}

static int verdict(const char* words, int status) { return puts(words), status; }

/* What became of a sale that did not go through: asked, never sent again. */
static int settled(zentaro_object* printer, long long before) {
  long long document = in_step(printer), after;
  if (document > 0) {
    call(printer, "CancelarComprobante", 0, none, none);
    document = in_step(printer);
  }
  if (document > 0) return verdict("STILL OPEN: have the document cancelled", 4);
  after = document < 0 ? -1 : sold(printer);
  if (after < 0) return verdict("UNKNOWN: look at the paper, do not print again", 4);
  return after > before ? verdict("PRINTED", 0) : verdict("NOT PRINTED", 3);
}

static int step(zentaro_object* printer, const char* name, int32_t count, value arguments[4]) {
  value error, outcome = {ZENTARO_EMPTY, 0, {0}};
  int done = zentaro_call(printer, name, arguments, count, &outcome) == 0 && answered(printer);
  error = get(printer, "sLastError");
  printf("%s: %lld %s\n", name, whole(outcome), error.as.text);
  zentaro_clear(&error);
  for (int i = 0; i < count; ++i) zentaro_clear(&arguments[i]);
  return done;
}

static int sell(zentaro_object* printer) {
  long long before = in_step(printer) == 0 ? sold(printer) : -1;
  if (before < 0) return verdict("NOT PRINTED: no printer, or a document is open", 3);
  if (step(printer, "IniciarFactura", 2, (value[4]){text("Ana P\xC3\xA9rez"), text("V-12345678")}) &&
      step(printer, "PasarLineaFactura", 4, (value[4]){text("Caf\xC3\xA9 molido"), number(12.5), number(2), number(16)}) &&
      step(printer, "PasarLineaFactura", 4, (value[4]){text("Queso blanco"), number(8), number(0.75), number(0)}) &&
      step(printer, "RecibirPago", 1, (value[4]){number(40)}) && step(printer, "CerrarComprobante", 0, NULL)) {
    return verdict("PRINTED", 0);
  }
  return settled(printer, before);
}

int main(int argc, char** argv) {
  FILE* paper = argc < 2 ? start_virtual_printer() : NULL;
  zentaro_object* printer = zentaro_create("Zentaro.CZentaro");
  int status = 2;
  put(printer, "CommPort", argc < 2 ? 1 : atoi(argv[1]));
  put(printer, "verifyCheckSum", 1);
  srand((unsigned)time(NULL));
  for (int place = rand() % 90; place > 0; --place) { /* another place in the sequence than the program before */
    value fields = none, frame;
    zentaro_set_array(&fields, 0);
    frame = call(printer, "BuildOMB", 2, number(0x38), fields);
    zentaro_clear(&frame);
  }
  if (put(printer, "PortOpen", 1)) {
    status = sell(printer);
  } else {
    fprintf(stderr, "%s\n", zentaro_error_description());
  }
  zentaro_release(printer);
  if (paper != NULL) end_virtual_printer(paper);
  return status;
}
