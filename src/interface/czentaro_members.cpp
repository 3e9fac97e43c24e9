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

constexpr ParameterList itemParameters{byRef("istrDescripcion"), byRef("ivmPrecioNeto"),
                                       byRef("idblCantidad"), byRef("ivmPorcentajeImpuesto")};

constexpr auto members = rows(
    variable<&Z::CommPort>("CommPort", "Serial port, 1 to 8."),
    variable<&Z::isPortOpen>("isPortOpen", "The port is open."),
    variable<&Z::dwordPrinterStatus>("dwordPrinterStatus", "Printer status word of the last answer."),
    variable<&Z::dwordStatusFiscal>("dwordStatusFiscal", "Fiscal status word of the last answer."),
    variable<&Z::sLastError>("sLastError", "Error text of the last answer."),
    variable<&Z::nLastCommand>("nLastCommand", "Command of the last frame built."),
    variable<&Z::nEnvironmentError>("nEnvironmentError", "Outcome of the last transaction."),

    method<&Z::BuildOMB>("BuildOMB", {byRef("iCommandNumber"), byRef("vaArgs")}, "Builds a command frame."),
    method<&Z::execute>("execute", {byRef("s")}, "Sends a frame without looking at the port."),
    method<&Z::ExecuteCMD>("ExecuteCMD", {byRef("nCmd")}, "Sends a command without fields."),
    method<&Z::ExecuteOMB>("ExecuteOMB", {byRef("sOMB")}, "Sends a frame."),
    letGet<static_cast<VariantLet>(&Z::DebugMode), static_cast<VariantGet>(&Z::DebugMode)>(
        "DebugMode", "The object trace is on."),
    readOnly<&Z::PrinterType>("PrinterType", "Type of the printer."),
    letGet<static_cast<VariantLet>(&Z::Settings), static_cast<VariantGet>(&Z::Settings)>(
        "Settings", "Line settings; an assignment is ignored."),
    letGet<static_cast<FlagLet>(&Z::PortOpen), static_cast<FlagGet>(&Z::PortOpen)>(
        "PortOpen", "Opens and closes the port."),

    method<&Z::EnvironmentError>("EnvironmentError", {}, "Text of the last outcome."),
    method<&Z::getResponse>("getResponse", {byRef("cmd")}, "All answer fields."),
    method<&Z::getVarParms>("getVarParms", {byRef("n")}, "All answer fields."),
    method<&Z::response>("response", {byRef("Index")}, "The answer field at an index, or -1."),
    method<&Z::MaxResponse>("MaxResponse", {}, "-1 when answer fields are stored, 0 after a failure."),
    method<&Z::BitPrinter>("BitPrinter", {byRef("nBit")},
                           "A bit of the printer status word by its value, or -1."),
    method<&Z::BitFiscal>("BitFiscal", {byRef("nBit")},
                          "A bit of the fiscal status word by its value, or -1."),

    method<&Z::RealizarCierre>("RealizarCierre", {byValue("nTipo"), byValue("Imprimir", isTrue)},
                               "Runs the X or Z closing."),
    method<&Z::CierreZ>("CierreZ", {}, "Runs the Z closing with totals."),
    method<&Z::ReporteMemoriaPorFecha>(
        "ReporteMemoriaPorFecha", {byRef("dtInicial"), byRef("dtFinal"), byValue("sTipoReporte", text("R"))},
        "Reports the fiscal memory between two dates."),
    method<&Z::ReporteMemoriaPorNumero>(
        "ReporteMemoriaPorNumero",
        {byRef("lngInicial"), byRef("lngFinal"), byValue("sTipoReporte", emptyText)},
        "Reports the fiscal memory between two closing numbers."),

    method<&Z::IniciarFactura>("IniciarFactura",
                               {byValue("sNombreCliente", emptyText), byValue("sRIFCliente", emptyText)},
                               "Opens an invoice."),
    method<&Z::PasarLineaExtra>("PasarLineaExtra", {byRef("sTexto")}, "Prints an extra text line."),
    method<&Z::IniciarDevolucion>("IniciarDevolucion",
                                  {byValue("sNombreCliente", emptyText), byValue("sRIFCliente", emptyText),
                                   byValue("NumeroComprobante", zero), byValue("sSerialEquipo", emptyText),
                                   byValue("dtFechaComprobante", zero), byValue("dtHoraComprobante", zero)},
                                  "Opens a credit note."),
    method<static_cast<ItemLine>(&Z::PasarLineaFactura)>("PasarLineaFactura", itemParameters,
                                                         "Prints an item line of an invoice."),
    method<static_cast<ItemLine>(&Z::PasarLineaDevolucion)>("PasarLineaDevolucion", itemParameters,
                                                            "Prints an item line of a credit note."),
    method<&Z::RecibirPago>("RecibirPago", {byRef("ivmMontoRecibido")}, "Registers a payment."),
    method<&Z::PagoConMedio>("PagoConMedio", {byRef("medio"), byRef("monto")},
                             "Registers a payment by a medium."),
    method<&Z::RegistrarDescuento>("RegistrarDescuento", {byRef("ivmValorDescuento")},
                                   "Registers a discount."),
    method<&Z::RegistrarDescuentoExt>("RegistrarDescuentoExt",
                                      {byRef("ivmValorDescuento"), byRef("Descripcion")},
                                      "Registers a discount with a description."),
    method<&Z::CancelarComprobante>("CancelarComprobante", {}, "Cancels the open document."),
    method<&Z::CerrarComprobante>(
        "CerrarComprobante", {byValue("TipoCierre", text("T"))},
        "Si se pasa \"A\" se hace un cierre \"parcial\", que permite lineas adicionales. "
        "\"E\" causa un cierre definitivo."),
    method<&Z::Subtotal>("Subtotal", {}, "Prints the subtotal."),

    method<&Z::AbrirDNF>("AbrirDNF", {}, "Opens a non-fiscal document."),
    method<&Z::PasarLineaDNF>("PasarLineaDNF", {byRef("istrTexto")},
                              "Prints a line of a non-fiscal document."),
    method<&Z::CerrarDNF>("CerrarDNF", {}, "Closes a non-fiscal document."),

    method<&Z::GetDeviceStatus>("GetDeviceStatus", {byRef("istrComando")},
                                "Asks for a status by its letter."),
    method<&Z::Reset>("Reset", {}, "Sends the reset sequence and waits five seconds."),
    method<&Z::SerialImpresora>("SerialImpresora", {}, "The printer's serial number."),
    method<&Z::GetDateTime>("GetDateTime", {}, "The printer's date and time."),
    method<&Z::SetDateTime>("SetDateTime", {byRef("idtFechaActual")}, "Sets the printer's date and time."),
    method<&Z::SetTextoFormato>("SetTextoFormato",
                                {byRef("bEncabezado"), byRef("nLinea"), byRef("sTextoLinea")},
                                "Establece el texto del encabezado (bENcabezado = True) o pie de página "
                                "(bEncabezado = False) para los comprobantes fiscales."),
    method<&Z::AbrirGavetaN>("AbrirGavetaN", {byRef("nGaveta")}, "Opens cash drawer 1 or 2."),
    method<&Z::CortarPapel>("CortarPapel", {}, "Cuts the paper."),
    method<&Z::PaperFeed>("PaperFeed", {}, "Feeds the paper."),
    method<&Z::ActivarSlip>("ActivarSlip", {}, "Switches the slip station on."),
    method<&Z::DesactivarSlip>("DesactivarSlip", {}, "Switches the slip station off."),

    method<&Z::LlenarCheque>("LlenarCheque",
                             {byRef("vmMontoCheque"), byRef("strBeneficiario"), byRef("dtFechaEmision")},
                             "Prints the face of a cheque."),
    method<&Z::EndosarCheque>("EndosarCheque", {byRef("strNombre"), byRef("strCedula"), byRef("strTelefono")},
                              "Prints an endorsement on a cheque."),

    method<&Z::StatusIF>("StatusIF", {byRef("nCommand")}, "Asks for a status by a selector."),
    method<&Z::GetStatusN>("GetStatusN", {}, "The normal status as a record, or nothing."),
    method<&Z::GetStatusHASAR>("GetStatusHASAR", {}, "Status words and counters as a record, or nothing."),
    method<&Z::PerformReturnCierre>("PerformReturnCierre", {byRef("TipoCierre")},
                                    "Runs a closing; its figures as a record, or nothing."),
    method<&Z::GetResultadoCierre>("GetResultadoCierre", {},
                                   "The figures in the last answer as a record, or nothing."),

    variable<&Z::verifyCheckSum>("verifyCheckSum", "Reject answers with a wrong checksum."),
    method<static_cast<ClosingWithBase>(&Z::CerrarComprobanteIGTF)>(
        "CerrarComprobanteIGTF", {byRef("TipoCierre", text("T")), byRef("baseIGTF", omitted)},
        "Closes the document with a base for the IGTF tax."));

}  // namespace

template <>
const ClassDescription& describe<CZentaro>() {
  static constexpr ClassDescription description{
      "CZentaro", "_CZentaro", "A fiscal printer on a serial port.", members,
      [] { return std::shared_ptr<void>(std::make_shared<CZentaro>()); }};
  return description;
}

}  // namespace zentaro
