// Exchanges with the printer at COM5, one behind the other until one times out after 10 s; with the argument
// "queue" from a thread with a message queue to serve. Whoever is at the other end of the line measures.
#include <objbase.h>

#include "library.h"

int main(int count, char**) {
  if (count > 1) ::CoInitialize(nullptr);
  bench::Library library("", 10, 5);
  while (library.printer().PaperFeed() == 0) {
  }
}
