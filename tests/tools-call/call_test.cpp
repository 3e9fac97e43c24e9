// `zentaro call`, `demo`, `members` and `printer` against the virtual printer on a real pseudo-terminal.
#include "base/files/json.h"
#include "base/terminal/layout.h"
#include "support/process.h"
#include "support/responder.h"
#include "tools/connection/virtual_printer.h"

namespace zentaro::tools::call_test {

using testing::contains;
using testing::Ran;

class Call : public testing::Shell {};

TEST_F(Call, PrintsOnTheNamedDeviceAndShowsTheAnswer) {
  const VirtualPrinter printer({"--serial", "ZPV0000042"});
  const std::string call = "zentaro call --device " + printer.device() + " ";
  const Ran serial = run(call + "SerialImpresora");
  EXPECT_EQ(serial.status, 0);
  EXPECT_TRUE(contains(serial.output,
                       "Outcome         0 OK\nResult          ZPV0000042\nPrinter status  0x0000\n"
                       "Fiscal status   0x0000\nPrinter says    VOID\nField 0         128\n"))
      << serial.output;
  EXPECT_EQ(run(call + "AbrirDNF; " + call + "PasarLineaDNF 'Año'; " + call + "CerrarDNF").status, 0);
  EXPECT_TRUE(contains(printer.paper(), "Ano")) << printer.paper();
  EXPECT_FALSE(std::filesystem::exists(file("settings.ini"))) << "--device is not kept";
}

TEST_F(Call, StartsAVirtualPrinterWhenNoPortIsNamed) {
  const Ran ran = run("zentaro call --json GetStatusN 2>" + file("said"));
  EXPECT_EQ(ran.status, 0);
  const Json answer = Json::parse(ran.output);
  EXPECT_EQ(answer["outcome"], 0);
  EXPECT_EQ(answer["outcomeText"], "OK");
  EXPECT_EQ(answer["result"]["UltimoCierreZ"], 0);
  EXPECT_EQ(answer["command"], "0x38");
  EXPECT_EQ(answer["virtual"], true);
  EXPECT_EQ(answer["fields"][0], 0x38);
  const std::string said = folder.read("said");
  EXPECT_TRUE(contains(said, "zentaro: ON THE VIRTUAL PRINTER: not a fiscal document\n         /")) << said;
  const std::string link = said.substr(said.find('/'), said.find('\n', said.find('/')) - said.find('/'));
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(link).parent_path())) << "nothing is left of it";
}

TEST_F(Call, TellsOutcomesApartByItsExitStatus) {
  struct {
    const char* words;
    int status;
    const char* output;
  } const rows[] = {
      {"RecibirPago 5", 1, "Outcome         5 PRINTER STATUS\n"},
      {"AbrirGavetaN 3", 1, "Outcome         6 ARGUMENTOS INVALIDOS\n"},
      {"StatusIF N --timeout 5", 0, "Outcome         0 OK\n"},
      {"PrinterType", 0, "Result          EPSON TMU\n"},
      {"RecibirPago cinco", 2,
       "an argument is not understood: RecibirPago(ivmMontoRecibido: Variant): Int16\nzentaro: Type mismatch (error 13)\n"},
      {"RecibirPago -1.234,50", 2, "write -1234.50 for the number, or text:-1.234,50 for the text"},
      {"--device /nowhere/printer Subtotal", 2,
       "No such file or directory (error 40001)\n\"zentaro doctor\" says"},
      {"--device '' --port 9 Subtotal", 2, "--port: a whole number from 1 to 8"},
      {"--device '' Subtotal", 2, "--device: the value is empty"},
      {"--port 1 --device x Subtotal", 2, "excludes"},
      {"", 2, "MEMBER is required"},
      {"RealizarCierre cierre_x", 0, "Outcome         0 OK\n"},
      {"RealizarCierre CIERRE_Y", 2, "Type mismatch"},
  };
  for (const auto& row : rows) {
    const Ran ran = run(std::string("zentaro call ") + row.words);
    EXPECT_EQ(ran.status, row.status) << row.words << ": " << ran.output;
    EXPECT_TRUE(contains(ran.output, row.output)) << row.words << ": " << ran.output;
  }
}

