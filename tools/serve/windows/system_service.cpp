// A service of Windows: made, taken away, and run by the service control manager under the account LocalService.
#include "tools/serve/system_service.h"

#include <windows.h>

#include <CLI/CLI.hpp>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "base/files/paths.h"
#include "base/system/child_process.h"
#include "base/system/environment.h"
#include "base/system/interruption.h"
#include "base/system/places.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "base/terminal/windows/text.h"
#include "tools/show/guarded.h"

namespace zentaro::tools {

namespace {

namespace fs = std::filesystem;
using terminal::say;

constexpr wchar_t serviceName[] = L"Zentaro";
constexpr DWORD longestSale = 150'000;  // milliseconds; a sale that is being printed comes to its end first

struct CloseService {
  void operator()(SC_HANDLE handle) const { ::CloseServiceHandle(handle); }
};
using ServiceHandle = std::unique_ptr<std::remove_pointer_t<SC_HANDLE>, CloseService>;

[[noreturn]] void fail() {
  const DWORD error = ::GetLastError();
  const std::string reason = terminal::reasonOf(error);
  if (error == ERROR_ACCESS_DENIED)
    throw std::runtime_error(
        say("hace falta ser administrador: abra la consola con \"Ejecutar como administrador\"",
            "this needs an administrator: open the console by \"Run as administrator\""));
  if (error == ERROR_SERVICE_EXISTS)
    throw std::runtime_error(say("el servicio ya está; quítelo primero con zentaro serve remove",
                                 "the service is there; take it away first by zentaro serve remove"));
  if (error == ERROR_SERVICE_DOES_NOT_EXIST)
    throw std::runtime_error(say("no hay ningún servicio instalado", "no service is installed"));
  throw std::runtime_error(say("el servicio: {}", "the service: {}", {reason}));
}

ServiceHandle demanded(SC_HANDLE handle) {
  if (handle == nullptr) fail();
  return ServiceHandle(handle);
}

fs::path tokensFolder() {
  fs::path folder = system::machineStateFolder();
  return folder += "-serve";
}

fs::path logPath() { return tokensFolder() / "serve.log"; }

/// Its state when it is no longer on the way to one, for which a sale's time is waited at most.
DWORD settledState(SC_HANDLE service) {
  constexpr DWORD glance = 100;
  SERVICE_STATUS state{};
  for (DWORD waited = 0; ::QueryServiceStatus(service, &state) != 0 && waited < longestSale;
       waited += glance) {
    if (state.dwCurrentState != SERVICE_START_PENDING && state.dwCurrentState != SERVICE_STOP_PENDING) break;
    ::Sleep(glance);
  }
  return state.dwCurrentState;
}

/// For the accounts and rights that icacls is given; those that a folder inherits count only where they are kept.
void makeFolder(const fs::path& folder, const std::vector<std::string>& rights) {
  fs::create_directories(folder);
  std::vector<std::string> words{"icacls", files::textOf(folder), "/q"};
  words.insert(words.end(), rights.begin(), rights.end());
  if (base::runProgram(words) != 0)
    std::cerr << say("zentaro: aviso: los permisos de {} quedaron como estaban\n",
                     "zentaro: warning: the rights of {} were left as they were\n", {files::textOf(folder)});
}

// With the printers that are in force here: the service's account has settings of its own.
std::string commandLineOf(const ServeOptions& options) {
  std::wstring path(32768, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  std::vector<std::string> words{"serve", "--as-service", "--listen", options.listen};
  if (options.isVirtual) words.emplace_back("--virtual");
  if (!options.isVirtual)
    for (const service::NamedPrinter& printer : namedPrinters(options))
      words.insert(words.end(), {"--printer", printer.name + "=" + printer.device});
  for (const std::string& origin : options.origins) words.insert(words.end(), {"--origin", origin});
  for (const std::string& host : options.hosts) words.insert(words.end(), {"--name", host});
  if (!options.tokens.empty())
    words.insert(words.end(), {"--tokens", files::textOf(fs::absolute(files::pathOf(options.tokens)))});
  std::string line = "\"" + terminal::narrow(path) + "\"";
  for (const std::string& word : words) {
    if (word.find('"') != std::string::npos)
      throw std::runtime_error(say("{}: sin comillas, por favor", "{}: without quotes, please", {word}));
    line += " \"" + word + "\"";
  }
  return line;
}

// Until it runs; one that ends at once is told now and taken away again.
void start(SC_HANDLE service) {
  const bool isStarted = ::StartServiceW(service, 0, nullptr) != 0;
  const DWORD error = ::GetLastError();
  if (isStarted && settledState(service) == SERVICE_RUNNING) return;
  ::DeleteService(service);
  ::SetLastError(error);
  if (!isStarted) fail();
  throw std::runtime_error(say("el servicio no arrancó; por qué, lo dice {}",
                               "the service did not start; why, says {}", {files::textOf(logPath())}));
}

int installService(const ServeOptions& options) {
  const std::wstring command = terminal::wide(commandLineOf(options));
  const ServiceHandle manager = demanded(::OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CREATE_SERVICE));
  const ServiceHandle made = demanded(
      ::CreateServiceW(manager.get(), serviceName, L"Zentaro", SERVICE_ALL_ACCESS, SERVICE_WIN32_OWN_PROCESS,
                       SERVICE_AUTO_START, SERVICE_ERROR_NORMAL, command.c_str(), nullptr, nullptr, nullptr,
                       LR"(NT AUTHORITY\LocalService)", L""));
  makeFolder(system::machineStateFolder(), {"/grant", "*S-1-5-32-545:(OI)(CI)M"});  // every user's sales
  makeFolder(tokensFolder(), {"/inheritance:r", "/grant", "*S-1-5-32-544:(OI)(CI)F", "*S-1-5-18:(OI)(CI)F",
                              "*S-1-5-19:(OI)(CI)M"});  // administrators, the system and the service alone
  SC_ACTION again{SC_ACTION_RESTART, 1000};
  SERVICE_FAILURE_ACTIONSW whenItFails{86'400, nullptr, nullptr, 1, &again};
  ::ChangeServiceConfig2W(made.get(), SERVICE_CONFIG_FAILURE_ACTIONS, &whenItFails);
  start(made.get());
  std::cout << say(
      "El servicio Zentaro está instalado y arranca con Windows. Libros: {}. Bitácora: {}. Cada cliente necesita un "
      "token: {}\n",
      "The service Zentaro is installed and starts with Windows. Books: {}. Log: {}. Each client needs a token: "
      "{}\n",
      {files::textOf(system::machineStateFolder()), files::textOf(logPath()),
       terminal::whole(say("zentaro serve token add NOMBRE", "zentaro serve token add NAME"))});
  return exitDone;
}

int removeService() {
  const ServiceHandle manager = demanded(::OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT));
  const ServiceHandle found = demanded(::OpenServiceW(manager.get(), serviceName, SERVICE_ALL_ACCESS));
  SERVICE_STATUS state{};
  ::ControlService(found.get(), SERVICE_CONTROL_STOP, &state);
  settledState(found.get());
  if (::DeleteService(found.get()) == 0) fail();
  std::cout << say("El servicio Zentaro ya no está. Los libros siguen en {}.\n",
                   "The service Zentaro is gone. The books stay in {}.\n",
                   {files::textOf(system::machineStateFolder())});
  return exitDone;
}

// ---- As the system runs it: one service in the process. ----

struct Running {
  const RunServe* run = nullptr;
  SERVICE_STATUS_HANDLE handle = nullptr;
  std::atomic<bool> isEnding = false;
  int status = exitFailed;
};
Running running;

void report(DWORD state, DWORD waitHint = 0, DWORD status = 0) {
  const DWORD accepted = state == SERVICE_RUNNING ? SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_SHUTDOWN : 0;
  SERVICE_STATUS told{SERVICE_WIN32_OWN_PROCESS,
                      state,
                      accepted,
                      status == 0 ? DWORD{NO_ERROR} : DWORD{ERROR_SERVICE_SPECIFIC_ERROR},
                      status,
                      0,
                      waitHint};
  ::SetServiceStatus(running.handle, &told);
}

DWORD WINAPI control(DWORD order, DWORD, void*, void*) {
  if (order == SERVICE_CONTROL_STOP || order == SERVICE_CONTROL_SHUTDOWN) {
    running.isEnding = true;
    report(SERVICE_STOP_PENDING, longestSale);
  }
  return NO_ERROR;
}

// What it says goes into a file, of which the last one is kept.
void openLog() {
  constexpr std::uintmax_t most = 10'000'000;
  const fs::path log = logPath();
  std::error_code none;
  if (fs::file_size(log, none) > most && !none) fs::rename(log, tokensFolder() / "serve.old.log", none);
  static std::ofstream file(log, std::ios::app);
  std::cerr.rdbuf(file.rdbuf());
}

void WINAPI serve(DWORD, wchar_t**) {
  running.handle = ::RegisterServiceCtrlHandlerExW(serviceName, control, nullptr);
  report(SERVICE_START_PENDING, longestSale);
  running.status = guarded([] {
    openLog();
    return (*running.run)({[] { report(SERVICE_RUNNING); }, [] { return running.isEnding.load(); }});
  });
  report(SERVICE_STOPPED, 0, static_cast<DWORD>(running.status));
}

int runAsService(const RunServe& run) {
  running.run = &run;
  wchar_t name[] = L"Zentaro";
  const SERVICE_TABLE_ENTRYW table[] = {{name, serve}, {nullptr, nullptr}};
  if (::StartServiceCtrlDispatcherW(table) == 0) fail();
  return running.status;
}

}  // namespace

std::function<int(const RunServe&)> addServiceCommands(CLI::App& app,
                                                       const std::shared_ptr<ServeOptions>& options,
                                                       const std::function<void()>& complete, int& status) {
  const auto isService = std::make_shared<bool>(false);
  app.add_flag("--as-service", *isService, "")->group("");
  app.add_subcommand("install", say("Lo instala, con estas opciones, como servicio de Windows, y lo arranca",
                                    "Install it, with these options, as a service of Windows, and start it"))
      ->callback([options, complete, &status] {
        status = guarded([&] {
          complete();
          return installService(*options);
        });
      });
  app.add_subcommand("remove", say("Detiene y quita el servicio; los libros quedan",
                                   "Stop the service and take it away; the books stay"))
      ->callback([&status] { status = guarded(removeService); });
  return [isService](const RunServe& run) {
    return *isService ? runAsService(run) : run({[] {}, base::Interruption::isRequested});
  };
}

}  // namespace zentaro::tools
