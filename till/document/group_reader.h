// Reads the members of a group of the file, and notes everything that is wrong with them under their path.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "till/document/decimal.h"
#include "till/document/member_names.h"
#include "till/document/node.h"

namespace zentaro::till {

struct Problem {
  std::string path;  // "lines[2].price"; empty for the whole file
  std::string text;
};
using Problems = std::vector<Problem>;

enum class Presence { Required, Optional };

struct TextRule {
  Presence presence = Presence::Required;
  std::size_t longest = 0;  // characters; 0: any length
};

struct NumberRule {
  int decimals = 2;
  std::int64_t least = 0, most = 0;  // times ten to the power of the decimals
};

/// Reports members that nobody asked for at the end of its life. The node and the problems must outlive it.
class GroupReader {
 public:
  GroupReader(const Node& node, std::string path, FileLanguage language, Problems& problems);
  ~GroupReader();
  GroupReader(const GroupReader&) = delete;
  GroupReader& operator=(const GroupReader&) = delete;

  // Members are asked for by their English names, whatever the language of the file.
  bool has(std::string_view name) const;
  /// The member, or null when it is absent.
  const Node* find(std::string_view name);
  std::string text(std::string_view name, const TextRule& rule);
  /// A number that must be there, or a text that is one.
  std::int64_t number(std::string_view name, const NumberRule& rule);
  /// true or false; false when it is absent.
  bool flag(std::string_view name);
  /// The items of a list; an absent one is empty.
  const std::vector<Node>& list(std::string_view name);

  /// Notes a problem with a member.
  void report(std::string_view name, std::string text);
  std::string path(std::string_view name) const;

 private:
  std::string pathOf(std::string_view nameInFile) const;

  const Node& node_;
  std::string path_;
  FileLanguage language_;
  Problems& problems_;
  std::set<std::string, std::less<>> asked_;
};

/// The text of a node, which may also be a number; problems are noted under `path`.
std::string readText(const Node& node, const std::string& path, const TextRule& rule, Problems& problems);

std::string indexed(std::string_view path, std::size_t index);

}  // namespace zentaro::till
