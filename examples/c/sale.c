/* A small sale that is never printed twice. `sale-c 2` prints at COM2; without a port it prints on a virtual printer. */
#define _POSIX_C_SOURCE 200809L
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <zentaro_till_c.h>

#include "virtual_printer.h"

static const char* const sale =
    "{\"document\": \"invoice\", \"customer\": {\"name\": \"Ana P\xC3\xA9rez\", \"rif\": \"V-12345678\"}, \"lines\": ["
    "{\"description\": \"Caf\xC3\xA9 molido\", \"price\": \"12.50\", \"quantity\": 2, \"tax\": 16},"
    "{\"description\": \"Queso blanco\", \"price\": 8, \"quantity\": \"0.75\", \"tax\": 0}], \"payments\": [{\"amount\": 40}]}";

static int put(zentaro_object* printer, const char* name, int32_t number) {
  zentaro_value given = {ZENTARO_INT32, 0, {0}};
  given.as.int32 = number;
  return zentaro_put(printer, name, &given) == 0;
}

static void show(void* file, const char* line) { fprintf(file, "%s\n", line); }

/* What the verdict begins with says all that is needed here: on paper, not printed, or somebody has to look at the paper. */
static int told(const char* verdict) {
  static const struct {
    const char *name, *words;
    int status;
  } rows[] = {{"printed", "PRINTED", 0},          {"already-printed", "PRINTED", 0}, {"not-printed", "NOT PRINTED", 3},
              {"unreachable", "NOT PRINTED", 3},  {"busy", "NOT PRINTED", 3},        {"still-open", "STILL OPEN", 4},
              {"still-to-be-closed", "STILL OPEN", 4}};
  const char* name = verdict + strlen("{\"verdict\":\"");
  for (size_t i = 0; i < sizeof rows / sizeof *rows; ++i) {
    size_t length = strlen(rows[i].name);
    if (strncmp(name, rows[i].name, length) == 0 && (name[length] == '"' || name[length] == '-'))
      return printf("%s: %s\n", rows[i].words, verdict), rows[i].status;
  }
  return printf("UNKNOWN: %s\n", verdict), 4;
}

int main(int argc, char** argv) {
  FILE* paper = argc < 2 ? start_virtual_printer() : NULL;
  zentaro_object* printer = zentaro_create("Zentaro.CZentaro");
  zentaro_value verdict = {ZENTARO_EMPTY, 0, {0}};
  int status = 2;
  put(printer, "CommPort", argc < 2 ? 1 : atoi(argv[1]));
  /* Under an id of the program's own nothing is ever printed twice, also after a power cut. */
  if (put(printer, "PortOpen", 1) && zentaro_till_sell(printer, sale, "{\"id\": \"F-1\"}", show, stdout, &verdict) == 0)
    status = told(verdict.as.text);
  else
    fprintf(stderr, "%s\n", zentaro_error_description());
  zentaro_clear(&verdict);
  zentaro_release(printer);
  if (paper != NULL) end_virtual_printer(paper);
  return status;
}
