/* The library for programs in C, and for every language that can call C: objects, members and values by name.
 *
 *     zentaro_object* printer = zentaro_create("Zentaro.CZentaro");
 *     zentaro_value value = {ZENTARO_INT16}, outcome = {ZENTARO_EMPTY};
 *     value.as.int16 = 1;
 *     if (zentaro_put(printer, "CommPort", &value) != 0) puts(zentaro_error_description());
 *     zentaro_call(printer, "Subtotal", NULL, 0, &outcome);
 *     zentaro_release(printer);
 *
 * Errors. A function that returns int32_t returns 0, or the number of the automation error (13 type mismatch,
 * 40001 from PortOpen); zentaro_error_... tell its texts. Nothing is thrown across this interface, and no
 * pointer but a user pointer may be NULL unless it says so.
 *
 * Threads. An object belongs to the thread that created it, and so does every object that it hands out: on
 * another thread every function that takes it fails with 5 and does nothing. Errors and callbacks are the
 * thread's own. Values belong to no thread, but to one at a time.
 *
 * Texts are UTF-8; what is malformed in them becomes U+FFFD.
 *
 * What stands here stays as long as the soname does; functions and kinds of value may be added. */
#ifndef ZENTARO_C_H
#define ZENTARO_C_H

#include <stdint.h>

#if !defined(_WIN32)
#define ZENTARO_C_API __attribute__((visibility("default")))
#elif defined(ZENTARO_C_BUILD)
#define ZENTARO_C_API __declspec(dllexport)
#else
#define ZENTARO_C_API __declspec(dllimport)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Values ---- */

/* What a value holds, and where: the member of `as` in brackets. */
enum zentaro_kind {
  ZENTARO_EMPTY = 0,
  ZENTARO_NULL = 1,
  ZENTARO_MISSING = 2,  /* an optional argument that was left out */
  ZENTARO_BOOLEAN = 3,  /* [boolean] 0 or 1 */
  ZENTARO_INT16 = 4,    /* [int16] */
  ZENTARO_INT32 = 5,    /* [int32] */
  ZENTARO_DOUBLE = 6,   /* [number] */
  ZENTARO_CURRENCY = 7, /* [currency] ten-thousandths */
  ZENTARO_DATE = 8,     /* [number] days since 30 December 1899, the time of day as the fraction */
  ZENTARO_TEXT = 9,     /* [text] `count` bytes and a NUL behind them */
  ZENTARO_ARRAY = 10,   /* [items] `count` values; a count of -1: an array that was never given bounds. Arrays
                           nested deeper than 64 are refused with 13 */
  ZENTARO_OBJECT = 11   /* [object] NULL is the null reference, "nothing" */
};

typedef struct zentaro_object zentaro_object;
typedef struct zentaro_value zentaro_value;

/* A value that is all zeros is Empty. The kinds up to DATE are assigned directly, to a value that holds none
 * of the others; TEXT, ARRAY and OBJECT by the functions below, which copy. A value owns what it holds: it is
 * given back by zentaro_clear, or by whatever replaces it. To keep a text or an object for longer, take the
 * pointer and set the kind to EMPTY: it is then given back by zentaro_free_text or zentaro_release. */
struct zentaro_value {
  int32_t kind; /* a zentaro_kind */
  int32_t count;
  union {
    int32_t boolean;
    int16_t int16;
    int32_t int32;
    double number;
    int64_t currency;
    char* text;
    zentaro_value* items;
    zentaro_object* object;
  } as;
};

/* Gives back what the value holds, items included, and makes it Empty. Fails only for an object of another
 * thread, which is then left alone, with what stands in front of it. */
ZENTARO_C_API int32_t zentaro_clear(zentaro_value* value);
/* Each replaces what the value holds. A length of -1: up to the NUL. Items are Empty at first. */
ZENTARO_C_API int32_t zentaro_set_text(zentaro_value* value, const char* text, int32_t length);
ZENTARO_C_API int32_t zentaro_set_array(zentaro_value* value, int32_t count);
/* The value gets a handle of its own for the same object; NULL gives the null reference. */
ZENTARO_C_API int32_t zentaro_set_object(zentaro_value* value, const zentaro_object* object);
/* A text that was taken out of a value. */
ZENTARO_C_API void zentaro_free_text(char* text);

/* ---- Objects ---- */

/* A new object of a class ("CZentaro" or "Zentaro.CZentaro", in any case); NULL when it fails. The caller
 * releases it. */
ZENTARO_C_API zentaro_object* zentaro_create(const char* class_name);
/* The object ends with its last handle, but not before a call of it has returned; a printer object then
 * closes its port. NULL does nothing. */
ZENTARO_C_API int32_t zentaro_release(zentaro_object* object);
/* "CZentaro"; lives as long as the library. */
ZENTARO_C_API const char* zentaro_class_name(const zentaro_object* object);

/* Members by name, in any case. `result` is replaced when the function succeeds and unchanged when it fails;
 * it may be NULL for a call. An object is assigned as a reference. */
ZENTARO_C_API int32_t zentaro_get(const zentaro_object* object, const char* name, zentaro_value* result);
ZENTARO_C_API int32_t zentaro_put(const zentaro_object* object, const char* name, const zentaro_value* value);
/* `count` arguments, which may be NULL when there are none. What the member writes back into an argument
 * stands in the same place of the array afterwards, also when the call fails; the others are unchanged. */
ZENTARO_C_API int32_t zentaro_call(const zentaro_object* object, const char* name, zentaro_value* arguments,
                                   int32_t count, zentaro_value* result);

/* What a class is, as JSON, for programs that make something of it: {"class", "interface", "creatable",
 * "help", "members": [{"name", "kind", "parameters", "result", "outcome", "outcomes", "help", "newValue"}]};
 * for NULL the whole library: {"library", "classes", "enumerations"}. Later versions may add members to it. */
ZENTARO_C_API int32_t zentaro_describe(const char* class_name, zentaro_value* result);

/* ---- Errors, callbacks, versions ---- */

/* The last error of this thread: 0 and empty texts before the first one. A function that succeeds leaves it
 * as it is; the texts live until the next function fails on this thread. */
ZENTARO_C_API int32_t zentaro_error_number(void);
ZENTARO_C_API const char* zentaro_error_source(void);
ZENTARO_C_API const char* zentaro_error_description(void);

/* Called at least 100 times a second while an operation of this thread waits for the printer. Anything other
 * than 0 ends the operation with that number as its error; whether the printer carried it out is then
 * unknown, whatever nEnvironmentError holds. The object stays usable. NULL removes the callback. */
typedef int32_t (*zentaro_yield)(void* user);
ZENTARO_C_API void zentaro_set_yield(zentaro_yield callback, void* user);

/* A box with an error and an OK button; without a callback it is one line on standard error. */
typedef void (*zentaro_message_box)(void* user, const char* title, const char* text);
ZENTARO_C_API void zentaro_set_message_box(zentaro_message_box callback, void* user);

/* "0.1.0"; lives as long as the library. */
ZENTARO_C_API const char* zentaro_version(void);

#ifdef __cplusplus
}
#endif

#endif
