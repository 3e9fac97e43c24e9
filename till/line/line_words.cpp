// The sentences.
#include "till/line/line_words.h"

#include "base/terminal/language.h"

namespace zentaro::till {

using terminal::say;

std::string trouble(Heard heard) {
  switch (heard) {
    case Heard::InStep: return {};
    case Heard::Nothing: return say("la impresora no responde", "the printer does not answer");
    case Heard::OutOfStep:
      return say("lo que llega no es la respuesta a lo que se pregunta",
                 "what arrives is not the answer to what is asked");
    case Heard::Echo:
      return say("la línea devuelve lo que se le envía: no hay impresora en ella",
                 "the line returns what is sent: there is no printer on it");
    case Heard::OtherMachine:
      return say("responde otra impresora, con otro número de serie",
                 "another printer answers, with another serial number");
    case Heard::Stopped: return say("interrumpido", "interrupted");
  }
  return {};
}

}  // namespace zentaro::till
