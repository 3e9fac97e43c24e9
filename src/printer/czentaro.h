// CZentaro: the printer object, the one class through which a host drives a fiscal printer.
//
// What holds for every operation unless its comment says otherwise:
//  - Each sends one command and waits for its answer, on the caller's thread, at most "TimeOutZT"
//    seconds of silence.
//  - The result is an outcome code (outcome.h), which stays in `nEnvironmentError`. The answer's
//    fields are then in response(n), its status words in `dwordPrinterStatus` and
//    `dwordStatusFiscal`, its error text in `sLastError`. After the outcomes 1 to 4 the fields are
//    one Empty element and both status words are 0x8000.
//  - A closed port gives -1: nothing is sent and nothing of the object changes,
//    `nEnvironmentError` included.
//  - A value that does not convert raises AutomationError (13, 6, 94, 5) before anything is sent.
//  - Texts are cut, trimmed and reduced to 7-bit characters; amounts have two decimals, quantities
//    three, rounded half up. STX, ETX and FS inside a host's text are sent as ".".
//
// An object belongs to the thread that made it; no second operation may be started before the first
// has returned.
#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "automation/variant.h"
#include "printer/cached_settings.h"
#include "printer/closing_type.h"
#include "printer/command.h"
#include "printer/frame.h"
#include "printer/object_trace.h"
#include "printer/outcome.h"

namespace zentaro {

class ResultadoCierre;
class statusHASAR;
class statusN;

class ZENTARO_API CZentaro {
 public:
  /// Reads the setting "DebugZT", which may switch the object trace on; raises when its file cannot
  /// be opened then.
  CZentaro();
  /// Closes the port when it is open, and the trace. Never raises.
  ~CZentaro();
  CZentaro(const CZentaro&) = delete;
  CZentaro& operator=(const CZentaro&) = delete;

  Variant CommPort;                     // serial port 1 to 8, a number or a text that converts to one
  bool isPortOpen = false;              // assigning it changes what PortOpen reports, not the port
  std::int32_t dwordPrinterStatus = 0;  // of the last answer, 0 to 65535
  std::int32_t dwordStatusFiscal = 0;   // of the last answer, 0 to 65535
  std::u16string sLastError;            // "ERROR ..." of the last checked answer, "VOID" when it had none
  std::int16_t nLastCommand = 0;        // command code of the last frame built
  ENVERR_CODES nEnvironmentError = ENVERR_OK;  // outcome of the last transaction or argument check

  /// A complete command frame with the next sequence number; touches no port. Sets `nLastCommand`
  /// and advances the sequence also when it fails: 5 for a command outside 0 to 255, 9 for an array
  /// without bounds, 13 or 94 for an element without a text form. Control characters in the
  /// elements are left as they are.
  std::u16string BuildOMB(std::int16_t iCommandNumber, const Array& vaArgs);
  /// Sends a frame built by BuildOMB just before. Does not look at PortOpen.
  std::int16_t execute(const std::u16string& s);
  /// Sends a command without fields, 0 to 255. Raises 5 for another one, which has then taken a
  /// sequence number.
  std::int16_t ExecuteCMD(const Variant& nCmd);
  /// Sends a frame built by BuildOMB just before: the answer must carry the last sequence number.
  std::int16_t ExecuteOMB(const Variant& sOMB);

  /// The object trace; ignored while the setting "DebugZT" has switched it on. Switching it on
  /// raises 75, 76 and so on when the file of the setting "DumpZT" cannot be opened; the trace is
  /// then off.
  void DebugMode(const Variant& value);
  Variant DebugMode() const;

  std::u16string PrinterType() const;          // "EPSON TMU"
  void Settings(const Variant& sNewSettings);  // ignored
  Variant Settings() const;                    // "9600,n,8,1"
  /// Opens "COM" + CommPort at 9600 8N1, or closes it; nothing when it is as asked. Raises 40001
  /// (source "CZentaro.Let PortOpen") with the driver's error text when opening fails, 13 or 6 for
  /// a CommPort that does not convert; PortOpen is then already True, and setting it to False
  /// releases what was opened. Closing reports nothing else.
  void PortOpen(bool bIsOpen);
  bool PortOpen() const { return isPortOpen; }

