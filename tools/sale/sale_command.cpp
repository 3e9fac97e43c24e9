// Reads the file, checks all of it, opens the port and prints.
#include "sale/sale_command.h"

#include <iostream>
#include <memory>

#include "common/connection.h"
#include "common/guarded.h"
#include "common/read_input.h"
#include "sale/print_sale.h"
#include "sale/sale_file.h"

namespace zentaro::tools {

namespace {

struct Options {
  std::string file;
  PortOptions port;
  std::vector<std::string> faults;
  bool isCheckOnly = false;
};

int refuse(const std::string& file, const Problems& problems) {
  for (const Problem& problem : problems)
    std::cerr << file << ": " << problem.path << (problem.path.empty() ? "" : ": ") << problem.text << '\n';
  std::cerr << "Nothing was sent to the printer.\n";
  return exitFailed;
}

void showTotals(const Sale& sale, const Totals& totals) {
  std::cout << (sale.isCreditNote ? "credit note" : "invoice") << ": net " << centsText(totals.net)
            << ", tax " << centsText(totals.tax) << ", total " << centsText(totals.total()) << ", IGTF "
            << centsText(totals.igtf) << ", paid " << centsText(totals.paid) << ", change "
            << centsText(totals.change()) << '\n';
}

std::vector<std::string> printerWords(const std::vector<std::string>& faults) {
  std::vector<std::string> words;
  for (const std::string& fault : faults) words.insert(words.end(), {"--fault", fault});
  return words;
}

int printOn(Connection& connection, const Sale& sale, const Totals& totals) {
  ObjectSalePrinter printer(connection.printer(), sale.isCreditNote);
  const SaleEnd end = printSale(stepsOf(sale, totals), totals.net, printer, std::cout);
  if (const VirtualPrinter* paper = connection.virtualPrinter()) std::cout << '\n' << paper->paper() << '\n';
  const int status = exitStatus(end.verdict);
  (status == exitDone ? std::cout : std::cerr) << advice(end) << std::endl;
  return status;
}

int run(const Options& options) {
  auto [sale, problems] = readSale(readInput(options.file));
  if (!problems.empty()) return refuse(options.file, problems);
  const Totals totals = reckon(sale, problems);
  if (!problems.empty()) return refuse(options.file, problems);
  showTotals(sale, totals);
  if (options.isCheckOnly) return exitDone;
  Connection connection(options.port, printerWords(options.faults));
  return printOn(connection, sale, totals);
}

constexpr auto footer =
    "Exit status: 0 printed, 2 nothing was tried (the file or the port is not in order), 3 not printed,\n"
    "4 unknown, 5 a document was open before.";

}  // namespace

void addSaleCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand("sale", "Print an invoice or a credit note from a file");
  const auto options = std::make_shared<Options>();
  command->add_option("FILE", options->file, "The document as JSON; - for standard input")->required();
  command->add_flag("--check", options->isCheckOnly, "Only check the file and show its totals");
  addPortOptions(*command, options->port);
  command
      ->add_option("--fault", options->faults,
                   "What goes wrong on the virtual printer: \"lose-answer on close\"")
      ->type_name("PLAN")
      ->allow_extra_args(false)
      ->excludes("--port")
      ->excludes("--device");
  command->footer(footer);
  command->callback([options, &status] { status = guarded([&] { return run(*options); }); });
}

}  // namespace zentaro::tools
