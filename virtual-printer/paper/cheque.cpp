// Where the fields stand on a cheque.
#include "virtual-printer/paper/cheque.h"

namespace virtual_printer {

Sheet chequeFaceSheet(const std::string& amount, const std::string& payee, const std::string& date) {
  Sheet sheet{SheetKind::ChequeFace, "CHEQUE", {}};
  addPair(sheet.lines, "CHEQUE", "Bs **" + amount + "**", LineStyle::Bold);
  addText(sheet.lines, "PAGUESE A LA ORDEN DE", LineStyle::Faint);
  addText(sheet.lines, payee, LineStyle::Bold);
  sheet.lines.push_back(ruleLine());
  addText(sheet.lines, "FECHA DE EMISION", LineStyle::Faint);
  addText(sheet.lines, date);
  return sheet;
}

Sheet chequeBackSheet(const std::string& name, const std::string& identityCard,
                      const std::string& telephone) {
  Sheet sheet{SheetKind::ChequeBack, "ENDOSO", {}};
  addText(sheet.lines, "ENDOSO", LineStyle::Bold);
  addText(sheet.lines, name);
  addPair(sheet.lines, "C.I. " + identityCard, "TEL. " + telephone);
  sheet.lines.push_back(ruleLine());
  addText(sheet.lines, "FIRMA", LineStyle::Faint);
  return sheet;
}

}  // namespace virtual_printer