TEST_F(Call, TakesThePortsOfTheSettingsAndItsOwnTimeOut) {
  const VirtualPrinter deaf({"--fault", "lose-answer always"});
  write("settings.ini", "[Config\\ModComm]\nCOM5=" + deaf.device() + "\n[Config\\EPSONZT]\nTimeOutZT=1000\n");
  const Ran ran = run("timeout 30 zentaro call --port 5 --timeout 1 --give-up 1 StatusIF N");
  EXPECT_EQ(ran.status, 1);
  EXPECT_FALSE(contains(ran.output, "Checksum")) << "of an answer that never came";
  EXPECT_TRUE(contains(ran.output, "Outcome         1 TIEMPO AGOTADO\nPrinter status  0x8000\n"))
      << ran.output;
}

// Each shows how the command and the line below it see the answers, beyond their checks.
TEST_F(Call, JudgesAnswersAsAHostWould) {
  const VirtualPrinter noisy({"--fault", "bad-checksum on serial always"});
  EXPECT_TRUE(contains(run("zentaro call SerialImpresora --device " + noisy.device()).output,
                       "Outcome         0 OK\n"))
      << "the object does not verify checksums unless it is told to";
  EXPECT_TRUE(contains(run("zentaro call LlenarCheque 100 Ana 2024-03-15").output, "Outcome         0 OK\n"))
      << "behind a cheque the slip station is switched off";
  // Whatever is asked, the answer is that to a status request.
  const testing::Responder late([](std::string_view heard) {
    return testing::answerTo(heard, 0x38,
                             "\x1C"
                             "0000\x1C"
                             "0000\x1C"
                             "0\x1C"
                             "0");
  });
  const Ran other = run("zentaro call AbrirGavetaN 1 --timeout 1 --give-up 1 --device " + late.device());
  EXPECT_EQ(other.status, 1);
  EXPECT_TRUE(contains(other.output, "Outcome         4 SECUENCIA INVALIDA\n")) << other.output;
}

// The second question would last as long as the first, long beyond what was asked for.
TEST_F(Call, WaitsNoLongerThanItWasTold) {
  const VirtualPrinter deaf({"--fault", "lose-answer always"});
  const Ran ran = run("timeout 9 zentaro call CortarPapel --timeout 5 --give-up 6 --device " + deaf.device());
  EXPECT_EQ(ran.status, 2) << ran.output;
  EXPECT_TRUE(contains(ran.output, "the printer does not answer")) << ran.output;
}

TEST_F(Call, TracesTheLineBehindALostAnswer) {
  const VirtualPrinter printer({"--fault", "lose-answer on status"});
  const Ran ran = run("zentaro call AbrirGavetaN 1 --timeout 1 --trace " + file("trace") + " --device " +
                      printer.device());
  EXPECT_EQ(ran.status, 0) << ran.output;
  const std::string trace = folder.read("trace");
  EXPECT_TRUE(contains(trace.substr(trace.find("38")), "Read ")) << trace;
}

TEST_F(Call, SaysWhyNoVirtualPrinterStarted) {
  const Ran refused = run("cp \"$(command -v zentaro)\" " + file("zentaro") + "; PATH=/usr/bin:/bin " +
                          file("zentaro") + " call Subtotal");
  EXPECT_EQ(refused.status, 2);
  EXPECT_TRUE(contains(refused.output, "cannot start zentaro-printer: No such file or directory"))
      << refused.output;
  EXPECT_THROW(VirtualPrinter({"--no-such-option"}), std::runtime_error);
}

TEST_F(Call, IsShownByTheDemo) {
  const Ran ran = run("zentaro demo");
  EXPECT_EQ(ran.status, 0);
  for (const char* part : {"PasarLineaFactura(\"Café molido 500 g\", 12.5, 2, 16)\n  0 OK\n",
                           "PerformReturnCierre(1)\n  0 OK\n    Exempt sales ", "Cafe molido 500 g (G)",
                           "| FACTURA: ", "NOTA DE CREDITO", "REPORTE Z 00000001", "JOSE PEREZ"}) {
    EXPECT_TRUE(contains(ran.output, part)) << part << "\n" << ran.output;
  }
}

