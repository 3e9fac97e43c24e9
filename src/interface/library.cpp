// Classes are found without regard to case, with or without "Zentaro." in front.
#include "interface/library.h"

#include <array>

#include "automation/automation_error.h"
#include "printer/czentaro.h"
#include "reports/resultado_cierre.h"
#include "reports/status_hasar.h"
#include "reports/status_n.h"
#include "text/ascii.h"

namespace zentaro {

namespace {

constexpr std::array outcomeValues{
    EnumerationValue{"ENVERR_DEVICE", ENVERR_DEVICE, "the port is closed; nothing was sent"},
    EnumerationValue{"ENVERR_OK", ENVERR_OK, "done"},
    EnumerationValue{"ENVERR_COMM", ENVERR_COMM, "no answer in time; it may have been done"},
    EnumerationValue{"ENVERR_INVALID", ENVERR_INVALID, "no valid answer; it may have been done"},
    EnumerationValue{"ENVERR_CHECKSUM", ENVERR_CHECKSUM, "a disturbed answer; it may have been done"},
    EnumerationValue{"ENVERR_BADSEQ", ENVERR_BADSEQ, "the answer to another command; it may have been done"},
    EnumerationValue{"ENVERR_STATUS", ENVERR_STATUS, "refused by the printer; sLastError says why"},
    EnumerationValue{"ENVERR_BADARG", ENVERR_BADARG, "an argument out of range; nothing was sent"}};
constexpr std::array closingValues{
    EnumerationValue{"CIERRE_X", CIERRE_X, "report of the day so far"},
    EnumerationValue{"CIERRE_Z", CIERRE_Z, "closes the fiscal day, which cannot be undone"}};

constexpr std::array enumerations{
    EnumerationDescription{"ENVERR_CODES", "Outcome of an operation", outcomeValues},
    EnumerationDescription{"nTipoCierreFiscal", "Kind of a closing", closingValues}};

/// The name without "Zentaro." in front of it.
std::string_view withoutLibrary(std::string_view name) {
  const std::size_t length = libraryName.size();
  const bool qualified =
      name.size() > length && name[length] == '.' && equalIgnoringCase(name.substr(0, length), libraryName);
  return qualified ? name.substr(length + 1) : name;
}

}  // namespace

std::span<const ClassDescription* const> libraryClasses() {
  static const std::array classes{&describe<CZentaro>(), &describe<statusN>(), &describe<statusHASAR>(),
                                  &describe<ResultadoCierre>()};
  return classes;
}

std::span<const EnumerationDescription> libraryEnumerations() { return enumerations; }

const ClassDescription* findClass(std::string_view name) {
  for (const ClassDescription* description : libraryClasses()) {
    if (equalIgnoringCase(description->name, withoutLibrary(name))) return description;
  }
  return nullptr;
}

Object createObject(std::string_view className) {
  const ClassDescription* description = findClass(className);
  if (description == nullptr || description->create == nullptr) {
    throw AutomationError(ErrorNumber::CannotCreateObject);
  }
  return {*description, description->create()};
}

}  // namespace zentaro
