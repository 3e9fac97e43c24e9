// Guessing the mistake from what stands around it.
#include "base/files/json_problem.h"

#include <algorithm>

#include "base/terminal/harmless.h"
#include "base/terminal/language.h"

namespace zentaro::base {

using terminal::say;

namespace {

constexpr std::string_view blanks = " \t\r\n";

// The last character in front of the piece; 0 for none.
char characterBefore(std::string_view text, std::size_t begin) {
  const std::size_t at = text.substr(0, begin).find_last_not_of(blanks);
  return at == std::string_view::npos ? '\0' : text[at];
}

bool endsValue(char character) {
  return character == '"' || character == '}' || character == ']' || (character >= '0' && character <= '9') ||
         character == 'e' || character == 'l';  // true, false, null
}

std::string guess(char before, const std::string& piece, bool isAtEnd, std::string_view said) {
  const auto has = [&](std::string_view part) { return said.find(part) != std::string_view::npos; };
  const std::string shown = terminal::harmless(piece);
  if (has("UTF-8")) return say("no está en UTF-8; guárdelo en UTF-8", "this is not UTF-8; save it as UTF-8");
  if (has("control character"))
    return say("un texto no termina en su línea: falta una comilla doble",
               "a text does not end on its line: a double quote is missing");
  if (isAtEnd && before == '\0') return say("no hay nada", "there is nothing");
  if (isAtEnd)
    return say("se acaba a la mitad: falta cerrar una llave, un corchete o unas comillas",
               "it ends in the middle: a brace, a bracket or a quote is not closed");
  if (before == ',' && (piece == "}" || piece == "]"))
    return say("sobra una coma antes de {}", "there is a comma too many before {}", {shown});
  if (has("expected ':'"))
    return say("faltan dos puntos antes de {}", "a colon is missing before {}", {shown});
  if (has("invalid number"))
    return say("{} no es un número como 12.50", "{} is no number such as 12.50", {shown});
  if (endsValue(before) && piece.starts_with('"'))
    return say("falta una coma antes de {}", "a comma is missing before {}", {shown});
  if (endsValue(before) && (piece.starts_with('{') || piece.starts_with('[')))
    return say("falta una coma antes de {}", "a comma is missing before {}", {shown});
  if (has("object key"))
    return say("se espera un nombre entre comillas dobles, no {}",
               "a name in double quotes is expected, not {}", {shown});
  if (has("invalid literal"))
    return say("no se entiende {}: los textos van entre comillas dobles",
               "{} is not understood: texts stand in double quotes", {shown});
  return say("{} no va aquí", "{} does not belong here", {shown});
}

}  // namespace

// Where the piece begins that ends in front of `end`: a text, a mark, or what should have been a number or a word.
std::size_t pieceBegin(std::string_view text, std::size_t end, std::string_view said) {
  constexpr std::string_view marks = "{}[],:";
  const auto has = [&](std::string_view part) { return said.find(part) != std::string_view::npos; };
  if (end == 0) return 0;
  if (has("control character")) return std::min(text.rfind('"', end - 1), end - 1);
  std::size_t begin = end - 1;
  if (text[begin] == '"') {
    do {
      begin = begin == 0 ? 0 : begin - 1;
    } while (begin > 0 && (text[begin] != '"' || text[begin - 1] == '\\'));
    return begin;
  }
  if (marks.find(text[begin]) != std::string_view::npos && !has("invalid number")) return begin;
  const auto belongs = [&](char c) {
    return marks.find(c) == marks.npos && blanks.find(c) == blanks.npos && c != '"';
  };
  while (begin > 0 && belongs(text[begin - 1])) --begin;
  return begin;
}

std::string jsonProblem(std::string_view text, std::size_t position, std::string_view said) {
  // The parser counts the end as a character of its own.
  const bool isAtEnd =
      position > text.size() || said.find("unexpected end of input") != std::string_view::npos;
  const std::size_t end = std::min(position, text.size());
  const std::size_t begin = isAtEnd ? text.size() : pieceBegin(text, end, said);
  const std::string_view head = text.substr(0, begin);
  const auto line = std::count(head.begin(), head.end(), '\n') + 1;
  const std::size_t lineStart = head.find_last_of('\n');
  const std::size_t column = begin - (lineStart == std::string_view::npos ? 0 : lineStart + 1) + 1;
  std::string piece(text.substr(begin, end - begin));
  if (piece.size() > 1 && (piece.ends_with('}') || piece.ends_with(']') || piece.ends_with(',')))
    piece.pop_back();
  return say("línea {}, columna {}: no es JSON: {}", "parse error at line {}, column {}: {}",
             {std::to_string(line), std::to_string(column),
              guess(characterBefore(text, begin), piece, isAtEnd, said)});
}

}  // namespace zentaro::base
