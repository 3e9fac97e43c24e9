// What facts about a port mean, and what to do.
#include <cerrno>

#include "base/terminal/language.h"
#include "tools/doctor/port_facts.h"

namespace zentaro::tools {

using terminal::say;

namespace {

// How the user names another device for this port.
std::string otherPath(const PortFacts& facts) {
  if (!facts.name.starts_with("COM"))
    return std::string(say("--device con otra ruta", "--device with another path"));
  return say("\"zentaro settings set {} RUTA\" cambia el dispositivo de este puerto",
             "\"zentaro settings set {} PATH\" changes the device of this port", {facts.name});
}

Finding missing(const PortFacts& facts) {
  // A path is taken as it stands: no blank is taken off, no "~" replaced.
  const bool isOdd = !facts.device.starts_with('/') || facts.device.ends_with(' ');
  const std::string advice =
      isOdd ? say("¿está bien escrita la ruta \"{}\"? Comienza con / y no termina en un blanco\n",
                  "is the path \"{}\" as it should be? It begins with / and ends with no blank\n",
                  {facts.device})
            : std::string(say("conecte el adaptador; abajo está la lista de los que hay\n",
                              "connect the adapter; those that are there are listed below\n"));
  return {"device-missing", true, std::string(say("el dispositivo no está", "the device is missing")),
          advice + otherPath(facts)};
}

Finding noSerialDevice(const PortFacts& facts) {
  return {"no-serial-device", true,
          std::string(say("no es un dispositivo serial", "this is no serial device")), otherPath(facts)};
}

// Nobody should work as root for a printer: the device is given to a group, and the user is put into it.
Finding notAllowed(const PortFacts& facts) {
  const bool hasGroup = facts.group != "root" && !facts.group.empty();
  return {"no-permission", true,
          say("este usuario no puede leer y escribir el dispositivo (grupo {})",
              "this user may not read and write the device (group {})", {facts.group}),
          hasGroup ? say("\"sudo usermod -aG {} $USER\"; luego cierre la sesión y entre otra vez",
                         "\"sudo usermod -aG {} $USER\", then log out and in again", {facts.group})
                   : std::string(say("una regla de udev debe dar el dispositivo al grupo dialout "
                                     "(el paquete zentaro trae una)",
                                     "a udev rule has to give the device to the group dialout (the package "
                                     "zentaro brings one)"))};
}

Finding taken(const PortFacts& facts) {
  if (facts.holder.empty())
    return {"taken", true, std::string(say("otro programa tiene el puerto", "another program has the port")),
            std::string(say("\"sudo zentaro doctor\" dice cuál", "\"sudo zentaro doctor\" says which one"))};
  return {"taken", true, say("el puerto lo tiene {}", "the port is taken by {}", {facts.holder}),
          facts.instead.empty() ? std::string(say("cierre ese programa, o use otro puerto",
                                                  "end that program, or use another port"))
                                : facts.instead};
}

}  // namespace

Finding judgePort(const PortFacts& facts) {
  if (!facts.exists && !facts.isConfigured)
    return {"absent", false, std::string(say("no está", "not there"))};
  if (!facts.exists) return missing(facts);
  if (!facts.isSerial) return noSerialDevice(facts);
  if (!facts.canReadAndWrite) return notAllowed(facts);
  if (!facts.holder.empty()) return taken(facts);
  return {"free", false,
          std::string(say("libre, y este usuario puede usarlo", "free, and this user may use it"))};
}

Finding judgeOpening(int error, const std::string& text, const PortFacts& facts) {
  switch (error) {
    case EIO:
    case ENXIO:
    case ENODEV:
      return {
          "no-port", true,
          std::string(say("no hay ningún puerto detrás de este nombre", "there is no port behind this name")),
          otherPath(facts)};
    case ENOTTY: return noSerialDevice(facts);
    case EBUSY: return taken(facts);
    case EACCES:
    case EPERM: return notAllowed(facts);
    default: return {"cannot-open", true, say("no se puede abrir: {}", "it cannot be opened: {}", {text})};
  }
}

}  // namespace zentaro::tools