// Object and driver write into one file, each in its own form; a frame is shown once.
TEST_F(Call, LeavesATraceThatIsRead) {
  write("sale.json", R"({"document": "invoice", "payments": [{"amount": 1}], "lines": [{"description": "Pan",
    "price": 1, "tax": 0}]})");
  for (const auto& [command, closing] : {std::pair("sale " + file("sale.json"), "-> 45 close"),
                                         std::pair(std::string("status"), "-> 38 status"),
                                         std::pair(std::string("cierre z --virtual"), "-> 39 closing"),
                                         std::pair(std::string("call CortarPapel"), "-> 4B cut")}) {
    const std::string trace = file("trace");
    const Ran ran = run("rm -f " + trace + "; zentaro " + command + " --trace " + trace +
                        " >/dev/null 2>&1 && zentaro trace " + trace);
    EXPECT_EQ(ran.status, 0) << ran.output;
    EXPECT_TRUE(contains(ran.output, closing)) << ran.output;
    EXPECT_FALSE(contains(ran.output, "BAD") || contains(ran.output, "nothing")) << ran.output;
    const std::string once = ran.output.substr(ran.output.find(closing) + 1);
    EXPECT_FALSE(contains(once, closing) && command != "status") << ran.output;
  }
  write("settings.ini", "[Config\\EPSONZT]\nDebugZT=1\nDumpZT=/dev/full\n");
  const Ran full = run("zentaro status");
  EXPECT_EQ(full.status, 0) << full.output;
  EXPECT_TRUE(contains(full.output, "the trace cannot be written (Disk full); going on without it\n"))
      << full.output;
  write("settings.ini", "[Config\\EPSONZT]\nDebugZT=1\nDumpZT=/nonexistent/trace\n");
  EXPECT_EQ(run("zentaro status").status, 0) << "a setting stops no command";
  const Ran asked = run("zentaro status --trace /nonexistent/own");
  EXPECT_EQ(asked.status, 2);
  EXPECT_TRUE(contains(asked.output, "the trace /nonexistent/own cannot be opened (Path not found)"))
      << asked.output;
}

TEST_F(Call, EveryHelpFitsEightyColumns) {
  for (const char* language : {"es", "en"}) {
    for (const char* command :
         {"", "demo", "printer", "printer tell", "call", "status", "cierre", "sale", "trace", "members",
          "settings", "settings list", "settings get", "settings set", "doctor", "host", "help"}) {
      const Ran help = run("COLUMNS=80 zentaro --lang " + std::string(language) + " " + command + " --help");
      EXPECT_EQ(help.status, 0) << command;
      std::istringstream lines(help.output);
      for (std::string line; std::getline(lines, line);) EXPECT_LE(terminal::columnsOf(line), 80U) << line;
    }
  }
}

TEST_F(Call, IsHelpedByMembersAndPrinter) {
  const Ran one = run("zentaro members recibirpago");
  EXPECT_EQ(one.output,
            "CZentaro.RecibirPago(ivmMontoRecibido: Variant): Int16\n\n  Registers a payment.\n"
            "  ivmMontoRecibido: amount, 2 implied decimals\n"
            "  Outcome, the result: -1, 0 to 5\n\n");
  EXPECT_TRUE(contains(run("zentaro members statusn").output, "  UltimoCierreZ(): Int32\n")) << "a class";
  EXPECT_TRUE(contains(run("zentaro members ntipocierrefiscal").output, "  CIERRE_Z = 1\n"));
  EXPECT_EQ(Json::parse(run("zentaro members --json").output).size(), 4U);
  EXPECT_TRUE(contains(run("zentaro members pocierre").output, "  nTipoCierreFiscal: CIERRE_X = 0\n"));
  EXPECT_TRUE(contains(run("zentaro members conmedio").output, "  CZentaro.PagoConMedio: "));
  EXPECT_EQ(run("zentaro members Nope").status, 2);
  EXPECT_TRUE(contains(run("zentaro printer --link /nowhere/link").output, "--link /nowhere/link: "));
  EXPECT_EQ(run("zentaro nope").output,
            "zentaro: unknown subcommand \"nope\": \"zentaro --help\" lists all\n");
}

}  // namespace zentaro::tools::call_test
