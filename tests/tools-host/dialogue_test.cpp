// Dialogues over the line protocol: requests, and the responses word for word, on a scripted line.
#include <gtest/gtest.h>

#include "host/session.h"
#include "support/line.h"

namespace zentaro::tools {
namespace {

/// A session in which object 1 is a CZentaro and object 2 a statusHASAR.
class Dialogue : public ::testing::Test {
 protected:
  Dialogue() {
    services_.serial = &line;
    scope_ = std::make_unique<ServicesScope>(services_);
    EXPECT_EQ(ask("create", R"({"class":"Zentaro.CZentaro"})"), R"({"object":1})");
    EXPECT_EQ(ask("create", R"({"class":"statushasar"})"), R"({"object":2})");
  }

  /// The result; or the code of the error, its message, and its source if it is an error of the library.
  std::string ask(const std::string& method, const std::string& params) {
    const Json response = Json::parse(
        session.answer(R"({"jsonrpc":"2.0","id":7,"method":")" + method + R"(","params":)" + params + "}"));
    EXPECT_EQ(response["jsonrpc"], "2.0");
    EXPECT_EQ(response["id"], 7);
    if (response.contains("result")) return response["result"].dump();
    const Json& error = response["error"];
    std::string text = error["code"].dump() + " " + error["message"].get<std::string>();
    if (error.contains("data")) text += " (" + error["data"]["source"].get<std::string>() + ")";
    return text;
  }

  zentaro::testing::FakePlatform platform;
  zentaro::testing::FakeLine line{platform.clock};

 private:
  Services services_ = services();
  std::unique_ptr<ServicesScope> scope_;

 protected:
  HostSession session;  // ends before its services do
};

struct Row {
  const char* name;
  const char* method;
  const char* params;
  const char* outcome;  // an error is compared as far as it is given here
};

class Requests : public Dialogue, public ::testing::WithParamInterface<Row> {};

TEST_P(Requests, AreAnswered) {
  const std::string expected = GetParam().outcome;
  const std::string outcome = ask(GetParam().method, GetParam().params);
  EXPECT_EQ(expected[0] == '{' ? outcome : outcome.substr(0, expected.size()), expected);
}

constexpr Row rows[] = {
    {"get", "get", R"({"object":1,"name":"PrinterType"})", R"({"value":"EPSON TMU"})"},
    {"get in any case", "get", R"({"object":1,"name":"printertype"})", R"({"value":"EPSON TMU"})"},
    {"Int16 is an integer", "call", R"({"object":1,"name":"MaxResponse","args":[]})",
     R"({"value":-1,"args":[]})"},
    {"args may be left out", "call", R"({"object":1,"name":"CierreZ"})", R"({"value":-1,"args":[]})"},
    {"only the given args come back", "call", R"({"object":1,"name":"IniciarFactura","args":["Ana"]})",
     R"({"value":-1,"args":["Ana"]})"},
    {"frame, by hand: 02+22+42+1C+61+1C+31+03 = 133", "call",
     R"({"object":1,"name":"BuildOMB","args":[66,["a",1]]})",
     R"({"value":"\u0002\"B\u001ca\u001c1\u00030133","args":[66,["a",1]]})"},
    {"a record from a method", "call",
     R"({"object":2,"name":"LoadFromResponse","args":[["C080","3600","0","1","12","0","3","4"]]})",
     R"({"value":{"type":"empty"},"args":[["C080","3600","0","1","12","0","3","4"]]})"},
    {"null object", "call", R"({"object":1,"name":"GetResultadoCierre"})",
     R"({"value":{"type":"nothing"},"args":[]})"},

