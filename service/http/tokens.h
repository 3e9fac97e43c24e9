// Who may do what: one token for each client, of which only the SHA-256 is kept.
#pragma once

#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace zentaro::service {

enum class Right { Sell, Close, Resolve, Read };

std::string_view nameOf(Right right);
/// The rights of a list such as "sell,read"; raises std::runtime_error for another word.
std::set<Right> rightsFrom(const std::string& list);
std::string listOf(const std::set<Right>& rights);

struct Token {
  std::string name;    // of the client
  std::string digest;  // SHA-256, in hexadecimal digits
  std::set<Right> rights;
  std::string only;  // the one printer that it may use and see; empty: all

  bool may(Right right) const { return rights.contains(right); }
  bool sees(std::string_view printer) const { return only.empty() || only == printer; }
};

/// The file of the tokens, mode 0600. Every failure is a std::runtime_error that names it. Whoever changes it
/// leaves it to the owner of its folder, so that an administrator does not lock the service out.
class TokenFile {
 public:
  explicit TokenFile(std::string path) : path_(std::move(path)) {}

  /// The new token, which cannot be had again later. The name must be free.
  std::string add(const std::string& name, std::set<Right> rights, const std::string& only);
  /// False when there is none of that name.
  bool remove(const std::string& name);
  std::vector<Token> list() const;

  const std::string& path() const { return path_; }

 private:
  void write(const std::vector<Token>& tokens) const;

  std::string path_;
};

/// What a service lets in: looks at the file again whenever it has changed. For many threads.
class Tokens {
 public:
  /// `own` is a token of this run alone, with all rights; empty for none.
  Tokens(std::string path, const std::string& own);

  /// Of a request's Authorization header.
  std::optional<Token> find(std::string_view authorization);

 private:
  void readAgain();

  TokenFile file_;
  std::vector<Token> own_;
  std::mutex mutex_;
  std::string seen_;  // what the file looked like when it was read
  std::vector<Token> tokens_;
};

/// $STATE_DIRECTORY/tokens.json, which the unit sets; /var/lib/zentaro-serve where that folder is; else the user's.
std::string tokensPath();

std::string sha256(std::string_view text);

}  // namespace zentaro::service
