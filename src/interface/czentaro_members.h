// The members of CZentaro, in interface order.
#pragma once

#include "interface/member_table.h"
#include "printer/czentaro.h"
#include "reports/resultado_cierre.h"
#include "reports/status_hasar.h"
#include "reports/status_n.h"

namespace zentaro {

// Of the records that operations return.
template <>
const ClassDescription& describe<statusN>();
template <>
const ClassDescription& describe<statusHASAR>();
template <>
const ClassDescription& describe<ResultadoCierre>();

}  // namespace zentaro

namespace zentaro::table {
using Z = CZentaro;

// Which of two overloads a row means: the one that a host's own variables go through.
using ItemLine = std::int16_t (Z::*)(const Variant&, Variant&, Variant&, const Variant&);
using ClosingWithBase = Variant (Z::*)(Variant&, const Variant&);
using VariantLet = void (Z::*)(const Variant&);
using VariantGet = Variant (Z::*)() const;
using FlagLet = void (Z::*)(bool);
using FlagGet = bool (Z::*)() const;

// A note says what a parameter means; how it is sent stands with the fields of the command.
constexpr std::string_view aFrame = "a frame built by BuildOMB just before";
constexpr std::string_view customer = "customer's name";
constexpr std::string_view rif = "customer's RIF";
constexpr std::string_view reportType = "type of report";

constexpr ParameterList itemParameters{
    byRef("istrDescripcion", "description"),
    byRef("ivmPrecioNeto",
          "price of one without tax; a fractional quantity folded into it (setting SuprimirDecimalesEZT) is "
          "written back"),
    byRef("idblCantidad", "quantity; 1 is written back when it was folded"),
    byRef("ivmPorcentajeImpuesto", "tax in per cent")};
constexpr SentCommand itemLine(std::string_view lineType) {
  return command(Command::ItemLine,
                 {itemText("istrDescripcion"), implied("idblCantidad", 3), implied("ivmPrecioNeto", 2),
                  implied("ivmPorcentajeImpuesto", 2), constant(lineType)});
}
constexpr SentCommand payment(SentField text, SentField amount, std::string_view type) {
  return command(Command::Payment, {text, amount, constant(type)});
}
constexpr SentCommand report(SentField first, SentField last) {
  return command(Command::MemoryReport, {first, last, asGiven("sTipoReporte")});
}
constexpr SentCommand status(SentField selector) { return command(Command::Status, {selector}); }
/// A cheque: the slip station is switched on and off around its command.
constexpr Effect onSlip(SentCommand cheque) {
  return sends({command(Command::SlipOn), cheque, command(Command::SlipOff)});
}
constexpr SentCommand formatLine(Command line, std::string_view when) {
  return command(line, {asGiven("nLinea"), cleaned("sTextoLinea", 40)}, when);
}

inline constexpr auto czentaroMembers = rows(
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
                        sendsOther("the frame as given", exchanges)),
    method<&Z::ExecuteCMD>("ExecuteCMD", {byRef("nCmd", "command code, 0 to 255")},
                           "Sends a command without fields.",
                           sendsOther("the command, without fields", checksPort | exchanges)),
    method<&Z::ExecuteOMB>("ExecuteOMB", {byRef("sOMB", aFrame)}, "Sends a frame.",
                           sendsOther("the frame as given", checksPort | exchanges)),
    letGet<static_cast<VariantLet>(&Z::DebugMode), static_cast<VariantGet>(&Z::DebugMode)>(
        "DebugMode", byRef("value", "True switches it on"), "The object trace is on."),
    readOnly<&Z::PrinterType>("PrinterType", "Type of the printer."),
    letGet<static_cast<VariantLet>(&Z::Settings), static_cast<VariantGet>(&Z::Settings)>(
        "Settings", byRef("sNewSettings", "ignored"), "Line settings; an assignment is ignored."),
    letGet<static_cast<FlagLet>(&Z::PortOpen), static_cast<FlagGet>(&Z::PortOpen)>(
        "PortOpen", byRef("bIsOpen", "True opens, False closes"), "Opens and closes the port."),