    {"create what cannot be created", "create", R"({"class":"Zentaro.statusN"})", "429 "},
    {"create an unknown class", "create", R"({"class":"Zentaro.Other"})", "429 "},
    {"create without class", "create", "{}", R"(-32602 "class" is missing)"},
    {"create with a number", "create", R"({"class":1})", R"(-32602 "class" must be a text)"},
    {"unknown object", "get", R"({"object":3,"name":"CommPort"})", "-32602 no object 3"},
    {"object that no table can have", "get", R"({"object":99999999999,"name":"CommPort"})",
     "-32602 no object 9999"},
    {"object as text", "get", R"({"object":"1","name":"CommPort"})", R"(-32602 "object" must be)"},
    {"object with a fraction", "get", R"({"object":1.0,"name":"CommPort"})", R"(-32602 "object" must be)"},
    {"release twice", "release", R"({"object":3})", "-32602 no object 3"},
    {"unknown name", "get", R"({"object":1,"name":"Nope"})", "438 "},
    {"get a method", "get", R"({"object":1,"name":"CierreZ"})", "438 "},
    {"put a method", "put", R"({"object":1,"name":"CierreZ","value":1})", "438 "},
    {"put what is read-only", "put", R"({"object":1,"name":"PrinterType","value":1})", "438 "},
    {"call a property", "call", R"({"object":1,"name":"CommPort"})", "438 "},
    {"put without value", "put", R"({"object":1,"name":"CommPort"})", R"(-32602 "value" is missing)"},
    {"args that are no array", "call", R"({"object":1,"name":"CierreZ","args":{}})",
     R"(-32602 "args" must be)"},
    {"too many args", "call", R"({"object":1,"name":"CierreZ","args":[1]})", "450 "},
    {"a value that does not convert", "put", R"({"object":1,"name":"isPortOpen","value":"x"})", "13 "},
    {"Null where none may be", "put", R"({"object":1,"name":"nLastCommand","value":null})", "94 "},
    {"overflow", "put", R"({"object":1,"name":"nLastCommand","value":32768})", "6 "},
    {"a port that is not assigned", "put", R"({"object":1,"name":"PortOpen","value":true})",
     "40001 Puerto serial no asignado (CZentaro.Let PortOpen)"},
    {"params that are no object", "get", "[1]", R"(-32602 "params" must be)"},
    {"sale on a record", "sale", R"({"object":2,"document":{}})",
     R"(-32602 "object" must be a Zentaro.CZentaro)"},
    {"sale of nothing", "sale", R"({"object":1,"document":{}})",
     R"(-32602 "document" is not in order, nothing was sent: )"},
    {"sale on a closed port", "sale",
     R"({"object":1,"document":{"document":"invoice","lines":[{"description":"a","price":0,"tax":0}]}})",
     "-32602 the port of the object is closed"},
    {"unknown method", "destroy", "{}", R"(-32601 unknown method "destroy")"},
    {"describe an unknown class", "describe", R"({"class":"Nope"})", R"(-32602 unknown class "Nope")"},
};
INSTANTIATE_TEST_SUITE_P(Host, Requests, ::testing::ValuesIn(rows),
                         [](const auto& row) { return "row" + std::to_string(row.index); });
void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

TEST_F(Dialogue, AnswersWhatIsNoRequest) {
  const std::pair<std::string, std::string> lines[] = {
      {"", R"("id":null,"error":{"code":-32700)"},
      {"{", R"("id":null,"error":{"code":-32700)"},
      {"{\"jsonrpc\":\"2.0\",\"id\":\"\xFF\"}", R"("id":null,"error":{"code":-32700)"},
      {R"(["\ud800"])", R"("id":null,"error":{"code":-32700)"},
      {"[]", R"("id":null,"error":{"code":-32600)"},
      {"7", R"("id":null,"error":{"code":-32600)"},
      {R"({"id":7,"method":"create"})", R"("id":7,"error":{"code":-32600)"},
      {R"({"jsonrpc":2.0,"id":7,"method":"create"})", R"("id":7,"error":{"code":-32600)"},
      {R"({"jsonrpc":"2.0","id":7})", R"("id":7,"error":{"code":-32600)"},
      {R"({"jsonrpc":"2.0","id":7,"method":1})", R"("id":7,"error":{"code":-32600)"},
      {R"({"jsonrpc":"2.0","id":[7],"method":"create"})", R"("id":null,"error":{"code":-32600)"},
      {R"({"jsonrpc":"2.0","id":"a","method":"create"})", R"("id":"a","error":{"code":-32602)"},
      {R"({"jsonrpc":"2.0","method":"release","params":{"object":2}})", R"("id":null,"result":{}})"},
  };
  for (const auto& [request, response] : lines) {
    const std::string start = R"({"jsonrpc":"2.0",)" + response;
    EXPECT_EQ(session.answer(request).substr(0, start.size()), start) << request;
  }
  EXPECT_EQ(ask("get", R"({"object":1,"name":"CommPort"})"), R"({"value":{"type":"empty"}})") << "it goes on";
}

TEST_F(Dialogue, WritesBackWhatAMemberChanges) {
  EXPECT_EQ(ask("call", R"({"object":1,"name":"CerrarComprobanteIGTF","args":["T",12.5]})"),
            R"({"value":1,"args":["U",12.5]})");
  EXPECT_EQ(ask("call", R"({"object":1,"name":"CerrarComprobanteIGTF","args":["U",{"type":"missing"}]})"),
            R"({"value":1,"args":["T",{"type":"missing"}]})");
}

TEST_F(Dialogue, NumbersObjectsOnce) {
  EXPECT_EQ(ask("put", R"({"object":1,"name":"CommPort","value":{"type":"object","object":2}})"), "{}");
  const std::string held = R"({"value":{"type":"object","class":"Zentaro.statusHASAR","object":2}})";
  EXPECT_EQ(ask("get", R"({"object":1,"name":"CommPort"})"), held);
  EXPECT_EQ(ask("release", R"({"object":2})"), "{}");
  EXPECT_EQ(ask("get", R"({"object":2,"name":"statusFiscal"})").substr(0, 6), "-32602");
  EXPECT_EQ(ask("get", R"({"object":1,"name":"CommPort"})"),
            R"({"value":{"type":"object","class":"Zentaro.statusHASAR","object":3}})")
      << "it is still held, and gets a number that was never used";
  EXPECT_EQ(ask("get", R"({"object":3,"name":"statusFiscal"})"), R"({"value":0})");
}

TEST_F(Dialogue, HandsOutRecords) {
  ask("put", R"({"object":1,"name":"CommPort","value":1})");
  EXPECT_EQ(ask("put", R"({"object":1,"name":"PortOpen","value":true})"), "{}");
  line.answer(
      {{"<STX>\"8<FS>0600<FS>3080<FS>0000<FS>00<FS>45<FS>240315<FS>140500<FS>5<FS>1<FS>118<FS>9<FS>42<ETX>"
        "0000"}});
  EXPECT_EQ(ask("call", R"({"object":1,"name":"GetStatusN"})"),
            R"({"value":{"type":"object","class":"Zentaro.statusN","object":3},"args":[]})");
  EXPECT_EQ(ask("call", R"({"object":3,"name":"FechaImpresora"})"),
            R"({"value":{"type":"date","value":"2024-03-15T14:05:00"},"args":[]})");
  EXPECT_EQ(ask("call", R"({"object":3,"name":"UltimoCierreZ"})"), R"({"value":42,"args":[]})");
}

TEST_F(Dialogue, DescribesAClass) {
  const Json description = Json::parse(ask("describe", R"({"class":"Zentaro.CZentaro"})"));
  EXPECT_EQ(description["class"], "Zentaro.CZentaro");
  EXPECT_EQ(description["interface"], "_CZentaro");
  EXPECT_EQ(description["creatable"], true);
  const auto member = [&](std::string_view name) {
    return *std::ranges::find_if(description["members"],
                                 [name](const Json& each) { return each["name"] == name; });
  };
  EXPECT_EQ(
      description["members"][0].dump(),
      R"({"name":"CommPort","kind":"get","parameters":[],"result":"Variant","outcome":false,"sends":[],"help":"Serial port, 1 to 8."})");
  EXPECT_EQ(
      member("PortOpen")["newValue"].dump(),
      R"({"name":"bIsOpen","type":"Boolean","passing":"byref","note":"True opens, False closes","optional":false})");
  EXPECT_EQ(member("CerrarComprobanteIGTF")["parameters"][1]["default"].dump(), R"({"type":"missing"})");
  const Json payment = member("PagoConMedio");
  EXPECT_EQ(payment["parameters"][1]["note"], "amount, 2 implied decimals");
  EXPECT_EQ(
      payment["sends"].dump(),
      R"([{"command":68,"fields":[{"parameter":"medio","encoding":"as given","size":0},)"
      R"({"parameter":"monto","encoding":"implied decimals","size":2},{"text":"T","encoding":"constant","size":0}],)"
      R"("when":""}])");
  EXPECT_EQ(Json::parse(ask("describe", R"({"class":"statusN"})"))["creatable"], false);
}

}  // namespace
}  // namespace zentaro::tools
