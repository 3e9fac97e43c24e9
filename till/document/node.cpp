// From JSON text to the tree, event by event.
#include "till/document/node.h"

#include <algorithm>

#include "base/files/json.h"
#include "base/files/json_problem.h"
#include "base/terminal/language.h"

namespace zentaro::till {

using terminal::say;

namespace {

constexpr std::size_t deepest = 16;

/// Takes the parser's events. A value that is ready is put into the group or list that is open.
class TreeBuilder : public nlohmann::json_sax<Json> {
 public:
  bool null() override { return put({}); }
  bool boolean(bool value) override { return put({Node::Kind::Boolean, value ? "true" : "false", {}, {}}); }
  bool number_integer(Json::number_integer_t value) override { return number(std::to_string(value)); }
  bool number_unsigned(Json::number_unsigned_t value) override { return number(std::to_string(value)); }
  bool number_float(Json::number_float_t, const std::string& asWritten) override { return number(asWritten); }
  bool string(std::string& value) override { return put({Node::Kind::Text, value, {}, {}}); }
  bool binary(Json::binary_t&) override { return false; }
  bool start_object(std::size_t) override { return open(Node::Kind::Group); }
  bool key(std::string& name) override {
    std::vector<std::string>& names = open_.back().names;
    if (std::find(names.begin(), names.end(), name) != names.end())
      return fail(say("el nombre \"{}\" está dos veces en un grupo; deje uno",
                      "the name \"{}\" stands twice in one group; keep one of them", {name}));
    names.push_back(name);
    return true;
  }
  bool end_object() override { return close(); }
  bool start_array(std::size_t) override { return open(Node::Kind::List); }
  bool end_array() override { return close(); }
  bool parse_error(std::size_t position, const std::string&, const Json::exception& error) override {
    const bool isUtf16 = text_.starts_with('\xFF') || text_.starts_with('\xFE');
    return fail(base::jsonProblem(text_, position, isUtf16 ? "UTF-8" : error.what()));
  }

  explicit TreeBuilder(std::string_view text) : text_(text) {}

  ParsedNode result() && {
    if (!problem_.empty()) return {std::nullopt, problem_};
    return {std::move(root_), {}};
  }

 private:
  bool number(std::string asWritten) { return put({Node::Kind::Number, std::move(asWritten), {}, {}}); }

  bool put(Node node) {
    if (open_.empty())
      root_ = std::move(node);
    else
      open_.back().items.push_back(std::move(node));
    return true;
  }

  bool open(Node::Kind kind) {
    if (open_.size() == deepest)
      return fail(say("grupos y listas están demasiado anidados", "groups and lists are nested too deeply"));
    open_.push_back({kind, {}, {}, {}});
    return true;
  }

  bool close() {
    Node ready = std::move(open_.back());
    open_.pop_back();
    return put(std::move(ready));
  }

  bool fail(std::string problem) {
    problem_ = std::move(problem);
    return false;
  }

  std::string_view text_;
  std::vector<Node> open_;
  std::optional<Node> root_;
  std::string problem_;
};

}  // namespace

const Node* Node::find(std::string_view name) const {
  const auto found = std::find(names.begin(), names.end(), name);
  return found == names.end() ? nullptr : &items[static_cast<std::size_t>(found - names.begin())];
}

std::string kindName(Node::Kind kind) {
  switch (kind) {
    case Node::Kind::Null: return "null";
    case Node::Kind::Boolean: return say("true o false", "true or false");
    case Node::Kind::Number: return say("un número", "a number");
    case Node::Kind::Text: return say("un texto", "a text");
    case Node::Kind::List: return say("una lista", "a list");
    case Node::Kind::Group: return say("un grupo", "a group");
  }
  return {};
}

ParsedNode parseNode(std::string_view json) {
  TreeBuilder builder(json);
  Json::sax_parse(json.begin(), json.end(), &builder);
  return std::move(builder).result();
}

}  // namespace zentaro::till