    method<&Z::EnvironmentError>("EnvironmentError", {}, "Text of the last outcome."),
    method<&Z::getResponse>("getResponse", {byRef("cmd", "ignored")}, "All answer fields."),
    method<&Z::getVarParms>("getVarParms", {byRef("n", "ignored")}, "All answer fields."),
    method<&Z::response>(
        "response",
        {byRef("Index", "0 command code, 1 and 2 status words, 3 onward data, the last one checksum")},
        "The answer field at an index, or -1."),
    method<&Z::MaxResponse>("MaxResponse", {}, "-1 when answer fields are stored, 0 after a failure."),
    method<&Z::BitPrinter>("BitPrinter", {byRef("nBit", "0 to 15")},
                           "A bit of the printer status word by its value, or -1.", sendsNothing),
    method<&Z::BitFiscal>("BitFiscal", {byRef("nBit", "0 to 15")},
                          "A bit of the fiscal status word by its value, or -1.", sendsNothing),

    method<&Z::RealizarCierre>(
        "RealizarCierre",
        {byValue("nTipo", "CIERRE_X (0); anything else is the Z"),
         byValue("Imprimir", "False: an X closing is not printed, only its figures are read", isTrue)},
        "Runs the X or Z closing.",
        sends({command(Command::Closing, {constant("X"), constant("P")}, "an X closing"),
               command(Command::Closing, {constant("X"), constant("S")}, "an X closing, Imprimir False"),
               command(Command::Closing, {constant("Z")}, "a Z closing")})),
    method<&Z::CierreZ>("CierreZ", {}, "Runs the Z closing with totals.",
                        sends({command(Command::Closing, {constant("Z"), constant("T")})})),
    method<&Z::ReporteMemoriaPorFecha>(
        "ReporteMemoriaPorFecha",
        {byRef("dtInicial", "first day"), byRef("dtFinal", "last day"),
         byValue("sTipoReporte", reportType, text("R"))},
        "Reports the fiscal memory between two dates.",
        sends({report({Encoding::Day, "dtInicial"}, {Encoding::Day, "dtFinal"})})),
    method<&Z::ReporteMemoriaPorNumero>(
        "ReporteMemoriaPorNumero",
        {byRef("lngInicial", "first closing number"), byRef("lngFinal", "last closing number"),
         byValue("sTipoReporte", reportType, emptyText)},
        "Reports the fiscal memory between two closing numbers.",
        sends({report({Encoding::Digits8, "lngInicial"}, {Encoding::Digits8, "lngFinal"})})),

