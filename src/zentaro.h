// The library: the printer object CZentaro, its records, and late binding by name.
#pragma once

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "automation/variant.h"
#include "interface/library.h"
#include "platform/host.h"
#include "printer/czentaro.h"
#include "reports/resultado_cierre.h"
#include "reports/status_hasar.h"
#include "reports/status_n.h"
