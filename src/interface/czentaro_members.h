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

// The outcomes of the usual operation, which a closed port refuses; of one that also refuses an argument.
constexpr unsigned operation = checksPort | exchanges, checkedOperation = operation | checksArgument;

// A note says what a parameter means, what may be passed, and how it is sent.
constexpr std::string_view aFrame = "a frame built by BuildOMB just before";
constexpr std::string_view customer = "customer's name, 40 characters", rif = "customer's RIF, 14 characters";
constexpr std::string_view amount = "amount, 2 implied decimals";
constexpr std::string_view reportType = "type of report, sent as given";
constexpr std::string_view line40 = "text, 40 characters";

constexpr ParameterList itemParameters{
    byRef("istrDescripcion", "description, as many characters as the setting LenDescripcionZT says"),
    byRef("ivmPrecioNeto",
          "price of one without tax, 2 implied decimals; a fractional quantity folded into it (setting "
          "SuprimirDecimalesEZT) is written back"),
    byRef("idblCantidad", "quantity, 3 implied decimals; 1 is written back when it was folded"),
    byRef("ivmPorcentajeImpuesto", "tax in per cent, 2 implied decimals")};

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
                        exchanges),
    method<&Z::ExecuteCMD>("ExecuteCMD", {byRef("nCmd", "command code, 0 to 255")},
                           "Sends a command without fields.", operation),
    method<&Z::ExecuteOMB>("ExecuteOMB", {byRef("sOMB", aFrame)}, "Sends a frame.", operation),
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
                           "A bit of the printer status word by its value, or -1.", checksArgument),
    method<&Z::BitFiscal>("BitFiscal", {byRef("nBit", "0 to 15")},
                          "A bit of the fiscal status word by its value, or -1.", checksArgument),

    method<&Z::RealizarCierre>(
        "RealizarCierre",
        {byValue("nTipo", "CIERRE_X (0); anything else is the Z"),
         byValue("Imprimir", "False: an X closing is not printed, only its figures are read", isTrue)},
        "Runs the X or Z closing.", operation),
    method<&Z::CierreZ>("CierreZ", {}, "Runs the Z closing with totals.", operation),
    method<&Z::ReporteMemoriaPorFecha>(
        "ReporteMemoriaPorFecha",
        {byRef("dtInicial", "first day: a date, or a text that is one; sent as yymmdd"),
         byRef("dtFinal", "last day: a date, or a text that is one; sent as yymmdd"),
         byValue("sTipoReporte", reportType, text("R"))},
        "Reports the fiscal memory between two dates.", operation),
    method<&Z::ReporteMemoriaPorNumero>("ReporteMemoriaPorNumero",
                                        {byRef("lngInicial", "first closing number, sent with eight digits"),
                                         byRef("lngFinal", "last closing number, sent with eight digits"),
                                         byValue("sTipoReporte", reportType, emptyText)},
                                        "Reports the fiscal memory between two closing numbers.", operation),

    method<&Z::IniciarFactura>(
        "IniciarFactura",
        {byValue("sNombreCliente", customer, emptyText), byValue("sRIFCliente", rif, emptyText)},
        "Opens an invoice.", operation),
    method<&Z::PasarLineaExtra>(
        "PasarLineaExtra",
        {byRef("sTexto", "text, as many characters as the setting LenDescripcionZT says and 14 more")},
        "Prints an extra text line.", operation),
    method<&Z::IniciarDevolucion>(
        "IniciarDevolucion",
        {byValue("sNombreCliente", customer, emptyText), byValue("sRIFCliente", rif, emptyText),
         byValue("NumeroComprobante", "number of the invoice, sent as given", zero),
         byValue("sSerialEquipo", "serial number of the machine that printed it, sent as given", emptyText),
         byValue("dtFechaComprobante", "its date, or a text that is one; sent as yymmdd, and empty for 0",
                 zero),
         byValue("dtHoraComprobante", "its time, or a text that is one; sent as hhnnss, and empty for 0",
                 zero)},
        "Opens a credit note.", operation),
    method<static_cast<ItemLine>(&Z::PasarLineaFactura)>("PasarLineaFactura", itemParameters,
                                                         "Prints an item line of an invoice.", operation),
    method<static_cast<ItemLine>(&Z::PasarLineaDevolucion)>(
        "PasarLineaDevolucion", itemParameters, "Prints an item line of a credit note.", operation),
    method<&Z::RecibirPago>("RecibirPago", {byRef("ivmMontoRecibido", amount)}, "Registers a payment.",
                            operation),
    method<&Z::PagoConMedio>(
        "PagoConMedio",
        {byRef("medio", "medium of payment, a number or a text, sent as given"), byRef("monto", amount)},
        "Registers a payment by a medium.", operation),
    method<&Z::RegistrarDescuento>("RegistrarDescuento", {byRef("ivmValorDescuento", amount)},
                                   "Registers a discount.", operation),
    method<&Z::RegistrarDescuentoExt>(
        "RegistrarDescuentoExt",
        {byRef("ivmValorDescuento", amount),
         byRef("Descripcion", "description, the first 20 characters as they are")},
        "Registers a discount with a description.", operation),
    method<&Z::CancelarComprobante>("CancelarComprobante", {}, "Cancels the open document.", operation),
    method<&Z::CerrarComprobante>(
        "CerrarComprobante",
        {byValue(
            "TipoCierre",
            R"("T" close, "A" partial close, "E" final close; sent as given, no field for an empty text)",
            text("T"))},
        "Si se pasa \"A\" se hace un cierre \"parcial\", que permite lineas adicionales. "
        "\"E\" causa un cierre definitivo.",
        exchanges),
    method<&Z::Subtotal>("Subtotal", {}, "Prints the subtotal.", exchanges),

    method<&Z::AbrirDNF>("AbrirDNF", {}, "Opens a non-fiscal document.", operation),
    method<&Z::PasarLineaDNF>("PasarLineaDNF", {byRef("istrTexto", line40)},
                              "Prints a line of a non-fiscal document.", operation),
    method<&Z::CerrarDNF>("CerrarDNF", {}, "Closes a non-fiscal document.", operation),

    method<&Z::GetDeviceStatus>(
        "GetDeviceStatus",
        {byRef(
            "istrComando",
            "one of the letters N E A B C D R F J in either case, sent in upper case, or an empty text, sent "
            "as an empty field; else 6, also in nEnvironmentError")},
        "Asks for a status by its letter.", checkedOperation),
    method<&Z::Reset>("Reset", {}, "Sends the reset sequence and waits five seconds."),
    method<&Z::SerialImpresora>("SerialImpresora", {},
                                "The printer's serial number, empty when the outcome is not 0.", operation),
    method<&Z::GetDateTime>("GetDateTime", {},
                            "The printer's date and time, the zero date when the outcome is not 0.",
                            operation),
    method<&Z::SetDateTime>(
        "SetDateTime",
        {byRef(
            "idtFechaActual",
            "a date with time, or a text that is one; sent as yymmdd and hhnnss; else 6, also in nEnvironmentError")},
        "Sets the printer's date and time.", checkedOperation),
    method<&Z::SetTextoFormato>(
        "SetTextoFormato",
        {byRef("bEncabezado", "True: header, False: footer"),
         byRef("nLinea", "line 1 to 5, a number or a text that is one, sent as that number; else 6"),
         byRef("sTextoLinea", line40)},
        "Establece el texto del encabezado (bENcabezado = True) o pie de página "
        "(bEncabezado = False) para los comprobantes fiscales.",
        checkedOperation),
    method<&Z::AbrirGavetaN>("AbrirGavetaN",
                             {byRef("nGaveta", "1 or 2; else 6, also while the port is closed")},
                             "Opens cash drawer 1 or 2.", checkedOperation),
    method<&Z::CortarPapel>("CortarPapel", {}, "Cuts the paper.", operation),
    method<&Z::PaperFeed>("PaperFeed", {}, "Feeds the paper.", operation),
    method<&Z::ActivarSlip>("ActivarSlip", {}, "Switches the slip station on.", operation),
    method<&Z::DesactivarSlip>("DesactivarSlip", {}, "Switches the slip station off.", operation),

    method<&Z::LlenarCheque>(
        "LlenarCheque",
        {byRef("vmMontoCheque", "amount, sent with two decimals and the regional separators"),
         byRef("strBeneficiario", "payee, 40 characters"),
         byRef("dtFechaEmision", "date of issue, or a text that is one; sent as the regional short date")},
        "Prints the face of a cheque. The outcome is that of the last exchange. A payee "
        "that does not convert leaves the slip station on.",
        operation),
    method<&Z::EndosarCheque>(
        "EndosarCheque",
        {byRef("strNombre", "name, 40 characters"), byRef("strCedula", "identity number, 20 characters"),
         byRef("strTelefono", "telephone, 20 characters")},
        "Prints an endorsement on a cheque. The outcome is that of the last exchange. A text that does not "
        "convert leaves the slip station on.",
        operation),

    method<&Z::StatusIF>("StatusIF", {byRef("nCommand", R"(selector such as "N" or "*", sent as given)")},
                         "Asks for a status by a selector.", exchanges),
    method<&Z::GetStatusN>("GetStatusN", {}, "The normal status as a record, or nothing.", exchanges),
    method<&Z::GetStatusHASAR>("GetStatusHASAR", {}, "Status words and counters as a record, or nothing.",
                               exchanges),
    method<&Z::PerformReturnCierre>("PerformReturnCierre",
                                    {byRef("TipoCierre", "CIERRE_X (0); anything else is the Z")},
                                    "Runs a closing; its figures as a record, or nothing.", operation),
    method<&Z::GetResultadoCierre>("GetResultadoCierre", {},
                                   "The figures in the last answer as a record, or nothing."),

    variable<&Z::verifyCheckSum>("verifyCheckSum", "Reject answers with a wrong checksum."),
    method<static_cast<ClosingWithBase>(&Z::CerrarComprobanteIGTF)>(
        "CerrarComprobanteIGTF",
        {byRef("TipoCierre", R"("T" or "A", sent with a base as "U" or "B"; what was sent is written back)",
               text("T")),
         byRef("baseIGTF", "base of the IGTF tax, 2 implied decimals", omitted)},
        "Closes the document with a base for the IGTF tax.", exchanges));

}  // namespace zentaro::table
