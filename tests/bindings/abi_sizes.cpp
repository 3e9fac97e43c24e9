// The sizes that are compiled into programs: of what they make themselves, and of what a function gives by value.
#include <cstddef>
#include <iostream>

#include "zentaro.h"
#include "zentaro_c.h"

int main() {
  using namespace zentaro;
  const auto show = [](const char* name, std::size_t size) {
    std::cout << "sizeof " << name << " " << size << "\n";
  };
  show("zentaro_value", sizeof(zentaro_value));
  std::cout << "offsetof zentaro_value as " << offsetof(zentaro_value, as) << "\n";
  show("zentaro::CZentaro", sizeof(CZentaro));
  show("zentaro::statusN", sizeof(statusN));
  show("zentaro::statusHASAR", sizeof(statusHASAR));
  show("zentaro::ResultadoCierre", sizeof(ResultadoCierre));
  show("zentaro::Variant", sizeof(Variant));
  show("zentaro::Array", sizeof(Array));
  show("zentaro::Object", sizeof(Object));
  show("zentaro::Currency", sizeof(Currency));
  show("zentaro::Date", sizeof(Date));
  show("zentaro::AutomationError", sizeof(AutomationError));
}
