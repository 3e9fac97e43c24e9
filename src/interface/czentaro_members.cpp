// The members of CZentaro, in interface order.
#include "interface/member_table.h"
#include "printer/czentaro.h"
#include "reports/resultado_cierre.h"
#include "reports/status_hasar.h"
#include "reports/status_n.h"

namespace zentaro {

namespace {

using namespace table;
using Z = CZentaro;

// Which of two overloads a row means: the one that a host's own variables go through.
using ItemLine = std::int16_t (Z::*)(const Variant&, Variant&, Variant&, const Variant&);
using ClosingWithBase = Variant (Z::*)(Variant&, const Variant&);
using VariantLet = void (Z::*)(const Variant&);
using VariantGet = Variant (Z::*)() const;
using FlagLet = void (Z::*)(bool);
using FlagGet = bool (Z::*)() const;

// Notes that several parameters share. "n characters" and "n implied decimals" are the encodings of texts and
// of amounts; the reference manual says what they mean.
constexpr std::string_view aFrame = "a frame built by BuildOMB just before";
constexpr std::string_view name40 = "customer's name, 40 characters";
constexpr std::string_view rif14 = "customer's RIF, 14 characters";
constexpr std::string_view amount = "amount, 2 implied decimals";
constexpr std::string_view reportType = "type of report, sent as given";

constexpr ParameterList itemParameters{
    byRef("istrDescripcion", "description, as many characters as the setting LenDescripcionZT says (20)"),
    byRef("ivmPrecioNeto",
          "price of one without tax, 2 implied decimals; a fractional quantity folded into it "
          "(setting SuprimirDecimalesEZT) is written back"),
    byRef("idblCantidad", "quantity, 3 implied decimals; 1 is written back when it was folded"),
    byRef("ivmPorcentajeImpuesto", "tax in per cent, 2 implied decimals")};

constexpr auto members = rows(
    variable<&Z::CommPort>("CommPort", "Serial port, 1 to 8."),
    variable<&Z::isPortOpen>("isPortOpen", "The port is open."),
    variable<&Z::dwordPrinterStatus>("dwordPrinterStatus", "Printer status word of the last answer."),
    variable<&Z::dwordStatusFiscal>("dwordStatusFiscal", "Fiscal status word of the last answer."),
    variable<&Z::sLastError>("sLastError", "Error text of the last answer."),
    variable<&Z::nLastCommand>("nLastCommand", "Command of the last frame built."),
    variable<&Z::nEnvironmentError>("nEnvironmentError", "Outcome of the last transaction."),

    method<&Z::BuildOMB>(
        "BuildOMB",
        {byRef("iCommandNumber", "command code, 0 to 255"), byRef("vaArgs", "the fields, each as its text")},
        "Builds a command frame."),
    method<&Z::execute>("execute", {byRef("s", aFrame)}, "Sends a frame without looking at the port.",
                        sendsAlways("the frame as given")),
    method<&Z::ExecuteCMD>("ExecuteCMD", {byRef("nCmd", "command code, 0 to 255")},
                           "Sends a command without fields.", sends("the command, without fields")),
    method<&Z::ExecuteOMB>("ExecuteOMB", {byRef("sOMB", aFrame)}, "Sends a frame.",
                           sends("the frame as given")),
    letGet<static_cast<VariantLet>(&Z::DebugMode), static_cast<VariantGet>(&Z::DebugMode)>(
        "DebugMode", "The object trace is on."),
    readOnly<&Z::PrinterType>("PrinterType", "Type of the printer."),
    letGet<static_cast<VariantLet>(&Z::Settings), static_cast<VariantGet>(&Z::Settings)>(
        "Settings", "Line settings; an assignment is ignored."),
    letGet<static_cast<FlagLet>(&Z::PortOpen), static_cast<FlagGet>(&Z::PortOpen)>(
        "PortOpen", "Opens and closes the port."),

    method<&Z::EnvironmentError>("EnvironmentError", {}, "Text of the last outcome."),
    method<&Z::getResponse>("getResponse", {byRef("cmd", "ignored")}, "All answer fields."),
    method<&Z::getVarParms>("getVarParms", {byRef("n", "ignored")}, "All answer fields."),
    method<&Z::response>(
        "response",
        {byRef("Index", "0 command code, 1 and 2 status words, 3 onward data, the last one checksum")},
        "The answer field at an index, or -1."),
    method<&Z::MaxResponse>("MaxResponse", {}, "-1 when answer fields are stored, 0 after a failure."),
    method<&Z::BitPrinter>("BitPrinter", {byRef("nBit", "0 to 15")},
                           "A bit of the printer status word by its value, or -1.",
                           Effect{"", checksArgument}),
    method<&Z::BitFiscal>("BitFiscal", {byRef("nBit", "0 to 15")},
                          "A bit of the fiscal status word by its value, or -1.", Effect{"", checksArgument}),

    method<&Z::RealizarCierre>(
        "RealizarCierre",
        {byValue("nTipo", "CIERRE_X (0); anything else is the Z"),
         byValue("Imprimir", "False: an X closing is not printed, only its figures are read", isTrue)},
        "Runs the X or Z closing.", sends(R"(0x39: "X", then "P" printed or "S" not; or "Z" alone)")),
    method<&Z::CierreZ>("CierreZ", {}, "Runs the Z closing with totals.", sends(R"(0x39: "Z", "T")")),
    method<&Z::ReporteMemoriaPorFecha>(
        "ReporteMemoriaPorFecha",
        {byRef("dtInicial", "first day, sent as yymmdd"), byRef("dtFinal", "last day, sent as yymmdd"),
         byValue("sTipoReporte", reportType, text("R"))},
        "Reports the fiscal memory between two dates.", sends("0x3A: first day, last day, type")),
    method<&Z::ReporteMemoriaPorNumero>("ReporteMemoriaPorNumero",
                                        {byRef("lngInicial", "first closing number, sent with eight digits"),
                                         byRef("lngFinal", "last closing number, sent with eight digits"),
                                         byValue("sTipoReporte", reportType, emptyText)},
                                        "Reports the fiscal memory between two closing numbers.",
                                        sends("0x3A: first number, last number, type")),

    method<&Z::IniciarFactura>(
        "IniciarFactura",
        {byValue("sNombreCliente", name40, emptyText), byValue("sRIFCliente", rif14, emptyText)},
        "Opens an invoice.", sends("0x40: name, RIF, seven empty fields")),
    method<&Z::PasarLineaExtra>(
        "PasarLineaExtra",
        {byRef("sTexto", "text, 14 characters more than the setting LenDescripcionZT says (34)")},
        "Prints an extra text line.", sends(R"(0x41: text, "S")")),
    method<&Z::IniciarDevolucion>(
        "IniciarDevolucion",
        {byValue("sNombreCliente", name40, emptyText), byValue("sRIFCliente", rif14, emptyText),
         byValue("NumeroComprobante", "number of the invoice, sent as given", zero),
         byValue("sSerialEquipo", "serial number of the machine that printed it, sent as given", emptyText),
         byValue("dtFechaComprobante", "its date, sent as yymmdd; 0 is sent empty", zero),
         byValue("dtHoraComprobante", "its time, sent as hhnnss; 0 is sent empty", zero)},
        "Opens a credit note.",
        sends(R"(0x40: name, RIF, number, serial number, date, time, "D", two empty fields)")),
    method<static_cast<ItemLine>(&Z::PasarLineaFactura)>(
        "PasarLineaFactura", itemParameters, "Prints an item line of an invoice.",
        sends(R"(0x42: description, quantity, price, tax, "M")")),
    method<static_cast<ItemLine>(&Z::PasarLineaDevolucion)>(
        "PasarLineaDevolucion", itemParameters, "Prints an item line of a credit note.",
        sends(R"(0x42: description, quantity, price, tax, "m")")),
    method<&Z::RecibirPago>("RecibirPago", {byRef("ivmMontoRecibido", amount)}, "Registers a payment.",
                            sends(R"(0x44: empty, amount, "T")")),
    method<&Z::PagoConMedio>(
        "PagoConMedio",
        {byRef("medio", "medium of payment, a number or a text, sent as given"), byRef("monto", amount)},
        "Registers a payment by a medium.", sends(R"(0x44: medium, amount, "T")")),
    method<&Z::RegistrarDescuento>("RegistrarDescuento", {byRef("ivmValorDescuento", amount)},
                                   "Registers a discount.", sends(R"(0x44: empty, amount, "D")")),
    method<&Z::RegistrarDescuentoExt>(
        "RegistrarDescuentoExt",
        {byRef("ivmValorDescuento", amount),
         byRef("Descripcion", "description, its first 20 characters as they are")},
        "Registers a discount with a description.", sends(R"(0x44: description, amount, "D")")),
    method<&Z::CancelarComprobante>("CancelarComprobante", {}, "Cancels the open document.",
                                    sends(R"(0x44: empty, "0", "C")")),
    method<&Z::CerrarComprobante>(
        "CerrarComprobante",
        {byValue(
            "TipoCierre",
            R"("T" close, "A" partial close, "E" final close; sent as given, no field for an empty text)",
            text("T"))},
        "Si se pasa \"A\" se hace un cierre \"parcial\", que permite lineas adicionales. "
        "\"E\" causa un cierre definitivo.",
        sendsAlways("0x45: type")),
    method<&Z::Subtotal>("Subtotal", {}, "Prints the subtotal.", sendsAlways("0x43: two empty fields")),

    method<&Z::AbrirDNF>("AbrirDNF", {}, "Opens a non-fiscal document.", sends("0x48: no fields")),
    method<&Z::PasarLineaDNF>("PasarLineaDNF", {byRef("istrTexto", "text, 40 characters")},
                              "Prints a line of a non-fiscal document.", sends("0x49: text")),
    method<&Z::CerrarDNF>("CerrarDNF", {}, "Closes a non-fiscal document.", sends("0x4A: no fields")),

    method<&Z::GetDeviceStatus>("GetDeviceStatus",
                                {byRef("istrComando",
                                       "one of the letters N E A B C D R F J in either case, or an empty "
                                       "text; else 6, also in nEnvironmentError")},
                                "Asks for a status by its letter.", sendsChecked("0x38: letter")),
    method<&Z::Reset>("Reset", {}, "Sends the reset sequence and waits five seconds.",
                      Effect{"the bytes 0x07 to 0x11 without a frame; no answer is read"}),
    method<&Z::SerialImpresora>("SerialImpresora", {},
                                "The printer's serial number, empty when the outcome is not 0.",
                                sends("0x80: no fields")),
    method<&Z::GetDateTime>("GetDateTime", {},
                            "The printer's date and time, the zero date when the outcome is not 0.",
                            sends("0x59: no fields")),
    method<&Z::SetDateTime>(
        "SetDateTime",
        {byRef("idtFechaActual",
               "a date with time, or a text that is one; else 6, also in nEnvironmentError")},
        "Sets the printer's date and time.", sendsChecked("0x58: date as yymmdd, time as hhnnss")),
    method<&Z::SetTextoFormato>(
        "SetTextoFormato",
        {byRef("bEncabezado", "True: header, False: footer"), byRef("nLinea", "line 1 to 5; else 6"),
         byRef("sTextoLinea", "text, 40 characters")},
        "Establece el texto del encabezado (bENcabezado = True) o pie de página "
        "(bEncabezado = False) para los comprobantes fiscales.",
        sendsChecked("0x5D (header) or 0x5E (footer): line number, text")),
    method<&Z::AbrirGavetaN>(
        "AbrirGavetaN", {byRef("nGaveta", "1 or 2; else 6, also while the port is closed")},
        "Opens cash drawer 1 or 2.", sendsChecked("0x7B (drawer 1) or 0x7C (drawer 2): no fields")),
    method<&Z::CortarPapel>("CortarPapel", {}, "Cuts the paper.", sends("0x4B: no fields")),
    method<&Z::PaperFeed>("PaperFeed", {}, "Feeds the paper.", sends("0x50: no fields")),
    method<&Z::ActivarSlip>("ActivarSlip", {}, "Switches the slip station on.", sends("0xA0: no fields")),
    method<&Z::DesactivarSlip>("DesactivarSlip", {}, "Switches the slip station off.",
                               sends("0xA1: no fields")),

    method<&Z::LlenarCheque>(
        "LlenarCheque",
        {byRef("vmMontoCheque", "amount, sent with two decimals and the regional separators"),
         byRef("strBeneficiario", "payee, 40 characters"),
         byRef("dtFechaEmision", "date of issue, sent as the regional short date")},
        "Prints the face of a cheque. The outcome is that of the last exchange.",
        sends("0xA0: no fields; 0xAA: amount, payee, date; 0xA1: no fields")),
    method<&Z::EndosarCheque>(
        "EndosarCheque",
        {byRef("strNombre", "name, 40 characters"), byRef("strCedula", "identity number, 20 characters"),
         byRef("strTelefono", "telephone, 20 characters")},
        "Prints an endorsement on a cheque. The outcome is that of the last exchange.",
        sends("0xA0: no fields; 0xAB: name, identity number, telephone; 0xA1: no fields")),

    method<&Z::StatusIF>("StatusIF", {byRef("nCommand", R"(selector such as "N" or "*", sent as given)")},
                         "Asks for a status by a selector.", sendsAlways("0x38: selector")),
    method<&Z::GetStatusN>("GetStatusN", {}, "The normal status as a record, or nothing.",
                           sendsAlways(R"(0x38: "N")")),
    method<&Z::GetStatusHASAR>("GetStatusHASAR", {}, "Status words and counters as a record, or nothing.",
                               sendsAlways(R"(0x38: "*")")),
    method<&Z::PerformReturnCierre>(
        "PerformReturnCierre", {byRef("TipoCierre", "CIERRE_X (0); anything else is the Z")},
        "Runs a closing; its figures as a record, or nothing.", sends(R"(0x39: "X", "P"; or "Z" alone)")),
    method<&Z::GetResultadoCierre>("GetResultadoCierre", {},
                                   "The figures in the last answer as a record, or nothing."),

    variable<&Z::verifyCheckSum>("verifyCheckSum", "Reject answers with a wrong checksum."),
    method<static_cast<ClosingWithBase>(&Z::CerrarComprobanteIGTF)>(
        "CerrarComprobanteIGTF",
        {byRef("TipoCierre", R"("T" or "A", with a base "U" or "B"; adjusted to that and written back)",
               text("T")),
         byRef("baseIGTF", "base of the IGTF tax, 2 implied decimals", omitted)},
        "Closes the document with a base for the IGTF tax.", sendsAlways("0x45: type, base")));

}  // namespace

template <>
const ClassDescription& describe<CZentaro>() {
  static constexpr ClassDescription description{
      "CZentaro", "_CZentaro", "A fiscal printer on a serial port.", members,
      [] { return std::shared_ptr<void>(std::make_shared<CZentaro>()); }};
  return description;
}

}  // namespace zentaro
