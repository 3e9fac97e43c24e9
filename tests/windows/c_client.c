/* A sale through zentaro_c.dll, as a program in C makes it, at COM5, of either width; and what the DLL keeps for a thread that ends. Ends with 42. */
#include <process.h>
#include <stdio.h>
#include <string.h>
#include <windows.h>
#include <zentaro_till_c.h>

static int failures = 0;

static void expect(const char* what, int got, int wanted) {
  if (got == wanted) return;
  ++failures;
  printf("%s: %d and not %d (%s)\n", what, got, wanted, zentaro_error_description());
}

/* The outcome of a member with up to four arguments, which it takes away. */
static int outcome(zentaro_object* printer, const char* member, zentaro_value* arguments, int count) {
  zentaro_value result = {0};
  int code = zentaro_call(printer, member, arguments, count, &result) != 0 ? -100 : result.as.int16;
  zentaro_clear(&result);
  for (int i = 0; i < count; ++i) zentaro_clear(&arguments[i]);
  return code;
}

static unsigned __stdcall leaves_its_port_open(void* unused) {
  zentaro_object* other = zentaro_create("CZentaro");
  (void)unused;
  expect("another thread's object", other != NULL, 1);
  return 0;
}

static int lines_told = 0;

static void __stdcall hear(void* user, const char* line) {
  (void)line;
  ++*(int*)user;
}

/* The safe sale as languages find it that know the calling convention of the system only; where there is one, it is that anyway. */
typedef int32_t(__stdcall* Sell)(zentaro_object*, const char*, const char*, void(__stdcall*)(void*, const char*), void*, zentaro_value*);

/* The safe sale, asked for twice. */
static void sells_once(zentaro_object* printer) {
  const char* name = sizeof(void*) == 4 ? "zentaro_till_sell_std" : "zentaro_till_sell";
  Sell sell = (Sell)(void*)GetProcAddress(GetModuleHandleA("zentaro_c.dll"), name);
  const char* document =
      "{\"document\": \"invoice\", \"customer\": {\"name\": \"Ana P\xC3\xA9rez\", \"rif\": \"V-12345678\"},"
      " \"lines\": [{\"description\": \"Caf\xC3\xA9\", \"price\": 12.5, \"quantity\": 2, \"tax\": 16}],"
      " \"payments\": [{\"amount\": 29}]}";
  const char* verdicts[] = {"{\"verdict\":\"printed\",\"number\":2,", "{\"verdict\":\"already-printed\",\"number\":2,"};
  for (int i = 0; i < 2; ++i) {
    zentaro_value verdict = {0};
    expect("sell", sell(printer, document, "{\"id\": \"C-1\"}", hear, &lines_told, &verdict), 0);
    if (verdict.kind == ZENTARO_TEXT) {
      expect(verdict.as.text, strncmp(verdict.as.text, verdicts[i], strlen(verdicts[i])), 0);
      zentaro_clear(&verdict);
    }
  }
  expect("lines were told", lines_told > 0, 1);
}

int main(void) {
  zentaro_object* printer = zentaro_create("Zentaro.CZentaro");
  zentaro_value port = {ZENTARO_INT16}, open = {ZENTARO_BOOLEAN}, customer[2] = {{0}}, item[4] = {{0}}, paid = {ZENTARO_CURRENCY};
  HANDLE thread = (HANDLE)_beginthreadex(NULL, 0, leaves_its_port_open, NULL, 0, NULL);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
  port.as.int16 = 8;
  open.as.boolean = 1;
  expect("CommPort", zentaro_put(printer, "CommPort", &port), 0);
  expect("a port that there is not", zentaro_put(printer, "PortOpen", &open), 40001);
  open.as.boolean = 0;
  zentaro_put(printer, "PortOpen", &open);
  port.as.int16 = 5;
  open.as.boolean = 1;
  zentaro_put(printer, "CommPort", &port);
  expect("PortOpen", zentaro_put(printer, "PortOpen", &open), 0);
  zentaro_set_text(&customer[0], "Ana P\xC3\xA9rez", -1);
  zentaro_set_text(&customer[1], "V-12345678", -1);
  expect("IniciarFactura", outcome(printer, "IniciarFactura", customer, 2), 0);
  zentaro_set_text(&item[0], "Caf\xC3\xA9 molido", -1);
  item[1].kind = ZENTARO_CURRENCY, item[1].as.currency = 125000;
  item[2].kind = ZENTARO_INT16, item[2].as.int16 = 2;
  item[3].kind = ZENTARO_INT16, item[3].as.int16 = 16;
  expect("PasarLineaFactura", outcome(printer, "PasarLineaFactura", item, 4), 0);
  paid.as.currency = 290000;
  expect("RecibirPago", outcome(printer, "RecibirPago", &paid, 1), 0);
  expect("CerrarComprobante", outcome(printer, "CerrarComprobante", NULL, 0), 0);
  sells_once(printer);
  zentaro_release(printer);
  return failures == 0 ? 42 : 1;
}
