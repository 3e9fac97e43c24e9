// Which jobs are printed, in which order, and what is answered about them.
#include "service/service_fixture.h"

namespace zentaro::service::service_test {

TEST_F(Service, PrintsAJobOnceHoweverOftenItIsAskedFor) {
  write("settings.ini", "[Config\\EPSONZT]\nTimeOutZT=2\nDebugZT=1\nDumpZT=" + file("trace") + "\n");
  printer("caja1");
  serve();
  const Answered first = put("F-1", sale("caja1"), 30);
  EXPECT_EQ(first.status, 200) << first.body;
  EXPECT_EQ(first.at("state") + " " + first.at("number") + " " + first.at("total") + " " + first.at("change"),
            "printed 1 11.60 8.40");
  struct Row {
    const char* what;
    std::string id, body;
    int status;
    std::string said;  // the state, or the problem's type
  };
  const Row rows[]{
      {"the same", "F-1", sale("caja1"), 200, "printed"},
      {"the same, written in Spanish", "F-1",
       R"({"printer":"caja1","sale":{"documento":"factura","renglones":[{"descripcion":"Arepa","precio":"10.00",
           "impuesto":16.00}],"pagos":[{"monto":20}]}})",
       200, "printed"},
      {"the next attempt of what was printed", "F-1", sale("caja1", "Arepa", R"("attempt":2,)"), 200,
       "printed"},
      {"other content", "F-1", sale("caja1", "Cachapa"), 409, "other-content"},
      {"another printer", "F-1", sale("caja2"), 409, "other-content"},
      {"a closing under its id", "F-1", testing::Shop::closing("caja1", "Z"), 409, "other-content"},
      {"a second attempt without a first", "F-2", sale("caja1", "Arepa", R"("attempt":2,)"), 409,
       "attempt-ahead"},
      {"no printer of ours", "F-2", sale("caja9"), 422, "not-in-order"},
      {"no document", "F-2", R"({"printer":"caja1"})", 422, "not-in-order"},
      {"a member that is none", "F-2", sale("caja1", "Arepa", R"("prio":1,)"), 422, "not-in-order"},
      {"patience of a day", "F-2", sale("caja1", "Arepa", R"("patience":86400,)"), 422, "not-in-order"},
      {"no JSON", "F-2", "{", 400, "no-json"},
      {"nested a thousand times", "F-2", std::string(1000, '['), 400, "no-json"},
      {"an id with a blank", "F%202", sale("caja1"), 400, "bad-id"},
      {"an id that is too long", std::string(129, 'F'), sale("caja1"), 400, "bad-id"},
  };
  for (const Row& row : rows) {
    const Answered answer = put(row.id, row.body);
    EXPECT_EQ(answer.status, row.status) << row.what << answer.body;
    EXPECT_EQ(answer.at(row.status < 300 ? "state" : "type"), row.said) << row.what;
    EXPECT_EQ(answer.status == 409 && row.id == "F-1", answer.at("job") != "(none)") << row.what;
  }
  EXPECT_EQ(papers("caja1", "Arepa"), 1);
  EXPECT_EQ(ask("GET /v1/jobs?search=Arepa").body["jobs"].size(), 1U) << "by what stands in the body alone";
  EXPECT_EQ(folder.read("trace"), "") << "a trace has no limit, and a service runs for years";
  EXPECT_EQ(ask("GET /v1/jobs?after=0").body["jobs"].size(), 1U) << "what was refused is not in the books";
}

TEST_F(Service, WaitsWhileThePrinterRefusesTheOpeningAndNoLonger) {
  printer("caja1");
  serve();
  fault("caja1", "paper-out on open");
  const Answered late = put("F-1", sale("caja1", "Late", R"("patience":2,)"), 20);
  EXPECT_EQ(late.at("state") + " " + late.at("verdict"), "not-printed expired") << late.body;
  EXPECT_NE(late.at("cause").find("(ERROR 20 SIN PAPEL)"), std::string::npos)
      << "what it waited for" << late.body;
  EXPECT_NE(late.at("next").find("with attempt 2"), std::string::npos) << late.body;
  EXPECT_EQ(put("F-2", sale("caja1", "Soon"), 0).status, 202);
  EXPECT_TRUE(eventually([&] { return get("F-2").at("cause").find("ERROR") != std::string::npos; }));
  EXPECT_EQ(ask("GET /v1/printers/caja1").at("state"), "blocked");
  clear("caja1");
  fault("caja1", "delay=1 on item");
  EXPECT_TRUE(eventually([&] {
    const Answered now = ask("GET /v1/printers/caja1");
    return now.at("state") == "busy" && now.at("next") == "null";
  })) << "nobody is asked to put anything in order any more";
  EXPECT_EQ(get("F-2", 30).at("state"), "printed");
  EXPECT_NE(get("F-2").at("begun"), get("F-2").at("accepted"));
  EXPECT_EQ(put("F-1", sale("caja1", "Late"), 0).at("state"), "not-printed") << "a replay prints nothing";
  EXPECT_EQ(put("F-1", sale("caja1", "Mended", R"("attempt":2,)"), 30).at("state"), "printed");
  int seconds = 0;  // of those that were begun
  for (const Answered& job : {get("F-1"), get("F-2")})
    for (const auto& [moment, sign] : {std::pair{"begun", -1}, {"ended", 1}}) {
      const std::string text = job.at(moment);
      seconds += sign * (std::stoi(text.substr(11)) * 3600 + std::stoi(text.substr(14)) * 60 +
                         std::stoi(text.substr(17)));
    }
  EXPECT_TRUE(tells("zentaro_job_seconds_sum{printer=\"caja1\"} " + std::to_string(seconds))) << metrics();
  EXPECT_EQ(papers("caja1", "Late") * 100 + papers("caja1", "Soon") * 10 + papers("caja1", "Mended"), 11);
  fault("caja1", "paper-out on open");
  put("F-3", sale("caja1", "Gone"));
  EXPECT_TRUE(eventually([&] { return get("F-3").at("cause").find("ERROR") != std::string::npos; }));
  EXPECT_TRUE(withdraw("F-3"));
  clear("caja1");
  EXPECT_TRUE(eventually([&] { return ask("GET /v1/printers/caja1").at("state") == "ready"; }))
      << "what was withdrawn is waited for no more";
}

