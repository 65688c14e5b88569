/*
 * drivewiz host interface: plain C, for host programs that load the library.
 *
 * A host gives the library its parameter description file and a set of callbacks through
 * which the library reads and writes drive parameter values; it pushes changes back by
 * posting messages to the table's window handle, from any thread. Texts are
 * zero-terminated UTF-8; lengths are in bytes and do not count the terminating zero.
 *
 * Callbacks that fill a buffer are called twice: first with buffer NULL and size 0, when
 * they return the length needed; then with a buffer of at least that length + 1.
 */
#ifndef DRIVEWIZ_HOST_API_H
#define DRIVEWIZ_HOST_API_H

#include <stdint.h>

#if defined(_WIN32)
#if defined(DRIVEWIZ_BUILD_LIBRARY)
#define DWZ_API __declspec(dllexport)
#else
#define DWZ_API __declspec(dllimport)
#endif
#else
#define DWZ_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* --- callbacks a host assigns -------------------------------------------------------- */

/* Reads a parameter value as text into buffer; returns its length. status: 0 = fine,
 * anything else is an error code the library reports (see fcbtGetErrorText). */
typedef int32_t (*fcbtGetParaValue)(char *buffer, int32_t size, uint32_t wizardId,
                                    uint32_t address, uint8_t *status);

/* Writes a parameter value; reserved is 0. Returns a status character: 0 = written,
 * 'V' = refused because the drive's enable is on, anything else an error code. */
typedef char (*fcbtSetParaValue)(const char *value, uint32_t wizardId, uint32_t address,
                                 int32_t reserved);

/* Asks for cyclic updates of a parameter every cycleMs milliseconds (posted as message
 * DWZ_MSG_TOOL); cycleMs -1 cancels the subscription. */
typedef void (*fcbtSubscribeParaUpdate)(uint32_t wizardId, uint32_t address, int32_t cycleMs);

/* The text of a host error code, for the error report; returns its length. */
typedef int32_t (*fcbtGetErrorText)(char *buffer, int32_t size, uint32_t wizardId,
                                    uint32_t address, uint8_t code);

/* The description of a parameter (fcbtGetParaInfoStr) or its selection list
 * (fcbtGetAuswahlInfoStr) as CSV: a title line, then the parameter's line(s), lines ended
 * by "\r\n". Returns the length. */
typedef int32_t (*fcbtGetParaInfoStr)(char *buffer, int32_t size, uint32_t wizardId,
                                      uint32_t address, uint8_t *status);
typedef int32_t (*fcbtGetAuswahlInfoStr)(char *buffer, int32_t size, uint32_t wizardId,
                                         uint32_t address, uint8_t *status);

/* The help text of a parameter as RTF; returns its length (0: none). */
typedef int32_t (*fcbtGetRTFHelpText)(char *buffer, int32_t size, uint32_t wizardId,
                                      uint32_t address);

/* All callbacks at once; any of them may be NULL. */
typedef struct dwz_callbacks {
    fcbtGetParaValue get_para_value;
    fcbtSetParaValue set_para_value;
    fcbtSubscribeParaUpdate subscribe;
    fcbtGetErrorText get_error_text;
    fcbtGetParaInfoStr get_para_info;
    fcbtGetAuswahlInfoStr get_auswahl_info;
    fcbtGetRTFHelpText get_help_text;
} dwz_callbacks;

/* --- messages ------------------------------------------------------------------------ */

/* A parameter changed in the drive: wParam = parameter address, lParam bit 0 set. */
#define DWZ_MSG_TOOL 0x8006
/* The online mode changed: wParam = DWZ_OFFLINE, DWZ_ONLINE or DWZ_READBACK. */
#define DWZ_MSG_ONLINE_MODE 0x8007

#define DWZ_OFFLINE 0
#define DWZ_ONLINE 1
#define DWZ_READBACK 2

/* Posts a message to a window handle of the library. Safe from any thread; returns 0
 * when the handle is unknown or already closed, else 1. */
DWZ_API int dwz_post_message(uintptr_t window, uint32_t message, uintptr_t wParam,
                             intptr_t lParam);

/* --- the application ----------------------------------------------------------------- */

/* Creates the Qt application object if the host has none yet (call once, on the thread
 * that runs the user interface). Returns 1 when it created one. */
DWZ_API int dwz_init(int *argc, char **argv);

/* Names the folder that holds the language files (wizling.1, wizling.2 ...) and wiz.cfg,
 * UTF-8; a relative path counts from the current working folder. Call it before
 * creating tables or forms. NULL or "" goes back to the default search: "../WizLingua/"
 * from the working folder when it holds wizling.1 or wizling.0, else the program's own
 * folder. */
DWZ_API void dwz_set_config_folder(const char *folder);

/* Lets the library handle pending messages for up to `milliseconds`. */
DWZ_API void dwz_process_events(int milliseconds);

/* --- a parameter table without a form -------------------------------------------------- */

/* A parameter table: descriptions, values and the link to the host. Wizard forms hold
 * their own; a host may also use one on its own. All calls on the user-interface thread. */
typedef struct dwz_table dwz_table;

