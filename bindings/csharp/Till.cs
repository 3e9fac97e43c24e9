// The safe sale: a document is printed once, with a verdict that holds. It needs libzentaro-till.so as well, or zentaro_c.dll alone.
namespace Zentaro {

using System.Collections;
using System.Collections.Generic;
using System.Globalization;

static class NativeTill {
#if ZENTARO_WINDOWS
  const string Library = "zentaro_c";
#else
  const string Library = "zentaro-till";
#endif

  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void Progress(IntPtr user, IntPtr line);

  [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
  public static extern int zentaro_till_sell(IntPtr printer, byte[] document, byte[] options, Progress progress, IntPtr user, ref Value verdict);
  [DllImport(Library, CallingConvention = CallingConvention.Cdecl)] public static extern int zentaro_till_check(byte[] document, ref Value result);
  [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
  public static extern int zentaro_till_close(IntPtr printer, byte[] closing, byte[] options, Progress progress, IntPtr user, ref Value verdict);
  [DllImport(Library, CallingConvention = CallingConvention.Cdecl)]
  public static extern int zentaro_till_settle(IntPtr printer, byte[] options, Progress progress, IntPtr user, ref Value result);
  [DllImport(Library, CallingConvention = CallingConvention.Cdecl)] public static extern int zentaro_till_jobs(byte[] id, int most, ref Value result);
  [DllImport(Library, CallingConvention = CallingConvention.Cdecl)] public static extern void zentaro_till_stop(IntPtr printer);
}

/// <summary>What a call gives back; a member that is not known is null.</summary>
[Serializable]
public abstract class Record {
  readonly Dictionary<string, object> members;

  internal Record(object members) { this.members = (Dictionary<string, object>)members; }

  internal object Member(string name) {
    object value;
    return members.TryGetValue(name, out value) ? value : null;
  }
  internal string TextOf(string name) { return (string)Member(name); }
  internal decimal? AmountOf(string name) { return Member(name) == null ? (decimal?)null : JsonText.Amount(TextOf(name)); }
  internal int? NumberOf(string name) { return Member(name) == null ? (int?)null : decimal.ToInt32((decimal)Member(name)); }
  internal DateTime? MomentOf(string name) {
    return Member(name) == null ? (DateTime?)null : DateTime.Parse(TextOf(name), CultureInfo.InvariantCulture, DateTimeStyles.RoundtripKind);
  }
  internal List<T> ItemsOf<T>(string name, Converter<object, T> made) { return ((List<object>)Member(name)).ConvertAll(made); }
  internal static bool OnPaper(string verdict) {
    return verdict == "printed" || verdict == "printed-in-part" || verdict == "already-printed";
  }
}

/// <summary>What became of a document: Verdict is "printed", "not-printed", "unknown" and so on; Next says what the cashier does.</summary>
[Serializable]
public class SaleVerdict : Record {
  internal SaleVerdict(object members) : base(members) {}
  public string Verdict { get { return TextOf("verdict"); } }
  public int? Number { get { return NumberOf("number"); } }
  public decimal? Total { get { return AmountOf("total"); } }
  public decimal? Igtf { get { return AmountOf("igtf"); } }
  public decimal? Change { get { return AmountOf("change"); } }
  public string Cause { get { return TextOf("cause"); } }
  public string Next { get { return TextOf("next"); } }
  /// <summary>Whether the document is on paper, now or since an earlier call with this id.</summary>
  public bool IsPrinted { get { return OnPaper(Verdict); } }
}

/// <summary>What became of an X or a Z.</summary>
[Serializable]
public class ClosingVerdict : Record {
  internal ClosingVerdict(object members) : base(members) {}
  public string Closing { get { return TextOf("closing"); } }
  public string Verdict { get { return TextOf("verdict"); } }
  public int? Number { get { return NumberOf("number"); } }
  public string Cause { get { return TextOf("cause"); } }
  public string Next { get { return TextOf("next"); } }
  public bool IsPrinted { get { return OnPaper(Verdict); } }
  /// <summary>Grouped as on paper: groups are dictionaries, amounts decimals; null when they could not be had.</summary>
  public Dictionary<string, object> Figures { get { return (Dictionary<string, object>)JsonText.WithAmounts(Member("figures")); } }
}

/// <summary>What is wrong with a member of a document.</summary>
[Serializable]
public class Problem : Record {
  internal Problem(object members) : base(members) {}
  public string Path { get { return TextOf("path"); } }
  public string Text { get { return TextOf("text"); } }
}

/// <summary>What a document adds up to; the amounts are null while there are problems.</summary>
[Serializable]
public class CheckedDocument : Record {
  internal CheckedDocument(object members) : base(members) {}
  public List<Problem> Problems { get { return ItemsOf("problems", item => new Problem(item)); } }
  public List<Problem> Warnings { get { return ItemsOf("warnings", item => new Problem(item)); } }
  public decimal? Net { get { return AmountOf("net"); } }
  public decimal? Tax { get { return AmountOf("tax"); } }
  public decimal? Igtf { get { return AmountOf("igtf"); } }
  public decimal? Total { get { return AmountOf("total"); } }
  public decimal? Paid { get { return AmountOf("paid"); } }
  public decimal? Change { get { return AmountOf("change"); } }
}

/// <summary>A document or closing of the books.</summary>
[Serializable]
public class Job : Record {
  internal Job(object members) : base(members) {}
  public string Id { get { return TextOf("id"); } }
  public string Printer { get { return TextOf("printer"); } }
  public string Kind { get { return TextOf("kind"); } }
  public int? Attempt { get { return NumberOf("attempt"); } }
  public string State { get { return TextOf("state"); } }
  public string Verdict { get { return TextOf("verdict"); } }
  public int? Number { get { return NumberOf("number"); } }
  public string Machine { get { return TextOf("machine"); } }
  public decimal? Total { get { return AmountOf("total"); } }
  public string Cause { get { return TextOf("cause"); } }
  public DateTime? Accepted { get { return MomentOf("accepted"); } }
  public DateTime? Begun { get { return MomentOf("begun"); } }
  public DateTime? Ended { get { return MomentOf("ended"); } }
}

/// <summary>Judged are the jobs about which something became known now, Open those that a person has to look at.</summary>
[Serializable]
public class Settlement : Record {
  internal Settlement(object members) : base(members) {}
  public string Refusal { get { return TextOf("refusal"); } }
  public string Cause { get { return TextOf("cause"); } }
  public string Machine { get { return TextOf("machine"); } }
  public List<Job> Judged { get { return ItemsOf("judged", item => new Job(item)); } }
  public List<Job> Open { get { return ItemsOf("open", item => new Job(item)); } }
}

/// <summary>The calls. What goes wrong at a counter is a verdict; an AutomationError says what the program did wrong (5), or that the
/// books cannot be read (75). A document is the JSON of a sale file, or an object with its members: dictionaries, or anonymous classes
/// such as new { document = "invoice", lines = new[] { new { description = "Pan", price = 1.50m, tax = 16 } } }; a DateTime is its date,
/// as time or hora its time of day.
/// What progress throws stops the document between two steps and is thrown again, its verdict in Data["verdict"].</summary>
public static class Till {
  delegate int Called(byte[] options, NativeTill.Progress progress, ref Value result);
  delegate int Asked(ref Value result);

  /// <summary>Prints the document once. Under an id nothing is ever printed twice; again prints the same content without an id for a new
  /// customer; wait are the seconds that a printer which another program uses is waited for, giveUp those that a lost answer is.</summary>
  public static SaleVerdict Sell(CZentaro printer, object document, string id = null, bool again = false, int? wait = null, int? giveUp = null,
                                 Action<string> progress = null) {
    byte[] json = Document(document);
    return Run(printer, Options(id, "again", again, wait, giveUp), progress, members => new SaleVerdict(members),
               (byte[] options, NativeTill.Progress told, ref Value result) =>
                   NativeTill.zentaro_till_sell(printer.Handle, json, options, told, IntPtr.Zero, ref result));
  }

  /// <summary>What the document adds up to, and what is wrong with it; no printer is asked.</summary>
  public static CheckedDocument Check(object document) {
    byte[] json = Document(document);
    return new CheckedDocument(Answer((ref Value result) => NativeTill.zentaro_till_check(json, ref result)));
  }

  /// <summary>Prints the closing: "Z" ends the day, "X" reads it.</summary>
  public static ClosingVerdict Close(CZentaro printer, string closing, string id = null, bool evenIfUnknown = false, int? wait = null,
                                     int? giveUp = null, Action<string> progress = null) {
    byte[] kind = Native.Utf8(closing);
    return Run(printer, Options(id, "evenIfUnknown", evenIfUnknown, wait, giveUp), progress, members => new ClosingVerdict(members),
               (byte[] options, NativeTill.Progress told, ref Value result) =>
                   NativeTill.zentaro_till_close(printer.Handle, kind, options, told, IntPtr.Zero, ref result));
  }

  /// <summary>Judges by the printer's counters what was cut short.</summary>
  public static Settlement Settle(CZentaro printer, int? wait = null, int? giveUp = null, Action<string> progress = null) {
    return Run(printer, Options(null, "", false, wait, giveUp), progress, members => new Settlement(members),
               (byte[] options, NativeTill.Progress told, ref Value result) =>
                   NativeTill.zentaro_till_settle(printer.Handle, options, told, IntPtr.Zero, ref result));
  }

  /// <summary>The latest jobs of the books, the oldest of them first; with an id that job alone, if there is one.</summary>
  public static List<Job> Jobs(string id = null, int most = 100) {
    byte[] wanted = id == null ? null : Native.Utf8(id);
    var found = (List<object>)Answer((ref Value result) => NativeTill.zentaro_till_jobs(wanted, most, ref result));
    return found.ConvertAll(item => new Job(item));
  }

  /// <summary>Asks the call under way on the printer to stop between two steps; from any thread. The call gives its verdict then.</summary>
  public static void Stop(CZentaro printer) { NativeTill.zentaro_till_stop(printer.Handle); }

  static byte[] Document(object document) { return Native.Utf8(document as string ?? JsonText.Of(document)); }

  static Dictionary<string, object> Options(string id, string flag, bool isSet, int? wait, int? giveUp) {
    var options = new Dictionary<string, object>();
    if (id != null) options["id"] = id;
    if (isSet) options[flag] = true;
    if (wait != null) options["wait"] = wait;
    if (giveUp != null) options["giveUp"] = giveUp;
    return options;
  }

  static object Answer(Asked call) {
    var result = new Value();
    try {
      Native.Check(call(ref result));
      return JsonText.Parse((string)Values.Take(ref result));
    } finally { Native.zentaro_clear(ref result); }
  }

  static T Run<T>(CZentaro printer, Dictionary<string, object> options, Action<string> progress, Converter<object, T> made, Called call) {
    Exception raised = null;
    NativeTill.Progress told = (user, line) => {
      try {
        if (progress != null) progress(Native.Text(line));
      } catch (Exception failure) {  // C cannot carry it
        raised = raised ?? failure;
        Stop(printer);
      }
    };
    T verdict = made(Answer((ref Value result) => call(Native.Utf8(JsonText.Of(options)), told, ref result)));
    GC.KeepAlive(told);
    if (raised == null) return verdict;
    raised.Data["verdict"] = verdict;
    throw raised;
  }
}

/// <summary>JSON from values and to values: dictionaries, lists, texts, decimals, truths and null.</summary>
static class JsonText {
  public static decimal Amount(string text) { return decimal.Parse(text, NumberStyles.Float, CultureInfo.InvariantCulture); }

  public static string Of(object value) {
    var json = new StringBuilder();
    Write(json, value);
    return json.ToString();
  }

  static void Write(StringBuilder json, object value) {
    if (value == null) json.Append("null");
    else if (value is bool) json.Append((bool)value ? "true" : "false");
    else if (value is string) WriteText(json, (string)value);
    else if (value is IDictionary) WriteItems(json, "{}", Members((IDictionary)value));
    else if (value is IEnumerable) WriteItems(json, "[]", (IEnumerable)value);
    else if (value is DictionaryEntry) WriteMember(json, (DictionaryEntry)value);
    else if (value is double || value is float) json.Append(((IFormattable)value).ToString("R", CultureInfo.InvariantCulture));
    else if (value is decimal || value.GetType().IsPrimitive) json.Append(((IFormattable)value).ToString(null, CultureInfo.InvariantCulture));
    else WriteItems(json, "{}", Properties(value));
  }

  static void WriteItems(StringBuilder json, string brackets, IEnumerable items) {
    json.Append(brackets[0]);
    int count = 0;
    foreach (object item in items) {
      if (count++ > 0) json.Append(',');
      Write(json, item);
    }
    json.Append(brackets[1]);
  }

  static void WriteMember(StringBuilder json, DictionaryEntry member) {
    WriteText(json, (string)member.Key);
    json.Append(':');
    bool isTime = (string)member.Key == "time" || (string)member.Key == "hora";
    var moment = member.Value as DateTime?;
    Write(json, moment == null ? member.Value : moment.Value.ToString(isTime ? "HH:mm:ss" : "yyyy-MM-dd", CultureInfo.InvariantCulture));
  }

  static IEnumerable Members(IDictionary group) {
    foreach (DictionaryEntry member in group) yield return member;
  }

  static IEnumerable Properties(object value) {
    foreach (var property in value.GetType().GetProperties())
      if (property.GetIndexParameters().Length == 0) yield return new DictionaryEntry(property.Name, property.GetValue(value, null));
  }

  static void WriteText(StringBuilder json, string text) {
    json.Append('"');
    foreach (char c in text) {
      if (c == '"' || c == '\\') json.Append('\\').Append(c);
      else if (c < ' ') json.Append("\\u").Append(((int)c).ToString("x4"));
      else json.Append(c);
    }
    json.Append('"');
  }

  /// <summary>Of the library's own texts, which are in order.</summary>
  public static object Parse(string json) {
    int at = 0;
    return Read(json, ref at);
  }

  static object Read(string json, ref int at) {
    char first = json[at];
    if (first == '{') return ReadGroup(json, ref at);
    if (first == '[') return ReadList(json, ref at);
    if (first == '"') return ReadText(json, ref at);
    int begin = at;
    while (at < json.Length && ",]}".IndexOf(json[at]) < 0) ++at;
    string word = json.Substring(begin, at - begin);
    if (word == "null") return null;
    if (word == "true" || word == "false") return word == "true";
    return Amount(word);
  }

  static object ReadGroup(string json, ref int at) {
    var group = new Dictionary<string, object>();
    for (++at; json[at] != '}';) {
      string name = ReadText(json, ref at);
      ++at;  // the colon
      group[name] = Read(json, ref at);
      if (json[at] == ',') ++at;
    }
    ++at;
    return group;
  }

  static object ReadList(string json, ref int at) {
    var list = new List<object>();
    for (++at; json[at] != ']';) {
      list.Add(Read(json, ref at));
      if (json[at] == ',') ++at;
    }
    ++at;
    return list;
  }

  static string ReadText(string json, ref int at) {
    var text = new StringBuilder();
    while (json[++at] != '"') {
      if (json[at] != '\\') text.Append(json[at]);
      else if (json[++at] == 'u') { text.Append((char)Convert.ToInt32(json.Substring(at + 1, 4), 16)); at += 4; }
      else { int known = "bfnrt".IndexOf(json[at]); text.Append(known < 0 ? json[at] : "\b\f\n\r\t"[known]); }
    }
    ++at;
    return text.ToString();
  }

  /// <summary>The same, where every text is an amount.</summary>
  public static object WithAmounts(object value) {
    if (value is string) return Amount((string)value);
    var group = value as Dictionary<string, object>;
    if (group == null) return value;
    var made = new Dictionary<string, object>();
    foreach (var member in group) made[member.Key] = WithAmounts(member.Value);
    return made;
  }
}

}  // namespace Zentaro
