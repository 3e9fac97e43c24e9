// The files of a page, which the build puts into the program, and the headers that keep it to itself.
#pragma once

#include <httplib.h>

#include <string_view>

namespace zentaro::http {

struct PageFile {
  std::string_view path;  // of the URL
  std::string_view type;
  std::string_view content;
};

/// A page may load its own files and talk to its own server, nothing else; nothing is kept by the browser.
inline httplib::Headers pageHeaders() {
  return {
      {"Content-Security-Policy",
       "default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; img-src data: blob:; "
       "base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
      {"X-Content-Type-Options", "nosniff"},
      {"Referrer-Policy", "no-referrer"},
      {"Cache-Control", "no-store"}};
}

}  // namespace zentaro::http
