// The lines.
#include "till/words/teller.h"

#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "till/words/moments.h"
#include "till/words/verdict_words.h"

namespace zentaro::till {

using terminal::harmless;
using terminal::say;

namespace {

std::string seconds(LineObserver::Time time) {
  return std::to_string(std::chrono::round<std::chrono::seconds>(time).count());
}

}  // namespace

Say byLine(Say take) {
  return [take = std::move(take), line = std::string()](std::string_view text) mutable {
    line += text;
    for (auto end = line.find('\n'); end != std::string::npos; end = line.find('\n')) {
      take(std::string_view(line).substr(0, end));
      line.erase(0, end + 1);
    }
  };
}

void Teller::waiting(Time limit) {
  notice_(say("zentaro: sin respuesta en orden; se espera a la impresora, {} s a lo sumo (--give-up)\n",
              "zentaro: no answer in step; waiting for the printer, {} s at most (--give-up)\n",
              {seconds(limit)}));
}

void Teller::stillWaiting(Time waited, Time limit) {
  notice_(say("zentaro: se sigue esperando, {} de {} s\n", "zentaro: still waiting, {} of {} s\n",
              {seconds(waited), seconds(limit)}));
}

void Teller::traceEnded(const std::string& why) {
  notice_(say("zentaro: aviso: la traza no se puede escribir ({}); se sigue sin ella\n",
              "zentaro: warning: the trace cannot be written ({}); going on without it\n", {harmless(why)}));
}

void Teller::asksForCounters() { progress_("  --  " + say("contadores", "counters") + "\n"); }

void Teller::counters(const std::optional<Standing>& now, const std::string& trouble) {
  std::string text = "  --  ";
  if (!now)
    text += say("ninguno, ", "none, ") + harmless(trouble);
  else
    text += say("último número ", "last number ") + std::to_string(now->lastNumber) +
            (now->document == 0 ? say(", ningún documento abierto", ", no document open")
                                : say(", hay un documento abierto", ", a document is open"));
  progress_(text + "\n");
}

void Teller::begins(const StepPlace& step) {
  std::string place;
  if (step.count > 0) {
    constexpr std::size_t width = 7;
    place = std::to_string(step.number) + "/" + std::to_string(step.count);
    place = std::string(width - std::min(width, place.size()), ' ') + place + "  ";
  }
  progress_(place + harmless(step.label) + ": ");
}

void Teller::ended(const Reply& reply) {
  std::string text;
  if (reply.fate == Fate::Done) text = "ok";
  if (reply.fate == Fate::Refused) text = say("rechazado, ", "refused, ");
  progress_(text + harmless(reply.text) + "\n");
}

void Teller::sumsDiffer(const Problem& warning) {
  notice_(say("zentaro: aviso: {}: {}\n", "zentaro: warning: {}: {}\n", {warning.path, warning.text}));
}

void Teller::endsDocumentOf(const Job& job) {
  notice_(say("zentaro: queda abierto el documento de las {}; se termina\n",
              "zentaro: the document of {} is still open; ending it\n", {momentText(job.begun)}));
}

void Teller::judged(const Job& job) {
  const bool isZ = isDayReport(job.kind);
  const std::string which =
      say(isZ ? "el {} de las {}" : "la venta de las {}{}", isZ ? "the {} of {}" : "the sale of {}{}",
          {isZ ? nameOf(job.kind) : "", momentText(job.begun)});
  const std::string what =
      job.state == State::Printed
          ? say("{} se imprimió como {}", "{} was printed as {}", {which, numberText(job.number)})
      : job.state == State::NotPrinted
          ? say("{} no se imprimió", "{} was not printed", {which})
          : say("no se sabe si {} se imprimió", "it is not known whether {} was printed", {which});
  notice_("zentaro: " + what + "\n");
}

void Teller::goesOnWithoutBooks(const std::string& why) {
  notice_(say("zentaro: aviso: la venta no queda en los libros: {}\n",
              "zentaro: warning: the books miss this sale: {}\n", {harmless(why)}));
}

void Teller::booksFell(const std::string& why) {
  notice_(say("zentaro: aviso: no se pueden escribir los libros: {}\n",
              "zentaro: warning: the books cannot be written: {}\n", {harmless(why)}));
}

void Teller::waitsForBooks() {
  notice_(say("zentaro: otro programa ocupa los libros; se espera\n",
              "zentaro: another program holds the books; waiting\n"));
}

void Teller::waitsForMachine() {
  notice_(say("zentaro: la impresora está en uso; se espera\n", "zentaro: the printer is in use; waiting\n"));
}

}  // namespace zentaro::till
