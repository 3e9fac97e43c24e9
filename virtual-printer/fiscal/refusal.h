// Why the printer refuses a command. A refused command changes nothing and prints nothing.
#pragma once

#include <array>
#include <cstddef>

namespace virtual_printer {

enum class Refusal {
  UnknownCommand,
  BadField,
  NoDocument,
  DocumentOpen,
  WrongLineType,
  AmountOutOfRange,
  FourthRate,
  DiscountTooLarge,
  PaymentStarted,
  AlreadyPaid,
  NotPaid,
  NoItems,
  NoPaymentOnCreditNote,
  BadCloseType,
  BadIgtfBase,
  PartiallyClosed,
  BadDate,
  BadRange,
  BadLineNumber,
  NoPaper,
  CoverOpen,
  MemoryFull,
  ClosingRequired,
  SlipOff,
  NotSaved,
  CounterAtLimit,
};

/// In the order of the enumeration; 7-bit, because the line's code page is the host's affair.
inline constexpr auto refusalTexts = std::to_array<const char*>({
    "ERROR 01 COMANDO DESCONOCIDO",
    "ERROR 02 CAMPO INVALIDO O AUSENTE",
    "ERROR 03 NO HAY DOCUMENTO ABIERTO",
    "ERROR 04 HAY UN DOCUMENTO ABIERTO",
    "ERROR 05 LINEA NO CORRESPONDE AL DOCUMENTO",
    "ERROR 06 MONTO FUERA DE RANGO",
    "ERROR 07 MAS DE TRES TASAS EN EL DIA",
    "ERROR 08 DESCUENTO MAYOR QUE EL MONTO",
    "ERROR 09 PAGO YA INICIADO",
    "ERROR 10 DOCUMENTO YA PAGADO",
    "ERROR 11 PAGO INSUFICIENTE",
    "ERROR 12 DOCUMENTO SIN RENGLONES",
    "ERROR 13 NOTA DE CREDITO NO ADMITE PAGOS",
    "ERROR 14 TIPO DE CIERRE INVALIDO",
    "ERROR 15 BASE IGTF INVALIDA",
    "ERROR 16 DOCUMENTO EN CIERRE PARCIAL",
    "ERROR 17 FECHA U HORA INVALIDA",
    "ERROR 18 RANGO INVALIDO",
    "ERROR 19 NUMERO DE LINEA INVALIDO",
    "ERROR 20 SIN PAPEL",
    "ERROR 21 TAPA ABIERTA",
    "ERROR 22 MEMORIA FISCAL LLENA",
    "ERROR 23 SE REQUIERE CIERRE Z",
    "ERROR 24 ESTACION DE CHEQUES DESACTIVADA",
    "ERROR 25 MEMORIA FISCAL NO SE PUEDE GRABAR",
    "ERROR 26 CONTADOR EN SU LIMITE",
});
static_assert(refusalTexts.size() == static_cast<std::size_t>(Refusal::CounterAtLimit) + 1);

/// Thrown before anything has changed, caught where the answer is made.
struct Refused {
  Refusal why;
};

inline void refuseIf(bool condition, Refusal why) {
  if (condition) throw Refused{why};
}

}  // namespace virtual_printer
