// The two names of each member.
#include "till/document/member_names.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zentaro::till {

namespace {

// "serial", "rif", "igtf" and "total" are the same in both.
constexpr std::array<std::pair<std::string_view, std::string_view>, 21> memberNames{{
    {"document", "documento"},
    {"customer", "cliente"},
    {"name", "nombre"},
    {"invoice", "factura"},
    {"number", "numero"},
    {"date", "fecha"},
    {"time", "hora"},
    {"lines", "renglones"},
    {"description", "descripcion"},
    {"price", "precio"},
    {"prices", "precios"},
    {"quantity", "cantidad"},
    {"tax", "impuesto"},
    {"text", "texto"},
    {"discounts", "descuentos"},
    {"amount", "monto"},
    {"payments", "pagos"},
    {"medium", "medio"},
    {"rate", "tasa"},
    {"extraLines", "lineasExtra"},
    {"keepAccents", "conservarAcentos"},
}};

}  // namespace

std::string_view memberName(std::string_view english, FileLanguage language) {
  if (language == FileLanguage::English) return english;
  const auto* found =
      std::ranges::find(memberNames, english, &std::pair<std::string_view, std::string_view>::first);
  return found == memberNames.end() ? english : found->second;
}

std::string_view translatedName(std::string_view other, FileLanguage language) {
  for (const auto& [english, spanish] : memberNames) {
    if (language == FileLanguage::Spanish && other == english) return spanish;
    if (language == FileLanguage::English && other == spanish) return english;
  }
  return {};
}

}  // namespace zentaro::till
