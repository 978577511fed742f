/* The flat C interface of libquor_g16_gjf: read, look at, edit and write Gaussian 16 job files from C or any language that
 * calls C.
 *
 * A tour
 * ------
 * Open. A handle owns one job, or all jobs of a file. NULL means failure; the message tells why.
 *
 *     quor_gjf_editor* job = gjf_editor_create_from_file("ts.gjf");
 *     if (job == NULL) { fprintf(stderr, "%s\n", gjf_get_last_error()); return 1; }
 *
 * Look. Atoms count from 0. Text goes into a buffer of yours; it is never cut short: one that does not fit, or that holds a
 * null character, is a failure.
 *
 *     char element[8];
 *     for (int i = 0; i < gjf_editor_get_atom_count(job); ++i)
 *         if (gjf_editor_get_atom_element(job, i, element, sizeof element) == 0) puts(element);
 *
 * Edit. A refused edit leaves the job as it was.
 *
 *     gjf_editor_set_freeze_by_element(job, "C", -1);
 *
 * Save. The file is the old one or the whole new one, never half of it.
 *
 *     int status = gjf_editor_save_to_file(job, "frozen.gjf");
 *     if (status != 0) fprintf(stderr, "%s\n", gjf_editor_last_error(job));
 *     gjf_editor_destroy(job);
 *
 * Keep. A document changes nothing in the file but what was edited: comments, columns, Z-matrices and digits stay.
 *
 *     quor_gjf_document* file = gjf_document_open("ts.gjf");
 *     gjf_editor_set_freeze_by_element(gjf_document_job(file, 0), "C", -1);
 *     if (gjf_document_save(file, 0) < 0) fprintf(stderr, "%s\n", gjf_document_last_error(file));
 *     gjf_document_destroy(file);
 *
 * Errors. Functions that return int give 0, a count or a value on success and -1 on failure unless they say otherwise.
 * Some setters return nothing: their failure shows in the message alone. Every failure stores a message in the handle and
 * in the calling thread; every success empties both. A message is valid until the next call for the same handle or thread.
 * A NULL handle stores "editor handle is null" ("multi editor handle is null", "document handle is null") in the thread. No
 * C++ exception leaves a function. When memory runs out the message is "std::bad_alloc" and the job is as it was.
 *
 * Threads. A handle is used by one thread at a time; different handles may be used in different threads. A document and the
 * handles of its jobs count as one handle.
 */
#ifndef QUOR_GJF_C_API_QUOR_G16_GJF_H
#define QUOR_GJF_C_API_QUOR_G16_GJF_H

#include <stddef.h>

#ifndef QUOR_GJF_C_API
#if defined(__GNUC__) || defined(__clang__)
#define QUOR_GJF_C_API __attribute__((visibility("default")))
#else
#define QUOR_GJF_C_API
#endif
#endif

