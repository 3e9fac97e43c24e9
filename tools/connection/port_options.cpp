// Those options, each with its check.
#include "tools/connection/port_options.h"

#include <CLI/CLI.hpp>

#include "base/terminal/command_line.h"
#include "base/terminal/language.h"
#include "tools/connection/known_settings.h"

namespace zentaro::tools {

using terminal::say;

void addPortOptions(CLI::App& command, PortOptions& options) {
  CLI::Option* port =
      command
          .add_option("--port", options.port,
                      say("Puerto serial 1 a 8, según las claves COM1 a COM8 de la configuración",
                          "Serial port 1 to 8, by the settings COM1 to COM8"))
          ->check(terminal::wholeNumber(1, portCount))
          ->type_name("N");
  CLI::Option* device =
      command
          .add_option("--device", options.device,
                      say("Dispositivo serial, o tcp://EQUIPO:PUERTO, diga lo que diga la configuración",
                          "Serial device, or tcp://HOST:PORT, whatever the settings say"))
          ->excludes(port)
          ->check(terminal::notEmpty())
          ->type_name(say("RUTA", "PATH"));
  command
      .add_flag("--virtual", options.isVirtual,
                say("La impresora virtual, aunque haya un puerto configurado",
                    "The virtual printer, although a port is configured"))
      ->excludes(port)
      ->excludes(device);
  command
      .add_option("--timeout", options.timeout,
                  say("Espera por una respuesta, en lugar de la clave TimeOutZT",
                      "Time-out of an answer, instead of the setting TimeOutZT"))
      ->check(terminal::wholeNumber(1, 32767))
      ->type_name(say("SEGUNDOS", "SECONDS"));
  command
      .add_option("--give-up", options.giveUp,
                  say("Cuánto se espera por una respuesta perdida (tres veces --timeout, y al menos 30)",
                      "How long a lost answer is waited for (three time-outs, at least 30)"))
      ->check(terminal::wholeNumber(0, 32767))
      ->type_name(say("SEGUNDOS", "SECONDS"));
  command
      .add_option("--wait", options.wait,
                  say("Cuánto se espera por una impresora que otro programa usa (0)",
                      "How long a printer that another program uses is waited for (0)"))
      ->check(terminal::wholeNumber(0, 32767))
      ->type_name(say("SEGUNDOS", "SECONDS"));
  command
      .add_option("--trace", options.traceFile,
                  say("Anota lo enviado y lo recibido; \"zentaro trace\" lo lee",
                      "Note what is sent and read; \"zentaro trace\" reads it"))
      ->type_name(say("ARCHIVO", "FILE"));
}

}  // namespace zentaro::tools
