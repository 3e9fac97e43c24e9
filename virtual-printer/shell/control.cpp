// The commands of the control language.
#include "virtual-printer/shell/control.h"

#include <stdexcept>
#include <utility>

#include "base/terminal/language.h"
#include "virtual-printer/device/status.h"
#include "virtual-printer/wire/frame.h"

namespace virtual_printer {
namespace {

using zentaro::terminal::say;

constexpr std::size_t longestLine = 4096;

std::string help() {
  return say(
      "help           esta lista\n"
      "fault PLAN     agrega fallas, por ejemplo: fault lose-answer on close\n"
      "faults         muestra las fallas en vigor\n"
      "clear          quita todas las fallas; hay papel, la tapa está cerrada\n"
      "clear EFECTO   quita las fallas con este efecto, por ejemplo: clear paper-out\n"
      "status         documento abierto, palabras de estado, últimos números\n"
      "sample         vende algo de muestra, si nadie usa la impresora\n"
      "quit           termina la impresora\n"
      "ok",
      "help           this list\n"
      "fault PLAN     adds faults, for example: fault lose-answer on close\n"
      "faults         lists the faults in force\n"
      "clear          removes all faults; paper is back, the cover is closed\n"
      "clear EFFECT   removes the faults with this effect, for example: clear paper-out\n"
      "status         open document, status words, last numbers\n"
      "sample         sells something as a sample, while nobody uses the printer\n"
      "quit           ends the printer\n"
      "ok");
}

std::string clear(const std::string& name, FaultSet& faults) {
  if (name.empty()) {
    faults.clear();
    return say("ok se quitaron todas las fallas", "ok all faults cleared");
  }
  const EffectEntry* entry = findEffect(name);
  if (entry == nullptr)
    return say("error: no existe el efecto \"{}\"", "error: there is no effect \"{}\"", {name});
  return say("ok {} quitadas", "ok {} cleared", {std::to_string(faults.clear(entry->effect))});
}

std::string status(const Works& works) {
  const Counters& last = works.books.counters;
  return "ok document=" + std::to_string(documentStatus(works.machine)) +
         " printer=" + hexadecimal(printerStatus(works), 4) +
         " fiscal=" + hexadecimal(fiscalStatus(works), 4) + " invoice=" + std::to_string(last.invoice) +
         " credit-note=" + std::to_string(last.creditNote) + " non-fiscal=" + std::to_string(last.nonFiscal) +
         " z=" + std::to_string(last.z);
}

std::string addFaults(const std::string& plan, FaultSet& faults) {
  try {
    faults.add(parsePlan(plan));
    return "ok";
  } catch (const std::runtime_error& error) {
    return std::string{"error: "} + error.what();
  }
}

std::string list(const FaultSet& faults) {
  std::string text;
  for (const auto& [plan, holds] : faults.list())
    text += plan + (holds ? say(" (en vigor)", " (in force)") : "") + "\n";
  return text + "ok";
}

}  // namespace

ControlReply control(std::string_view line, FaultSet& faults, const Works& works) {
  while (!line.empty() && (line.back() == ' ' || line.back() == '\r')) line.remove_suffix(1);
  const std::size_t space = line.find(' ');
  const std::string_view verb = line.substr(0, space);
  const std::string rest{space == std::string_view::npos ? std::string_view{} : line.substr(space + 1)};
  if (verb == "help") return {help()};
  if (verb == "fault") return {addFaults(rest, faults)};
  if (verb == "faults") return {list(faults)};
  if (verb == "clear") return {clear(rest, faults)};
  if (verb == "status") return {status(works)};
  if (verb == "sample") return {{}, ControlReply::Order::Sample};
  if (verb == "quit") return {"ok", ControlReply::Order::Quit};
  return {say("error: \"{}\" no es una orden; help las muestra",
              "error: \"{}\" is no command; help lists them", {verb})};
}

std::vector<std::string> LineReader::feed(std::string_view bytes) {
  std::vector<std::string> lines;
  for (const char byte : bytes) {
    if (byte == '\n') {
      lines.push_back(std::exchange(pending_, {}));
    } else if (pending_.size() < longestLine) {
      pending_ += byte;
    }
  }
  return lines;
}

}  // namespace virtual_printer
