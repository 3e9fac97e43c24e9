// A JSON text as a tree in which numbers keep the text that they were written with, so that 0.1 stays 0.1.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zentaro::till {

struct Node {
  enum class Kind { Null, Boolean, Number, Text, List, Group };
  Kind kind = Kind::Null;
  std::string text;                // of a number or a text; "true" or "false"
  std::vector<Node> items;         // of a list, or the values of a group
  std::vector<std::string> names;  // of a group, one for each item, each once

  /// The item of that name, or null.
  const Node* find(std::string_view name) const;
};

/// "a text", "a list" and so on, for messages.
std::string kindName(Node::Kind kind);

struct ParsedNode {
  std::optional<Node> root;
  std::string problem;  // where and what, when there is no root
};

/// Refuses what is no JSON, a name given twice in one group, and deep nesting.
ParsedNode parseNode(std::string_view json);

}  // namespace zentaro::till
