// What the loop tells, as messages for the page.
#include "virtual-printer/web/web_page.h"

#include <nlohmann/json.hpp>

#include "virtual-printer/fiscal/calendar.h"
#include "virtual-printer/web/state_json.h"

namespace virtual_printer {
namespace {

using Json = nlohmann::ordered_json;

}  // namespace

WebPage::WebPage(const Address& address, const Identity& identity, Inbox& inbox, Control control)
    : inbox_{inbox},
      rows_{feed_},
      sheets_{feed_},
      server_{address, feed_, [this, control = std::move(control)](const std::string& line) {
                return inbox_.ask([control, line] { return control(line); });
              }} {
  feed_.publish("about", 0, aboutJson(identity));
}

void WebPage::happened(const Moment& moment, const Event& event) {
  if (event.kind == EventKind::Power) isPowered_ = event.name == "on";
  rows_.happened(moment, event);
}

void WebPage::lineIs(const std::string& device) { device_ = device; }

// Each has a number of its own, so that a page can tell that the one it asked for is over.
void WebPage::sampleBegins() {
  feed_.publish("sample", 0, Json{{"count", ++samples_}, {"end", "running"}}.dump());
}

void WebPage::sampleEnds(const SampleSale& sample) {
  constexpr std::array names{"printed", "unanswered", "not-printed", "refused", "unknown"};
  const auto end = static_cast<std::size_t>(sample.end().value_or(SampleSale::End::Unknown));
  feed_.publish("sample", 0,
                Json{{"count", samples_}, {"end", names.at(end)}, {"detail", sample.detail()}}.dump());
}

void WebPage::show(const Moment& moment, const Works& works, const FaultSet& faults) {
  sheets_.draw(moment.steady);
  Json armed = Json::array();
  for (const auto& [plan, holds] : faults.list()) armed.push_back({{"plan", plan}, {"holds", holds}});
  feed_.publish("faults", 0, armed.dump());
  feed_.publish("state", 0, stateJson(works));
  feed_.publish(
      "line", 0,
      Json{{"device", device_}, {"power", isPowered_}}.dump(-1, ' ', false, Json::error_handler_t::replace));
  feed_.publish("clock", 0,
                Json(written(moment.local + works.books.clockOffset, "%d-%m-%Y %H:%M:%S")).dump());
}

}  // namespace virtual_printer