TEST_F(Service, TheZThatIsDueGoesBeforeTheSaleThatWaitsForIt) {
  printer("caja1");
  serve();
  ASSERT_EQ(put("F-0", sale("caja1"), 30).at("state"), "printed");
  fault("caja1", "day-change");
  put("F-1", sale("caja1"));
  EXPECT_TRUE(eventually([&] { return get("F-1").at("cause") != "null"; }));
  const Answered z = put("Z-1", closing("caja1", "Z"), 30);
  EXPECT_EQ(z.at("state") + " " + z.at("number"), "printed 1") << z.body;
  EXPECT_EQ(z.body["figures"]["sales"]["base1"], "10.00");
  EXPECT_EQ(get("F-1", 30).at("state"), "printed");
  EXPECT_EQ(put("Z-1", closing("caja1", "Z"), 30).at("number"), "1") << "the day is not closed twice";
}

TEST_F(Service, AJobInTheQueueCanBeWithdrawnAndTheQueueHasAnEnd) {
  printer("caja1");
  serve();
  fault("caja1", "cover-open on open");
  for (int number = 1; number <= 100; ++number)
    ASSERT_EQ(put("F-" + std::to_string(number), sale("caja1")).status, 202) << number;
  const Answered full = put("F-101", sale("caja1"));
  EXPECT_EQ(full.status, 429);
  EXPECT_EQ(put("F-7", sale("caja1")).status, 202) << "what is known is answered";
  EXPECT_EQ(get("F-101").status, 404);
  EXPECT_EQ(ask("DELETE /v1/jobs/F-7").at("verdict"), "withdrawn");
  EXPECT_EQ(ask("DELETE /v1/jobs/F-7").status, 200);
  EXPECT_EQ(put("Z-1", closing("caja1", "Z")).status, 202);
  const std::string all = token;
  token = addToken("seller", "sell");
  EXPECT_EQ(ask("DELETE /v1/jobs/Z-1").status, 403) << "who may not close takes no closing back";
  token = all;
  EXPECT_TRUE(withdraw("Z-1"));
  EXPECT_TRUE(tells("zentaro_jobs_total{printer=\"caja1\",kind=\"Z\",verdict=\"withdrawn\"} 1"));
  EXPECT_EQ(metrics().find("zentaro_last_z_timestamp_seconds{"), std::string::npos) << "none was printed";
  EXPECT_TRUE(withdraw("F-1"));
  for (int number = 3; number <= 100; ++number) EXPECT_TRUE(withdraw("F-" + std::to_string(number)));
  clear("caja1");
  EXPECT_EQ(get("F-2", 30).at("state"), "printed");
  EXPECT_EQ(ask("DELETE /v1/jobs/F-2").status, 409);
  EXPECT_EQ(ask("GET /v1/jobs?latest=2").body["jobs"][0]["id"], "Z-1") << "the newest first";
  const Answered page = ask("GET /v1/jobs?after=0");
  EXPECT_EQ(page.body["jobs"].size(), 100U);
  EXPECT_EQ(ask("GET /v1/jobs?after=" + page.at("revision")).body["jobs"].size(), 1U) << "and what is left";
  EXPECT_EQ(papers("caja1", "Arepa"), 1);
}

TEST_F(Service, OneMachineOnTwoLinesIsUsedOnOne) {
  printer("caja1");
  printer("caja2");
  printer("copy", "CAJA1");
  serve();
  EXPECT_TRUE(eventually([&] {
    int refused = 0;
    const Answered heard = ask("GET /v1/printers?fresh=1");
    for (const Json& one : heard.body["printers"])
      refused += one["cause"].is_string() &&
                 one["cause"].get<std::string>().find("same machine") != std::string::npos;
    return refused == 1;
  }));
  EXPECT_EQ(put("F-1", sale("caja2", "Arepa", R"("machine":"CAJA1","patience":5,)"), 20)
                .at("verdict")
                .find("other-machine"),
            0U)
      << "a job for another machine is not printed on this one";
}

}  // namespace zentaro::service::service_test
