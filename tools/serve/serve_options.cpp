// What the options mean.
#include "tools/serve/serve_options.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "automation/conversions.h"
#include "base/system/error_text.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "platform/services.h"
#include "platform/setting_keys.h"
#include "platform/system_paths.h"
#include "service/chain/messages.h"
#include "service/http/tokens.h"
#include "tools/connection/known_settings.h"

namespace zentaro::tools {

using terminal::harmless;
using terminal::say;

namespace {

service::NamedPrinter printerFrom(const std::string& text) {
  const std::size_t equals = text.find('=');
  const std::string name = text.substr(0, equals);
  const bool isWord =
      !name.empty() && name.size() <= 40 &&
      name.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-.") ==
          std::string::npos;
  if (equals == std::string::npos || equals + 1 == text.size() || !isWord)
    throw std::runtime_error(
        say("--printer {}: se espera NOMBRE=DISPOSITIVO, como caja1=/dev/ttyUSB0; el nombre, de "
            "letras sin acento, cifras, _ - y .",
            "--printer {}: NAME=DEVICE is expected, such as caja1=/dev/ttyUSB0; the name, of "
            "letters without accents, digits, _ - and .",
            {harmless(text)}));
  return {name, text.substr(equals + 1)};
}

std::vector<service::NamedPrinter> ofTheSettings() {
  if (const auto unreadable = unreadableSettings())
    throw std::runtime_error(say(
        "la configuración {} no se puede leer ({}): dé permiso, o nombre la impresora con --printer, o --virtual",
        "the settings {} cannot be read ({}): give the right to, or name the printer with --printer, or --virtual",
        {harmless(unreadable->path), system::errorText(unreadable->reason.value())}));
  std::vector<service::NamedPrinter> printers;
  for (int port = 1; port <= portCount; ++port) {
    const std::string device =
        utf8(services().settings->read(settingsApplication, portSection, portKey(port), u""));
    if (!device.empty()) printers.push_back({portKey(port), device});
  }
  return printers;
}

}  // namespace

std::optional<system::Address> listenAddress(const ServeOptions& options) {
  if (options.listen == "none") return std::nullopt;
  return system::parseAddress("--listen", options.listen);
}

std::vector<service::NamedPrinter> namedPrinters(const ServeOptions& options) {
  std::vector<service::NamedPrinter> printers;
  for (const std::string& text : options.printers) printers.push_back(printerFrom(text));
  if (printers.empty() && !options.tills.empty()) return printers;  // a centre has those of its tills
  if (printers.empty()) printers = ofTheSettings();
  if (printers.empty())
    throw std::runtime_error(
        say("no hay ninguna impresora: nómbrela con --printer caja1=/dev/ttyUSB0, o pruebe con "
            "--virtual",
            "there is no printer: name it with --printer caja1=/dev/ttyUSB0, or try with "
            "--virtual",
            {}));
  for (std::size_t index = 0; index < printers.size(); ++index)
    for (std::size_t other = 0; other < index; ++other) {
      const bool isSameName = printers[index].name == printers[other].name;
      if (!isSameName && printers[index].device != printers[other].device) continue;
      throw std::runtime_error(say("--printer: {} está dos veces", "--printer: {} stands twice",
                                   {isSameName ? printers[index].name : harmless(printers[index].device)}));
    }
  return printers;
}

std::optional<service::ChainSettings> chainSettings(const ServeOptions& options) {
  const bool isTill = !options.centre.empty(), isCentre = !options.tills.empty();
  if (isTill == isCentre && isTill)
    throw std::runtime_error(say("--centre y --tills: uno de los dos", "--centre and --tills: one of them"));
  if (!isTill && !isCentre) return std::nullopt;
  service::demandMqtt();
  if (isTill && !service::isTillName(options.till))
    throw std::runtime_error(say(
        "--till {}: se espera el nombre de esta caja, el de su certificado: letras sin acento, cifras, _ - y .",
        "--till {}: the name of this till is expected, that of its certificate: letters without accents, digits, "
        "_ - and .",
        {harmless(options.till)}));
  const service::Broker named = isTill ? service::parseBroker("--centre", options.centre)
                                       : service::parseBroker("--tills", options.tills);
  service::ChainSettings chain{named, options.till};
  if (isCentre) chain.till.clear();
  chain.broker.authority = options.authority;
  chain.broker.certificate = options.certificate;
  chain.broker.key = options.key;
  chain.broker.spread = options.spread;
  if (!named.isTls) return chain;
  for (const auto& [option, file] :
       {std::pair{"--ca", options.authority}, {"--cert", options.certificate}, {"--key", options.key}})
    if (!std::ifstream(file).is_open())
      throw std::runtime_error(say("{} {}: mqtts necesita este archivo, y no se puede leer",
                                   "{} {}: mqtts needs this file, and it cannot be read",
                                   {option, harmless(file)}));
  using std::filesystem::perms;
  const perms ofOthers =
      std::filesystem::status(options.key).permissions() & (perms::group_all | perms::others_all);
  if (ofOthers != perms::none)
    throw std::runtime_error(say("--key {}: otros la pueden leer; chmod 600",
                                 "--key {}: others may read it; chmod 600", {harmless(options.key)}));
  return chain;
}

std::string tokensPathOf(const ServeOptions& options) {
  return options.tokens.empty() ? service::tokensPath() : options.tokens;
}

}  // namespace zentaro::tools
