// Escrito para Delphi y no probado aquí. Con enlace tardío; para el temprano: Component, Import Component, Type Library, Zentaro.
program Venta;
{$APPTYPE CONSOLE}
uses SysUtils, ActiveX, ComObj, Variants;

var
  z: OleVariant;

// 0: hecha. 5: la impresora la rechazó, no cambió nada. 1 a 4: no se sabe si la hizo; no se repite.
procedure Hecha(resultado: Integer);
var
  motivo: string;
begin
  if resultado = 0 then Exit;
  motivo := z.sLastError;
  if resultado = 5 then z.CancelarComprobante
  else motivo := 'no la repita, mire el papel; zentaro sale no deja esta duda (venta-segura.vbs)';
  raise Exception.CreateFmt('Resultado %d: %s', [resultado, motivo]);
end;

begin
  CoInitialize(nil);
  try
    z := CreateOleObject('Zentaro.CZentaro');
    z.verifyCheckSum := True;
    z.CommPort := 1;
    try
      z.PortOpen := True;
      Hecha(z.IniciarFactura('Ana Pérez', 'V-12345678'));
      Hecha(z.PasarLineaFactura('Café molido', 12.5, 2, 16));
      Hecha(z.RecibirPago(29));
      Hecha(z.CerrarComprobante);
      Writeln('Factura impresa: ', VarToStr(z.response(3)));
    finally
      z.PortOpen := False;
    end;
  except
    on E: EOleException do Writeln(E.ErrorCode and $FFFF, ' ', E.Source, ': ', E.Message);  // 40001: el puerto no abre
    on E: Exception do Writeln(E.Message);
  end;
  z := Unassigned;
  CoUninitialize;
end.
