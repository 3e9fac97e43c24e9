// From a command to its answer.
#include "device/device.h"

#include "device/commands.h"
#include "device/status.h"

namespace printer {

Device::Device(Identity identity, Books books, SaveBooks save)
    : works_{std::move(identity), std::move(books)}, saved_{works_.books}, save_{std::move(save)} {}

Answer Device::execute(const Command& command, LocalTime hostTime) {
  works_.now = hostTime + works_.books.clockOffset;
  Answer answer;
  try {
    answer.fields = run(command);
    answer.fiscalStatus = fiscalStatus(works_);
  } catch (const Refused& refused) {
    answer.fields = {refusalTexts[static_cast<std::size_t>(refused.why)]};
    answer.fiscalStatus = fiscalStatus(works_) | fiscal_bit::refused;
  }
  answer.printerStatus = printerStatus(works_);
  saveIfChanged();
  return answer;
}

std::vector<std::string> Device::run(const Command& command) {
  const CommandEntry* entry = findCommand(command.code);
  refuseIf(entry == nullptr, Refusal::unknownCommand);
  if (entry->paper == Paper::needed) requirePaper(works_.conditions);
  Fields fields = entry->handler(works_, Arguments{command});
  if (command.code != statusCode) works_.lastCommand = command.code;
  return fields;
}

void Device::reset() {
  works_.slipOn = false;
  if (!works_.machine.abandon()) return;
  const Document& document = works_.machine.document();
  works_.finishTicket(cancelledLines(works_.identity.owner),
                      documentTitle(document.kind, document.number) + " ANULADO");
  saveIfChanged();
}

void Device::start(LocalTime hostTime) {
  works_.now = hostTime + works_.books.clockOffset;
  if (works_.books.open) {
    const auto [kind, number] = *works_.books.open;
    works_.roll.cut(documentTitle(kind, number) + " INTERRUMPIDO");
    works_.roll.print(headingLines(works_.identity.owner, works_.books.header));
    works_.roll.print(lostDocumentLines(kind, number, works_.now));
  }
  reset();
}

void Device::saveIfChanged() {
  if (works_.books == saved_) return;
  saved_ = works_.books;
  save_(saved_);
}

}  // namespace printer
