// What facts about a port mean, and what to do.
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "platform/tcp_name.h"
#include "till/books/books.h"
#include "tools/connection/opening_trouble.h"
#include "tools/connection/service_here.h"
#include "tools/doctor/port_facts.h"

namespace zentaro::tools {

using terminal::say;

namespace {

// How the user names another device for this port.
std::string otherPath(const PortFacts& facts) {
  if (!facts.name.starts_with("COM")) return say("--device con otra ruta", "--device with another path");
  return say(
      "{} cambia el dispositivo de este puerto", "{} changes the device of this port",
      {terminal::quoted(say("zentaro settings set {} RUTA", "zentaro settings set {} PATH", {facts.name}))});
}

Finding missing(const PortFacts& facts) {
  // A path is taken as it stands: no blank is taken off, no "~" replaced.
  const bool isOdd = !looksLikeDevice(facts.device) || facts.device.ends_with(' ');
  const std::string advice =
      isOdd ? say("¿está bien escrita la ruta \"{}\"? Comienza con {} y no termina en un blanco\n",
                  "is the path \"{}\" as it should be? It begins with {} and ends with no blank\n",
                  {facts.device, deviceBeginning})
            : say("conecte el adaptador; abajo está la lista de los que hay\n",
                  "connect the adapter; those that are there are listed below\n");
  return {"device-missing", true, say("el dispositivo no está", "the device is missing"),
          advice + otherPath(facts)};
}

Finding noSerialDevice(const PortFacts& facts) {
  return {"no-serial-device", true, say("no es un dispositivo serial", "this is no serial device"),
          otherPath(facts)};
}

// Nobody should work as root for a printer: the device is given to a group, and the user is put into it.
Finding notAllowed(const PortFacts& facts) {
  const bool hasGroup = facts.group != "root" && !facts.group.empty();
  return {"no-permission", true,
          say("este usuario no puede leer y escribir el dispositivo (grupo {})",
              "this user may not read and write the device (group {})", {facts.group}),
          hasGroup ? say("{}; luego cierre la sesión y entre otra vez", "{}, then log out and in again",
                         {terminal::quoted("sudo usermod -aG " + facts.group + " $USER")})
                   : say("una regla de udev debe dar el dispositivo al grupo dialout "
                         "(el paquete zentaro trae una)",
                         "a udev rule has to give the device to the group dialout (the package "
                         "zentaro brings one)")};
}

Finding taken(const PortFacts& facts) {
  if (facts.holder.empty())
    return {"taken", true, say("otro programa tiene el puerto", "another program has the port"),
            whoTellsHolder()};
  return {"taken", true, say("el puerto lo tiene {}", "the port is taken by {}", {facts.holder}),
          facts.instead.empty()
              ? say("cierre ese programa, o use otro puerto", "end that program, or use another port")
              : facts.instead};
}

// Over TCP: the device server, its address and its port.
Finding unreachable(OpeningTrouble trouble) {
  switch (trouble) {
    case OpeningTrouble::Refused:
      return {"refused", true,
              say("la máquina está, pero nadie atiende en ese puerto",
                  "the host is there, but nobody listens at that port"),
              say("¿es el puerto TCP que dice el convertidor, y está en modo servidor (TCP server, raw)?",
                  "is it the TCP port that the device server names, and is it in server mode (TCP "
                  "server, raw)?")};
    case OpeningTrouble::UnknownHost:
      return {"unknown-host", true, say("ninguna máquina se llama así", "no host has that name"),
              say("use la dirección IP del convertidor, como tcp://192.168.1.50:4001",
                  "use the IP address of the device server, such as tcp://192.168.1.50:4001")};
    case OpeningTrouble::BadName:
      return {"bad-address", true,
              say("no es una dirección: se espera tcp://EQUIPO:PUERTO",
                  "this is no address: tcp://HOST:PORT is expected"),
              say("como tcp://192.168.1.50:4001", "such as tcp://192.168.1.50:4001")};
    default:
      return {"unreachable", true, say("nada responde en esa dirección", "nothing answers at that address"),
              say("¿está encendido el convertidor, con su cable de red, y es esa su dirección IP?",
                  "is the device server on, with its network cable, and is that its IP address?")};
  }
}

// It closes at once the connection that is one too many.
Finding takenFarAway() {
  return {"taken", true,
          say("el convertidor cortó en seguida: otro programa tiene la línea",
              "the device server hung up at once: another program has the line"),
          say("cierre ese programa; si ya se cerró, apague y encienda el convertidor",
              "end that program; if it has ended already, switch the device server off and on")};
}

}  // namespace

PortFacts examinePort(const std::string& name, const std::string& device, bool isConfigured) {
  PortFacts facts = lookAtPort(name, device, isConfigured);
  if (const std::optional<ServiceHere> service = serviceHere(till::booksPath())) {
    const std::string served = nameOn(*service, device);
    if (!served.empty()) facts.instead = sendToService(*service, served);
    if (!served.empty() && facts.holder.empty()) facts.holder = "zentaro serve";
  }
  return facts;
}

Finding judgePort(const PortFacts& facts) {
  if (!facts.exists && !facts.isConfigured && !isTcpName(facts.device))
    return {"absent", false, say("no está", "not there")};
  if (isTcpName(facts.device) && facts.holder.empty())
    return {"over-tcp", false, say("una línea por TCP", "a line over TCP")};
  if (isTcpName(facts.device)) return taken(facts);
  if (!facts.exists) return missing(facts);
  if (!facts.isSerial) return noSerialDevice(facts);
  if (!facts.canReadAndWrite) return notAllowed(facts);
  if (!facts.holder.empty()) return taken(facts);
  return {"free", false, say("libre, y este usuario puede usarlo", "free, and this user may use it")};
}

Finding judgeOpening(int error, const std::string& text, const PortFacts& facts) {
  const bool isTcp = isTcpName(facts.device);
  const OpeningTrouble trouble = troubleOf(error);
  switch (trouble) {
    case OpeningTrouble::Refused:
    case OpeningTrouble::Unreachable:
    case OpeningTrouble::BadName:
      if (isTcp) return unreachable(trouble);
      break;
    case OpeningTrouble::UnknownHost:
      if (isTcp) return unreachable(trouble);
      [[fallthrough]];
    case OpeningTrouble::NoPort:
      return {"no-port", true,
              say("no hay ningún puerto detrás de este nombre", "there is no port behind this name"),
              otherPath(facts)};
    case OpeningTrouble::NoSerialDevice: return noSerialDevice(facts);
    case OpeningTrouble::InUse: return isTcp && facts.holder.empty() ? takenFarAway() : taken(facts);
    case OpeningTrouble::NotAllowed: return notAllowed(facts);
    case OpeningTrouble::Other: break;
  }
  return {"cannot-open", true, say("no se puede abrir: {}", "it cannot be opened: {}", {text})};
}

}  // namespace zentaro::tools
