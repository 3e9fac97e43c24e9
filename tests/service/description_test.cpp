// The description of the resources beside recorded answers, both ways: nothing is answered that it does not say, and
// it says nothing that is never answered.
#include <gtest/gtest.h>

#include <set>

#include "service/shop.h"

namespace zentaro::service {
namespace {

using testing::Answered;

class Description : public testing::Shop {
 protected:
  const Json& behind(const Json& schema) const {
    if (!schema.contains("$ref")) return schema;
    return description.at(Json::json_pointer(schema["$ref"].get<std::string>().substr(1)));
  }

  void check(const Json& schema, const Json& value, const std::string& place) {
    if (schema.contains("$ref") && value.is_object()) {
      for (const auto& [name, member] : value.items()) seen[schema["$ref"]].insert(name);
    }
    const Json& rule = behind(schema);
    if (rule.contains("anyOf")) {
      if (!value.is_null()) check(rule["anyOf"][0], value, place);
      return;
    }
    if (rule.contains("enum")) {
      EXPECT_NE(std::find(rule["enum"].begin(), rule["enum"].end(), value), rule["enum"].end())
          << place << value;
      return;
    }
    const std::string type = value.is_object()    ? "object"
                             : value.is_array()   ? "array"
                             : value.is_string()  ? "string"
                             : value.is_boolean() ? "boolean"
                             : value.is_null()    ? "null"
                                                  : "integer";
    const bool isListed = rule["type"].is_array() ? std::find(rule["type"].begin(), rule["type"].end(),
                                                              type) != rule["type"].end()
                                                  : rule["type"] == type;
    EXPECT_TRUE(isListed) << place << " is " << type;
    if (type == "array")
      for (const Json& item : value) check(rule["items"], item, place + "[]");
    if (type != "object" || !rule.contains("properties")) return;
    for (const auto& [name, member] : value.items()) {
      ASSERT_TRUE(rule["properties"].contains(name)) << place << "." << name << " is not described";
      check(rule["properties"][name], member, place + "." + name);
    }
  }

  void record(const std::string& method, const std::string& path, const Answered& answer) {
    const Json& operation = description["paths"][path][method];
    asked.insert(method + " " + path);
    const std::string code = std::to_string(answer.status);
    ASSERT_TRUE(operation["responses"].contains(code)) << method << " " << path << " gives " << code;
    const Json& response = behind(operation["responses"][code]);
    if (!response.contains("content")) return;
    const Json& content = *response["content"].begin();
    if (content.contains("schema")) check(content["schema"], answer.body, path);
  }

  Json description;
  std::map<std::string, std::set<std::string>> seen;
  std::set<std::string> asked;
};

TEST_F(Description, SaysWhatIsAnswered) {
  printer("caja1");
  serve();
  description = ask("GET /openapi.json").body;
  const std::string id = "/v1/jobs/{id}", finding = "/v1/jobs/{id}/finding";
  fault("caja1", "delay=0.5 on item");
  record("put", id, put("F-1", sale("caja1")));
  ASSERT_TRUE(testing::eventually([&] { return ask("GET /v1/printers/caja1").body["running"].is_object(); }));
  record("get", "/v1/printers/{name}", ask("GET /v1/printers/caja1"));
  record("get", id, get("F-1", 30));
  record("put", id, put("F-1", sale("caja1", "Other")));
  record("put", id, put("F-2", R"({"printer":"caja1","sale":{}})"));
  record("put", id, put("Z-1", closing("caja1", "Z"), 30));
  record("get", id, get("none"));
  record("delete", id, ask("DELETE /v1/jobs/F-1"));
  record("put", finding, ask("PUT /v1/jobs/F-1/finding", R"({"printed":false})"));
  record("get", "/v1/jobs", ask("GET /v1/jobs?after=0"));
  record("get", "/v1/jobs", ask("GET /v1/jobs?latest=5&search=F-1&state=printed"));
  record("get", "/v1/jobs", ask("GET /v1/jobs?state=lost"));
  const std::string wish = sale("caja1", "Descripcion mas larga que el papel de la impresora");
  record("post", "/v1/check", ask("POST /v1/check", "{" + wish.substr(wish.find("\"sale\""))));
  record("get", "/v1/printers", ask("GET /v1/printers?fresh=1"));
  record("get", "/v1/printers/{name}/day", ask("GET /v1/printers/caja1/day"));
  record("get", "/v1/tills", ask("GET /v1/tills"));
  record("get", "/health", ask("GET /health"));
  record("get", "/metrics", ask("GET /metrics"));
  asked.insert("get /v1/events");  // read in a test of its own
  token = "none";
  record("get", "/v1/printers", ask("GET /v1/printers"));

  for (const auto& [path, operations] : description["paths"].items())
    for (const auto& [method, operation] : operations.items()) {
      const bool isOperation = method != "parameters";
      EXPECT_TRUE(!isOperation || asked.contains(method + " " + path)) << path;
    }
  for (const char* name : {"Job", "Jobs", "Checked", "Place", "Running", "Printer", "Printers", "Bases",
                           "Figures", "Health", "Problem"})
    for (const auto& [member, rule] : description["components"]["schemas"][name]["properties"].items())
      EXPECT_TRUE(seen["#/components/schemas/" + std::string(name)].contains(member))
          << name << "." << member;
}

}  // namespace
}  // namespace zentaro::service
