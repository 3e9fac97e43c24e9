// The calls of a till for C: texts in, texts out, and no exception across.
#include "zentaro_till_c.h"

#include <algorithm>
#include <map>
#include <mutex>

#include "automation/conversions.h"
#include "base/files/json.h"
#include "base/terminal/language.h"
#include "errors.h"
#include "till/course/figures.h"
#include "till/words/call_words.h"
#include "till/words/closing_words.h"
#include "till/words/teller.h"
#include "till/words/verdict_words.h"
#include "till/zentaro_till.h"
#include "values.h"

namespace {

using namespace zentaro;
using terminal::say;

constexpr int invalidArgument = 5, booksFailed = 75;

// The printers that a call is under way on, and whether it is to stop.
class Calls {
 public:
  bool begin(const zentaro_object* printer) {
    const std::lock_guard lock(mutex_);
    return stops_.emplace(printer, false).second;
  }
  void end(const zentaro_object* printer) {
    const std::lock_guard lock(mutex_);
    stops_.erase(printer);
  }
  void stop(const zentaro_object* printer) {
    const std::lock_guard lock(mutex_);
    if (const auto found = stops_.find(printer); found != stops_.end()) found->second = true;
  }
  bool isStopped(const zentaro_object* printer) {
    const std::lock_guard lock(mutex_);
    const auto found = stops_.find(printer);
    return found != stops_.end() && found->second;
  }

 private:
  std::mutex mutex_;
  std::map<const zentaro_object*, bool> stops_;
};

Calls& calls() {
  static auto* const all = new Calls;  // outlives whatever a thread still does when the program ends
  return *all;
}

// A call on a printer. The object lives until it has returned, also when the program releases it meanwhile.
class Call {
 public:
  explicit Call(const zentaro_object* handle) : handle_(handle), object_(c::objectOf(handle)) {
    if (object_.isNothing() || zentaro_class_name(handle) != std::string_view("CZentaro"))
      throw till::WrongUse(say("no es un CZentaro", "is no CZentaro"));
    if (!calls().begin(handle))
      throw till::WrongUse(
          say("la impresora ya tiene una llamada en curso", "the printer has a call under way already"));
  }
  ~Call() { calls().end(handle_); }
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;

  CZentaro& printer() const { return *static_cast<CZentaro*>(object_.instance()); }
  std::string port() const { return std::to_string(toInt32(printer().CommPort)); }
  till::Stop stop() const {
    return {[handle = handle_] { return calls().isStopped(handle); },
            say("detenido por el programa", "stopped by the program")};
  }

 private:
  const zentaro_object* handle_;
  Object object_;
};

// What calls on a printer have in common; `read` takes the options that it alone has.
template <class Options>
Options optionsOf(const char* json, const Call& call, till::Observer* observer,
                  const std::function<void(till::GroupReader&, Options&)>& read) {
  Options made;
  made.stop = call.stop();
  made.observer = observer;
  made.printerName = "COM" + call.port();
  if (json == nullptr) return made;
  const auto [root, problem] = till::parseNode(json);
  if (!root) throw till::WrongUse("options: " + problem);
  till::Problems problems;
  {
    till::GroupReader reader(*root, "options", till::FileLanguage::English, problems);
    constexpr till::NumberRule seconds{0, 0, 86400};
    if (reader.has("wait")) made.wait = std::chrono::seconds(reader.number("wait", seconds));
    if (reader.has("giveUp")) made.giveUp = static_cast<int>(reader.number("giveUp", seconds));
    read(reader, made);
  }
  if (!problems.empty()) throw till::WrongUse(problems.front().path + ": " + problems.front().text);
  return made;
}

std::string idOf(till::GroupReader& reader) {
  return reader.has("id") ? reader.text("id", {till::Presence::Required, 128}) : std::string();
}

till::Say lineTo(zentaro_till_progress progress, void* user) {
  return till::byLine([=](std::string_view line) {
    if (progress != nullptr) progress(user, std::string(line).c_str());
  });
}

template <class Work>
int32_t answered(zentaro_value* result, const Work& work) noexcept {
  // cppcheck-suppress throwInNoexceptFunction ; guarded catches it
  return c::guarded([&] {
    try {
      c::replace(*result, c::textValue(jsonLine(work())));
    } catch (const till::WrongUse& error) {
      throw AutomationError(invalidArgument, u"Zentaro", utf16(error.what()));
    } catch (const till::BooksError& error) {
      throw AutomationError(booksFailed, u"Zentaro", utf16(error.what()));
    }
  });
}

till::Kind kindOf(std::string_view closing) {
  if (closing == "Z" || closing == "z") return till::Kind::Z;
  if (closing == "X" || closing == "x") return till::Kind::X;
  throw till::WrongUse(say("un cierre es \"X\" o \"Z\"", "a closing is \"X\" or \"Z\""));
}

}  // namespace

int32_t zentaro_till_sell(zentaro_object* printer, const char* document, const char* options,
                          zentaro_till_progress progress, void* user, zentaro_value* verdict) {
  return answered(verdict, [&] {
    const Call call(printer);
    till::Teller teller(lineTo(progress, user), lineTo(progress, user));
    const auto read = [](till::GroupReader& reader, till::SellOptions& made) {
      made.id = idOf(reader);
      made.again = reader.flag("again");
    };
    const auto made = optionsOf<till::SellOptions>(options, call, &teller, read);
    return till::verdictJson(till::sell(call.printer(), till::documentOf(document), made),
                             {"--port " + call.port()});
  });
}

int32_t zentaro_till_check(const char* document, zentaro_value* result) {
  return answered(result, [&] { return till::checkedJson(till::check(document)); });
}

int32_t zentaro_till_close(zentaro_object* printer, const char* closing, const char* options,
                           zentaro_till_progress progress, void* user, zentaro_value* verdict) {
  return answered(verdict, [&] {
    const till::Kind kind = kindOf(closing);
    const Call call(printer);
    till::Teller teller(lineTo(progress, user), lineTo(progress, user));
    const auto read = [](till::GroupReader& reader, till::CloseOptions& made) {
      made.id = idOf(reader);
      made.evenIfUnknown = reader.flag("evenIfUnknown");
    };
    const auto made = optionsOf<till::CloseOptions>(options, call, &teller, read);
    const till::ClosingVerdict closed = till::close(call.printer(), kind, made);
    Json json = till::closingJson(closed, {"--port " + call.port()});
    json["figures"] = closed.figures ? till::figuresJson(*closed.figures) : Json(nullptr);
    return json;
  });
}

int32_t zentaro_till_settle(zentaro_object* printer, const char* options, zentaro_till_progress progress,
                            void* user, zentaro_value* result) {
  return answered(result, [&] {
    const Call call(printer);
    till::Teller teller(lineTo(progress, user), lineTo(progress, user));
    const auto made =
        optionsOf<till::Options>(options, call, &teller, [](till::GroupReader&, till::Options&) {});
    return till::settledJson(till::settle(call.printer(), made));
  });
}

int32_t zentaro_till_jobs(const char* id, int32_t most, zentaro_value* result) {
  return answered(result, [&] {
    if (id == nullptr) return till::jobsJson(till::jobs(std::max(most, 0)));
    const auto job = till::find(id);
    return till::jobsJson(job ? std::vector{*job} : std::vector<till::Job>());
  });
}

void zentaro_till_stop(const zentaro_object* printer) { calls().stop(printer); }
