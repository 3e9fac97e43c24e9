// Clock, serial number, drawers, paper and slip station.
#include "virtual-printer/device/commands.h"
#include "virtual-printer/fiscal/calendar.h"
#include "virtual-printer/paper/cheque.h"

namespace virtual_printer {

Fields cutPaper(Works& works, const Arguments&) {
  works.machine.requireIdle();
  works.job.cut("SIN TITULO");
  return {};
}

Fields feedPaper(Works& works, const Arguments&) {
  works.job.print({{}});
  return {};
}

Fields setClock(Works& works, const Arguments& arguments) {
  works.machine.requireIdle();
  const LocalTime wanted = arguments.date(0) + arguments.time(1);
  works.books.clockOffset += wanted - works.now;
  return {};
}

Fields readClock(Works& works, const Arguments&) {
  return {written(works.now, "%y%m%d"), written(works.now, "%H%M%S")};
}

// The drawers are seen in the log only.
Fields openDrawer(Works&, const Arguments&) { return {}; }

Fields readSerial(Works& works, const Arguments&) { return {works.identity.owner.serial}; }

Fields slipOn(Works& works, const Arguments&) {
  works.slipOn = true;
  return {};
}

Fields slipOff(Works& works, const Arguments&) {
  works.slipOn = false;
  return {};
}

Fields chequeFace(Works& works, const Arguments& arguments) {
  refuseIf(!works.slipOn, Refusal::SlipOff);
  works.job.printApart(chequeFaceSheet(arguments.text(0), arguments.text(1), arguments.text(2)));
  return {};
}

Fields chequeBack(Works& works, const Arguments& arguments) {
  refuseIf(!works.slipOn, Refusal::SlipOff);
  works.job.printApart(chequeBackSheet(arguments.text(0), arguments.text(1), arguments.text(2)));
  return {};
}

}  // namespace virtual_printer
