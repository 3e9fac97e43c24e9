// Sells through `zentaro serve`, and asks again under the same id until it is known what came of it.
//
//     ZENTARO_TOKEN=zt_... mono Sell.exe http://127.0.0.1:8211 caja1 F-000123
//
// With Mono: mcs -r:System.Net.Http -r:System.Runtime.Serialization Sell.cs
using System;
using System.IO;
using System.Net.Http;
using System.Net.Http.Headers;
using System.Runtime.Serialization;
using System.Runtime.Serialization.Json;
using System.Text;
using System.Threading;
using System.Threading.Tasks;

// What is wanted of a job, and of what is refused.
[DataContract]
class Job {
  [DataMember(Name = "state")] public string State = null;
  [DataMember(Name = "number")] public long? Number = null;
  [DataMember(Name = "total")] public string Total = null;
  [DataMember(Name = "cause")] public string Cause = null;
  [DataMember(Name = "detail")] public string Detail = null;
}

static class Sell {
  const string Sale = @"{""document"": ""invoice"",
    ""lines"": [{""description"": ""Arepa"", ""price"": 10, ""quantity"": 2, ""tax"": 16}], ""payments"": [{""amount"": 30}]}";

  static Job Read(Stream body) { return (Job)new DataContractJsonSerializer(typeof(Job)).ReadObject(body); }

  static async Task<Job> Until(HttpClient client, string address, string body) {
    for (;; Thread.Sleep(1000)) {
      try {
        var answer = await client.PutAsync(address, new StringContent(body, Encoding.UTF8, "application/json"));
        var code = (int)answer.StatusCode;
        if (code >= 500 || code == 429) continue;
        var job = Read(await answer.Content.ReadAsStreamAsync());
        if (!answer.IsSuccessStatusCode) throw new InvalidOperationException(job.Detail);
        if (job.State == "printed" || job.State == "not-printed") return job;
      } catch (HttpRequestException) {  // no answer: the same once more, nothing prints twice
      } catch (IOException) {
      } catch (TaskCanceledException) {
      }
    }
  }

  static void Main(string[] given) {
    var client = new HttpClient { Timeout = TimeSpan.FromSeconds(60) };
    client.DefaultRequestHeaders.Authorization =
        new AuthenticationHeaderValue("Bearer", Environment.GetEnvironmentVariable("ZENTARO_TOKEN"));
    var body = "{\"printer\": \"" + given[1] + "\", \"attempt\": 1, \"sale\": " + Sale + "}";
    var sold = Until(client, given[0] + "/v1/jobs/" + given[2] + "?wait=20", body).GetAwaiter().GetResult();
    Console.WriteLine(sold.State == "printed" ? "printed " + sold.Number + ", total " + sold.Total : "not printed: " + sold.Cause);
  }
}
