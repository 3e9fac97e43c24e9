// Escrito para Harbour (Windows) y no probado aquí.   hbmk2 venta-harbour.prg hbwin.hbc
PROCEDURE Main( cPuerto )

   LOCAL oImpresora, oError, nResultado

   oImpresora := win_oleCreateObject( "Zentaro.CZentaro" )
   IF oImpresora == NIL
      ? "Zentaro no está registrada para programas de este ancho:", win_oleErrorText()
      RETURN
   ENDIF
   oImpresora:verifyCheckSum := .T.
   oImpresora:CommPort := iif( cPuerto == NIL, 1, Val( cPuerto ) )
   BEGIN SEQUENCE WITH {| e | Break( e ) }
      oImpresora:PortOpen := .T.
   RECOVER USING oError
      ? "El puerto no abre:", oError:description
      RETURN
   END SEQUENCE

   // 0: hecha. 5: la impresora la rechazó, no cambió nada. 1 a 4: no se sabe si la hizo; no se repite.
   nResultado := oImpresora:IniciarFactura( "Ana Pérez", "V-12345678" )
   IF nResultado == 0
      nResultado := oImpresora:PasarLineaFactura( "Café molido", 12.5, 2, 16 )
   ENDIF
   IF nResultado == 0
      nResultado := oImpresora:RecibirPago( 29 )
   ENDIF
   IF nResultado == 0
      nResultado := oImpresora:CerrarComprobante()
   ENDIF

   DO CASE
   CASE nResultado == 0
      ? "Factura impresa:", oImpresora:response( 3 )
   CASE nResultado >= 1 .AND. nResultado <= 4
      ? "No se sabe si se imprimió. No la repita, mire el papel; zentaro sale no deja esta duda (venta-segura.vbs)."
   OTHERWISE
      ? "Resultado", nResultado, oImpresora:sLastError
      IF nResultado == 5
         oImpresora:CancelarComprobante()
      ENDIF
   ENDCASE
   oImpresora:PortOpen := .F.
   RETURN
