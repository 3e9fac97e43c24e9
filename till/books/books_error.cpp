// What is wrong with the books, and what to do.
#include "till/books/books_error.h"

#include "base/terminal/language.h"

namespace zentaro::till {

using terminal::say;

namespace {

std::string textOf(BooksError::Cause cause, const std::string& path, const std::string& detail) {
  switch (cause) {
    case BooksError::Cause::Full:
      return say("no queda espacio para los libros {} ({}): haga sitio en el disco",
                 "no room for the books {} ({}): free some of the disk", {path, detail});
    case BooksError::Cause::Disk:
      return say(
          "el disco falla con los libros {} ({}): revíselo, y también el límite de tamaño de archivo de este "
          "programa (ulimit -f, LimitFSIZE)",
          "the disk fails the books {} ({}): look after it, and at this program's limit on the size of a file "
          "(ulimit -f, LimitFSIZE)",
          {path, detail});
    case BooksError::Cause::Locked:
      return say("otro programa tiene ocupados los libros {} ({}): espere a que termine, o ciérrelo",
                 "another program keeps the books {} locked ({}): wait until it ends, or end it",
                 {path, detail});
    case BooksError::Cause::Damaged:
      return say(
          "los libros {} están dañados ({}): guárdelos aparte y devuelva la última copia; sin copia, mire "
          "el papel antes de repetir una venta",
          "the books {} are damaged ({}): set them aside and put the last copy back; without one, look at "
          "the paper before a sale is repeated",
          {path, detail});
    case BooksError::Cause::Gone:
      return say("los libros {} ya no están ({}): devuélvalos a su sitio y empiece el programa otra vez",
                 "the books {} are gone ({}): put them back and start the program again", {path, detail});
    case BooksError::Cause::Settled:
      return say("otro programa ya decidió qué fue de esta venta en los libros {} ({})",
                 "another program has settled this sale in the books {} ({})", {path, detail});
    case BooksError::Cause::Unusable: break;
  }
  return say(
      "no se pueden usar los libros {} ({}): la cuenta debe poder escribir en su carpeta (los de la "
      "máquina son del grupo dialout); otros libros se nombran con ZENTARO_BOOKS",
      "the books {} cannot be used ({}): the account must be able to write in their folder (those of the "
      "machine belong to the group dialout); ZENTARO_BOOKS names other books",
      {path, detail});
}

}  // namespace

BooksError::BooksError(Cause cause, const std::string& path, const std::string& detail)
    : std::runtime_error(textOf(cause, path, detail)), cause_(cause) {}

}  // namespace zentaro::till