  // What the last transaction left. None of these talks to the printer.
  /// Four lines joined by CR LF: outcome text, status words, `sLastError` with a full stop, command.
  std::u16string EnvironmentError() const;
  /// A copy of all answer fields; Empty before the first transaction. The argument is ignored.
  Variant getResponse(const Variant& cmd) const;
  Variant getVarParms(const Variant& n) const;  // the same
  /// The answer field at Index (fractions rounded, ties to even), or -1 outside. Raises 13 before
  /// the first transaction.
  Variant response(const Variant& Index) const;
  /// A truth value, not a bound: -1 when answer fields are stored (and before the first
  /// transaction), 0 after a failure.
  std::int16_t MaxResponse() const;
  /// The bit's value (1, 2, 4, ... 32768) or 0; outside 0 to 15 -1, and `nEnvironmentError` becomes 6.
  std::int32_t BitPrinter(const Variant& nBit);
  std::int32_t BitFiscal(const Variant& nBit);

  /// nTipo CIERRE_X (0) prints the X closing, or only reads its figures when Imprimir is False;
  /// anything else is the Z.
  std::int16_t RealizarCierre(nTipoCierreFiscal nTipo, const Variant& Imprimir = true);
  std::int16_t CierreZ();  // the Z with totals
  /// Dates, or texts and numbers that are dates; anything else raises 13. The type goes unchanged.
  std::int16_t ReporteMemoriaPorFecha(const Variant& dtInicial, const Variant& dtFinal,
                                      const Variant& sTipoReporte = u"R");
  /// Numbers, or texts that are numbers; anything else raises 13. Rounded to whole numbers, half
  /// away from zero.
  std::int16_t ReporteMemoriaPorNumero(const Variant& lngInicial, const Variant& lngFinal,
                                       const Variant& sTipoReporte = u"");

  /// A name of up to 40 characters, a RIF of up to 14; so have credit notes.
  std::int16_t IniciarFactura(const Variant& sNombreCliente = u"", const Variant& sRIFCliente = u"");
  /// Up to LenDescripcionZT + 14 characters; raises 6 when that sum overflows 16 bits.
  std::int16_t PasarLineaExtra(const Variant& sTexto);
  /// A credit note for the invoice of that number, machine, date and time. A date or time equal to
  /// 0 is sent empty; number and serial go unchanged.
  std::int16_t IniciarDevolucion(const Variant& sNombreCliente = u"", const Variant& sRIFCliente = u"",
                                 const Variant& NumeroComprobante = 0, const Variant& sSerialEquipo = u"",
                                 const Variant& dtFechaComprobante = 0, const Variant& dtHoraComprobante = 0);
  /// A description of up to LenDescripcionZT characters (20 unless set), price without tax, tax in
  /// per cent. With "SuprimirDecimalesEZT" a fractional quantity is folded into the price; both are
  /// then written back before anything is encoded, whatever the outcome. The second form is for
  /// values that nobody wants back.
  std::int16_t PasarLineaFactura(const Variant& istrDescripcion, Variant& ivmPrecioNeto,
                                 Variant& idblCantidad, const Variant& ivmPorcentajeImpuesto);
  std::int16_t PasarLineaFactura(const Variant& istrDescripcion, const Variant& ivmPrecioNeto,
                                 const Variant& idblCantidad, const Variant& ivmPorcentajeImpuesto);
  std::int16_t PasarLineaDevolucion(const Variant& istrDescripcion, Variant& ivmPrecioNeto,
                                    Variant& idblCantidad, const Variant& ivmPorcentajeImpuesto);
  std::int16_t PasarLineaDevolucion(const Variant& istrDescripcion, const Variant& ivmPrecioNeto,
                                    const Variant& idblCantidad, const Variant& ivmPorcentajeImpuesto);
  std::int16_t RecibirPago(const Variant& ivmMontoRecibido);
  /// The medium, a number or a text, goes unchanged.
  std::int16_t PagoConMedio(const Variant& medio, const Variant& monto);
  std::int16_t RegistrarDescuento(const Variant& ivmValorDescuento);
  /// The description's first 20 characters, neither trimmed nor replaced.
  std::int16_t RegistrarDescuentoExt(const Variant& ivmValorDescuento, const Variant& Descripcion);
  std::int16_t CancelarComprobante();
  /// "T" the default close, "A" partial (additional lines may follow), "E" definitive; sent as
  /// given, no field at all for an empty text. Does not look at PortOpen.
  std::int16_t CerrarComprobante(const Variant& TipoCierre = u"T");
  /// Does not look at PortOpen.
  std::int16_t Subtotal();

  std::int16_t AbrirDNF();
  std::int16_t PasarLineaDNF(const Variant& istrTexto);  // at most 40 characters
  std::int16_t CerrarDNF();

