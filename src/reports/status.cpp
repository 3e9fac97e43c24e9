// Status requests and the records filled from their answers.
#include "printer/czentaro.h"
#include "reports/status_hasar.h"
#include "reports/status_n.h"

namespace zentaro {

// No port check: the interface says so.
Variant CZentaro::StatusIF(const Variant& nCommand) {
  run(Command::Status, {nCommand});
  return static_cast<std::int32_t>(nEnvironmentError);
}

std::unique_ptr<statusN> CZentaro::GetStatusN() {
  StatusIF(u"N");
  if (nEnvironmentError != ENVERR_OK) return nullptr;
  auto record = std::make_unique<statusN>();
  record->LoadFromResponse(vaResponse);
  return record;
}

std::unique_ptr<statusHASAR> CZentaro::GetStatusHASAR() {
  StatusIF(u"*");
  if (nEnvironmentError != ENVERR_OK) return nullptr;
  auto record = std::make_unique<statusHASAR>();
  // The record begins with the status words, which stand behind the command code.
  const std::vector<Variant>& fields = vaResponse.array().items();
  record->LoadFromResponse(Array(std::vector<Variant>(fields.begin() + 1, fields.end())));
  return record;
}

}  // namespace zentaro
