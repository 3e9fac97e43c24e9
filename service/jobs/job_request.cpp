// The members of the body.
#include "service/jobs/job_request.h"

#include "base/system/uptime.h"
#include "base/terminal/language.h"
#include "till/document/content.h"

namespace zentaro::service {

using terminal::say;
using till::FileLanguage;
using till::GroupReader;
using till::Node;
using till::Presence;
using DocumentProblem = till::Problem;

namespace {

constexpr till::TextRule optionalText{Presence::Optional};
constexpr till::NumberRule attemptRule{0, 1, 1'000'000};
constexpr till::NumberRule patienceRule{0, 1, 3'600};

// The sale's own problems, under the name that it has in the body.
void readSaleInto(RequestReading& reading, const Node& node) {
  till::SaleReading sale = till::readSale(node);
  if (sale.problems.empty()) reading.request.totals = till::reckon(sale.sale, sale.problems);
  reading.request.kind = sale.sale.isCreditNote ? till::Kind::CreditNote : till::Kind::Invoice;
  if (sale.problems.empty()) reading.request.digest = till::contentDigest(sale.sale);
  for (DocumentProblem& problem : sale.problems)
    reading.problems.push_back(
        {problem.path.empty() ? "sale" : "sale." + problem.path, std::move(problem.text)});
  reading.request.sale = std::move(sale.sale);
}

void readClosingInto(RequestReading& reading, GroupReader& group) {
  const std::string closing = group.text("closing", {});
  if (closing == "X" || closing == "Z") {
    reading.request.kind = closing == "X" ? till::Kind::X : till::Kind::Z;
    reading.request.digest = "closing-" + closing;
  } else if (!closing.empty()) {
    group.report("closing",
                 say("es \"{}\"; escriba \"X\" o \"Z\"", "is \"{}\"; write \"X\" or \"Z\"", {closing}));
  }
}

void readForceInto(RequestReading& reading, GroupReader& group) {
  const Node* force = group.find("force");
  if (force == nullptr) return;
  reading.request.isForced = force->text == "true";
  if (force->kind != Node::Kind::Boolean)
    group.report("force", say("no es true ni false", "is neither true nor false"));
}

void readMembersInto(RequestReading& reading, const Node& root) {
  GroupReader group{root, "", FileLanguage::English, reading.problems};
  JobRequest& request = reading.request;
  request.printer = group.text("printer", {});
  request.machine = group.text("machine", optionalText);
  if (group.find("attempt") != nullptr)
    request.attempt = static_cast<int>(group.number("attempt", attemptRule));
  if (group.find("patience") != nullptr)
    request.patience = std::chrono::seconds{group.number("patience", patienceRule)};
  readForceInto(reading, group);
  const Node* sale = group.find("sale");
  const bool isClosing = group.find("closing") != nullptr;
  if ((sale != nullptr) == isClosing)
    return reading.problems.push_back(
        {"", say("lleva \"sale\" (un documento) o \"closing\" (\"X\" o \"Z\"), uno de los dos",
                 "holds either \"sale\" (a document) or \"closing\" (\"X\" or \"Z\")")});
  if (isClosing)
    readClosingInto(reading, group);
  else
    readSaleInto(reading, *sale);
}

template <class Read>
RequestReading reading(std::string_view body, const Read& read) {
  RequestReading result;
  const till::ParsedNode parsed = till::parseNode(body);
  if (!parsed.root)
    result.noJson = parsed.problem;
  else if (parsed.root->kind != Node::Kind::Group)
    result.problems.push_back({"", say("no hay un grupo entre llaves", "there is no group in braces")});
  else
    read(result, *parsed.root);
  return result;
}

}  // namespace

RequestReading readJobRequest(std::string_view body) { return reading(body, readMembersInto); }

till::Order orderOf(const std::string& id, const std::string& body, const JobRequest& request) {
  const system::Uptime now = system::uptime();
  till::Order order;
  order.id = id;
  order.owner = serviceOwner;
  order.printer = request.printer;
  order.kind = request.kind;
  order.digest = request.digest;
  order.body = body;
  order.net = request.totals.net;
  order.total = request.totals.due();
  order.patience = request.patience;
  order.boot = now.boot;
  order.uptime = now.seconds;
  return order;
}

RequestReading readCheckRequest(std::string_view body) {
  return reading(body, [](RequestReading& result, const Node& root) {
    GroupReader group{root, "", FileLanguage::English, result.problems};
    const Node* sale = group.find("sale");
    if (sale == nullptr)
      group.report("sale", say("falta", "is missing"));
    else
      readSaleInto(result, *sale);
  });
}

}  // namespace zentaro::service
