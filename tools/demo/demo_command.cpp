// Each call with its outcome, the paper, and what to try next.
#include "tools/demo/demo_command.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <limits>
#include <memory>

#include "base/files/json.h"
#include "base/terminal/console.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "till/words/verdict_words.h"
#include "tools/connection/connection.h"
#include "tools/demo/chapters.h"
#include "tools/demo/stage.h"
#include "tools/show/guarded.h"
#include "tools/show/record_words.h"
#include "tools/show/show.h"

namespace zentaro::tools {

using terminal::Colour;
using terminal::say;

namespace {

struct DemoOptions {
  std::string paper;  // a file for the pictures
  std::string web;    // where the page is, or empty for the printer's usual place
  bool hasPage = false;
};

std::string callText(const DemoStep& step) {
  std::string arguments;
  for (const Variant& argument : step.arguments) {
    const bool isText = argument.is(Variant::Kind::Text);
    arguments +=
        (arguments.empty() ? "" : ", ") + (isText ? jsonLine(valueJson(argument)) : valueText(argument));
  }
  return std::string(step.member) + "(" + arguments + ")";
}

// What a call gives besides its outcome: a record as a table, a text or date behind "=".
void showResult(const Variant& result, Stage& stage) {
  if (result.is(Variant::Kind::Object)) {
    for (const RecordRow& row : recordRows(result.object()))
      stage.show(Colour::None,
                 "    " + terminal::padded(std::string(row.words), 35) + terminal::paddedLeft(row.value, 12));
  } else if (result.is(Variant::Kind::Text) || result.is(Variant::Kind::Date)) {
    stage.show(Colour::None, "  = " + valueText(result));
  }
}

bool take(DemoStep step, Connection& connection, Stage& stage) {
  stage.show(Colour::Cyan, callText(step));
  const Variant result = connection.object().call(step.member, step.arguments);
  const ENVERR_CODES outcome = connection.printer().nEnvironmentError;
  stage.show(outcome == ENVERR_OK ? Colour::Green : Colour::Red, "  " + outcomeLine(outcome));
  if (outcome == ENVERR_OK)
    showResult(result, stage);
  else
    stage.show(Colour::Red, "  " + terminal::harmless(utf8(connection.printer().sLastError)));
  return outcome == ENVERR_OK;
}

bool play(const DemoChapter& chapter, Connection& connection, Stage& stage, bool showsPaper) {
  const std::size_t before = connection.virtualPrinter()->paper().size();
  stage.begin(chapter.title);
  bool isGood = true;
  for (const DemoStep& step : chapter.steps)
    isGood = isGood && !base::Interruption::isRequested() && take(step, connection, stage);
  const std::string paper = connection.virtualPrinter()->paper();
  stage.end(showsPaper && paper.size() > before ? paper.substr(before) : "");
  return isGood;
}

// Waits for Enter where somebody can press it; a signal ends the wait, too.
void waitForEnter(std::string_view spanish, std::string_view english) {
  if (!terminal::isTerminal(terminal::Stream::Input)) return;
  std::cout << '\n' << say(spanish, english) << std::flush;
  constexpr int glance = 300;  // milliseconds
  while (!base::Interruption::isRequested()) {
    if (!terminal::waitForInput(glance)) continue;
    std::cin.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    return;
  }
}

void sayWhatNext(const DemoOptions& options) {
  std::cout << '\n' << till::virtualNotice() << '\n';
  if (!options.paper.empty())
    std::cout << say("El papel está en {}\n", "The paper is in {}\n", {terminal::harmless(options.paper)});
  std::cout << terminal::coloured(Colour::Strong, say("\nPara seguir:\n\n", "\nWhat to try next:\n\n"))
            << say(R"(  zentaro printer --web         la impresora en una página, con sus fallas
  zentaro demo --web            este mismo día en esa página
  zentaro demo --paper dia.html el papel como imagen

Una venta suya, y la misma cuando la respuesta se pierde en el cable:

)",
                   R"(  zentaro printer --web         the printer on a web page, with its faults
  zentaro demo --web            this same day on that page
  zentaro demo --paper day.html the paper as a picture

A sale of your own, and the same when its answer is lost on the line:

)")
            << terminal::whole(say(R"(  echo '{"documento": "factura", "pagos": [{"monto": 2}], "renglones":
    [{"descripcion": "Pan", "precio": 1, "impuesto": 16}]}' > venta.json
  zentaro sale venta.json --virtual
  zentaro sale venta.json --fault "lose-answer on close" --timeout 1
)",
                                   R"(  echo '{"document": "invoice", "payments": [{"amount": 2}], "lines":
    [{"description": "Bread", "price": 1, "tax": 16}]}' > sale.json
  zentaro sale sale.json --virtual
  zentaro sale sale.json --fault "lose-answer on close" --timeout 1
)"))
            << say("\nCon la impresora fiscal en el cable: zentaro doctor\n",
                   "\nWith the fiscal printer on the line: zentaro doctor\n");
}

// On the page one watches it print, so the printer takes the time of a real one.
std::vector<std::string> printerWords(const DemoOptions& options) {
  std::vector<std::string> words;
  if (!options.paper.empty()) words = {"--paper", options.paper};
  if (!options.hasPage) return words;
  words.insert(words.end(), {"--realtime", "--open", "--web"});
  if (!options.web.empty()) words.push_back(options.web);
  return words;
}

int runDemo(const DemoOptions& options) {
  PortOptions port;
  port.isVirtual = true;
  Connection connection(port, printerWords(options));
  if (options.hasPage) {
    std::cout << say("La impresora está en {}\n", "The printer is at {}\n",
                     {terminal::harmless(connection.virtualPrinter()->page())});
    waitForEnter("Ábrala, y pulse Enter para empezar. ", "Open it, and press Enter to begin. ");
  }
  Stage stage;
  for (const DemoChapter& chapter : demoChapters(connection.printer().SerialImpresora()))
    if (!play(chapter, connection, stage, !options.hasPage)) return exitRefused;
  sayWhatNext(options);
  if (options.hasPage)
    waitForEnter("La página sigue ahí hasta que pulse Enter. ", "The page stays until you press Enter. ");
  return exitDone;
}

}  // namespace

void addDemoCommand(CLI::App& app, int& status) {
  const auto options = std::make_shared<DemoOptions>();
  CLI::App* command = app.add_subcommand(
      "demo", say("Un día de ventas en una impresora virtual", "A day of sales on a virtual printer"));
  command
      ->add_option("--paper", options->paper,
                   say("Dibuja el papel en ARCHIVO (.txt, .svg o .html)",
                       "Draw the paper into FILE (.txt, .svg or .html)"))
      ->type_name(say("ARCHIVO", "FILE"));
  CLI::Option* web = command
                         ->add_option("--web", options->web,
                                      say("Se ve imprimir en una página web (127.0.0.1:8210)",
                                          "Watch it print on a web page (127.0.0.1:8210)"))
                         ->type_name(say("[[DIRECCIÓN:]PUERTO]", "[[ADDRESS:]PORT]"))
                         ->expected(0, 1);
  command->callback([options, web, &status] {
    options->hasPage = web->count() > 0;
    status = guarded([&] { return runDemo(*options); });
  });
}

}  // namespace zentaro::tools
