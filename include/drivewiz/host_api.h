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

/* Lets the library handle pending messages for up to `milliseconds`. */
DWZ_API void dwz_process_events(int milliseconds);

#ifdef __cplusplus
}
#endif

#endif /* DRIVEWIZ_HOST_API_H */
