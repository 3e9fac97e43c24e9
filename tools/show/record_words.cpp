// The words, and the columns of the table.
#include "tools/show/record_words.h"

#include <array>

#include "automation/description.h"
#include "base/terminal/colour.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "tools/show/show.h"

namespace zentaro::tools {

namespace {

struct Words {
  std::string_view member, spanish, english;
};

constexpr auto allWords = std::to_array<Words>({
    {"CodigoStatus", "Código de estado", "Status code"},
    {"UltimoComando", "Último comando", "Last command"},
    {"FechaImpresora", "Reloj de la impresora", "Printer's clock"},
    {"FacturasPeriodo", "Facturas del día", "Invoices of the day"},
    {"DNFPeriodo", "Documentos no fiscales del día", "Non-fiscal documents of the day"},
    {"NumeroFacturaAcumulado", "Número de la última factura", "Number of the last invoice"},
    {"NumeroDNFAcumulado", "Número del último no fiscal", "Number of the last non-fiscal"},
    {"UltimoCierreZ", "Número del último Z", "Number of the last Z"},
    {"statusPrinter", "Palabra de estado de la impresora", "Printer status word"},
    {"statusFiscal", "Palabra de estado fiscal", "Fiscal status word"},
    {"statusAuxiliar", "Estado auxiliar", "Auxiliary status"},
    {"statusDocumento", "Documento en curso", "Current document"},
    {"numeroUltimaFactura", "Número de la última factura", "Number of the last invoice"},
    {"numeroUltimaND", "Número de la última nota de débito", "Number of the last debit note"},
    {"numeroUltimaNC", "Número de la última nota de crédito", "Number of the last credit note"},
    {"numeroUltimoDNF", "Número del último no fiscal", "Number of the last non-fiscal"},
    {"VentasExentas", "Ventas exentas", "Exempt sales"},
    {"BaseGravable1", "Base imponible, alícuota 1", "Taxable base, rate 1"},
    {"BaseGravable2", "Base imponible, alícuota 2", "Taxable base, rate 2"},
    {"BaseGravable3", "Base imponible, alícuota 3", "Taxable base, rate 3"},
    {"Impuesto1", "Impuesto, alícuota 1", "Tax, rate 1"},
    {"Impuesto2", "Impuesto, alícuota 2", "Tax, rate 2"},
    {"Impuesto3", "Impuesto, alícuota 3", "Tax, rate 3"},
    {"ValorDescuentos", "Descuentos", "Discounts"},
    {"ImpuestoDescuentos", "Impuesto de los descuentos", "Tax of the discounts"},
    {"MontoExentoNC", "Notas de crédito, exento", "Credit notes, exempt"},
    {"ValorNCBase1", "Notas de crédito, base 1", "Credit notes, base 1"},
    {"ValorNCBase2", "Notas de crédito, base 2", "Credit notes, base 2"},
    {"ValorNCBase3", "Notas de crédito, base 3", "Credit notes, base 3"},
    {"ImpuestoNCBase1", "Notas de crédito, impuesto 1", "Credit notes, tax 1"},
    {"ImpuestoNCBase2", "Notas de crédito, impuesto 2", "Credit notes, tax 2"},
    {"ImpuestoNCBase3", "Notas de crédito, impuesto 3", "Credit notes, tax 3"},
    {"FechaReporte", "Fecha del reporte", "Date of the report"},
    {"FechaUltimaFactura", "Última factura", "Last invoice"},
});

std::string_view wordsFor(const Member& member) {
  for (const Words& words : allWords)
    if (words.member == member.name) return terminal::say(words.spanish, words.english);
  return member.help;
}

// Amounts have two decimals; should one have more, nothing is rounded away.
std::string valueFor(const Variant& value) {
  std::string text = valueText(value);
  if (value.is(Variant::Kind::Currency) && text.ends_with("00")) text.resize(text.size() - 2);
  if (value.is(Variant::Kind::Date)) text.replace(std::min(text.find('T'), text.size()), 1, " ");
  return text;
}

}  // namespace

std::vector<RecordRow> recordRows(const Object& record) {
  std::vector<RecordRow> rows;
  forEachValue(record, [&](const Member& member, const Variant& value) {
    rows.push_back({member.name, wordsFor(member), valueFor(value)});
  });
  return rows;
}

std::string recordTable(const std::vector<RecordRow>& rows) {
  constexpr std::size_t widestWords = 35, widestValue = 19;  // of all, and of a date with its time
  std::string table;
  for (const auto& [member, words, value] : rows)
    table += "  " + terminal::padded(std::string(words), widestWords) +
             terminal::paddedLeft(value, widestValue) + "  " +
             terminal::coloured(terminal::Colour::Faint, member) + "\n";
  return table;
}

}  // namespace zentaro::tools
