// The printer on a web page. The loop tells it what happens; what the page wants done, the loop does.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "virtual-printer/faults/fault_set.h"
#include "virtual-printer/line/engine.h"
#include "virtual-printer/line/inbox.h"
#include "virtual-printer/line/sample_sale.h"
#include "virtual-printer/web/line_rows.h"
#include "virtual-printer/web/server.h"
#include "virtual-printer/web/sheets.h"

namespace virtual_printer {

class WebPage final : public EventWatcher {
 public:
  using Control = std::function<std::string(const std::string& line)>;

  /// `control` carries out control lines, as jobs of the inbox. Throws what WebServer throws.
  WebPage(const Address& address, const Identity& identity, Inbox& inbox, Control control);
  ~WebPage() override { inbox_.close(); }

  std::string url() const { return server_.url(); }
  PaperWatcher& paper() { return sheets_; }

  void happened(const Moment& moment, const Event& event) override;
  void sent(const Moment& moment, const Output& output) { rows_.sent(moment, output); }
  /// The name under which the host finds the line; empty while the line is gone.
  void lineIs(const std::string& device);
  void sampleBegins();
  void sampleEnds(const SampleSale& sample);
  /// Once in each turn of the loop: the page is told what has changed.
  void show(const Moment& moment, const Works& works, const FaultSet& faults);

 private:
  Feed feed_;
  Inbox& inbox_;
  LineRows rows_;
  Sheets sheets_;
  std::string device_;
  bool isPowered_ = true;
  int samples_ = 0;
  WebServer server_;
};

}  // namespace virtual_printer
