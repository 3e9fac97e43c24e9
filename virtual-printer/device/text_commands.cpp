// Non-fiscal documents, and the header and footer lines of fiscal ones.
#include "virtual-printer/device/commands.h"

namespace virtual_printer {
namespace {

Fields setTextLine(Works& works, TextLines& lines, const Arguments& arguments) {
  works.machine.requireIdle();
  const std::string number = arguments.raw(0);
  refuseIf(number.size() != 1 || number[0] < '1' || number[0] > '5', Refusal::BadLineNumber);
  lines[static_cast<std::size_t>(number[0] - '1')] = arguments.text(1);
  return {};
}

}  // namespace

Fields openNonFiscal(Works& works, const Arguments&) {
  works.machine.open(DocumentKind::NonFiscal);
  works.job.print(headingLines(works.identity.owner, works.books.header));
  works.job.print(openingLines(works.machine.document(), works.now));
  return {eightDigits(works.machine.document().number)};
}

Fields nonFiscalLine(Works& works, const Arguments& arguments) {
  works.machine.requireNonFiscal();
  Lines lines;
  addText(lines, arguments.text(0));
  works.job.print(lines);
  return {};
}

Fields closeNonFiscal(Works& works, const Arguments&) {
  works.machine.closeNonFiscal(works.now);
  const Document& document = works.machine.document();
  works.finishTicket(nonFiscalClosingLines(works.identity.owner),
                     documentTitle(document.kind, document.number));
  return {eightDigits(document.number)};
}

Fields setHeader(Works& works, const Arguments& arguments) {
  return setTextLine(works, works.books.header, arguments);
}

Fields setFooter(Works& works, const Arguments& arguments) {
  return setTextLine(works, works.books.footer, arguments);
}

}  // namespace virtual_printer
