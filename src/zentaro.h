// The library: the printer object CZentaro, its records, and late binding by name.
#pragma once

#if __cplusplus < 202002L
#error "zentaro.h needs C++20: add -std=c++20. For C there is zentaro_c.h."
#endif

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "automation/variant.h"
#include "interface/library.h"
#include "platform/host.h"
#include "printer/czentaro.h"
#include "reports/resultado_cierre.h"
#include "reports/status_hasar.h"
#include "reports/status_n.h"
