// The file of tokens, and its reading while it changes.
#include "service/http/tokens.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <stdexcept>

#include "base/files/careful_file.h"
#include "base/files/json.h"
#include "base/files/paths.h"
#include "base/system/environment.h"
#include "base/system/places.h"
#include "base/system/private_file.h"
#include "base/system/random.h"
#include "base/system/shared_file.h"
#include "base/terminal/language.h"

namespace zentaro::service {

using terminal::say;

namespace {

constexpr std::array names{std::pair{Right::Sell, "sell"}, std::pair{Right::Close, "close"},
                           std::pair{Right::Resolve, "resolve"}, std::pair{Right::Read, "read"}};

Token tokenFrom(const Json& json) {
  return {json.at("name"), json.at("sha256"), rightsFrom(json.at("rights")), json.value("only", "")};
}

}  // namespace

std::string_view nameOf(Right right) {
  return std::find_if(names.begin(), names.end(), [&](const auto& row) { return row.first == right; })
      ->second;
}

std::set<Right> rightsFrom(const std::string& list) {
  std::set<Right> rights;
  for (std::size_t begin = 0; begin <= list.size();) {
    const std::size_t end = std::min(list.find(',', begin), list.size());
    const std::string word = list.substr(begin, end - begin);
    const auto row =
        std::find_if(names.begin(), names.end(), [&](const auto& known) { return word == known.second; });
    if (row == names.end())
      throw std::runtime_error(say("\"{}\" no es un permiso; hay sell, close, resolve y read, con comas",
                                   "\"{}\" is no right; there are sell, close, resolve and read, with commas",
                                   {word}));
    rights.insert(row->first);
    begin = end + 1;
  }
  return rights;
}

std::string listOf(const std::set<Right>& rights) {
  std::string list;
  for (const Right right : rights) list += (list.empty() ? "" : ",") + std::string(nameOf(right));
  return list;
}

std::string TokenFile::add(const std::string& name, std::set<Right> rights, const std::string& only) {
  std::vector<Token> tokens = list();
  if (std::any_of(tokens.begin(), tokens.end(), [&](const Token& token) { return token.name == name; }))
    throw std::runtime_error(
        say("ya hay un token de nombre \"{}\"; quítelo primero con token remove, o dé otro nombre",
            "there is a token named \"{}\"; take it away first with token remove, or give another "
            "name",
            {name}));
  constexpr std::size_t bytes = 24;
  std::string secret = "zt_" + system::randomHex(bytes);
  tokens.push_back({name, sha256(secret), std::move(rights), only});
  write(tokens);
  return secret;
}

bool TokenFile::remove(const std::string& name) {
  std::vector<Token> tokens = list();
  const auto gone =
      std::remove_if(tokens.begin(), tokens.end(), [&](const Token& token) { return token.name == name; });
  if (gone == tokens.end()) return false;
  tokens.erase(gone, tokens.end());
  write(tokens);
  return true;
}

std::vector<Token> TokenFile::list() const {
  std::vector<Token> tokens;
  const std::optional<std::string> content = base::contentOf(files::pathOf(path_));
  if (!content) return tokens;
  try {
    const Json whole = Json::parse(*content);
    for (const Json& token : whole.at("tokens")) tokens.push_back(tokenFrom(token));
  } catch (const std::exception& error) {
    throw std::runtime_error(say("los tokens de {} no se entienden ({}); quite el archivo y haga otros",
                                 "the tokens of {} make no sense ({}); remove the file and make others",
                                 {path_, error.what()}));
  }
  return tokens;
}

void TokenFile::write(const std::vector<Token>& tokens) const {
  Json list = Json::array();
  for (const Token& token : tokens)
    list.push_back({{"name", token.name},
                    {"sha256", token.digest},
                    {"rights", listOf(token.rights)},
                    {"only", token.only}});
  const std::filesystem::path file = files::pathOf(path_);
  system::makeFolders(file.parent_path());
  system::makePrivate(file);
  base::replaceFile(file, jsonPage({{"tokens", list}}));
  system::leaveToOwnerOfFolder(file);
}

std::string tokensPath() {
  // The unit's own folder; an administrator who adds a token is told of it by the folder alone.
  if (const std::string folder = system::variable("STATE_DIRECTORY"); folder.starts_with('/'))
    return folder + "/tokens.json";
  std::filesystem::path machines = system::machineStateFolder();
  machines += "-serve";
  return files::textOf((std::filesystem::exists(machines) ? machines : system::userStateFolder()) /
                       "tokens.json");
}

Tokens::Tokens(std::string path, const std::string& own) : file_{std::move(path)} {
  if (!own.empty())
    own_.push_back({"-", sha256(own), {Right::Sell, Right::Close, Right::Resolve, Right::Read}, ""});
}

void Tokens::readAgain() {
  const std::string look = system::lookOf(files::pathOf(file_.path()));
  if (look == seen_) return;
  tokens_ = file_.list();  // raises for one that makes no sense: then nobody is let in
  seen_ = look;
}

std::optional<Token> Tokens::find(std::string_view authorization) {
  constexpr std::string_view scheme = "Bearer ";
  if (authorization.size() <= scheme.size() ||
      !std::equal(scheme.begin(), scheme.end(), authorization.begin(), [](char wanted, char given) {
        return wanted == given || (wanted >= 'A' && wanted <= 'Z' && wanted + 32 == given);
      }))
    return std::nullopt;
  const std::string digest = sha256(authorization.substr(scheme.size()));
  const std::lock_guard lock{mutex_};
  readAgain();
  for (const std::vector<Token>* tokens : {&own_, &tokens_})
    for (const Token& token : *tokens)
      if (token.digest == digest) return token;
  return std::nullopt;
}

}  // namespace zentaro::service