    method<&Z::IniciarFactura>(
        "IniciarFactura",
        {byValue("sNombreCliente", customer, emptyText), byValue("sRIFCliente", rif, emptyText)},
        "Opens an invoice.",
        sends({command(Command::OpenDocument,
                       {cleaned("sNombreCliente", 40), cleaned("sRIFCliente", 14), emptyField, emptyField,
                        emptyField, emptyField, emptyField, emptyField, emptyField})})),
    method<&Z::PasarLineaExtra>(
        "PasarLineaExtra", {byRef("sTexto", "text")}, "Prints an extra text line.",
        sends({command(Command::ExtraLine, {itemText("sTexto", 14), constant("S")})})),
    method<&Z::IniciarDevolucion>(
        "IniciarDevolucion",
        {byValue("sNombreCliente", customer, emptyText), byValue("sRIFCliente", rif, emptyText),
         byValue("NumeroComprobante", "number of the invoice", zero),
         byValue("sSerialEquipo", "serial number of the machine that printed it", emptyText),
         byValue("dtFechaComprobante", "its date; 0 is sent empty", zero),
         byValue("dtHoraComprobante", "its time; 0 is sent empty", zero)},
        "Opens a credit note.",
        sends({command(Command::OpenDocument, {cleaned("sNombreCliente", 40),
                                               cleaned("sRIFCliente", 14),
                                               asGiven("NumeroComprobante"),
                                               asGiven("sSerialEquipo"),
                                               {Encoding::Day, "dtFechaComprobante"},
                                               {Encoding::Time, "dtHoraComprobante"},
                                               constant("D"),
                                               emptyField,
                                               emptyField})})),
    method<static_cast<ItemLine>(&Z::PasarLineaFactura)>(
        "PasarLineaFactura", itemParameters, "Prints an item line of an invoice.", sends({itemLine("M")})),
    method<static_cast<ItemLine>(&Z::PasarLineaDevolucion)>("PasarLineaDevolucion", itemParameters,
                                                            "Prints an item line of a credit note.",
                                                            sends({itemLine("m")})),
    method<&Z::RecibirPago>("RecibirPago", {byRef("ivmMontoRecibido", "amount")}, "Registers a payment.",
                            sends({payment(emptyField, implied("ivmMontoRecibido", 2), "T")})),
    method<&Z::PagoConMedio>(
        "PagoConMedio", {byRef("medio", "medium of payment, a number or a text"), byRef("monto", "amount")},
        "Registers a payment by a medium.", sends({payment(asGiven("medio"), implied("monto", 2), "T")})),
    method<&Z::RegistrarDescuento>("RegistrarDescuento", {byRef("ivmValorDescuento", "amount")},
                                   "Registers a discount.",
                                   sends({payment(emptyField, implied("ivmValorDescuento", 2), "D")})),
    method<&Z::RegistrarDescuentoExt>(
        "RegistrarDescuentoExt", {byRef("ivmValorDescuento", "amount"), byRef("Descripcion", "description")},
        "Registers a discount with a description.",
        sends({payment({Encoding::Start, "Descripcion", 20}, implied("ivmValorDescuento", 2), "D")})),
    method<&Z::CancelarComprobante>("CancelarComprobante", {}, "Cancels the open document.",
                                    sends({payment(emptyField, constant("0"), "C")})),
    method<&Z::CerrarComprobante>(
        "CerrarComprobante",
        {byValue("TipoCierre", R"("T" close, "A" partial close, "E" final close)", text("T"))},
        "Si se pasa \"A\" se hace un cierre \"parcial\", que permite lineas adicionales. "
        "\"E\" causa un cierre definitivo.",
        sendsAlways({command(Command::CloseDocument, {asGiven("TipoCierre")}, "a type"),
                     command(Command::CloseDocument, {}, "an empty type")})),
    method<&Z::Subtotal>("Subtotal", {}, "Prints the subtotal.",
                         sendsAlways({command(Command::Subtotal, {emptyField, emptyField})})),

    method<&Z::AbrirDNF>("AbrirDNF", {}, "Opens a non-fiscal document.",
                         sends({command(Command::OpenNonFiscal)})),
    method<&Z::PasarLineaDNF>("PasarLineaDNF", {byRef("istrTexto", "text")},
                              "Prints a line of a non-fiscal document.",
                              sends({command(Command::NonFiscalLine, {cleaned("istrTexto", 40)})})),
    method<&Z::CerrarDNF>("CerrarDNF", {}, "Closes a non-fiscal document.",
                          sends({command(Command::CloseNonFiscal)})),

    method<&Z::GetDeviceStatus>("GetDeviceStatus",
                                {byRef("istrComando",
                                       "one of the letters N E A B C D R F J in either case, or an empty "
                                       "text; else 6, also in nEnvironmentError")},
                                "Asks for a status by its letter.",
                                sendsChecked({status({Encoding::Letter, "istrComando"})})),
    method<&Z::Reset>("Reset", {}, "Sends the reset sequence and waits five seconds.",
                      sendsOther("the bytes 0x07 to 0x11 without a frame; no answer is read", noOutcome)),
    method<&Z::SerialImpresora>("SerialImpresora", {},
                                "The printer's serial number, empty when the outcome is not 0.",
                                sends({command(Command::SerialNumber)})),
    method<&Z::GetDateTime>("GetDateTime", {},
                            "The printer's date and time, the zero date when the outcome is not 0.",
                            sends({command(Command::ReadClock)})),
    method<&Z::SetDateTime>(
        "SetDateTime",
        {byRef("idtFechaActual",
               "a date with time, or a text that is one; else 6, also in nEnvironmentError")},
        "Sets the printer's date and time.",
        sendsChecked({command(Command::SetClock,
                              {{Encoding::Day, "idtFechaActual"}, {Encoding::Time, "idtFechaActual"}})})),
    method<&Z::SetTextoFormato>("SetTextoFormato",
                                {byRef("bEncabezado", "True: header, False: footer"),
                                 byRef("nLinea", "line 1 to 5; else 6"), byRef("sTextoLinea", "text")},
                                "Establece el texto del encabezado (bENcabezado = True) o pie de página "
                                "(bEncabezado = False) para los comprobantes fiscales.",
                                sendsChecked({formatLine(Command::HeaderLine, "a header line"),
                                              formatLine(Command::FooterLine, "a footer line")})),
    method<&Z::AbrirGavetaN>("AbrirGavetaN",
                             {byRef("nGaveta", "1 or 2; else 6, also while the port is closed")},
                             "Opens cash drawer 1 or 2.",
                             sendsChecked({command(Command::OpenDrawer1, {}, "drawer 1"),
                                           command(Command::OpenDrawer2, {}, "drawer 2")})),
    method<&Z::CortarPapel>("CortarPapel", {}, "Cuts the paper.", sends({command(Command::CutPaper)})),
    method<&Z::PaperFeed>("PaperFeed", {}, "Feeds the paper.", sends({command(Command::FeedPaper)})),
    method<&Z::ActivarSlip>("ActivarSlip", {}, "Switches the slip station on.",
                            sends({command(Command::SlipOn)})),
    method<&Z::DesactivarSlip>("DesactivarSlip", {}, "Switches the slip station off.",
                               sends({command(Command::SlipOff)})),

