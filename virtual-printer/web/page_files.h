// The files of web/page, which the build puts into the program.
#pragma once

#include <span>

#include "base/http/page_file.h"

namespace virtual_printer {

std::span<const zentaro::http::PageFile> pageFiles();

// Stands in index.html for the token that lets the page act.
inline constexpr std::string_view tokenMark = "@TOKEN@";

}  // namespace virtual_printer
