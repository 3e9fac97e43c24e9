// The texts, in the order in which the tables of the library have them.
#include "tools/show/wording.h"

#include <algorithm>
#include <array>

#include "base/terminal/language.h"

namespace zentaro::tools {

namespace {

struct Text {
  std::string_view given;  // as the library has it
  std::string_view spanish;
};

constexpr auto texts = std::to_array<Text>({
    // Classes.
    {"A fiscal printer on a serial port.", "Una impresora fiscal en un puerto serial."},
    {"The normal status of the printer.", "El estado normal de la impresora."},
    {"Status words and document counters of the printer.",
     "Palabras de estado y contadores de documentos de la impresora."},
    {"The figures of a fiscal closing.", "Los montos de un cierre fiscal."},

    // Variables of CZentaro, frames and the port.
    {"Serial port, 1 to 8.", "Puerto serial, 1 a 8."},
    {"The port is open.", "El puerto está abierto."},
    {"Printer status word of the last answer.", "Palabra de estado de la impresora en la última respuesta."},
    {"Fiscal status word of the last answer.", "Palabra de estado fiscal de la última respuesta."},
    {"Error text of the last answer.", "Texto de error de la última respuesta."},
    {"Command of the last frame built.", "Comando de la última trama armada."},
    {"Outcome of the last transaction.", "Resultado de la última transacción."},
    {"Builds a command frame.", "Arma la trama de un comando."},
    {"command code, 0 to 255", "código del comando, 0 a 255"},
    {"the fields, each as its text", "los campos, cada uno como su texto"},
    {"Sends a frame without looking at the port.", "Envía una trama sin fijarse en el puerto."},
    {"a frame built by BuildOMB just before", "una trama recién armada con BuildOMB"},
    {"Sends a command without fields.", "Envía un comando sin campos."},
    {"Sends a frame.", "Envía una trama."},
    {"The object trace is on.", "La traza del objeto está encendida."},
    {"True switches it on", "True la enciende"},
    {"value", "valor"},
    {"Type of the printer.", "Tipo de la impresora."},
    {"Line settings; an assignment is ignored.", "Parámetros de la línea; lo que se asigne se ignora."},
    {"ignored", "se ignora"},
    {"Opens and closes the port.", "Abre y cierra el puerto."},
    {"True opens, False closes", "True abre, False cierra"},

    // Answers.
    {"Text of the last outcome.", "Texto del último resultado."},
    {"All answer fields.", "Todos los campos de la respuesta."},
    {"The answer field at an index, or -1.", "El campo de la respuesta en ese índice, o -1."},
    {"0 command code, 1 and 2 status words, 3 onward data, the last one checksum",
     "0 el código del comando, 1 y 2 las palabras de estado, desde 3 los datos, el último la suma"},
    {"-1 when answer fields are stored, 0 after a failure.",
     "-1 si hay campos de respuesta guardados, 0 después de una falla."},
    {"A bit of the printer status word by its value, or -1.",
     "Un bit de la palabra de estado de la impresora, con su valor, o -1."},
    {"A bit of the fiscal status word by its value, or -1.",
     "Un bit de la palabra de estado fiscal, con su valor, o -1."},
    {"0 to 15", "0 a 15"},

    // Closings and reports.
    {"Runs the X or Z closing.", "Hace el cierre X o el Z."},
    {"CIERRE_X (0); anything else is the Z", "CIERRE_X (0); cualquier otro es el Z"},
    {"False: an X closing is not printed, only its figures are read",
     "False: el cierre X no se imprime, solo se leen sus montos"},
    {"Runs the Z closing with totals.", "Hace el cierre Z con totales."},
    {"Reports the fiscal memory between two dates.", "Reporte de la memoria fiscal entre dos fechas."},
    {"first day: a date, or a text that is one; sent as yymmdd",
     "primer día: una fecha, o un texto que lo sea; se envía como aammdd"},
    {"last day: a date, or a text that is one; sent as yymmdd",
     "último día: una fecha, o un texto que lo sea; se envía como aammdd"},
    {"type of report, sent as given", "tipo de reporte, se envía tal cual"},
    {"Reports the fiscal memory between two closing numbers.",
     "Reporte de la memoria fiscal entre dos números de cierre."},
    {"first closing number, sent with eight digits", "primer número de cierre, se envía con ocho cifras"},
    {"last closing number, sent with eight digits", "último número de cierre, se envía con ocho cifras"},

    // Documents.
    {"Opens an invoice.", "Abre una factura."},
    {"customer's name, 40 characters", "nombre del cliente, 40 caracteres"},
    {"customer's RIF, 14 characters", "RIF del cliente, 14 caracteres"},
    {"Prints an extra text line.", "Imprime una línea de texto adicional."},
    {"text, as many characters as the setting LenDescripcionZT says and 14 more",
     "texto, los caracteres que diga la clave LenDescripcionZT y 14 más"},
    {"Opens a credit note.", "Abre una nota de crédito."},
    {"number of the invoice, sent as given", "número de la factura, se envía tal cual"},
    {"serial number of the machine that printed it, sent as given",
     "serial de la máquina que la imprimió, se envía tal cual"},
    {"its date, or a text that is one; sent as yymmdd, and empty for 0",
     "su fecha, o un texto que lo sea; se envía como aammdd, y vacía si es 0"},
    {"its time, or a text that is one; sent as hhnnss, and empty for 0",
     "su hora, o un texto que lo sea; se envía como hhmmss, y vacía si es 0"},
    {"Prints an item line of an invoice.", "Imprime un renglón de una factura."},
    {"Prints an item line of a credit note.", "Imprime un renglón de una nota de crédito."},
    {"description, as many characters as the setting LenDescripcionZT says",
     "descripción, los caracteres que diga la clave LenDescripcionZT"},
    {"price of one without tax, 2 implied decimals; a fractional quantity folded into it (setting "
     "SuprimirDecimalesEZT) is written back",
     "precio de una unidad sin impuesto, 2 decimales implícitos; si la cantidad fraccionaria se multiplica en él "
     "(clave SuprimirDecimalesEZT), queda cambiado"},
    {"quantity, 3 implied decimals; 1 is written back when it was folded",
     "cantidad, 3 decimales implícitos; queda en 1 si se multiplicó en el precio"},
    {"tax in per cent, 2 implied decimals", "impuesto en por ciento, 2 decimales implícitos"},
    {"Registers a payment.", "Registra un pago."},
    {"amount, 2 implied decimals", "monto, 2 decimales implícitos"},
    {"Registers a payment by a medium.", "Registra un pago con un medio."},
    {"medium of payment, a number or a text, sent as given",
     "medio de pago, un número o un texto, se envía tal cual"},
    {"Registers a discount.", "Registra un descuento."},
    {"Registers a discount with a description.", "Registra un descuento con su descripción."},
    {"description, the first 20 characters as they are",
     "descripción, los primeros 20 caracteres como están"},
    {"Cancels the open document.", "Anula el documento abierto."},
    {R"("T" close, "A" partial close, "E" final close; sent as given, no field for an empty text)",
     R"("T" cierre, "A" cierre parcial, "E" cierre definitivo; se envía tal cual, sin campo si el texto es vacío)"},
    {"Prints the subtotal.", "Imprime el subtotal."},
    {"Closes the document with a base for the IGTF tax.", "Cierra el documento con una base para el IGTF."},
    {R"("T" or "A", sent with a base as "U" or "B"; what was sent is written back)",
     R"("T" o "A", con base se envía "U" o "B"; queda lo que se envió)"},
    {"base of the IGTF tax, 2 implied decimals", "base del IGTF, 2 decimales implícitos"},
    {"Opens a non-fiscal document.", "Abre un documento no fiscal."},
    {"text, 40 characters", "texto, 40 caracteres"},
    {"Prints a line of a non-fiscal document.", "Imprime una línea de un documento no fiscal."},
    {"Closes a non-fiscal document.", "Cierra un documento no fiscal."},

    // The device.
    {"Asks for a status by its letter.", "Pide un estado por su letra."},
    {"one of the letters N E A B C D R F J in either case, sent in upper case, or an empty text, sent as an empty "
     "field; else 6, also in nEnvironmentError",
     "una de las letras N E A B C D R F J, mayúscula o minúscula, se envía en mayúscula, o un texto vacío, se envía "
     "como campo vacío; si no, 6, también en nEnvironmentError"},
    {"Sends the reset sequence and waits five seconds.",
     "Envía la secuencia de reinicio y espera cinco segundos."},
    {"The printer's serial number, empty when the outcome is not 0.",
     "El serial de la impresora, vacío si el resultado no es 0."},
    {"The printer's date and time, the zero date when the outcome is not 0.",
     "La fecha y hora de la impresora, la fecha cero si el resultado no es 0."},
    {"Sets the printer's date and time.", "Ajusta la fecha y hora de la impresora."},
    {"a date with time, or a text that is one; sent as yymmdd and hhnnss; else 6, also in nEnvironmentError",
     "una fecha con hora, o un texto que lo sea; se envía como aammdd y hhmmss; si no, 6, también en "
     "nEnvironmentError"},
    {"True: header, False: footer", "True: encabezado, False: pie"},
    {"line 1 to 5, a number or a text that is one, sent as that number; else 6",
     "línea 1 a 5, un número o un texto que lo sea, se envía como ese número; si no, 6"},
    {"Opens cash drawer 1 or 2.", "Abre la gaveta 1 o la 2."},
    {"1 or 2; else 6, also while the port is closed", "1 o 2; si no, 6, también con el puerto cerrado"},
    {"Cuts the paper.", "Corta el papel."},
    {"Feeds the paper.", "Avanza el papel."},
    {"Switches the slip station on.", "Activa la estación de cheques."},
    {"Switches the slip station off.", "Desactiva la estación de cheques."},
    {"Prints the face of a cheque. The outcome is that of the last exchange. A payee that does not convert leaves "
     "the slip station on.",
     "Imprime el frente de un cheque. El resultado es el del último intercambio. Un beneficiario que no se puede "
     "convertir deja activa la estación de cheques."},
    {"amount, sent with two decimals and the regional separators",
     "monto, se envía con dos decimales y los separadores regionales"},
    {"payee, 40 characters", "beneficiario, 40 caracteres"},
    {"date of issue, or a text that is one; sent as the regional short date",
     "fecha de emisión, o un texto que lo sea; se envía como la fecha corta regional"},
    {"Prints an endorsement on a cheque. The outcome is that of the last exchange. A text that does not convert "
     "leaves the slip station on.",
     "Imprime el endoso de un cheque. El resultado es el del último intercambio. Un texto que no se puede convertir "
     "deja activa la estación de cheques."},
    {"name, 40 characters", "nombre, 40 caracteres"},
    {"identity number, 20 characters", "cédula, 20 caracteres"},
    {"telephone, 20 characters", "teléfono, 20 caracteres"},
    {"Asks for a status by a selector.", "Pide un estado por un selector."},
    {R"(selector such as "N" or "*", sent as given)", R"(selector, como "N" o "*", se envía tal cual)"},
    {"The normal status as a record, or nothing.", "El estado normal como registro, o nada."},
    {"Status words and counters as a record, or nothing.",
     "Palabras de estado y contadores como registro, o nada."},
    {"Runs a closing; its figures as a record, or nothing.",
     "Hace un cierre; sus montos como registro, o nada."},
    {"The figures in the last answer as a record, or nothing.",
     "Los montos de la última respuesta como registro, o nada."},
    {"Reject answers with a wrong checksum.", "Rechazar respuestas con la suma errada."},

    // Records.
    {"array of Variant, lower bound 0", "arreglo de Variant, desde 0"},
    {"Status code of the answer.", "Código de estado de la respuesta."},
    {"Last command that was carried out.", "Último comando ejecutado."},
    {"Loads the record from the elements 4 to 12 of an array of answer fields.",
     "Carga el registro de los elementos 4 a 12 de un arreglo de campos de respuesta."},
    {"Printer's clock, to the minute.", "Reloj de la impresora, al minuto."},
    {"Invoices of the period.", "Facturas del período."},
    {"Non-fiscal documents of the period.", "Documentos no fiscales del período."},
    {"Number of the last invoice.", "Número de la última factura."},
    {"Number of the last non-fiscal.", "Número del último no fiscal."},
    {"Number of the last Z closing.", "Número del último cierre Z."},
    {"Printer status word.", "Palabra de estado de la impresora."},
    {"Fiscal status word.", "Palabra de estado fiscal."},
    {"Auxiliary status.", "Estado auxiliar."},
    {"Status of the current document.", "Estado del documento en curso."},
    {"Number of the last debit note.", "Número de la última nota de débito."},
    {"Number of the last credit note.", "Número de la última nota de crédito."},
    {"Loads the record from the elements 0 to 7 of an array.",
     "Carga el registro de los elementos 0 a 7 de un arreglo."},
    {"Exempt sales.", "Ventas exentas."},
    {"Taxable base, rate 1.", "Base imponible, alícuota 1."},
    {"Taxable base, rate 2.", "Base imponible, alícuota 2."},
    {"Taxable base, rate 3.", "Base imponible, alícuota 3."},
    {"Tax, rate 1.", "Impuesto, alícuota 1."},
    {"Tax, rate 2.", "Impuesto, alícuota 2."},
    {"Tax, rate 3.", "Impuesto, alícuota 3."},
    {"Amount of discounts.", "Monto de los descuentos."},
    {"Tax of discounts.", "Impuesto de los descuentos."},
    {"Credit notes, exempt.", "Notas de crédito, exento."},
    {"Credit notes, base 1.", "Notas de crédito, base 1."},
    {"Credit notes, base 2.", "Notas de crédito, base 2."},
    {"Credit notes, base 3.", "Notas de crédito, base 3."},
    {"Credit notes, tax 1.", "Notas de crédito, impuesto 1."},
    {"Credit notes, tax 2.", "Notas de crédito, impuesto 2."},
    {"Credit notes, tax 3.", "Notas de crédito, impuesto 3."},
    {"Date of the report.", "Fecha del reporte."},
    {"Date and time of the last invoice.", "Fecha y hora de la última factura."},
    {"Loads the record from the elements 3 to 21 of an array of answer fields.",
     "Carga el registro de los elementos 3 a 21 de un arreglo de campos de respuesta."},

    // Settings.
    {"time-out of an answer in whole seconds", "cuánto se espera por una respuesta, en segundos enteros"},
    {"longest item description in characters", "largo máximo de la descripción de un renglón, en caracteres"},
    {"other than 0: an item with a fractional quantity is sent as one piece at price x quantity",
     "distinto de 0: un renglón con cantidad fraccionaria va como una unidad a precio x cantidad"},
    {"other than \"0\": every printer object traces all its life",
     "distinto de \"0\": todo objeto impresora deja traza desde que nace"},
    {"file of the object trace", "archivo de la traza del objeto"},
    {"other than \"0\": the driver traces after a failed opening",
     "distinto de \"0\": el driver deja traza tras una apertura fallida"},
    {"file of the driver trace", "archivo de la traza del driver"},

    // What is said of parameters and outcomes.
    {"empty", "vacío"},
    {" by reference", " por referencia"},
    {"0 to 5", "0 a 5"},
    {"the result: ", "lo que devuelve: "},
    {"in nEnvironmentError: ", "en nEnvironmentError: "},
    {"; unchanged while the port is closed", "; sin cambio con el puerto cerrado"},
});

}  // namespace

std::string inLanguage(std::string_view given) {
  const auto* const text = std::ranges::find(texts, given, &Text::given);
  if (text == texts.end()) return std::string(given);
  return terminal::say(text->spanish, given);
}

}  // namespace zentaro::tools
