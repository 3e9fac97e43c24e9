/* The safe sale for programs in C, and for every language that can call C: a document is printed once, with a verdict
 * that holds. In libzentaro-till, over the printer objects of zentaro_c.h.
 *
 *     zentaro_value verdict = {ZENTARO_EMPTY};
 *     if (zentaro_till_sell(printer, document, "{\"id\": \"F-1\"}", NULL, NULL, &verdict) != 0)
 *       puts(zentaro_error_description());
 *     else
 *       puts(verdict.as.text);
 *     zentaro_clear(&verdict);
 *
 * Texts are JSON in UTF-8. A document is what the file of `zentaro sale` holds, in Spanish or English. What goes wrong at a
 * counter is a verdict, and the function returns 0; another number says what the program did wrong, or that the books
 * cannot be read, with the texts of zentaro_error_...: 5 a document or option that is not in order, a port that is
 * closed, a printer that has a call under way; 75 the books. Nothing was sent then. Another number of a callback by
 * zentaro_set_yield ends a call, and what became of the document is known at the next one.
 *
 * `result` and `verdict` are replaced when the function succeeds and unchanged when it fails; the caller gives them back
 * by zentaro_clear. `options` may be NULL. The port of `printer` is open before and after, and may be closed and opened
 * meanwhile. Two printers may be used on two threads. Later versions may add members to what is given back. */
#ifndef ZENTARO_TILL_C_H
#define ZENTARO_TILL_C_H

#include "zentaro_c.h"

#ifdef __cplusplus
extern "C" {
#endif

/* What happens, for people, a line without its end; on the thread of the call. */
typedef void (*zentaro_till_progress)(void* user, const char* line);

/* Prints the document once. Options: "id", under which nothing is ever printed twice; "again": true, the same content
 * without an id for a new customer; "wait", the seconds that a printer which another program uses is waited for;
 * "giveUp", the seconds that a lost answer is waited for. The verdict: {"verdict", "number", "total", "igtf",
 * "change", "cause", "next", "virtual"}; "printed", "printed-in-part" and "already-printed" say that it is on paper. */
ZENTARO_C_API int32_t zentaro_till_sell(zentaro_object* printer, const char* document, const char* options,
                                        zentaro_till_progress progress, void* user, zentaro_value* verdict);

/* What a document adds up to, and what is wrong with it; no printer is asked. {"problems", "warnings", "net", "tax",
 * "igtf", "total", "paid", "change"}, where a problem or warning is {"path", "text"}. */
ZENTARO_C_API int32_t zentaro_till_check(const char* document, zentaro_value* result);

/* "Z" closes the day, "X" reads it. Options: those of a sale but "again", and "evenIfUnknown": true, a Z although it is
 * unknown what became of a sale. The verdict: {"closing", "verdict", "number", "cause", "next", "virtual", "figures"}. */
ZENTARO_C_API int32_t zentaro_till_close(zentaro_object* printer, const char* closing, const char* options,
                                         zentaro_till_progress progress, void* user, zentaro_value* verdict);

/* Judges what was cut short on the printer. Options: "wait", "giveUp". {"refusal", "cause", "machine", "judged",
 * "open"}; the last two are lists of jobs. */
ZENTARO_C_API int32_t zentaro_till_settle(zentaro_object* printer, const char* options,
                                          zentaro_till_progress progress, void* user, zentaro_value* result);

/* A list of the latest jobs of the books, the oldest of them first; with an id the job of that id alone, if there is one. A
 * job: {"id", "printer", "kind", "attempt", "state", "verdict", "number", "machine", "total", "cause", "accepted",
 * "begun", "ended", "revision"}. */
ZENTARO_C_API int32_t zentaro_till_jobs(const char* id, int32_t most, zentaro_value* result);

/* Asks the call under way on that handle to stop between two steps: the document is cancelled, or ended when it is too late
 * for that, and the call gives its verdict. From any thread and from callbacks, not from a signal handler. Without such a
 * call it does nothing. */
ZENTARO_C_API void zentaro_till_stop(const zentaro_object* printer);

#ifdef __cplusplus
}
#endif

#endif
