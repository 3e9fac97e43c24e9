// Carries a sale out: asks the machine what to do, writes it down, has the printer do it, and tells the observer.
#pragma once

#include <string>
#include <vector>

#include "till/course/keeper.h"
#include "till/course/sale_machine.h"
#include "till/course/sale_printer.h"
#include "till/course/stop.h"

namespace zentaro::till {

/// The machine's name is all that is used of `before`. The keeper has the end, too.
Verdict printSale(const std::vector<SaleStep>& steps, const Order& order, const std::string& machine,
                  SalePrinter& printer, Keeper& keeper, Observer& observer, const Stop& stop);

/// Judges a job that was cut short and, when its document is still open, ends that first. Only a verdict that says
/// something new is kept. OpenBefore: another document is open, and the job can be judged when that is ended. The
/// machine is the job's, and nobody else prints on it.
Verdict settleJob(const Job& job, SalePrinter& printer, Keeper& keeper, Observer& observer);

}  // namespace zentaro::till
