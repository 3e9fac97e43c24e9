// Control lines on standard input, answered on standard error.
#pragma once

#include <functional>
#include <string>

#include "virtual-printer/shell/control.h"
#include "virtual-printer/shell/served.h"

namespace printer {

class StandardInput final : public Served {
 public:
  explicit StandardInput(ReplyTo reply) : reply_{std::move(reply)} {}

  void watch(std::vector<pollfd>& watched) const override;
  void serve(const std::vector<pollfd>& polled) override;

 private:
  ReplyTo reply_;
  LineReader lines_;
  bool isOpen_ = true;
};

}  // namespace printer
