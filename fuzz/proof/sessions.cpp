// Random days in a shop whose line and printer fail at random: sales and credit notes, each with random
// lines, carried out by the rule that after the outcomes 1 to 4 the printer is asked. In the end host and
// printer must agree on every document that was told to be closed, and on the day's totals.
//
//   proof-sessions SEED DOCUMENTS [realtime]
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <random>
#include <thread>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "library.h"
#include "peer.h"
#include "reports/resultado_cierre.h"
#include "reports/status_hasar.h"

namespace {

using namespace zentaro;
using Cents = std::int64_t;

/// What the printer says of itself between two documents.
struct Counters {
  int open = 0, invoice = 0, creditNote = 0;
  Cents sales = 0, returns = 0;  // of the day, without tax
};

Cents cents(const Variant& amount) { return std::llround(toDouble(amount) * 100); }

struct Refused {};

class Shop {
 public:
  Shop(const std::string& device, unsigned seed) : library_(device, 2), dice_(seed) {
    z().verifyCheckSum = true;
  }

  void document() {
    const auto before = counters();
    if (!before) return give("no counters before a document");
    if (before->open != 0) return give("a document is open before the next");
    const bool isCreditNote = roll(5) == 0;
    const Cents net = print(isCreditNote);
    const auto after = settled();
    if (!after) return give("no counters after a document");
    judge(isCreditNote, net, *before, *after);
  }

  CZentaro& z() { return library_.printer(); }
  int printed = 0, notPrinted = 0, surelyClosed = 0, problems = 0, operations = 0, notGood = 0;
  Cents sales = 0, returns = 0;

 private:
  std::size_t roll(std::size_t sides) { return dice_() % sides; }
  void give(const char* problem) {
    ++problems;
    std::printf("  FAILED document %d: %s\n", printed + notPrinted + problems, problem);
  }

  /// Counts, and ends the document at the first outcome that is not 0.
  void need(int outcome) {
    ++operations;
    if (outcome == 0) return;
    ++notGood;
    throw Refused{};
  }

