// Letter by letter.
#include "till/document/plain_capitals.h"

#include "text/unicode.h"

namespace zentaro::till {

namespace {

// Of Latin letters with a mark; á, é, í, ó, ú, ñ and Ñ are the library's own to change.
char16_t plain(char16_t letter) {
  constexpr std::u16string_view marked = u"ÁÀÂÄÃÅÉÈÊËÍÌÎÏÓÒÔÖÕÚÙÛÜÝÇàâäãåèêëìîïòôöõùûüýç",
                                letters = u"AAAAAAEEEEIIIIOOOOOUUUUYCaaaaaeeeiiioooouuuyc";
  static_assert(marked.size() == letters.size());
  const std::size_t at = marked.find(letter);
  return at == std::u16string_view::npos ? letter : letters[at];
}

}  // namespace

std::string withPlainCapitals(std::string_view text) {
  std::u16string characters = utf16(text);
  for (char16_t& character : characters) character = plain(character);
  return utf8(characters);
}

}  // namespace zentaro::till
