// Cheques in the slip station: each is a sheet of its own.
#pragma once

#include <string>

#include "virtual-printer/paper/sheet.h"

namespace virtual_printer {

Sheet chequeFaceSheet(const std::string& amount, const std::string& payee, const std::string& date);
Sheet chequeBackSheet(const std::string& name, const std::string& identityCard, const std::string& telephone);

}  // namespace virtual_printer