DWZ_API dwz_table *dwz_table_create(void);
/* Frees a table (NULL is ignored). From inside one of its callbacks, as for forms. */
DWZ_API void dwz_table_destroy(dwz_table *table);
/* Copies the callbacks (NULL clears them all). */
DWZ_API void dwz_table_set_callbacks(dwz_table *table, const dwz_callbacks *callbacks);
/* The id handed to every callback, and the name of the wizard's section in wiz.cfg. */
DWZ_API void dwz_table_set_wizard_id(dwz_table *table, uint32_t id, const char *idString);
DWZ_API void dwz_table_set_user_level(dwz_table *table, int level);
DWZ_API void dwz_table_set_axis(dwz_table *table, int axis);
/* Language number: 1 German, 2 English ... (language files wizling.<n>). */
DWZ_API void dwz_table_set_language(dwz_table *table, int language);
/* Reads a description file and "Auswahlen.csv" beside it; returns the number of rows,
 * or -1 when the file could not be read (the user has been told why). */
DWZ_API int dwz_table_load(dwz_table *table, const char *descriptionFile);
DWZ_API void dwz_table_set_online(dwz_table *table, int mode);
DWZ_API int dwz_table_online(const dwz_table *table);
/* The handle to post DWZ_MSG_TOOL and DWZ_MSG_ONLINE_MODE to. */
DWZ_API uintptr_t dwz_table_window(const dwz_table *table);
/* The current value of a parameter ("B33", "2.B33.1") into buffer (two-call protocol);
 * returns its length, or -1 for an unknown parameter. */
DWZ_API int32_t dwz_table_value(dwz_table *table, const char *coordinate, char *buffer,
                                int32_t size);
/* Reads a parameter's value from the host into the table; returns 1 when it worked. */
DWZ_API int dwz_table_refresh(dwz_table *table, const char *coordinate);
/* Writes a value to the host as a wizard does; returns the host's status character
 * (0 = written, 'V' = refused while the enable is on), or -1 when nothing was written:
 * an unknown parameter, read-back mode, or no write callback. */
DWZ_API int dwz_table_write(dwz_table *table, const char *coordinate, const char *value);

/* --- wizard forms ------------------------------------------------------------------------ */

/* A wizard form loaded from a Qt Designer .ui file drawn with the library's classes. The
 * form owns its parameter table (the first TParaTable on it); the table talks to the
 * host through the callbacks given here. All calls on the user-interface thread, after
 * dwz_init. A form whose .ui file has no wizard page control with OK and Cancel buttons
 * gets plain "BtnOK" and "BtnCancel" buttons: OK writes all values when offline and
 * closes the form, Cancel closes it. */
typedef struct dwz_form dwz_form;

/* Why the last dwz_form_create on this thread failed, UTF-8 ("" after a success). */
DWZ_API const char *dwz_last_error(void);

/* Loads a form. callbacks may be NULL (no host: values come from the description file);
 * when they hold get_para_info, descriptions come from the host and descriptionFile is
 * not read. descriptionFile NULL keeps the file named in the form (FileNameParams).
 * userLevel 1..4 (0 keeps the form's), language 1 German, 2 English ... (0: the number
 * given as the program's first argument, else 1), onlineMode DWZ_OFFLINE, DWZ_ONLINE or
 * DWZ_READBACK. The values shown are read from the host when get_para_value is set.
 * Returns NULL when the file cannot be read, is no form, or has no parameter table;
 * dwz_last_error() then says why. */
DWZ_API dwz_form *dwz_form_create(const char *uiFile, const dwz_callbacks *callbacks,
                                  uint32_t wizardId, int userLevel, int language,
                                  int onlineMode, const char *descriptionFile);
/* The form's parameter table, for the dwz_table_* calls; owned by the form (never pass
 * it to dwz_table_destroy). */
DWZ_API dwz_table *dwz_form_table(dwz_form *form);
/* Shows the form modally until it is closed; returns 1 for OK, 0 for Cancel. */
DWZ_API int dwz_form_exec(dwz_form *form);
/* Shows the form without blocking; returns 1 when it is shown. */
DWZ_API int dwz_form_show(dwz_form *form);
/* 1 when the form was closed with OK, 0 when it was cancelled, -1 while it was never
 * closed (or for NULL). */
DWZ_API int dwz_form_result(const dwz_form *form);
/* Closes and frees the form; subscriptions at the host are cancelled first. Not from
 * inside one of the form's own callbacks: a form destroyed there is hidden at once, calls
 * the host no more, and is freed when the library is done with it; the user is told of
 * the host's fault. NULL is ignored. */
DWZ_API void dwz_form_destroy(dwz_form *form);
/* The handle of the form's parameter table: post DWZ_MSG_TOOL and DWZ_MSG_ONLINE_MODE
 * here. 0 for NULL. */
DWZ_API uintptr_t dwz_form_window(const dwz_form *form);
/* For C++ hosts: the form's top-level QWidget (a QDialog). */
DWZ_API void *dwz_form_widget(const dwz_form *form);

#ifdef __cplusplus
}
#endif

#endif /* DRIVEWIZ_HOST_API_H */
