// The words of the service, in both languages.
#include "service/workers/words.h"

#include "base/terminal/language.h"

namespace zentaro::service {

using terminal::say;
using till::State;

namespace {

std::string nextOfUnknown(const till::Job& job) {
  if (job.verdict == "still-open")
    return say(
        "Ponga la impresora en orden (papel, tapa): el documento se anula solo. No lo repita.",
        "Put the printer in order (paper, cover): the document is cancelled by itself. Do not repeat it.",
        {});
  if (job.verdict == "still-to-be-closed")
    return say("Ponga la impresora en orden (papel, tapa): el documento se cierra solo. No lo repita.",
               "Put the printer in order (paper, cover): the document is closed by itself. Do not repeat it.",
               {});
  return say("No lo repita. Mire el papel y diga si se imprimió completo o no.",
             "Do not repeat it. Look at the paper and say whether it was printed whole or not.");
}

}  // namespace

std::string nextOf(const till::Job& job) {
  switch (job.state) {
    case State::Unknown: return nextOfUnknown(job);
    case State::NotPrinted:
      if (job.verdict == "withdrawn") return {};
      return say("Si la venta sigue en pie, pídala otra vez con attempt {}.",
                 "If the sale still stands, ask for it again with attempt {}.",
                 {std::to_string(job.attempt + 1)});
    case State::Printed:
      if (job.verdict == "printed-in-part")
        return say("No lo repita; mire el papel y anote a mano lo que falte al pie.",
                   "Do not repeat it; look at the paper and write down by hand what is missing at its foot.",
                   {});
      return {};
    case State::Queued:
      if (job.kind == till::Kind::Z && !job.cause.empty())
        return say("Resuelva primero lo que espera, o retire el cierre.",
                   "Settle first what it waits for, or withdraw the closing.");
      return {};
    case State::Printing: break;
  }
  return {};
}

std::string expiredText() {
  return say("pasó su paciencia sin que la impresora lo tomara; no se envió nada",
             "its patience was over before the printer took it; nothing was sent");
}

std::string withdrawnText() { return say("retirado antes de empezar", "withdrawn before it began"); }

std::string otherMachineText(const std::string& wanted, const std::string& found) {
  return say("es para la impresora {} y aquí está la {}; no se envió nada",
             "it is for the printer {}, and this is {}; nothing was sent", {wanted, found});
}

std::string heldText(const std::string& unknownId) {
  return say("espera a que se sepa de {}: un Z borraría la prueba",
             "waits until it is known what came of {}: a Z would destroy the evidence", {unknownId});
}

}  // namespace zentaro::service