    method<&Z::LlenarCheque>("LlenarCheque",
                             {byRef("vmMontoCheque", "amount"), byRef("strBeneficiario", "payee"),
                              byRef("dtFechaEmision", "date of issue")},
                             "Prints the face of a cheque. The outcome is that of the last exchange. A payee "
                             "that does not convert leaves the slip station on.",
                             onSlip(command(Command::ChequeFace, {{Encoding::Amount, "vmMontoCheque"},
                                                                  cleaned("strBeneficiario", 40),
                                                                  {Encoding::ShortDate, "dtFechaEmision"}}))),
    method<&Z::EndosarCheque>(
        "EndosarCheque",
        {byRef("strNombre", "name"), byRef("strCedula", "identity number"),
         byRef("strTelefono", "telephone")},
        "Prints an endorsement on a cheque. The outcome is that of the last exchange. A text that does not "
        "convert leaves the slip station on.",
        onSlip(command(Command::ChequeEndorsement,
                       {cleaned("strNombre", 40), cleaned("strCedula", 20), cleaned("strTelefono", 20)}))),

    method<&Z::StatusIF>("StatusIF", {byRef("nCommand", R"(selector such as "N" or "*")")},
                         "Asks for a status by a selector.", sendsAlways({status(asGiven("nCommand"))})),
    method<&Z::GetStatusN>("GetStatusN", {}, "The normal status as a record, or nothing.",
                           sendsAlways({status(constant("N"))})),
    method<&Z::GetStatusHASAR>("GetStatusHASAR", {}, "Status words and counters as a record, or nothing.",
                               sendsAlways({status(constant("*"))})),
    method<&Z::PerformReturnCierre>(
        "PerformReturnCierre", {byRef("TipoCierre", "CIERRE_X (0); anything else is the Z")},
        "Runs a closing; its figures as a record, or nothing.",
        sends({command(Command::Closing, {constant("X"), constant("P")}, "an X closing"),
               command(Command::Closing, {constant("Z")}, "a Z closing")})),
    method<&Z::GetResultadoCierre>("GetResultadoCierre", {},
                                   "The figures in the last answer as a record, or nothing."),

    variable<&Z::verifyCheckSum>("verifyCheckSum", "Reject answers with a wrong checksum."),
    method<static_cast<ClosingWithBase>(&Z::CerrarComprobanteIGTF)>(
        "CerrarComprobanteIGTF",
        {byRef("TipoCierre", R"("T" or "A", with a base "U" or "B"; adjusted to that and written back)",
               text("T")),
         byRef("baseIGTF", "base of the IGTF tax", omitted)},
        "Closes the document with a base for the IGTF tax.",
        sendsAlways({command(Command::CloseDocument, {asGiven("TipoCierre"), implied("baseIGTF", 2)})})));

}  // namespace zentaro::table
