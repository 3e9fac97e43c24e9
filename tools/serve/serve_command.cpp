// The subcommand: options, the running service, and its end by a signal.
#include "tools/serve/serve_command.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <mutex>
#include <thread>

#include "base/files/paths.h"
#include "base/files/temporary_folder.h"
#include "base/system/interruption.h"
#include "base/system/random.h"
#include "base/terminal/command_line.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "service/chain/books_notes.h"
#include "till/books/books.h"
#include "till/words/verdict_words.h"
#include "tools/connection/connection.h"
#include "tools/serve/serve_options.h"
#include "tools/serve/system_service.h"
#include "tools/serve/token_command.h"
#include "tools/show/guarded.h"

namespace zentaro::tools {

using terminal::say;

namespace {

// One virtual printer with books of its own: a printer that forgets its counters would not fit others.
struct Trial {
  VirtualPrinter printer;
  base::TemporaryFolder folder;
};

void log(const std::string& line) {
  static std::mutex mutex;
  const std::lock_guard lock{mutex};
  std::cerr << terminal::harmless(line) << std::endl;
}

void warnOfListening(const std::optional<system::Address>& listen) {
  if (!listen || listen->host == "localhost" || listen->host == "::1" || listen->host.starts_with("127."))
    return;
  log(say("zentaro: aviso: {} se oye desde otras máquinas, sin cifrar; ponga delante un proxy con TLS",
          "zentaro: warning: {} is heard from other machines, not encrypted; put a proxy with TLS in front",
          {listen->host}));
}

int runServe(const ServeOptions& options, const ServeHost& host) {
  base::Interruption::setLastWords(
      say("\nzentaro: terminado; lo que se imprimía se juzga al arrancar otra vez\n",
          "\nzentaro: ended; what was being printed is judged at the next start\n"));
  const base::Interruption interruption;
  std::optional<Trial> trial;
  service::ServiceSettings settings;
  settings.listen = listenAddress(options);
  settings.origins = options.origins;
  settings.hosts = options.hosts;
  settings.tokens = tokensPathOf(options);
  settings.chain = chainSettings(options);
  if (options.isVirtual) {
    trial.emplace();
    settings.printers = {{"virtual", trial->printer.device(), true}};
    settings.books = files::textOf(trial->folder.path() / "books.db");
    settings.ownToken = "zt_" + system::randomHex(16);
    log("zentaro: " + till::virtualNotice());
  } else {
    settings.printers = namedPrinters(options);
    settings.books = till::booksPath();
  }
  warnOfListening(settings.listen);
  const std::string ownToken = settings.ownToken;
  const service::Service service{std::move(settings), log};
  if (!ownToken.empty() && !service.url().empty())
    log(say("página: {}", "page: {}", {service.url() + "/#token=" + ownToken}));
  log("ready: " + (service.url().empty() ? "-" : service.url()));
  host.isReady();
  while (!host.isEnding()) std::this_thread::sleep_for(std::chrono::milliseconds{100});
  log(say("zentaro: termina; lo que se imprime llega a su fin, lo demás espera en los libros",
          "zentaro: ending; what is being printed comes to its end, the rest waits in the books"));
  return exitDone;
}

// Options that the command line does not give, from lines such as printer = ["caja1=/dev/ttyUSB0"].
void readConfig(CLI::App& command, const std::string& path) {
  for (const CLI::ConfigItem& item : CLI::ConfigTOML{}.from_file(path)) {
    CLI::Option* option = item.parents.empty() ? command.get_option_no_throw("--" + item.name) : nullptr;
    if (option == nullptr || item.name == "config")
      throw std::runtime_error(say("{}: no hay una opción \"{}\"", "{}: there is no option \"{}\"",
                                   {path, terminal::harmless(item.fullname())}));
    if (option->count() > 0) continue;
    const bool isFlag = option->get_expected_max() == 0;
    if (isFlag && item.inputs == std::vector<std::string>{"false"}) continue;
    for (const std::string& input : item.inputs) option->add_result(input);
    option->run_callback();
  }
}

void addServeOptions(CLI::App& command, ServeOptions& options) {
  command
      .add_option(
          "--printer", options.printers,
          say("Una impresora y su nombre: caja1=/dev/ttyUSB0 (repetible); sin ella, las de la configuración",
              "A printer and its name: caja1=/dev/ttyUSB0 (repeatable); without it, those of the settings"))
      ->type_name(say("NOMBRE=DISPOSITIVO", "NAME=DEVICE"))
      ->expected(1)
      ->take_all();
  command.add_flag("--virtual", options.isVirtual,
                   say("Una impresora virtual, para probar", "One virtual printer, to try it"));
  command
      .add_option("--listen", options.listen,
                  say("Dónde se oye (127.0.0.1:8211); none: sin HTTP",
                      "Where it is heard (127.0.0.1:8211); none: without HTTP"))
      ->type_name(say("[DIRECCIÓN:]PUERTO", "[ADDRESS:]PORT"));
  command
      .add_option("--origin", options.origins,
                  say("Una página de otra parte que puede preguntar: https://tienda.example (repetible)",
                      "A page from elsewhere that may ask: https://tienda.example (repeatable)"))
      ->type_name("ORIGIN")
      ->expected(1)
      ->take_all();
  command
      .add_option("--name", options.hosts,
                  say("Otro nombre por el que se llama a esta máquina (repetible)",
                      "A further name by which this machine is called (repeatable)"))
      ->type_name("HOST")
      ->expected(1)
      ->take_all();
  command
      .add_option(
          "--tokens", options.tokens,
          say("El archivo de los tokens, en vez del usual", "The file of tokens, instead of the usual"))
      ->type_name(say("ARCHIVO", "FILE"));
  const auto text = [&](const char* name, std::string& value, const std::string& help,
                        const std::string& kind) { command.add_option(name, value, help)->type_name(kind); };
  const std::string url = "mqtts://HOST", file = say("ARCHIVO", "FILE");
  text("--centre", options.centre,
       say("Una caja de una cadena: su broker MQTT", "A till of a chain: its MQTT broker"), url);
  text("--till", options.till,
       say("El nombre de esta caja en la cadena", "The name of this till in the chain"),
       say("NOMBRE", "NAME"));
  command
      .add_option("--spread", options.spread,
                  say("En cuántos segundos vuelven las cajas que se cortaron a la vez (60)",
                      "Within how many seconds tills that were cut at once come back (60)"))
      ->type_name(say("SEGUNDOS", "SECONDS"))
      ->check(CLI::Range(1, 3600));
  text("--tills", options.tills,
       say("La central de una cadena: su broker MQTT", "The centre of a chain: its MQTT broker"), url);
  text("--ca", options.authority, say("Quién certifica al broker", "Who certifies the broker"), file);
  text("--cert", options.certificate,
       say("El certificado de esta máquina", "The certificate of this machine"), file);
  text("--key", options.key, say("Su clave, solo para esta cuenta", "Its key, for this account alone"), file);
}

// The running service looks for it.
int acceptBooks() {
  till::Books books;
  service::acceptOlder(books);
  log(say("zentaro: anotado; el servicio que está en books-older lo toma en un minuto",
          "zentaro: noted; the service that is in books-older takes it up within a minute"));
  return exitDone;
}

}  // namespace

void addServeCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<ServeOptions>();
  auto config = std::make_shared<std::string>();
  CLI::App* command =
      app.add_subcommand("serve", say("El servicio para tiendas web y varias cajas, por HTTP",
                                      "Run the service for web shops and several tills, over HTTP"));
  addServeOptions(*command, *options);
  command->add_option("--config", *config, say("Un archivo con estas opciones", "A file with these options"))
      ->type_name(say("ARCHIVO", "FILE"));
  command->footer(say(
      "Está listo cuando dice \"ready: http://...\" en la salida de errores. Cada cliente necesita un token: "
      "\"zentaro serve token add NOMBRE\".",
      "It is ready when it says \"ready: http://...\" on standard error. Each client needs a token: \"zentaro serve "
      "token add NAME\".",
      {}));
  const auto complete = [command, config] {
    if (!config->empty()) readConfig(*command, *config);
  };
  command
      ->add_subcommand("accept-books",
                       say("Cadena: estos libros más viejos valen (tras cambiar o restaurar un disco)",
                           "Chain: these older books count (after a disk was replaced or restored)"))
      ->callback([&status] { status = guarded(acceptBooks); });
  addTokenCommand(*command, options, complete, status);
  const auto run = addServiceCommands(*command, options, complete, status);
  command->callback([command, options, complete, run, &status] {
    if (!command->get_subcommands().empty()) return;
    status = guarded([&] {
      complete();
      return run([&](const ServeHost& host) { return runServe(*options, host); });
    });
  });
}

}  // namespace zentaro::tools
