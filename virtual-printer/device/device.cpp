// From a command to its answer.
#include "virtual-printer/device/device.h"

#include "virtual-printer/device/commands.h"
#include "virtual-printer/device/status.h"

namespace virtual_printer {

Device::Device(Identity identity, Books books, SaveBooks save)
    : works_{std::move(identity), std::move(books)}, saved_{works_.books}, save_{std::move(save)} {}

Answer Device::execute(const Command& command, LocalTime hostTime) {
  works_.now = hostTime + works_.books.clockOffset;
  const Works::Memory before = works_.memory();
  Answer answer;
  try {
    answer.fields = run(command);
    refuseIf(!saveIfChanged(), Refusal::NotSaved);
    works_.job.runOn(roll_);
    if (command.code != statusCode) works_.lastCommand = command.code;
    answer.fiscalStatus = fiscalStatus(works_);
  } catch (const Refused& refused) {
    works_.goBack(before);
    answer.fields = {refusalTexts[static_cast<std::size_t>(refused.why)]};
    answer.fiscalStatus = fiscalStatus(works_) | fiscal_bit::refused;
  }
  answer.printerStatus = printerStatus(works_);
  return answer;
}

std::vector<std::string> Device::run(const Command& command) {
  const CommandEntry* entry = findCommand(command.code);
  refuseIf(entry == nullptr, Refusal::UnknownCommand);
  if (entry->paper == Paper::Needed) requirePaper(works_.conditions);
  return entry->handler(works_, Arguments{command});
}

// Nobody waits for an answer here: what cannot be saved now is saved with the next change.
void Device::reset() {
  works_.slipOn = false;
  if (!works_.machine.abandon()) return;
  const Document& document = works_.machine.document();
  works_.finishTicket(cancelledLines(works_.identity.owner),
                      documentTitle(document.kind, document.number) + " ANULADO");
  saveIfChanged();
  works_.job.runOn(roll_);
}

void Device::start(LocalTime hostTime) {
  works_.now = hostTime + works_.books.clockOffset;
  if (works_.books.open) {
    const auto [kind, number] = *works_.books.open;
    works_.job.cut(documentTitle(kind, number) + " INTERRUMPIDO");
    works_.job.print(headingLines(works_.identity.owner, works_.books.header));
    works_.job.print(lostDocumentLines(kind, number, works_.now));
  }
  reset();
}

bool Device::saveIfChanged() {
  if (static_cast<const Account&>(works_.books) == saved_) return true;
  if (!save_(works_.books)) return false;
  saved_ = works_.books;
  return true;
}

}  // namespace virtual_printer
