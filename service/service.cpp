// Putting the service together, and taking it apart in the right order.
#include "service/service.h"

#include <map>
#include <mutex>
#include <stdexcept>
#include <system_error>

#include "base/files/paths.h"
#include "base/http/page_file.h"
#include "base/system/error_text.h"
#include "base/terminal/language.h"
#include "service/chain/centre.h"
#include "service/chain/till_side.h"
#include "service/http/api.h"
#include "service/workers/printer_worker.h"
#include "till/books/claims.h"

namespace zentaro::service {

using terminal::say;

namespace {

// One service alone keeps these books' queue. Its claim is the folder's, as those on the printers are: two books of
// one folder would have to share them.
till::Claim claimed(const std::string& books) {
  if (std::optional<till::Claim> claim = till::Claims(books).part(serviceOwner)) return std::move(*claim);
  throw std::runtime_error(say(
      "ya hay un servicio con libros en la carpeta {}; deténgalo, o dé a este una carpeta propia con ZENTARO_BOOKS",
      "another service keeps books in the folder {}; stop it, or give this one a folder of its own with ZENTARO_BOOKS",
      {files::textOf(files::pathOf(books).parent_path())}));
}

std::string checked(std::string books) {
  till::Books(books).check();
  return books;
}

}  // namespace

struct Service::Inside {
  Inside(ServiceSettings given, Chronicle::Say say)
      : settings{std::move(given)},
        claim{claimed(settings.books)},
        books{checked(settings.books)},
        chronicle{books, bell, std::move(say)},
        tokens{settings.tokens, settings.ownToken},
        workers{makeWorkers()},
        api{{tokens, books, workers, bell, chronicle, settings.origins,
             [this] { return centre ? centre->tills() : Json::array(); },
             [this] { return centre     ? centre->standing()
                             : tillSide ? tillSide->standing()
                                        : Json(); }}} {}

  std::vector<std::unique_ptr<Worker>> makeWorkers() {
    std::vector<std::unique_ptr<Worker>> made;
    for (const NamedPrinter& printer : settings.printers)
      made.push_back(std::make_unique<PrinterWorker>(PrinterWorker::Settings{
          printer.name, printer.device, printer.isVirtual, settings.books, [this] { bell.ring(); },
          [this, name = printer.name](const std::string& machine) { return holderOf(machine, name); }}));
    return made;
  }

  std::string holderOf(const std::string& machine, const std::string& name) {
    const std::lock_guard lock{mutex};
    machines.erase(name);
    for (const auto& [other, held] : machines)
      if (held == machine) return other;
    if (!machine.empty()) machines[name] = machine;
    return name;
  }

  void listen() {
    http::Server::Settings door;
    door.host = settings.listen->host;
    door.port = settings.listen->port;
    door.guard = {settings.hosts, settings.origins};
    door.guard.hosts.push_back(door.host);
    door.headers = http::pageHeaders();
    const auto answer = [this](http::Server& asked, const http::Request& request, http::Response& response) {
      api.answer(asked, request, response);
    };
    const auto refuse = [this](const http::Request& request, http::Response& response, int status) {
      api.refuse(request, response, status);
    };
    try {
      server = std::make_unique<http::Server>(std::move(door), answer, refuse);
    } catch (const std::system_error& error) {
      throw std::runtime_error(
          say("--listen {}: no se puede escuchar allí ({}); indique otro puerto",
              "--listen {}: cannot listen there ({}); name another port",
              {system::authority(*settings.listen), system::errorText(error.code().value())}));
    }
    settings.listen->port = server->port();
  }

  std::string url() const {
    return settings.listen ? "http://" + system::authority(*settings.listen) : std::string{};
  }

  // For other programs of this machine that find a port in use.
  void leaveNote() {
    Json printers = Json::object();
    for (const NamedPrinter& printer : settings.printers) printers[printer.name] = printer.device;
    books.borrow()->remember(serviceNote, jsonLine({{"url", url()}, {"printers", printers}}));
  }

  void joinChain(const Chronicle::Say& say) {
    if (!settings.chain) return;
    const auto& [broker, till] = *settings.chain;
    if (till.empty())
      centre = std::make_unique<Centre>(Centre::Settings{broker, settings.books}, workers, bell, say);
    else
      tillSide =
          std::make_unique<TillSide>(TillSide::Settings{broker, till, settings.books}, workers, bell, say);
  }

  ServiceSettings settings;
  std::mutex mutex;
  std::map<std::string, std::string> machines;  // the serial numbers of the printers that answer
  till::Claim claim;
  BooksPool books;
  Bell bell;
  Chronicle chronicle;
  Tokens tokens;
  Workers workers;
  std::unique_ptr<Centre> centre;
  std::unique_ptr<TillSide> tillSide;
  Api api;
  std::unique_ptr<http::Server> server;
};

Service::Service(ServiceSettings settings, const Chronicle::Say& say)
    : inside_{std::make_unique<Inside>(std::move(settings), say)} {
  try {
    inside_->joinChain(say);
    if (inside_->settings.listen) inside_->listen();
    inside_->leaveNote();
  } catch (...) {
    inside_->workers.end();
    inside_->bell.close();
    throw;
  }
}

// A sale that is under way ends first, while its client may still ask for it.
Service::~Service() {
  inside_->api.end();
  inside_->workers.end();
  inside_->bell.close();
  inside_->server.reset();
  inside_->tillSide.reset();
  inside_->centre.reset();
}

std::string Service::url() const { return inside_->url(); }

}  // namespace zentaro::service
