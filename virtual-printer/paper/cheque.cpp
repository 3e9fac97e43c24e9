// Where the fields stand on a cheque.
#include "paper/cheque.h"

namespace printer {

Sheet chequeFaceSheet(const std::string& amount, const std::string& payee, const std::string& date) {
  Sheet sheet{SheetKind::chequeFace, "CHEQUE", {}};
  addPair(sheet.lines, "CHEQUE", "Bs **" + amount + "**", LineStyle::bold);
  addText(sheet.lines, "PAGUESE A LA ORDEN DE", LineStyle::faint);
  addText(sheet.lines, payee, LineStyle::bold);
  sheet.lines.push_back(ruleLine());
  addText(sheet.lines, "FECHA DE EMISION", LineStyle::faint);
  addText(sheet.lines, date);
  return sheet;
}

Sheet chequeBackSheet(const std::string& name, const std::string& identityCard,
                      const std::string& telephone) {
  Sheet sheet{SheetKind::chequeBack, "ENDOSO", {}};
  addText(sheet.lines, "ENDOSO", LineStyle::bold);
  addText(sheet.lines, name);
  addPair(sheet.lines, "C.I. " + identityCard, "TEL. " + telephone);
  sheet.lines.push_back(ruleLine());
  addText(sheet.lines, "FIRMA", LineStyle::faint);
  return sheet;
}

}  // namespace printer
