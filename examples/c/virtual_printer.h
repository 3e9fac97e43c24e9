/* A virtual printer for an example, behind COM1; its paper comes out on standard output. */
#include <stdio.h>
#include <stdlib.h>
#include <time.h>
#include <unistd.h>

static FILE* start_virtual_printer(void) {
  static char folder[] = "/tmp/zentaro-XXXXXX";
  char link[64], settings[64], command[256];
  FILE *file, *printer;
  if (mkdtemp(folder) == NULL) exit(2);
  snprintf(link, sizeof link, "%s/printer", folder);
  snprintf(settings, sizeof settings, "%s/settings.ini", folder);
  snprintf(command, sizeof command, "zentaro-printer --link %s 2>/dev/null; rm -r %s", link, folder);
  file = fopen(settings, "w");
  fprintf(file, "[Config\\ModComm]\nCOM1=%s\n", link);
  fclose(file);
  setenv("ZENTARO_SETTINGS", settings, 1);
  snprintf(settings, sizeof settings, "%s/books.db", folder); /* of its own, gone with the printer */
  setenv("ZENTARO_BOOKS", settings, 1);
  printer = popen(command, "w");
  for (int tries = 0; access(link, F_OK) != 0 && tries < 200; ++tries) {
    struct timespec wait = {0, 50000000};
    nanosleep(&wait, NULL);
  }
  return printer;
}

static void end_virtual_printer(FILE* printer) {
  fputs("quit\n", printer);
  pclose(printer);
}
