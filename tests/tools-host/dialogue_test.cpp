// Dialogues over the line protocol: requests, and the responses word for word, on a scripted line.
#include <gtest/gtest.h>

#include "base/files/json.h"
#include "support/line.h"
#include "tools/host/session.h"

namespace zentaro::tools::dialogue_test {

/// A session in which object 1 is a CZentaro and object 2 a statusHASAR.
class Dialogue : public testing::LineTest {
 protected:
  Dialogue() {
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
    if (error.contains("data") && error["data"].contains("args")) text += " " + error["data"]["args"].dump();
    return text;
  }

  HostSession session;
};

// "method params => outcome"; an error is compared as far as it is given here.
TEST_F(Dialogue, AnswersRequests) {
  const std::string rows = R"(
    get {"object":1,"name":"printertype"} => {"value":"EPSON TMU"}
    call {"object":1,"name":"MaxResponse","args":[]} => {"value":-1,"args":[]}
    call {"object":1,"name":"CierreZ"} => {"value":-1,"args":[]}
    call {"object":1,"name":"IniciarFactura","args":["Ana"]} => {"value":-1,"args":["Ana"]}
    call {"object":1,"name":"BuildOMB","args":[66,["a",1]]} => {"value":"\u0002\"B\u001ca\u001c1\u00030133","args":[66,["a",1]]}
    call {"object":2,"name":"LoadFromResponse","args":[["C080","3600","0","1","12","0","3","4"]]} => {"value":{"type":"empty"},"args":[["C080","3600","0","1","12","0","3","4"]]}
    call {"object":1,"name":"GetResultadoCierre"} => {"value":{"type":"nothing"},"args":[]}

    create {"class":"Zentaro.statusN"} => 429 *
    create {"class":"Zentaro.Other"} => 429 *
    create {} => -32602 "class" is missing *
    create {"class":1} => -32602 "class" must be a text
    get {"object":3,"name":"CommPort"} => -32602 no object 3: *
    get {"object":99999999999,"name":"CommPort"} => -32602 no object 9999*
    get {"object":-4294967295,"name":"CommPort"} => -32602 no object -4294967295: *
    get {"object":"1","name":"CommPort"} => -32602 "object" must be*
    get {"object":1.0,"name":"CommPort"} => -32602 "object" must be*
    release {"object":3} => -32602 no object 3: *
    get {"object":1,"name":"CierreZ"} => 438 *
    put {"object":1,"name":"PrinterType","value":1} => 438 *
    put {"object":1,"name":"CommPort"} => -32602 "value" is missing *
    call {"object":1,"name":"CierreZ","args":{}} => -32602 "args" must be*
    call {"object":1,"name":"CierreZ","args":null} => -32602 "args" must be*
    call {"object":1,"name":"CierreZ","args":[1]} => 450 *
    put {"object":1,"name":"nLastCommand","value":32768} => 6 *
    sale {"object":2,"document":{}} => -32602 "object" must be a Zentaro.CZentaro*
    sale {"object":1,"document":{}} => -32602 "document" is not in order, nothing was sent: *
    sale {"object":1,"document":{"document":"invoice","lines":[{"description":"a","price":0,"tax":0}]}} => -32602 the port of the object is closed*
    sale {"object":1,"document":{"document":"invoice","lines":[{"description":"a","price":1.0000000000000000001,"tax":0}],"payments":[]}} => -32602 "document" is not in order, nothing was sent: lines[0].price: *
    sale {"object":1,"document":{"lines":[{"description":"a","price":1,"tax":0}],"lines":[]}} => -32602 the name "lines" stands twice*
    sale {"object":1,"id":"","document":{}} => -32602 "id" is empty*
    sale {"object":1,"id":"F 1","document":{"document":"invoice","lines":[{"description":"a","price":0,"tax":0}]}} => -32602 "id" is not 1 to 128*
    check {"document":{"document":"invoice"}} => {"problems":[{"path":"lines",*
    close {"object":1,"closing":"Y"} => -32602 "closing" must be "X" or "Z"
    close {"object":1,"closing":"Z"} => -32602 the port of the object is closed*
    settle {"object":1} => -32602 the port of the object is closed*
    jobs {"most":0} => -32602 "most" must be*
    sale {"object":1,"ID":"F-1","document":{}} => -32602 "ID" is no parameter of sale, which has: object, document, id, progress, again
    call {"object":1,"name":"CerrarComprobante","arguments":["A"]} => -32602 "arguments" is no parameter of call, *
    put {"object":1,"name":"PortOpen","value":true} => 40001 Puerto serial no asignado (CZentaro.Let PortOpen)
    get [1] => -32602 "params" must be*
    destroy {} => -32601 unknown method "destroy"*
    describe {"class":"Nope"} => -32602 unknown class "Nope"*)";
  for (const std::string& row : testing::split(rows, '\n')) {
    const std::size_t begin = row.find_first_not_of(' '), space = row.find(' ', begin),
                      arrow = row.find(" => ");
    if (begin == std::string::npos) continue;
    std::string expected = row.substr(arrow + 4);
    std::string outcome = ask(row.substr(begin, space - begin), row.substr(space, arrow - space));
    if (expected.back() == '*') {
      expected.pop_back();
      outcome.resize(std::min(outcome.size(), expected.size()));
    }
    EXPECT_EQ(outcome, expected) << row;
  }
}

TEST_F(Dialogue, AnswersWhatIsNoRequest) {
  const std::pair<std::string, std::string> lines[] = {
      {"", R"("id":null,"error":{"code":-32700)"},
      {"{",
       R"("id":null,"error":{"code":-32700,"message":"the line is not JSON in UTF-8, from byte 2 on"}})"},
      {"1e400", R"("id":null,"error":{"code":-32700,"message":"the line has a number that is larger )"},
      {"{\"jsonrpc\":\"2.0\",\"id\":\"\xFF\"}", R"("id":null,"error":{"code":-32700)"},
      {R"(["\ud800"])", R"("id":null,"error":{"code":-32700)"},
      {"[\"\\\"\", " + std::string(100000, '[') + "\"",
       R"("id":null,"error":{"code":-32700,"message":"the line is nested)"},
      {R"({"jsonrpc":"2.0","id":"\")" + std::string(200, '[') +
           R"(","method":"release","params":{"object":9}})",
       R"("id":"\"[)"},
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

// A program that has many calls on its way knows which of them failed.
TEST_F(Dialogue, NamesTheMemberWhoseErrorItIs) {
  const std::string named = R"("data":{"source":"Zentaro","class":"Zentaro.CZentaro","member":)";
  for (const auto& [request, member] : std::initializer_list<std::pair<const char*, const char*>>{
           {R"("method":"call","params":{"object":1,"name":"CierreZ","args":[1]})", R"("CierreZ"}}})"},
           {R"("method":"put","params":{"object":1,"name":"nLastCommand","value":32768})",
            R"("nLastCommand"}}})"},
           {R"("method":"get","params":{"object":1,"name":"Nope"})", R"("Nope"}}})"}}) {
    const std::string answer = session.answer(R"({"jsonrpc":"2.0","id":1,)" + std::string(request) + "}");
    EXPECT_TRUE(answer.ends_with(named + member)) << answer;
  }
  EXPECT_FALSE(testing::contains(
      session.answer(R"({"jsonrpc":"2.0","id":1,"method":"create","params":{"class":"Nope"}})"), "member"))
      << "nothing of the line before is left";
}

TEST_F(Dialogue, WritesBackWhatAMemberChanges) {
  EXPECT_EQ(ask("call", R"({"object":1,"name":"CerrarComprobanteIGTF","args":["T",12.5]})"),
            R"({"value":1,"args":["U",12.5]})");
  EXPECT_EQ(ask("call", R"({"object":1,"name":"CerrarComprobanteIGTF","args":["U",{"type":"missing"}]})"),
            R"({"value":1,"args":["T",{"type":"missing"}]})");
  EXPECT_EQ(ask("call", R"({"object":1,"name":"CerrarComprobanteIGTF","args":["T",1e307]})"),
            R"(6 Overflow (Zentaro) ["U",1e+307])")
      << "also when it raises";
  EXPECT_EQ(ask("call", R"({"object":1,"name":"CerrarComprobanteIGTF","args":["T","x"]})"),
            "13 Type mismatch (Zentaro)");
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
      R"({"name":"CommPort","kind":"get","parameters":[],"result":"Variant","outcome":false,"outcomes":[],"help":"Serial port, 1 to 8."})");
  EXPECT_EQ(
      member("PortOpen")["newValue"].dump(),
      R"({"name":"bIsOpen","type":"Boolean","passing":"byref","note":"True opens, False closes","optional":false})");
  EXPECT_EQ(member("CerrarComprobanteIGTF")["parameters"][1]["default"].dump(), R"({"type":"missing"})");
  const Json payment = member("PagoConMedio");
  EXPECT_EQ(payment["parameters"][1]["note"], "amount, 2 implied decimals");
  EXPECT_EQ(payment["outcomes"].dump(), "[-1,0,1,2,3,4,5]");
  EXPECT_EQ(member("GetStatusN")["outcomes"].dump() + member("BitFiscal")["outcomes"].dump(),
            "[0,1,2,3,4,5][6]");
  EXPECT_EQ(Json::parse(ask("describe", R"({"class":"statusN"})"))["creatable"], false);
}

}  // namespace zentaro::tools::dialogue_test
