/*
** vessel.h - the C surface of the vessel library: a request in, its result out. It needs no other header of
** tarvane, and its library holds an engine of its own: a process may drive libtarvane beside it, and neither
** changes anything of the other.
**
** Texts
**   UTF-8, ending in a NUL; a null pointer is no text. A returned text belongs to the handle, or to the
**   library where there is no handle, and is valid until the next call with that handle; one for a null handle,
**   until the next failed call of the thread that has no handle. tarvane_close ends all texts of its handle.
**
** Threads
**   Any thread may call, with one handle or with several. The calculations take turns, as there is one engine.
**   Threads that share a handle must agree among themselves how long each of them reads a text of it.
**
** Errors
**   No exception leaves the library, and nothing in it ends the process. A call that fails says why in
**   tarvane_last_error; a call that succeeds empties it (a sweep leaves the faults of its rows there).
**
** Units
**   Those of the request: "units" is "US" (in., psig, psi, lbf, ft-lbs, sq in., degrees F, lbm, lbm per cu in.),
**   "SI" (mm, MPa gauge, MPa, N, N-m, sq mm, degrees C, kg, kg per cu m) or an object of units. A number of a
**   request is read as a double and rounded once to a single, then its unit's factor is applied, in single
**   precision. A number of a result is the shortest decimal that reads back to the same single.
*/
#ifndef TARVANE_VESSEL_H
#define TARVANE_VESSEL_H

#include <stdint.h>

#if defined(_WIN32) && defined(TARVANE_VESSEL_BUILD)
#define TARVANE_VESSEL_API __declspec(dllexport)
#elif defined(_WIN32) && !defined(TARVANE_VESSEL_STATIC)
#define TARVANE_VESSEL_API __declspec(dllimport)
#elif defined(__GNUC__)
#define TARVANE_VESSEL_API __attribute__((visibility("default")))
#else
#define TARVANE_VESSEL_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* The number of this header, which tarvane_open compares with that of the library. */
enum { TARVANE_VESSEL_ABI = 1 };

/* A folder of data files, and the latest texts. */
typedef struct TARVANE_VESSEL TARVANE_VESSEL;

/* What a call returns. Where it is not TARVANE_OK tarvane_last_error has more. */
enum {
    TARVANE_OK = 0,             /* calculated; whether it passes is in the result */
    TARVANE_FAULTY = 1,         /* all faults of the request are listed; nothing was calculated */
    TARVANE_ENGINE_STOPPED = 2, /* the engine stopped; its code is the value of the fault */
    TARVANE_NO_DATA = 3,        /* data folder, or a file in it, missing or unreadable */
    TARVANE_INTERNAL = 4        /* no memory, a null pointer, a header of another number */
};

/* What a result has besides verdicts and inputs; bits of `want`, added. Other bits are faults. */
enum {
    TARVANE_WANT_RESULTS = 1, /* results and checks of each component */
    TARVANE_WANT_REPORT = 2,  /* the lines of its report */
    TARVANE_WANT_DRAWINGS = 8 /* drawings of each component and of the vessel, as SVG */
};

/*
** tarvane_open - a handle, for the other calls.
**   abi          TARVANE_VESSEL_ABI
**   data_folder  of the data files; a null pointer or an empty text: that of the environment variable TARVANE_DATA,
**                else the first with data files of the library's own folder, share/tarvane beside that folder,
**                share/tarvane beside the program's folder, and share/tarvane where the library was installed
**   vessel       receives the handle, to be closed by tarvane_close
** Returns TARVANE_OK; TARVANE_NO_DATA where the folder, or data files in it, are missing, with a handle that
** calculates what needs none of them; TARVANE_INTERNAL, and a null pointer as handle. tarvane_last_error
** says with the handle, and with a null pointer in the same thread, what is wrong.
*/
TARVANE_VESSEL_API int32_t tarvane_open(int32_t abi, const char* data_folder,
                                        TARVANE_VESSEL** vessel);

/* tarvane_close - ends a handle and its texts. No call with it may be under way. A null pointer does nothing. */
TARVANE_VESSEL_API void tarvane_close(TARVANE_VESSEL* vessel);

/* tarvane_version - of the product, "1.0.0". It lives as long as the library. */
TARVANE_VESSEL_API const char* tarvane_version(void);

/*
** tarvane_last_error - why the latest call with a handle failed; with a null pointer, why the latest failed one of
** tarvane_open and of the calls with values in this thread did. A JSON array of faults, in the order of the request, "[]" after a call that succeeded:
**   [{"path": "flange[0].P", "value": "the text \"ten\"", "reason": "a number in psig is expected, ..."}]
** "path" is empty for the request as a whole, "value" empty where none was given. This call ends no other
** texts.
*/
TARVANE_VESSEL_API const char* tarvane_last_error(const TARVANE_VESSEL* vessel);

