// Writes the reference manual, reference.md or with "es" es/referencia.md, from the descriptions of the
// library on standard output: a program of the documentation, which nobody installs.
#include <iostream>
#include <string_view>

#include "base/terminal/language.h"
#include "interface/library.h"
#include "interface/type_names.h"
#include "platform/setting_keys.h"
#include "printer/outcome.h"
#include "text/unicode.h"
#include "tools/show/signatures.h"
#include "tools/show/wording.h"

namespace zentaro::tools {

using terminal::say;

namespace {

constexpr std::string_view english = R"(# Reference

Every class and member of the library. The page is made from the descriptions in `src/interface` by
`cmake --build --preset dev --target reference`: change those, not this page.

## How values are sent

Each operation sends a command with fields and waits for the answer: [the commands and their fields](protocol.md).

| In a note | Means |
|---|---|
| n characters | the text is cut to n characters, trimmed of blanks, and reduced to 7-bit characters: the accents of lower-case vowels and of N are dropped, a double quote becomes an apostrophe, any other character above 127 a full stop |
| n implied decimals | the value times 10^n as a whole number, halves rounded upward: 12.34 with 2 is `1234`, a quantity of 2 with 3 is `2000` |
| yymmdd, hhnnss | a date as year, month and day, a time as hour, minute and second, two digits each |
| sent as given | the value as its text, neither cut nor replaced |

STX, ETX and FS inside a text are sent as full stops. A value that does not convert raises an error before
anything is sent: 13 (type mismatch), 6 (overflow), 94 (invalid use of Null) or 5 (invalid argument). Opening a
port that cannot be opened raises 40001 with the reason.

When one of these errors is raised, something has left already:

- LlenarCheque and EndosarCheque, a text that does not convert: the slip station is on, and stays on.
- GetDateTime, GetStatusN, GetStatusHASAR and PerformReturnCierre, an answer that cannot be read (13, 9 or 6): the
  command was carried out; a Z closing is printed.
- Any operation while the object trace is on and its file cannot be written (52 to 76): perhaps.

Parameters in brackets are optional. By reference means that the member may see, and change, the caller's own
variable; only where a note says so is something written back.
)";

constexpr std::string_view spanish = R"(# Referencia

Todas las clases y miembros de la biblioteca. La página se hace de las descripciones de `src/interface` con
`cmake --build --preset dev --target reference`: no la cambie a mano.

## Cómo se envían los valores

Cada operación envía un comando con sus campos y espera la respuesta: [los comandos y sus campos](protocolo.md).

| En una nota | Quiere decir |
|---|---|
| n caracteres | el texto se corta a n caracteres, se le quitan los blancos de las puntas y se lleva a caracteres de 7 bits: las vocales minúsculas y la N pierden acento y tilde, la comilla doble pasa a apóstrofo, y cualquier otro carácter por encima de 127 a un punto |
| n decimales implícitos | el valor por 10^n como número entero, las mitades hacia arriba: 12.34 con 2 es `1234`, una cantidad de 2 con 3 es `2000` |
| aammdd, hhmmss | una fecha como año, mes y día, una hora como hora, minuto y segundo, dos cifras cada uno |
| se envía tal cual | el valor como su texto, sin cortar ni cambiar nada |

STX, ETX y FS dentro de un texto se envían como puntos. Un valor que no se puede convertir da un error antes de que
se envíe nada: 13 (tipo que no corresponde), 6 (desbordamiento), 94 (uso inválido de Null) o 5 (argumento inválido).
Abrir un puerto que no se puede abrir da 40001 con la causa.

Con uno de estos errores ya salió algo por la línea:

- LlenarCheque y EndosarCheque, un texto que no se puede convertir: la estación de cheques está activa, y así queda.
- GetDateTime, GetStatusN, GetStatusHASAR y PerformReturnCierre, una respuesta que no se puede leer (13, 9 o 6): el
  comando se ejecutó; un cierre Z está impreso.
- Cualquier operación mientras la traza del objeto está encendida y su archivo no se puede escribir (52 a 76): quizás.

Los parámetros entre corchetes son opcionales. Por referencia quiere decir que el miembro puede ver y cambiar la
variable de quien llama; solo cambia algo donde una nota lo dice.
)";

