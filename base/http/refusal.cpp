// The texts of the refusals, status by status.
#include "base/http/refusal.h"

#include "base/terminal/language.h"

namespace zentaro::http {

using terminal::say;

std::string refusalText(int status) {
  switch (status) {
    case 403:
      return say("esta página no puede preguntar aquí: su origen no está permitido",
                 "this page may not ask here: its origin is not allowed");
    case 411:
      return say("el cuerpo debe venir con Content-Length, sin Transfer-Encoding",
                 "the body must come with Content-Length, without Transfer-Encoding");
    case 413: return say("el cuerpo es demasiado grande", "the body is too large");
    case 414: return say("la dirección es demasiado larga", "the address is too long");
    case 415: return say("el cuerpo debe venir sin comprimir", "the body must come uncompressed");
    case 416: return say("aquí no se piden partes (Range)", "parts (Range) are not served here");
    case 421:
      return say("este nombre no se atiende aquí; abra la dirección que el programa dijo al arrancar",
                 "this name is not served here; open the address that the program named at its start");
    case 500: return say("error interno", "internal error");
    case 503:
      return say("hay demasiadas conexiones abiertas; cierre una", "too many connections are open; close one",
                 {});
    default: break;
  }
  return say("esto no es una petición HTTP completa", "this is no complete HTTP request");
}

}  // namespace zentaro::http