/*
** tarvane_schema - the vocabulary for other programs.
**   what  "input" or "result": JSON Schema, draft 2020-12, of a request or of a result, as editors take it. A request
**         that it accepts can still have faults: rules over several keys are not in it.
**         "keys": JSON, for each kind of component all that its tables say about keys, results and checks
** Returns a text of the handle, or a null pointer with the reason in tarvane_last_error.
*/
TARVANE_VESSEL_API const char* tarvane_schema(TARVANE_VESSEL* vessel, const char* what);

/*
** tarvane_calculate - a request calculated.
**   request  JSON: at most 64 levels deep, each key once in an object; the components by kind, "flange", "shell",
**            "external", "compression", "mdmt", each a list of objects; what holds for all of them in "vessel" or at
**            the head
**   want     bits of TARVANE_WANT_RESULTS and so on; 0: verdicts and inputs
**   result   receives the result, JSON; a null pointer unless TARVANE_OK
** Returns TARVANE_OK, TARVANE_FAULTY, TARVANE_ENGINE_STOPPED, TARVANE_NO_DATA or TARVANE_INTERNAL.
**
** Members of the result:
**   tarvane     1, the number of its form
**   program     tarvane_version
**   units       name of the unit system, or of the one that a table of units starts from
**   unit_system  by quantity the factor that turns the engine's unit into that of the result, and its label; of a
**               temperature the offset and the scale that turn that of the result into degrees F. As in a request
**   verdict     "pass"; "fail"; "not made": something that the code asks for could not be checked
**   says        the verdict in words, with what fails and what is waived
**   governing   component and check that are nearest to their limit or furthest beyond; null without checks
**   data_edition  the name that a user gave to data files of his own; not there for those that are shipped
**   data        files that were used: the version of the folder's data_version.txt, their SHA-256, and of the items
**               in them the status, "approximate", "published" or "checked", and the edition and the source as far
**               as they are known
**   not_covered what the design code requires of such a vessel and tarvane does not check
**   flange and so on: lists of the components in the order of the request, each with
**     description
**     verdict   as above
**     says      the check that governs, in words, and what is waived
**     governing its id; null where no check was required
**     inputs    by key the value that was used, as it was given, and where it comes from
**     results   by name, a choice by the name of its value; null where there is no value or none that is finite
**     why       of each result without a value, the reason
**     checks    the worst first: id, paragraph, case, demand, operator, limit, unit, ratio (at most 1 when passed),
**               state; force: what a row that fails does, "decides" (the component can't pass), "warns" (a note says
**               so) or "advises" (the row alone does); whether the user may waive it; a remark beside a row that
**               passes within the tolerance alone; a reason in words; the step that shows how the demand is found
**     messages  of the engine; some belong to the report and are missing without it
**     notes     on what was taken, and reasons of the verdict
**     report    lines: text, and the six style marks
**     drawings  name and SVG: "section", to scale; "chart", of external pressure with its point. The font that
**               they name is not in them; without it each text is fitted into its length
**   drawings    the vessel from outside, "outline"; only where two components or more have an elevation
*/
TARVANE_VESSEL_API int32_t tarvane_calculate(TARVANE_VESSEL* vessel, const char* request,
                                             int32_t want, const char** result);

/*
** Progress of a sweep: called now and then, between rows, and at the end, with the rows that are done and all of
** them. It may call the library, except tarvane_close with the handle of the sweep. What it
** returns: 0 goes on, anything else ends the sweep.
*/
typedef int32_t (*TARVANE_PROGRESS)(void* user, int64_t done, int64_t rows);

