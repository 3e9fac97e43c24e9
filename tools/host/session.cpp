// Requests and responses of the line protocol.
#include "tools/host/session.h"

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "automation/automation_error.h"
#include "automation/description.h"
#include "base/files/json.h"
#include "interface/description_json.h"
#include "interface/library.h"
#include "till/words/call_words.h"
#include "till/zentaro_till.h"
#include "tools/host/host_sale.h"
#include "tools/host/rpc_error.h"
#include "tools/host/values.h"

namespace zentaro::tools {

namespace {

constexpr std::size_t deepestLine = 128;

struct Method {
  std::string_view name;
  std::string (HostSession::*run)(const Json& params);
  std::array<std::string_view, 5> parameters;
};
constexpr std::array methods{
    Method{"create", &HostSession::create, {"class"}},
    Method{"release", &HostSession::release, {"object"}},
    Method{"get", &HostSession::get, {"object", "name"}},
    Method{"put", &HostSession::put, {"object", "name", "value"}},
    Method{"call", &HostSession::call, {"object", "name", "args"}},
    Method{"sale", &HostSession::sale, {"object", "document", "id", "progress", "again"}},
    Method{"check", &HostSession::check, {"document"}},
    Method{"close", &HostSession::close, {"object", "closing", "id", "progress", "evenIfUnknown"}},
    Method{"settle", &HostSession::settle, {"object", "progress"}},
    Method{"jobs", &HostSession::jobs, {"id", "most"}},
    Method{"describe", &HostSession::describe, {"class"}}};

const Json& parameter(const Json& params, const char* name) {
  const auto found = params.find(name);
  if (found == params.end()) throw invalidParameters(std::string("\"") + name + "\" is missing in params");
  return *found;
}

const std::string& textParameter(const Json& params, const char* name) {
  const Json& value = parameter(params, name);
  if (!value.is_string()) throw invalidParameters(std::string("\"") + name + "\" must be a text");
  return value.get_ref<const std::string&>();
}

const Json& parameter(const Json& params, const char* name, const Json& fallback) {
  const auto found = params.find(name);
  return found == params.end() ? fallback : *found;
}

bool flagParameter(const Json& params, const char* name) {
  const Json value = parameter(params, name, false);
  if (!value.is_boolean()) throw invalidParameters(std::string("\"") + name + "\" must be true or false");
  return value.get<bool>();
}

std::string keyParameter(const Json& params) {
  const Json id = parameter(params, "id", "");
  if (!id.is_string()) throw invalidParameters("\"id\" must be a text");
  if (params.contains("id") && id.get_ref<const std::string&>().empty())
    throw invalidParameters("\"id\" is empty: name the sale, or leave it out");
  return id.get<std::string>();
}

// 0, which is no object, for a number that no object can have.
int idParameter(const Json& params) {
  const Json& id = parameter(params, "object");
  if (!id.is_number_integer()) throw invalidParameters("\"object\" must be the number of an object");
  const bool fits = id >= 0 && id <= std::numeric_limits<int>::max();
  return fits ? id.get<int>() : 0;
}

RpcError unknownObject(const Json& params) {
  return invalidParameters("no object " + params["object"].dump() +
                           ": it was never created, or was released");
}

std::vector<Variant> argumentsOf(const Json& params, const ObjectTable& objects) {
  std::vector<Variant> arguments;
  const auto given = params.find("args");
  if (given == params.end()) return arguments;
  if (!given->is_array()) throw invalidParameters("\"args\" must be an array");
  for (const Json& argument : *given) arguments.push_back(variantOf(argument, objects));
  return arguments;
}

bool canBeId(const Json& id) { return id.is_string() || id.is_number() || id.is_null(); }

Json idOf(const Json& request) {
  const auto id = request.is_object() ? request.find("id") : request.end();
  return id != request.end() && canBeId(*id) ? *id : Json(nullptr);
}

const Method& methodOf(const Json& request) {
  const auto invalid = [](const char* message) { return RpcError(RpcCode::InvalidRequest, message); };
  if (request.is_array()) throw invalid("batches are not supported: send one request per line");
  if (!request.is_object()) throw invalid("a request is a JSON object");
  if (request.value("jsonrpc", Json()) != "2.0") throw invalid("\"jsonrpc\" must be \"2.0\"");
  if (!canBeId(request.value("id", Json()))) throw invalid("\"id\" must be a text, a number or null");
  const Json name = request.value("method", Json());
  if (!name.is_string()) throw invalid("\"method\" must be a text");
  for (const Method& method : methods) {
    if (name == method.name) return method;
  }
  throw RpcError(RpcCode::UnknownMethod, "unknown method " + jsonLine(name) +
                                             ": there are create, release, get, put, call, sale, check, "
                                             "close, settle, jobs and describe");
}

// How many brackets are open at once; what stands in texts does not count.
std::size_t depthOf(std::string_view line) {
  std::size_t depth = 0, deepest = 0;
  bool inText = false;
  for (std::size_t index = 0; index < line.size(); ++index) {
    const char c = line[index];
    if (c == '\\' && inText) ++index;
    if (c == '"') inText = !inText;
    if (inText) continue;
    if (c == '[' || c == '{') deepest = std::max(deepest, ++depth);
    if ((c == ']' || c == '}') && depth > 0) --depth;
  }
  return deepest;
}

Json parsed(std::string_view line) {
  if (line.size() > longestLine) throw RpcError(RpcCode::ParseError, "the line is longer than 16 MB");
  // The parser is at ease with any depth, but what it makes is taken apart level by level, on the stack.
  if (depthOf(line) > deepestLine) {
    throw RpcError(RpcCode::ParseError, "the line is nested deeper than 128 levels");
  }
  try {
    return Json::parse(line);
  } catch (const Json::parse_error& error) {
    throw RpcError(RpcCode::ParseError,
                   "the line is not JSON in UTF-8, from byte " + std::to_string(error.byte) + " on");
  } catch (const Json::out_of_range&) {
    throw RpcError(RpcCode::ParseError, "the line has a number that is larger than any double");
  }
}

// A name that is passed over could be a misspelt one: a sale without its id, a close without its type.
Json paramsOf(const Json& request, const Method& method) {
  Json params = request.value("params", Json::object());
  if (!params.is_object()) throw invalidParameters("\"params\" must be a JSON object");
  for (const auto& [name, value] : params.items()) {
    if (std::ranges::find(method.parameters, name) != method.parameters.end() && !name.empty()) continue;
    std::string known;
    for (const std::string_view parameter : method.parameters)
      if (!parameter.empty()) known += (known.empty() ? "" : ", ") + std::string(parameter);
    throw invalidParameters(jsonLine(name) + " is no parameter of " + std::string(method.name) +
                            ", which has: " + known);
  }
  return params;
}

// As it was written: what the line was parsed into keeps doubles, and the last of two members of one name.
till::Node documentIn(std::string_view line) {
  const till::ParsedNode request = till::parseNode(line);
  if (!request.root) throw invalidParameters(request.problem);
  const till::Node* params = request.root->find("params");
  const till::Node* document = params != nullptr ? params->find("document") : nullptr;
  if (document == nullptr) throw invalidParameters("\"document\" is missing in params");
  return *document;
}

std::string error(int code, std::string_view message) {
  return jsonLine({{"code", code}, {"message", message}});
}

/// `about` is the member that raised it, where one was called.
std::string errorOf(const AutomationError& failure, Json data, const Json& about) {
  data.update(about);
  return jsonLine({{"code", failure.number()}, {"message", failure.what()}, {"data", data}});
}

/// What a member raised after it had written into its arguments, which the caller gets all the same.
struct ErrorWithArguments {
  AutomationError error;
  Json arguments;
};

// What `work` returns, or the error that it raised, as the member of the response that it is.
template <class Work>
std::pair<std::string_view, std::string> outcomeOf(const Work& work, const Json& about) {
  try {
    return {"result", work()};
  } catch (const RpcError& failure) {
    return {"error", error(static_cast<int>(failure.code()), failure.what())};
  } catch (const ErrorWithArguments& failure) {
    return {"error", errorOf(failure.error,
                             {{"source", utf8(failure.error.source())}, {"args", failure.arguments}}, about)};
  } catch (const AutomationError& failure) {
    return {"error", errorOf(failure, {{"source", utf8(failure.source())}}, about)};
  } catch (const std::exception& failure) {
    return {"error", error(static_cast<int>(RpcCode::InternalError), failure.what())};
  }
}

}  // namespace

std::string HostSession::answer(std::string_view line) {
  Json id;
  line_ = line;
  about_ = Json::object();
  whenDelivered_ = nullptr;
  const auto [member, outcome] = outcomeOf(
      [&] {
        const Json request = parsed(line);
        id = idOf(request);
        const Method& method = methodOf(request);
        return (this->*method.run)(paramsOf(request, method));
      },
      about_);
  std::string response = R"({"jsonrpc":"2.0","id":)" + jsonLine(id);
  return response.append(",\"").append(member).append("\":").append(outcome) + "}";
}

void HostSession::delivered() {
  if (const auto work = std::exchange(whenDelivered_, nullptr)) work();
}

std::string HostSession::create(const Json& params) {
  return jsonLine({{"object", objects_.idOf(createObject(textParameter(params, "class")))}});
}

std::string HostSession::release(const Json& params) {
  if (!objects_.release(idParameter(params))) throw unknownObject(params);
  return "{}";
}

std::string HostSession::get(const Json& params) {
  return jsonLine({{"value", jsonOf(named(params).get(textParameter(params, "name")), objects_)}});
}

std::string HostSession::put(const Json& params) {
  named(params).put(textParameter(params, "name"), variantOf(parameter(params, "value"), objects_));
  return "{}";
}

std::string HostSession::call(const Json& params) {
  std::vector<Variant> arguments = argumentsOf(params, objects_);
  const Json before = jsonOf(Array(arguments), objects_);
  try {
    const Variant result = named(params).call(textParameter(params, "name"), arguments);
    return jsonLine({{"value", jsonOf(result, objects_)}, {"args", jsonOf(Array(arguments), objects_)}});
  } catch (const AutomationError& error) {
    Json now = jsonOf(Array(arguments), objects_);
    if (now == before) throw;
    throw ErrorWithArguments{error, std::move(now)};
  }
}

std::string HostSession::sale(const Json& params) {
  CZentaro& chosen = printer(params);
  const std::string key = keyParameter(params);
  const bool again = flagParameter(params, "again");
  const till::Node document = documentIn(line_);
  HostVerdict verdict = sellOn(chosen, {document, key, again}, progressOf(params));
  whenDelivered_ = std::move(verdict.delivered);
  return jsonLine(verdict.json);
}

std::string HostSession::check(const Json&) {
  return jsonLine(till::checkedJson(till::check(documentIn(line_))));
}

std::string HostSession::close(const Json& params) {
  const HostClosing closing{textParameter(params, "closing"), keyParameter(params),
                            flagParameter(params, "evenIfUnknown")};
  return jsonLine(closeOn(printer(params), closing, progressOf(params)));
}

std::string HostSession::settle(const Json& params) {
  return jsonLine(settleOn(printer(params), progressOf(params)));
}

std::string HostSession::jobs(const Json& params) {
  if (params.contains("id")) {
    const std::optional<till::Job> job = till::find(keyParameter(params));
    return jsonLine(till::jobsJson(job ? std::vector{*job} : std::vector<till::Job>{}));
  }
  constexpr int usual = 100, highest = 100000;
  const Json most = parameter(params, "most", usual);
  if (!most.is_number_integer() || most < 1 || most > highest)
    throw invalidParameters("\"most\" must be a whole number, 1 to 100000");
  return jsonLine(till::jobsJson(till::jobs(most.get<int>())));
}

CZentaro& HostSession::printer(const Json& params) const {
  const Object& chosen = object(params);
  if (&chosen.description() != findClass("CZentaro"))
    throw invalidParameters("\"object\" must be a Zentaro.CZentaro");
  return *static_cast<CZentaro*>(chosen.instance());
}

std::function<void(std::string_view)> HostSession::progressOf(const Json& params) const {
  if (!flagParameter(params, "progress")) return [](std::string_view) {};
  return [this](std::string_view text) {
    notify_(jsonLine({{"jsonrpc", "2.0"}, {"method", "progress"}, {"params", {{"text", text}}}}));
  };
}

std::string HostSession::describe(const Json& params) {
  const std::string& name = textParameter(params, "class");
  const ClassDescription* description = findClass(name);
  if (description == nullptr) throw invalidParameters("unknown class " + jsonLine(name));
  return classJson(*description, description->members);
}

const Object& HostSession::named(const Json& params) {
  const Object& found = object(params);
  if (!found.isNothing())
    about_ = {{"class", std::string(libraryName) + "." + std::string(found.description().name)},
              {"member", textParameter(params, "name")}};
  return found;
}

const Object& HostSession::object(const Json& params) const {
  const Object* found = objects_.find(idParameter(params));
  if (found == nullptr) throw unknownObject(params);
  return *found;
}

}  // namespace zentaro::tools