  /// The net amount when the close was answered with 0 or nobody knows; the printer is asked afterwards.
  Cents print(bool isCreditNote) {
    Cents net = 0;
    isSurelyClosed_ = false;
    try {
      if (isCreditNote)
        need(z().IniciarDevolucion("CLIENTE", "V-1", u"00000001", u"ZPV0000001"));
      else
        need(z().IniciarFactura("CLIENTE", "V-1"));
      Cents largest = 0;
      for (std::size_t lines = 1 + roll(6); lines > 0; --lines) {
        const auto price = static_cast<Cents>(1 + roll(100'000));
        const auto quantity = static_cast<double>(1 + roll(5));
        const int rate = std::array{0, 8, 16, 31}[roll(4)];
        net += price * static_cast<Cents>(quantity);
        largest += price * static_cast<Cents>(quantity) * 2;
        const Variant amount = Currency::fromScaled(price * 100);
        need(isCreditNote ? z().PasarLineaDevolucion("ARTICULO", amount, quantity, rate)
                          : z().PasarLineaFactura("ARTICULO", amount, quantity, rate));
        if (roll(3) == 0) need(z().PasarLineaExtra("una linea mas"));
      }
      if (roll(3) == 0 && !isCreditNote) {
        need(z().RegistrarDescuento(Currency::fromScaled(100)));
        net -= 1;
      }
      need(z().Subtotal());
      if (!isCreditNote) need(z().RecibirPago(Currency::fromScaled(largest * 100)));
      ++operations;
      const int outcome = z().CerrarComprobante();
      notGood += outcome != 0;
      isSurelyClosed_ = outcome == 0;
    } catch (const Refused&) {
    }
    return net;
  }

  /// Asks until the printer is in step, with the port closed and opened between two attempts.
  template <class Ask>
  auto inStep(Ask ask) -> decltype(ask()) {
    for (int tries = 0; tries < 12; ++tries) {
      ++operations;
      try {
        auto answer = ask();
        // A printer may send an old answer with the number of the new one: it must be to this command.
        if (answer && toInt32(z().response(0)) == z().nLastCommand) return answer;
      } catch (const AutomationError&) {
        // The record cannot be loaded, or the port is not there yet.
      }
      ++notGood;
      std::this_thread::sleep_for(std::chrono::milliseconds(50) * (tries + 1));
      try {
        z().PortOpen(false);
        z().PortOpen(true);
      } catch (const AutomationError&) {
      }
    }
    return {};
  }

  std::optional<Counters> counters() {
    const auto status = inStep([this] { return z().GetStatusHASAR(); });
    if (!status) return {};
    Counters now{status->statusDocumento, status->numeroUltimaFactura, status->numeroUltimaNC};
    if (now.open != 0) return now;
    const auto day = inStep(
        [this] { return z().RealizarCierre(CIERRE_X, false) == 0 ? z().GetResultadoCierre() : nullptr; });
    if (!day) return {};
    now.sales = cents(day->VentasExentas) + cents(day->BaseGravable1) + cents(day->BaseGravable2) +
                cents(day->BaseGravable3);
    now.returns = cents(day->MontoExentoNC) + cents(day->ValorNCBase1) + cents(day->ValorNCBase2) +
                  cents(day->ValorNCBase3);
    return now;
  }

  /// The same with nothing open: what was left open is cancelled.
  std::optional<Counters> settled() {
    for (int tries = 0; tries < 10; ++tries) {
      const auto now = counters();
      if (!now || now->open == 0) return now;
      if (now->open == 4)
        z().CerrarComprobante("E");
      else
        z().CancelarComprobante();
    }
    return {};
  }

  void judge(bool isCreditNote, Cents net, const Counters& before, const Counters& after) {
    const Cents more = isCreditNote ? after.returns - before.returns : after.sales - before.sales;
    const Cents other = isCreditNote ? after.sales - before.sales : after.returns - before.returns;
    const int number = isCreditNote ? after.creditNote - before.creditNote : after.invoice - before.invoice;
    if (other != 0) give("the other kind's amounts changed");
    if (number < 0 || number > 1) give("the number jumped");
    if (more == net && number == 1)
      ++printed, (isCreditNote ? returns : sales) += net;
    else if (more == 0)
      ++notPrinted;
    else
      give("the day changed by another amount");
    if (isSurelyClosed_ && more != net) give("a close was told as done that is not in the books");
    surelyClosed += isSurelyClosed_;
  }

  bench::Library library_;
  std::mt19937 dice_;
  bool isSurelyClosed_ = false;
};

std::string wholeFile(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

Cents sumOf(const nlohmann::json& bases) {
  Cents sum = 0;
  for (const auto& base : bases) sum += base.get<Cents>();
  return sum;
}

/// How many of the day's documents failed.
int day(unsigned seed, int documents, bool isRealTime) {
  std::vector<std::string> options{
      "--seed", std::to_string(seed), "--fault",
      "lose-answer chance 1% always; lose-command chance 1% always; bad-checksum chance 1% "
      "always; bad-sequence chance 1% always; noise=inside chance 1% always; noise=before "
      "chance 1% always; repeat-answer chance 1% always; truncate=8 chance 1% always; "
      "pieces=3 chance 3% always; delay=0.2 chance 2% always; delay=3 chance 1% always; "
      "wait=0.3 chance 2% always"};
  if (isRealTime) options.emplace_back("--realtime");
  const proof::Peer peer(options);
  Shop shop(peer.device(), seed);
  for (int i = 0; i < documents; ++i) shop.document();
  const auto books = nlohmann::json::parse(wholeFile(peer.stateFile())).at("day");
  const bool agree = sumOf(books.at("sales").at("bases")) == shop.sales &&
                     sumOf(books.at("returns").at("bases")) == shop.returns;
  if (!agree) std::printf("  FAILED the printer's books do not agree\n");
  std::printf(
      "seed %u%s: %d operations, %d of them not good; %d documents printed (%d told so at once), %d not "
      "printed\n",
      seed, isRealTime ? ", real time" : "", shop.operations, shop.notGood, shop.printed, shop.surelyClosed,
      shop.notPrinted);
  const int failed = shop.problems + (agree ? 0 : 1);
  std::printf("%d passed, %d failed\n", shop.printed + shop.notPrinted, failed);
  return failed;
}

}  // namespace

int main(int count, char** words) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const unsigned seed = count > 1 ? static_cast<unsigned>(std::atoi(words[1])) : 1;
  const int documents = count > 2 ? std::atoi(words[2]) : 100;
  try {
    return day(seed, documents, count > 3) == 0 ? 0 : 1;
  } catch (const std::exception& error) {
    std::printf("FAILED: %s\n", error.what());
    return 1;
  }
}