std::string cell(std::string_view text) {
  std::string escaped;
  for (const char character : text) escaped += character == '|' ? "\\|" : std::string(1, character);
  return escaped;
}

void writeParameters(std::ostream& page, const Member& member) {
  if (member.parameters.empty()) return;
  page << say("| Parámetro | Tipo | Pasa | Significado |\n|---|---|---|---|\n",
              "| Parameter | Type | Passed | Meaning |\n|---|---|---|---|\n");
  for (const Parameter& parameter : member.parameters) {
    page << "| `" << parameter.name << "` | " << typeName(parameter.type) << " | "
         << (parameter.passing == Passing::ByReference ? say("por referencia", "by reference")
                                                       : say("por valor", "by value"))
         << " | " << cell(inLanguage(parameter.note)) << " |\n";
  }
  page << '\n';
}

void writeMember(std::ostream& page, std::span<const Member> group) {
  const Member& member = group.front();
  page << "### " << member.name << "\n\n    " << signature(group, inLanguage) << "\n\n"
       << inLanguage(member.help) << "\n\n";
  writeParameters(page, member);
  const std::string outcomes = outcomesText(member, inLanguage);
  if (!outcomes.empty()) page << say("- Resultado, ", "- Outcome, ") << outcomes << "\n\n";
}

void writeClass(std::ostream& page, const ClassDescription& description) {
  page << "\n## " << description.name << "\n\n"
       << inLanguage(description.help) << say(" Interfaz `", " Interface `") << description.interfaceName
       << "`; "
       << (description.create == nullptr
               ? say("lo entrega el objeto impresora.", "handed out by the printer object.")
               : say("se crea como `", "created as `"))
       << (description.create == nullptr ? "" : qualifiedName(description) + "`.") << "\n\n";
  for (const auto& group : memberGroups(description)) writeMember(page, group);
}

void writeEnumeration(std::ostream& page, const EnumerationDescription& enumeration) {
  const bool areOutcomes = enumeration.name == "ENVERR_CODES";
  page << "\n## " << enumeration.name << say("\n\n| Nombre | Valor |", "\n\n| Name | Value |")
       << (areOutcomes ? say(" Texto |", " Text |") : "") << "\n|---|---|" << (areOutcomes ? "---|" : "")
       << '\n';
  for (const EnumerationValue& each : enumeration.values) {
    page << "| `" << each.name << "` | " << each.value << " |";
    if (areOutcomes) page << ' ' << utf8(outcomeText(static_cast<ENVERR_CODES>(each.value))) << " |";
    page << '\n';
  }
}

void writeSettings(std::ostream& page) {
  page << say("\n## Configuración\n\n| Sección | Clave | De fábrica | Significado |\n|---|---|---|---|\n",
              "\n## Settings\n\n| Section | Key | Default | Meaning |\n|---|---|---|---|\n");
  for (const SettingKey& setting : allSettings) {
    page << "| `" << setting.section << "` | `" << setting.key << "` | "
         << (setting.fallback.empty() ? std::string(inLanguage("empty")) : "`" + utf8(setting.fallback) + "`")
         << " | " << inLanguage(setting.meaning) << " |\n";
  }
}

}  // namespace
}  // namespace zentaro::tools

int main(int count, char** words) {
  using namespace zentaro;
  const bool isSpanish = count > 1 && std::string_view(words[1]) == "es";
  terminal::chooseLanguage(isSpanish ? terminal::Language::Spanish : terminal::Language::English);
  std::cout << terminal::say(tools::spanish, tools::english);
  for (const EnumerationDescription& each : libraryEnumerations()) tools::writeEnumeration(std::cout, each);
  for (const ClassDescription* description : libraryClasses()) tools::writeClass(std::cout, *description);
  tools::writeSettings(std::cout);
}
