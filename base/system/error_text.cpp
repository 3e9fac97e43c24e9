// The errors that people meet.
#include "base/system/error_text.h"

#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>

#include "base/terminal/language.h"

namespace zentaro::system {

namespace {

struct Text {
  int error;
  std::string_view spanish;
};

constexpr auto texts = std::to_array<Text>({
    {ENOENT, "no existe"},
    {EACCES, "permiso denegado"},
    {EPERM, "no está permitido"},
    {EISDIR, "es una carpeta"},
    {ENOTDIR, "una parte de la ruta no es una carpeta"},
    {EEXIST, "ya existe"},
    {ENOSPC, "no queda espacio en el disco"},
    {EFBIG, "el archivo no puede crecer más"},
    {EROFS, "ahí no se puede escribir (solo lectura)"},
    {EBUSY, "lo tiene otro programa"},
    {EIO, "falló la entrada o la salida"},
    {ENXIO, "no hay ningún aparato detrás"},
    {ENODEV, "no hay ningún aparato detrás"},
    {ENOTTY, "no es un dispositivo serial"},
    {ELOOP, "hay demasiados enlaces en la ruta"},
    {ENAMETOOLONG, "el nombre es demasiado largo"},
    {EMFILE, "hay demasiados archivos abiertos"},
    {ECONNREFUSED, "nadie atiende ahí"},
    {ECONNRESET, "el otro lado cortó"},
    {EADDRINUSE, "la dirección ya está en uso"},
    {EHOSTUNREACH, "no hay camino hasta esa máquina"},
    {ETIMEDOUT, "no respondió a tiempo"},
});

}  // namespace

std::string errorText(int error) {
  const bool isSpanish = terminal::language() == terminal::Language::Spanish;
  for (const Text& text : texts)
    if (isSpanish && text.error == error) return std::string(text.spanish);
  return std::generic_category().message(error);
}

}  // namespace zentaro::system