/*
** tarvane_sweep - one request with many values, arrays in and arrays out.
**   request   as for tarvane_calculate
**   inputs    names, ending in a null pointer: "flange[0].t" of a component, "vessel.P" of all that take it from
**             there. The request need not have a value there; one that it has is ignored. "flange[0].t [mm]": the
**             numbers are in this unit
**   outputs   names, ending in a null pointer: "flange[0].results.mawp", a result; "flange[0].passed", 1 or 0;
**             of the check that governs "flange[0].ratio" and "flange[0].governing", its place in the list of
**             checks of "keys", from 0 on; "vessel.passed", "vessel.ratio" and "vessel.governing", the place of
**             the component in the request, from 0 on
**   rows      0 or more
**   x         rows by inputs, in the units of the request or of the input; a flag is 0 or 1, a choice its number
**   y         receives rows by outputs, in the units of the request: singles, bit for bit those that
**             tarvane_calculate finds with the values of the row, a choice as its number; NaN where there is no value
**   fault     may be a null pointer; receives for each row 0, or k: the k-th fault, from 1 on, of
**             tarvane_last_error is the first of the row, all of whose outputs are NaN then
**   progress  may be a null pointer, user is handed on to it
**   done      may be a null pointer; receives the number of rows calculated; those after them are untouched
** Returns as tarvane_calculate. TARVANE_OK also when rows have faults or progress ended the sweep. A request that
** is at fault whatever the inputs, and an unknown name, are faults of the call, and nothing is calculated.
*/
TARVANE_VESSEL_API int32_t tarvane_sweep(TARVANE_VESSEL* vessel, const char* request,
                                         const char* const* inputs, const char* const* outputs,
                                         int64_t rows, const double* x, double* y, int32_t* fault,
                                         TARVANE_PROGRESS progress, void* user, int64_t* done);

/*
** Values - a request that a host makes, and a result or the faults that it reads, for hosts without a reader and
** writer of JSON of their own. They need no handle. Each value has a path, as in faults and sweeps:
** "flange[0].P", "flange[0].results.mawp", "flange[0].checks[2].ratio", "[0].reason" of a list of faults; an empty
** path, or a null pointer, is all of it. One thread at a time may change values; any number may read them.
*/
typedef struct TARVANE_VALUES TARVANE_VALUES;

/* Kinds of a value. */
enum {
    TARVANE_NOTHING = 0, /* there is no such path */
    TARVANE_NULL = 1,    /* a result without a value: see "why" of its component */
    TARVANE_FLAG = 2,
    TARVANE_NUMBER = 3,
    TARVANE_TEXT = 4,
    TARVANE_LIST = 5,
    TARVANE_OBJECT = 6
};

/*
** tarvane_values - values, of a JSON text or, for an empty text or a null pointer, none yet. A null pointer for what
** is no JSON, with the reason in tarvane_last_error(null pointer). To be closed by tarvane_values_close, which ends
** its texts, and does nothing with a null pointer.
*/
TARVANE_VESSEL_API TARVANE_VALUES* tarvane_values(const char* json);
TARVANE_VESSEL_API void tarvane_values_close(TARVANE_VALUES* values);

/*
** tarvane_put_number, tarvane_put_text, tarvane_put_flag - a value at a path, in the place of what may be there;
** objects and lists on the way are made, a list place by place from 0 on. A number in a unit of its own is a
** text, "30 mm".
** Returns TARVANE_OK; TARVANE_FAULTY, and nothing is changed, for a path that leads nowhere, a number that is not
** finite and a path or text that is not UTF-8, with the reason in tarvane_last_error(null pointer); TARVANE_INTERNAL
** without memory.
*/
TARVANE_VESSEL_API int32_t tarvane_put_number(TARVANE_VALUES* values, const char* path,
                                              double number);
TARVANE_VESSEL_API int32_t tarvane_put_text(TARVANE_VALUES* values, const char* path,
                                            const char* text);
TARVANE_VESSEL_API int32_t tarvane_put_flag(TARVANE_VALUES* values, const char* path, int32_t flag);

/* tarvane_json - values as JSON, a request for the other calls: valid until the next tarvane_json with them. */
TARVANE_VESSEL_API const char* tarvane_json(TARVANE_VALUES* values);

/* tarvane_kind - of the value at a path: TARVANE_NOTHING and so on. */
TARVANE_VESSEL_API int32_t tarvane_kind(const TARVANE_VALUES* values, const char* path);

/*
** tarvane_number - a number; of a flag 1 or 0; NaN where there is none. As a float it is, to the bit, the single that
** was calculated.
*/
TARVANE_VESSEL_API double tarvane_number(const TARVANE_VALUES* values, const char* path);

/* tarvane_text - a text, valid until the next change of the values; a null pointer where there is none. */
TARVANE_VESSEL_API const char* tarvane_text(const TARVANE_VALUES* values, const char* path);

/* tarvane_count - members of an object, items of a list; else 0. */
TARVANE_VESSEL_API int64_t tarvane_count(const TARVANE_VALUES* values, const char* path);

/* tarvane_name - of the k-th member of an object, from 0 on, as tarvane_text; a null pointer where there is none. */
TARVANE_VESSEL_API const char* tarvane_name(const TARVANE_VALUES* values, const char* path,
                                            int64_t place);

#ifdef __cplusplus
}
#endif

#endif
