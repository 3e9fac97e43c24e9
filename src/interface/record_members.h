// The members of the records statusN, statusHASAR and ResultadoCierre, in interface order.
#pragma once

#include "interface/member_table.h"
#include "reports/resultado_cierre.h"
#include "reports/status_hasar.h"
#include "reports/status_n.h"

namespace zentaro::table {

inline constexpr auto statusNMembers = rows(
    variable<&statusN::CodigoStatus>("CodigoStatus", "Status code of the answer."),
    variable<&statusN::UltimoComando>("UltimoComando", "Last command that was carried out."),
    method<&statusN::LoadFromResponse>(
        "LoadFromResponse", {byRef("response", "array of Variant, lower bound 0")},
        "Loads the record from the elements 4 to 12 of an array of answer fields."),
    method<&statusN::FechaImpresora>("FechaImpresora", {}, "Printer's clock, to the minute."),
    method<&statusN::FacturasPeriodo>("FacturasPeriodo", {}, "Invoices of the period."),
    method<&statusN::DNFPeriodo>("DNFPeriodo", {}, "Non-fiscal documents of the period."),
    method<&statusN::NumeroFacturaAcumulado>("NumeroFacturaAcumulado", {}, "Number of the last invoice."),
    method<&statusN::NumeroDNFAcumulado>("NumeroDNFAcumulado", {}, "Number of the last non-fiscal."),
    method<&statusN::UltimoCierreZ>("UltimoCierreZ", {}, "Number of the last Z closing."));

inline constexpr auto statusHASARMembers =
    rows(variable<&statusHASAR::statusPrinter>("statusPrinter", "Printer status word."),
         variable<&statusHASAR::statusFiscal>("statusFiscal", "Fiscal status word."),
         variable<&statusHASAR::statusAuxiliar>("statusAuxiliar", "Auxiliary status."),
         variable<&statusHASAR::statusDocumento>("statusDocumento", "Status of the current document."),
         variable<&statusHASAR::numeroUltimaFactura>("numeroUltimaFactura", "Number of the last invoice."),
         variable<&statusHASAR::numeroUltimaND>("numeroUltimaND", "Number of the last debit note."),
         variable<&statusHASAR::numeroUltimaNC>("numeroUltimaNC", "Number of the last credit note."),
         variable<&statusHASAR::numeroUltimoDNF>("numeroUltimoDNF", "Number of the last non-fiscal."),
         method<&statusHASAR::LoadFromResponse>("LoadFromResponse",
                                                {byRef("response", "array of Variant, lower bound 0")},
                                                "Loads the record from the elements 0 to 7 of an array."));

using R = ResultadoCierre;
inline constexpr auto closingMembers = rows(
    variable<&R::VentasExentas>("VentasExentas", "Exempt sales."),
    variable<&R::BaseGravable1>("BaseGravable1", "Taxable base, rate 1."),
    variable<&R::Impuesto1>("Impuesto1", "Tax, rate 1."),
    variable<&R::ValorDescuentos>("ValorDescuentos", "Amount of discounts."),
    variable<&R::ImpuestoDescuentos>("ImpuestoDescuentos", "Tax of discounts."),
    variable<&R::MontoExentoNC>("MontoExentoNC", "Credit notes, exempt."),
    variable<&R::ValorNCBase1>("ValorNCBase1", "Credit notes, base 1."),
    variable<&R::FechaReporte>("FechaReporte", "Date of the report."),
    variable<&R::BaseGravable2>("BaseGravable2", "Taxable base, rate 2."),
    variable<&R::Impuesto2>("Impuesto2", "Tax, rate 2."),
    variable<&R::BaseGravable3>("BaseGravable3", "Taxable base, rate 3."),
    variable<&R::Impuesto3>("Impuesto3", "Tax, rate 3."),
    variable<&R::ImpuestoNCBase1>("ImpuestoNCBase1", "Credit notes, tax 1."),
    variable<&R::ValorNCBase2>("ValorNCBase2", "Credit notes, base 2."),
    variable<&R::ImpuestoNCBase2>("ImpuestoNCBase2", "Credit notes, tax 2."),
    variable<&R::ValorNCBase3>("ValorNCBase3", "Credit notes, base 3."),
    variable<&R::ImpuestoNCBase3>("ImpuestoNCBase3", "Credit notes, tax 3."),
    variable<&R::FechaUltimaFactura>("FechaUltimaFactura", "Date and time of the last invoice."),
    variable<&R::numeroUltimaFactura>("numeroUltimaFactura", "Number of the last invoice."),
    method<&R::LoadFromParams>("LoadFromParams", {byRef("v", "array of Variant, lower bound 0")},
                               "Loads the record from the elements 3 to 21 of an array of answer fields."));

}  // namespace zentaro::table
