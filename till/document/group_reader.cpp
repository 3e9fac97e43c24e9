// Members of a group, checked one by one.
#include "till/document/group_reader.h"

#include <algorithm>

#include "base/terminal/language.h"
#include "text/unicode.h"

namespace zentaro::till {

using terminal::say;

namespace {

bool hasControlCharacter(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](unsigned char c) { return c < 32 || c == 127; });
}

std::string joined(const std::set<std::string, std::less<>>& names) {
  std::string all;
  for (const std::string& name : names) all += (all.empty() ? "" : ", ") + name;
  return all;
}

// A text such as "1.250" comes from a program that writes amounts with two decimals and groups digits by points,
// or from one that writes three decimals.
std::string twoReadings(const Node& node, const NumberRule& rule) {
  const std::string& text = node.text;
  const std::size_t point = text.find('.');
  const bool isDoubtful = node.kind == Node::Kind::Text && rule.decimals == 2 && point != std::string::npos &&
                          text.size() - point == 4 && readDecimal(text, 3).problem.empty();
  if (!isDoubtful) return {};
  return say(
      "puede ser {} o {}; escriba dos decimales a lo sumo", "may be {} or {}; write two decimals at most",
      {shortDecimalText(readDecimal(text, 3).value, 3), text.substr(0, point) + text.substr(point + 1)});
}

// "12,50" is meant as 12.50, while "1,250" may be meant as either.
std::string commaReadings(const std::string& text) {
  constexpr int mostDecimals = 4;
  const std::size_t comma = text.find(',');
  if (comma == std::string::npos) return {};
  const std::string decimal = text.substr(0, comma) + "." + text.substr(comma + 1);
  const std::string whole = text.substr(0, comma) + text.substr(comma + 1);
  if (!readDecimal(decimal, mostDecimals).problem.empty() ||
      text.find_first_of(",.", comma + 1) != std::string::npos)
    return {};
  if (text.size() - comma == 4)
    return say("tiene una coma y puede ser {} o {}; escríbalo con punto, o sin él",
               "has a comma and may be {} or {}; write it with a point, or without", {decimal, whole});
  return say("tiene una coma; si es {}, escríbalo con punto",
             "has a comma; if it is {}, write it with a point", {decimal});
}

bool isScalar(const Node& node) { return node.kind == Node::Kind::Number || node.kind == Node::Kind::Text; }

std::string isKind(const Node& node, std::string_view spanish, std::string_view english) {
  return say("es {}; escriba {}", "is {}; write {}", {kindName(node.kind), say(spanish, english)});
}

}  // namespace

GroupReader::GroupReader(const Node& node, std::string path, FileLanguage language, Problems& problems)
    : node_(node), path_(std::move(path)), language_(language), problems_(problems) {
  if (node.kind != Node::Kind::Group)
    problems_.push_back({path_, isKind(node, "un grupo entre llaves", "a group in braces")});
}

GroupReader::~GroupReader() {
  for (const std::string& name : node_.names) {
    if (asked_.contains(name)) continue;
    const std::string_view meant = translatedName(name, language_);
    problems_.push_back(
        {pathOf(name),
         asked_.contains(meant)
             ? say("está en otro idioma que el resto del archivo; escriba {}",
                   "is in another language than the rest of the file; write {}", {meant})
             : say("no se conoce aquí; se conocen {}", "is not known here; known are {}", {joined(asked_)})});
  }
}

bool GroupReader::has(std::string_view name) const {
  return std::ranges::find(node_.names, memberName(name, language_)) != node_.names.end();
}

const Node* GroupReader::find(std::string_view name) {
  const std::string_view nameInFile = memberName(name, language_);
  asked_.emplace(nameInFile);
  const auto found = std::ranges::find(node_.names, nameInFile);
  if (found == node_.names.end()) return nullptr;
  return &node_.items[static_cast<std::size_t>(found - node_.names.begin())];
}

std::string GroupReader::text(std::string_view name, const TextRule& rule) {
  const Node* node = find(name);
  if (node != nullptr) return readText(*node, path(name), rule, problems_);
  if (rule.presence == Presence::Required && node_.kind == Node::Kind::Group)
    report(name, say("falta; escriba un texto", "is missing; write a text"));
  return {};
}

std::int64_t GroupReader::number(std::string_view name, const NumberRule& rule) {
  const Node* node = find(name);
  if (node == nullptr) {
    if (node_.kind == Node::Kind::Group)
      report(name, say("falta; escriba un número", "is missing; write a number"));
    return 0;
  }
  if (!isScalar(*node)) {
    report(name, isKind(*node, "un número", "a number"));
    return 0;
  }
  const DecimalReading reading = readDecimal(node->text, rule.decimals);
  std::string problem = twoReadings(*node, rule);
  if (problem.empty()) problem = commaReadings(node->text);
  if (problem.empty()) problem = reading.problem;
  if (problem.empty() && (reading.value < rule.least || reading.value > rule.most))
    problem = say("está fuera de {} a {}", "is outside {} to {}",
                  {shortDecimalText(rule.least, rule.decimals), shortDecimalText(rule.most, rule.decimals)});
  if (!problem.empty()) report(name, "\"" + node->text + "\" " + problem);
  return reading.value;
}

bool GroupReader::flag(std::string_view name) {
  const Node* node = find(name);
  if (node != nullptr && node->kind != Node::Kind::Boolean)
    report(name, isKind(*node, "true o false", "true or false"));
  return node != nullptr && node->text == "true";
}

const std::vector<Node>& GroupReader::list(std::string_view name) {
  static const std::vector<Node> none;
  const Node* node = find(name);
  if (node == nullptr) return none;
  if (node->kind == Node::Kind::List) return node->items;
  report(name, isKind(*node, "una lista entre corchetes", "a list in brackets"));
  return none;
}

void GroupReader::report(std::string_view name, std::string text) {
  problems_.push_back({path(name), std::move(text)});
}

std::string GroupReader::path(std::string_view name) const { return pathOf(memberName(name, language_)); }

std::string GroupReader::pathOf(std::string_view nameInFile) const {
  return path_.empty() ? std::string(nameInFile) : path_ + "." + std::string(nameInFile);
}

std::string readText(const Node& node, const std::string& path, const TextRule& rule, Problems& problems) {
  const auto problem = [&](std::string text) {
    problems.push_back({path, std::move(text)});
    return std::string();
  };
  if (!isScalar(node)) return problem(isKind(node, "un texto", "a text"));
  if (node.text.find_first_not_of(' ') == std::string::npos && rule.presence == Presence::Required)
    return problem(say("está vacío; escriba un texto", "is empty; write a text"));
  if (hasControlCharacter(node.text))
    return problem(say("tiene un carácter de control, como un salto de línea o un tabulador; quítelo",
                       "holds a control character such as a line end or a tab; remove it"));
  if (rule.longest != 0 && utf16(node.text).size() > rule.longest)
    return problem(say("tiene más de {} caracteres; acórtelo", "is longer than {} characters; shorten it",
                       {std::to_string(rule.longest)}));
  return node.text;
}

std::string indexed(std::string_view path, std::size_t index) {
  return std::string(path) + "[" + std::to_string(index) + "]";
}

}  // namespace zentaro::till