#ifdef __cplusplus
#define QUOR_GJF_C_NOEXCEPT noexcept
extern "C" {
#else
#define QUOR_GJF_C_NOEXCEPT
#endif

/* One job with its editor and its last message. */
typedef struct quor_gjf_editor quor_gjf_editor;

/* All jobs of a file with their editors and a last message. */
typedef struct quor_gjf_multi_editor quor_gjf_multi_editor;

/* A job file that keeps every byte that is not changed. Since 0.2.0. */
typedef struct quor_gjf_document quor_gjf_document;

/* The answer to a request. Since 0.2.0. */
typedef struct quor_gjf_result gjf_result;

/* A language server: what an editor asks about job files. Since 0.2.0. */
typedef struct quor_gjf_server gjf_server;

/* --- Library
 * ------------------------------------------------------------------------------------------------------------------ */

/* The version this header belongs to. A program may compare it with that of the library it runs with. */
#define QUOR_GJF_VERSION_MAJOR 0
#define QUOR_GJF_VERSION_MINOR 2
#define QUOR_GJF_VERSION_PATCH 0

/* Returns the library's version, as in "0.2.0". Static; never NULL. */
QUOR_GJF_C_API const char* quor_gjf_version(void) QUOR_GJF_C_NOEXCEPT;

/* Returns the calling thread's last message, empty after a success. Never NULL; not to be freed. The two are the same. */
QUOR_GJF_C_API const char* gjf_get_last_error(void) QUOR_GJF_C_NOEXCEPT;
QUOR_GJF_C_API const char* gjf_editor_get_last_error(void) QUOR_GJF_C_NOEXCEPT;

/* --- One job
 * ------------------------------------------------------------------------------------------------------------------ */

/* Reads the first job of a text. Returns a handle to be freed with gjf_editor_destroy, or NULL: "content is null", or why
 * the text cannot be read. */
QUOR_GJF_C_API quor_gjf_editor* gjf_editor_create_from_string(const char* content) QUOR_GJF_C_NOEXCEPT;

/* Reads the first job of a file. Returns a handle to be freed with gjf_editor_destroy, or NULL: "filename is null", or why
 * the file cannot be read. */
QUOR_GJF_C_API quor_gjf_editor* gjf_editor_create_from_file(const char* filename) QUOR_GJF_C_NOEXCEPT;

/* Frees a handle; NULL is ignored, and so is the handle of a document's job, which the document frees. */
QUOR_GJF_C_API void gjf_editor_destroy(quor_gjf_editor* editor) QUOR_GJF_C_NOEXCEPT;

/* Returns the handle's last message, or the calling thread's for a NULL handle. Never NULL; not to be freed. */
QUOR_GJF_C_API const char* gjf_editor_last_error(const quor_gjf_editor* editor) QUOR_GJF_C_NOEXCEPT;

/* Returns the number of atoms, or -1: NULL handle, or "atom count does not fit in int". */
QUOR_GJF_C_API int gjf_editor_get_atom_count(quor_gjf_editor* editor) QUOR_GJF_C_NOEXCEPT;

/* Returns the charge of the first pair; 0 for a NULL handle. */
QUOR_GJF_C_API int gjf_editor_get_charge(quor_gjf_editor* editor) QUOR_GJF_C_NOEXCEPT;

/* Returns the multiplicity of the first pair, 0 when the job gives none; 0 for a NULL handle. */
QUOR_GJF_C_API int gjf_editor_get_spin(quor_gjf_editor* editor) QUOR_GJF_C_NOEXCEPT;

/* Copies an atom's element, with its NUL, into `buffer` of `buffer_size` bytes. Returns 0, or -1: NULL handle, "element
 * output buffer is invalid" (NULL, or no bytes), "atom index must not be negative", "atom index is out of range", "element
 * output buffer is too small". A valid buffer holds an empty text after a failure; a NULL handle leaves it as it was. */
QUOR_GJF_C_API int gjf_editor_get_atom_element(quor_gjf_editor* editor, int index, char* buffer,
                                               int buffer_size) QUOR_GJF_C_NOEXCEPT;

/* Stores an atom's coordinates in the job's own units; a coordinate that is a variable is 0. Returns 0, or -1: NULL handle,
 * "atom index or coordinate output pointer is invalid" (negative index, or a NULL pointer), "atom index is out of range". */
QUOR_GJF_C_API int gjf_editor_get_atom_coords(quor_gjf_editor* editor, int index, double* x, double* y,
                                              double* z) QUOR_GJF_C_NOEXCEPT;

/* Returns an atom's freeze code; -999 when it has none, and on failure: NULL handle, "atom index must not be negative",
 * "atom index is out of range". After -999 the message is empty when the atom has no code. */
QUOR_GJF_C_API int gjf_editor_get_atom_freeze(quor_gjf_editor* editor, int index) QUOR_GJF_C_NOEXCEPT;

/* Copies an atom's ONIOM layer into `buffer`. Returns 0; 1 when the atom has no layer (the buffer is then empty, which is no
 * error); or -1: NULL handle, "ONIOM layer output buffer is invalid", "atom index must not be negative", "atom index is out
 * of range", "ONIOM layer output buffer is too small". */
QUOR_GJF_C_API int gjf_editor_get_atom_oniom_layer(quor_gjf_editor* editor, int index, char* buffer,
                                                   int buffer_size) QUOR_GJF_C_NOEXCEPT;

/* Finds the atoms that a text selects, as in "C and not layer:H" or "within 5.0 of 12" (numbers in the text count from 1),
 * and stores the first `capacity` of their indices, ascending, in `indices`, which may be NULL when `capacity` is 0. Returns
 * how many are selected, or -1: NULL handle, "selection is null", "capacity must not be negative", "index output array is
 * null", what is wrong with the text, with its column, or why the job cannot tell. Since 0.2.0. */
QUOR_GJF_C_API int gjf_editor_select(quor_gjf_editor* editor, const char* selection, int* indices,
                                     int capacity) QUOR_GJF_C_NOEXCEPT;

/* Gives every atom a freeze code (0 free, -1 frozen). Fails for a NULL handle. */
QUOR_GJF_C_API void gjf_editor_set_freeze_all(quor_gjf_editor* editor, int code) QUOR_GJF_C_NOEXCEPT;

/* Gives every atom of an element, compared exactly, a freeze code. Fails for a NULL handle; "element is null". */
QUOR_GJF_C_API void gjf_editor_set_freeze_by_element(quor_gjf_editor* editor, const char* element,
                                                     int code) QUOR_GJF_C_NOEXCEPT;

/* Puts every atom into an ONIOM layer. Fails for a NULL handle; "ONIOM layer is null". */
QUOR_GJF_C_API void gjf_editor_set_oniom_layer_all(quor_gjf_editor* editor, const char* layer) QUOR_GJF_C_NOEXCEPT;

/* Puts every atom of an element into an ONIOM layer; atoms in no layer then get "L". Fails for a NULL handle; "element or
 * ONIOM layer is null". */
QUOR_GJF_C_API void gjf_editor_set_oniom_layer_by_element(quor_gjf_editor* editor, const char* element,
                                                          const char* layer) QUOR_GJF_C_NOEXCEPT;

/* Sets charge and multiplicity of the first pair. Fails for a NULL handle. */
QUOR_GJF_C_API void gjf_editor_set_charge_and_spin(quor_gjf_editor* editor, int charge,
                                                   int multiplicity) QUOR_GJF_C_NOEXCEPT;

/* Copies the job as job text into `buffer`, in the fixed layout. It drops, without an error: comments, a Z-matrix with its
 * variables, link atoms, Link 0 lines that a later one replaced, and digits of numbers that were changed beyond six
 * decimals; coordinates of 12 characters or more touch. gjf_document_to_string keeps all of these. Returns 0, or -1: NULL
 * handle, "GJF output buffer is invalid", "GJF output buffer is too small" (call again with a larger one). */
QUOR_GJF_C_API int gjf_editor_to_string(quor_gjf_editor* editor, char* buffer, int buffer_size) QUOR_GJF_C_NOEXCEPT;

/* Writes the text of gjf_editor_to_string, and what that drops is lost, to a file, whole or not at all; gjf_document_save
 * keeps it. Returns 0, or -1: NULL handle, "filename is null",
 * "Cannot write file: PATH". */
QUOR_GJF_C_API int gjf_editor_save_to_file(quor_gjf_editor* editor, const char* filename) QUOR_GJF_C_NOEXCEPT;

/* Puts an atom into an ONIOM layer; atoms in no layer then get "L". Returns 0, or -1: NULL handle, "ONIOM layer is null",
 * "atom index must not be negative", "atom index is out of range". */
QUOR_GJF_C_API int gjf_editor_set_atom_oniom_layer(quor_gjf_editor* editor, int index,
                                                   const char* layer) QUOR_GJF_C_NOEXCEPT;

/* Adds an atom behind the last one, with `bond_count` bonds to the atoms `partners` of the orders `orders`; an order that is
 * not above 0 makes no bond. Returns the new atom's index, or -1: NULL handle, "element is null", "bond count must not be
 * negative", "bond partner or order array is null" (with bonds), "atom index must not be negative", or the message of a
 * refused bond. */
QUOR_GJF_C_API int gjf_editor_add_atom(quor_gjf_editor* editor, const char* element, double x, double y, double z,
                                       const int* partners, const double* orders, int bond_count) QUOR_GJF_C_NOEXCEPT;

/* Replaces the method of the route; its options go. Returns 0, or -1: NULL handle, "method is null", or why it is refused.
 */
QUOR_GJF_C_API int gjf_editor_set_model_chemistry_method(quor_gjf_editor* editor, const char* method) QUOR_GJF_C_NOEXCEPT;

/* Replaces the basis set of a method/basis route. Returns 0, or -1: NULL handle, "basis is null", or why it is refused. */
QUOR_GJF_C_API int gjf_editor_set_model_chemistry_basis(quor_gjf_editor* editor, const char* basis) QUOR_GJF_C_NOEXCEPT;

/* --- All jobs of a file
 * ------------------------------------------------------------------------------------------------------- */

/* Reads every job of a text. Returns a handle to be freed with gjf_multi_editor_destroy, or NULL: "content is null", or why
 * a job cannot be read. */
QUOR_GJF_C_API quor_gjf_multi_editor* gjf_multi_editor_create_from_string(const char* content) QUOR_GJF_C_NOEXCEPT;

/* Reads every job of a file. Returns a handle to be freed with gjf_multi_editor_destroy, or NULL: "filename is null", or why
 * the file cannot be read. */
QUOR_GJF_C_API quor_gjf_multi_editor* gjf_multi_editor_create_from_file(const char* filename) QUOR_GJF_C_NOEXCEPT;

/* Frees a handle; NULL is ignored. Editors got from it live on. */
QUOR_GJF_C_API void gjf_multi_editor_destroy(quor_gjf_multi_editor* editor) QUOR_GJF_C_NOEXCEPT;

/* Returns the handle's last message, or the calling thread's for a NULL handle. Never NULL; not to be freed. */
QUOR_GJF_C_API const char* gjf_multi_editor_last_error(const quor_gjf_multi_editor* editor) QUOR_GJF_C_NOEXCEPT;

/* Returns the number of jobs, or -1: NULL handle, or "job count does not fit in int". */
QUOR_GJF_C_API int gjf_multi_editor_job_count(quor_gjf_multi_editor* editor) QUOR_GJF_C_NOEXCEPT;

/* Reads one job from a text and adds it behind the last. Returns 0, or -1: NULL handle, "content is null", or why it cannot
 * be read. */
QUOR_GJF_C_API int gjf_multi_editor_add_job_from_string(quor_gjf_multi_editor* editor,
                                                        const char* content) QUOR_GJF_C_NOEXCEPT;

/* Removes a job. Returns 0, or -1: NULL handle, "job index must not be negative", "Invalid job index: N (total jobs: M)". */
QUOR_GJF_C_API int gjf_multi_editor_remove_job(quor_gjf_multi_editor* editor, int index) QUOR_GJF_C_NOEXCEPT;

/* Copies all jobs as one text into `buffer`, each as gjf_editor_to_string writes it; gjf_document_to_string keeps what that
 * drops. Returns 0, or -1: NULL handle, "GJF output buffer is invalid", "GJF output
 * buffer is too small". */
QUOR_GJF_C_API int gjf_multi_editor_to_string(quor_gjf_multi_editor* editor, char* buffer,
                                              int buffer_size) QUOR_GJF_C_NOEXCEPT;

/* Writes the text of gjf_multi_editor_to_string, and what that drops is lost, to a file, whole or not at all;
 * gjf_document_save keeps it. Returns 0, or -1: NULL handle, "filename is null", "Cannot write file:
 * PATH". */
QUOR_GJF_C_API int gjf_multi_editor_save_to_file(quor_gjf_multi_editor* editor, const char* filename) QUOR_GJF_C_NOEXCEPT;

/* Returns a new handle, to be freed with gjf_editor_destroy, that holds a copy of a job: edits do not reach the job. NULL:
 * NULL handle, "job index must not be negative", "Invalid job index: N (total jobs: M)". */
QUOR_GJF_C_API quor_gjf_editor* gjf_multi_editor_clone_job(quor_gjf_multi_editor* editor, int index) QUOR_GJF_C_NOEXCEPT;

/* The same as gjf_multi_editor_clone_job: a copy, not a view. */
QUOR_GJF_C_API quor_gjf_editor* gjf_multi_editor_get_job(quor_gjf_multi_editor* editor, int index) QUOR_GJF_C_NOEXCEPT;

/* Replaces a job by a copy of the one in `job`. Returns 0, or -1: NULL handle, "job handle is null", "job index must not be
 * negative", "Invalid job index: N (total jobs: M)". */
QUOR_GJF_C_API int gjf_multi_editor_set_job(quor_gjf_multi_editor* editor, int index,
                                            const quor_gjf_editor* job) QUOR_GJF_C_NOEXCEPT;

/* --- Documents: edits that move nothing else. All since 0.2.0.
 * ------------------------------------------------------------------------------------------------------------------ */

/* Takes the text of a job file. Returns a handle to be freed with gjf_document_destroy, or NULL: "content is null", or why
 * no job can be read. Jobs that cannot be read among others stay texts. */
QUOR_GJF_C_API quor_gjf_document* gjf_document_create_from_string(const char* content) QUOR_GJF_C_NOEXCEPT;

/* Opens a job file. Returns a handle to be freed with gjf_document_destroy, or NULL: "filename is null", or why the file
 * cannot be read. */
QUOR_GJF_C_API quor_gjf_document* gjf_document_open(const char* filename) QUOR_GJF_C_NOEXCEPT;

/* Frees a document with the handles of its jobs; NULL is ignored. */
QUOR_GJF_C_API void gjf_document_destroy(quor_gjf_document* document) QUOR_GJF_C_NOEXCEPT;

/* Returns the handle's last message, or the calling thread's for a NULL handle. Never NULL; not to be freed. */
QUOR_GJF_C_API const char* gjf_document_last_error(const quor_gjf_document* document) QUOR_GJF_C_NOEXCEPT;

/* Returns the number of jobs, or -1: NULL handle, or "job count does not fit in int". */
QUOR_GJF_C_API int gjf_document_job_count(quor_gjf_document* document) QUOR_GJF_C_NOEXCEPT;

/* Returns the handle of a job: a view, edits through it reach the document. It is valid as long as the document and not to
 * be freed. NULL: NULL handle, "job index must not be negative", "Invalid job index: N (total jobs: M)", or why
 * this job cannot be read. */
QUOR_GJF_C_API quor_gjf_editor* gjf_document_job(quor_gjf_document* document, int index) QUOR_GJF_C_NOEXCEPT;

/* Tells whether a job can be read: 1, or 0 for one that stays the text that it is; or -1: NULL handle, "job index must not
 * be negative", "Invalid job index: N (total jobs: M)". */
QUOR_GJF_C_API int gjf_document_readable(quor_gjf_document* document, int index) QUOR_GJF_C_NOEXCEPT;

/* Copies why a job cannot be read into `buffer`, and returns the line (from 1) where that lies; an empty text and 0 for a
 * job that can be read. Returns -1: as gjf_document_readable, "fault output buffer is invalid", "fault output buffer is too
 * small". */
QUOR_GJF_C_API int gjf_document_fault(quor_gjf_document* document, int index, char* buffer,
                                      int buffer_size) QUOR_GJF_C_NOEXCEPT;

/* Returns how many bytes the changed text takes, its NUL included, or -1: NULL handle, "text size does not fit in int", or
 * why the changes cannot be written. With `force` not 0, text that cannot follow a change stays as it is. The text is kept
 * until it is copied by gjf_document_to_string, or a handle of the document or of its jobs is used otherwise. */
QUOR_GJF_C_API int gjf_document_text_size(quor_gjf_document* document, int force) QUOR_GJF_C_NOEXCEPT;

/* Copies the changed text into `buffer`: all that was not edited has its bytes. Returns 0, or -1: as gjf_document_text_size,
 * "GJF output buffer is invalid", "GJF output buffer is too small". */
QUOR_GJF_C_API int gjf_document_to_string(quor_gjf_document* document, int force, char* buffer,
                                          int buffer_size) QUOR_GJF_C_NOEXCEPT;

/* Writes the changed text to the file that was opened, whole or not at all, unless nothing changed. Returns 1 when it wrote,
 * 0 when there was nothing to write, or -1: NULL handle, "This document was not opened from a file", "File has changed since
 * it was opened: PATH" (unless forced), "Cannot write file: PATH", or why the changes cannot be written. */
QUOR_GJF_C_API int gjf_document_save(quor_gjf_document* document, int force) QUOR_GJF_C_NOEXCEPT;

/* Writes the changed text to another file. Returns 0, or -1: NULL handle, "filename is null", "Cannot write file: PATH", or
 * why the changes cannot be written. */
QUOR_GJF_C_API int gjf_document_save_as(quor_gjf_document* document, const char* filename, int force) QUOR_GJF_C_NOEXCEPT;

/* --- Requests: the commands of quor-gjf over one text, with its JSON as the answer. All since 0.2.0.
 * ------------------------------------------------------------------------------------------------------------------ */

/* Runs `command` (check, fix, report, route, complete, outline, select, diff, edit, find, diagnose) on the `size` bytes of
 * `text`, which may hold NUL. `options` is a JSON object with the long names of the tool's options, or NULL. Returns a
 * result to be freed with gjf_result_destroy; where the command fails its text is an object with "error". NULL: "command is
 * null", "text is null", or no memory is left; see gjf_editor_last_error(NULL). Freeing JSON takes memory too: where that is
 * not to be had, the process ends. */
QUOR_GJF_C_API gjf_result* gjf_request(const char* command, const char* text, size_t size,
                                       const char* options) QUOR_GJF_C_NOEXCEPT;

/* Returns the answer: UTF-8 with a line feed and a NUL at its end, valid as long as the result. Empty for NULL. */
QUOR_GJF_C_API const char* gjf_result_text(const gjf_result* result) QUOR_GJF_C_NOEXCEPT;

/* Returns the size of the answer in bytes, its NUL not counted; 0 for NULL. */
QUOR_GJF_C_API size_t gjf_result_size(const gjf_result* result) QUOR_GJF_C_NOEXCEPT;

/* Frees a result; NULL is ignored. */
QUOR_GJF_C_API void gjf_result_destroy(gjf_result* result) QUOR_GJF_C_NOEXCEPT;

/* --- Language server: the Language Server Protocol 3.17, message by message; it has no input, output or threads of its own,
 * and opens no file that a client names. All since 0.2.0.
 * ------------------------------------------------------------------------------------------------------------------ */

/* Makes a server, to be freed with gjf_server_destroy. NULL: no memory is left; see gjf_editor_last_error(NULL). */
QUOR_GJF_C_API gjf_server* gjf_server_create(void) QUOR_GJF_C_NOEXCEPT;

/* Gives the server a message: `size` bytes of JSON, without header. Returns the messages that answer it, to be freed with
 * gjf_result_destroy: one a line, none where nothing is to be answered. What is no message is answered by an error. NULL:
 * "server is null", "message is null", or no memory is left. */
QUOR_GJF_C_API gjf_result* gjf_server_message(gjf_server* server, const char* message, size_t size) QUOR_GJF_C_NOEXCEPT;

/* Tells whether something was put off, as checking a text that was changed: 1 or 0; or -1: "server is null". */
QUOR_GJF_C_API int gjf_server_has_work(gjf_server* server) QUOR_GJF_C_NOEXCEPT;

/* Does one piece of what was put off and returns the messages that come of it, as gjf_server_message does. To be called when
 * no message waits. NULL: "server is null", or no memory is left. */
QUOR_GJF_C_API gjf_result* gjf_server_work(gjf_server* server) QUOR_GJF_C_NOEXCEPT;

/* Frees a server; NULL is ignored. */
QUOR_GJF_C_API void gjf_server_destroy(gjf_server* server) QUOR_GJF_C_NOEXCEPT;

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* QUOR_GJF_C_API_QUOR_G16_GJF_H */