  /// One of the letters NEABCDRFJ in either case, or an empty text; anything else gives 6, also in
  /// `nEnvironmentError`.
  std::int16_t GetDeviceStatus(const Variant& istrComando);
  /// Sends the eleven unframed bytes 0x07 to 0x11, reads nothing and waits 5 s. Changes nothing of
  /// the object.
  void Reset();
  /// The printer's serial number; "" when the outcome is not 0.
  std::u16string SerialImpresora();
  /// The printer's clock; the zero date when the outcome is not 0. Raises 13 when the answer holds
  /// no valid date and time.
  Date GetDateTime();
  /// A date, or a text that converts to one; anything else gives 6, also in `nEnvironmentError`.
  std::int16_t SetDateTime(const Variant& idtFechaActual);
  /// bEncabezado True: header, False: footer; lines 1 to 5, outside 6, which is only returned; a
  /// text of up to 40 characters.
  std::int16_t SetTextoFormato(const Variant& bEncabezado, const Variant& nLinea, const Variant& sTextoLinea);
  /// Drawer 1 or 2; anything else gives 6, which is only returned, also when the port is closed.
  std::int16_t AbrirGavetaN(const Variant& nGaveta);
  std::int16_t CortarPapel();
  std::int16_t PaperFeed();
  std::int16_t ActivarSlip();
  std::int16_t DesactivarSlip();

  // Cheques: slip station on, cheque, slip station off. The outcome, the status words and
  // `nLastCommand` are those of the last of the three; response(n) reads the answer to the cheque
  // command. When the station cannot be switched on, its outcome is returned and nothing else is
  // sent. A text that does not convert leaves the station on.
  /// An amount or date that cannot be formatted raises 13 before anything is sent. Regional
  /// formats; payee 40 characters.
  std::int16_t LlenarCheque(const Variant& vmMontoCheque, const Variant& strBeneficiario,
                            const Variant& dtFechaEmision);
  /// 40, 20 and 20 characters.
  std::int16_t EndosarCheque(const Variant& strNombre, const Variant& strCedula, const Variant& strTelefono);

  /// The selector goes unchanged; gives the outcome as a 32-bit number. Does not look at PortOpen.
  Variant StatusIF(const Variant& nCommand);
  /// A new record of the caller's, or null when the outcome is not 0. Raises 9 when the answer has
  /// too few fields.
  std::unique_ptr<statusN> GetStatusN();
  std::unique_ptr<statusHASAR> GetStatusHASAR();
  /// Runs the closing (an X prints). Null when its outcome is not 0; raises when the answer cannot be loaded.
  std::unique_ptr<ResultadoCierre> PerformReturnCierre(nTipoCierreFiscal TipoCierre);
  /// Sends nothing: the record of whatever answer is stored, or null when it cannot be loaded.
  std::unique_ptr<ResultadoCierre> GetResultadoCierre() const;

  bool verifyCheckSum = false;  // reject answers with a wrong checksum

  /// Closes with a base for the IGTF tax. Without a base "U" and "B" become "T" and "A"; with one
  /// "T" and "A" become "U" and "B": TipoCierre is adjusted in the caller's variable. Gives the
  /// outcome as a 32-bit number. Does not look at PortOpen.
  Variant CerrarComprobanteIGTF(Variant& TipoCierre, const Variant& baseIGTF = Variant::missing());
  Variant CerrarComprobanteIGTF(const Variant& TipoCierre = u"T",
                                const Variant& baseIGTF = Variant::missing());

 private:
  /// The fields of a command in frame order; what is no text yet is converted by BuildOMB.
  struct Fields {
    template <std::convertible_to<Variant>... Values>
    Fields(Values&&... fields) {
      values.reserve(sizeof...(fields));
      (values.emplace_back(std::forward<Values>(fields)), ...);
    }
    std::vector<Variant> values;
  };

  // The skeleton of every operation: exchange builds a frame, sends it and gives the answer's
  // fields; keep stores them and gives the outcome; run is both.
  Variant exchange(Command command, Fields fields);
  Variant exchangeFrame(const Variant& frame);
  std::int16_t keep(Variant answer);
  std::int16_t run(Command command, Fields fields);
  std::int16_t runCommand(Command command);
  std::int16_t outcome() const { return static_cast<std::int16_t>(nEnvironmentError); }

  void SendOMB(const Variant& frame);
  Variant ReadResponse();
  std::int32_t BitTest(const Variant& nBit, std::int32_t word);

  std::int16_t PasarLineaItem(const Variant& description, Variant& price, Variant& quantity,
                              const Variant& tax, const char16_t* lineType);
  std::u16string description(const Variant& text, std::int16_t extraLength);
  std::int16_t endCheque(Command command, Fields fields);

  SequenceNumber nSequence;
  Variant vaResponse;  // the answer fields of the last transaction; Empty before it
  CachedSettings settings_;
  ObjectTrace trace_;
};

}  // namespace zentaro
