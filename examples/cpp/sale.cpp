// A small sale that is never printed twice. `sale 2` prints at COM2; without a port it prints on a
// virtual printer. What stands behind the one call is in by_hand.cpp.
#include <till/zentaro_till.h>

#include <iostream>
#include <optional>

#include "virtual_printer.h"

namespace {

namespace till = zentaro::till;

const char* const document =
    R"({"document": "invoice", "customer": {"name": "Ana Pérez", "rif": "V-12345678"},
  "lines": [{"description": "Café molido", "price": "12.50", "quantity": 2, "tax": 16},
            {"description": "Queso blanco", "price": 8, "quantity": "0.75", "tax": 0}],
  "payments": [{"amount": 40}]})";

// What happens meanwhile, as data; here each step and what came of it.
class Progress : public till::Observer {
  void begins(const till::StepPlace& step) override { std::cout << step.label << ": "; }
  void ended(const till::Reply& reply) override {
    std::cout << (reply.text.empty() ? "ok" : reply.text) << std::endl;
  }
};

// What the program does next: the document is on paper, it is not, or somebody has to look.
int told(const till::Verdict& verdict) {
  using till::Ending;
  switch (verdict.ending) {
    case Ending::Printed:
    case Ending::PrintedInPart:
    case Ending::AlreadyPrinted:
      std::cout << "PRINTED";
      if (verdict.number) std::cout << " as " << *verdict.number;
      std::cout << ", change " << till::centsText(verdict.change()) << "\n";
      return 0;
    case Ending::NotPrinted:
    case Ending::Unreachable:
    case Ending::Busy: std::cout << "NOT PRINTED: " << verdict.cause.text << "\n"; return 3;
    case Ending::StillOpen:
    case Ending::StillToBeClosed: std::cout << "STILL OPEN: have the document ended\n"; return 4;
    default: std::cout << "UNKNOWN: look at the paper (" << nameOf(verdict.ending) << ")\n"; return 4;
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    std::optional<VirtualPrinter> paper;
    if (argc < 2) paper.emplace();
    zentaro::CZentaro printer;
    printer.CommPort = argc < 2 ? "1" : argv[1];
    printer.PortOpen(true);
    Progress progress;
    till::SellOptions options;
    options.id = "F-1";  // under an id of the program's own nothing is ever printed twice
    options.observer = &progress;
    return told(sell(printer, till::documentOf(document), options));
  } catch (const std::exception& error) {  // nothing was sent
    std::cerr << error.what() << "\n";
    return 2;
  }
}
