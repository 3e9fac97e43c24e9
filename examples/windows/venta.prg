* Escrito para Visual FoxPro y no probado aquí.   DO venta WITH 1      (VFP es de 32 bits: usa la DLL de la carpeta x86)
LPARAMETERS tnPuerto
LOCAL loImpresora, loError, lnResultado
IF VARTYPE(tnPuerto) <> "N"
  tnPuerto = 1
ENDIF
loImpresora = CREATEOBJECT("Zentaro.CZentaro")
loImpresora.verifyCheckSum = .T.
loImpresora.CommPort = tnPuerto
TRY
  loImpresora.PortOpen = .T.
CATCH TO loError
  ? "El puerto no abre:", loError.Message
  loImpresora = .NULL.
ENDTRY
IF ISNULL(loImpresora)
  RETURN .F.
ENDIF

* 0: hecha. 5: la impresora la rechazó, no cambió nada. 1 a 4: no se sabe si la hizo; no se repite.
* Los montos van como moneda: $12.5 no pierde céntimos.
lnResultado = loImpresora.IniciarFactura("Ana Pérez", "V-12345678")
IF lnResultado = 0
  lnResultado = loImpresora.PasarLineaFactura("Café molido", $12.5, 2, 16)
ENDIF
IF lnResultado = 0
  lnResultado = loImpresora.RecibirPago($29)
ENDIF
IF lnResultado = 0
  lnResultado = loImpresora.CerrarComprobante()
ENDIF

DO CASE
  CASE lnResultado = 0
    ? "Factura impresa:", loImpresora.response(3)
  CASE BETWEEN(lnResultado, 1, 4)
    ? "No se sabe si se imprimió. No la repita, mire el papel; zentaro sale no deja esta duda (venta-segura.vbs)."
  OTHERWISE
    ? "Resultado", lnResultado, loImpresora.sLastError
    IF lnResultado = 5
      loImpresora.CancelarComprobante()
    ENDIF
ENDCASE
loImpresora.PortOpen = .F.
RETURN lnResultado = 0
