/* A host program in plain C: it shows a wizard form over a drive it answers for itself.
 *
 *     c_host <form.ui> <Parameter.csv> <folder of wizling.n and wiz.cfg> [--auto]
 *
 * The README shows how to build it against a build tree. With --auto it closes the form
 * with OK after a moment instead of waiting for the user, so that `make test` can run it
 * on Qt's offscreen platform. */

#include "drivewiz/host_api.h"

#include <stdio.h>
#include <string.h>

/* The drive: every parameter reads "1" here; writes are printed. */
static int32_t getValue(char *buf, int32_t size, uint32_t wizard, uint32_t address,
                        uint8_t *status)
{
    (void)wizard;
    (void)address;
    *status = 0;
    if (buf && size > 1) strcpy(buf, "1"); /* called with buf NULL first for the length */
    return 1;
}

static char setValue(const char *value, uint32_t wizard, uint32_t address, int32_t reserved)
{
    (void)wizard;
    (void)reserved;
    printf("write %08x = %s\n", (unsigned)address, value);
    return 0; /* 0 = written, 'V' = refused while the drive's enable is on */
}

int main(int argc, char **argv)
{
    dwz_callbacks cb;
    dwz_form *form;
    int ok;
    const int automatic = argc > 4 && strcmp(argv[4], "--auto") == 0;
    if (argc < 4) {
        fprintf(stderr, "usage: c_host <form.ui> <Parameter.csv> <language folder> [--auto]\n");
        return 2;
    }
    memset(&cb, 0, sizeof cb);
    cb.get_para_value = getValue;
    cb.set_para_value = setValue;
    dwz_init(&argc, argv);            /* the Qt application, once */
    dwz_set_config_folder(argv[3]);   /* where wizling.<n> and wiz.cfg are */

    form = dwz_form_create(argv[1], &cb, 1 /* wizard id */, 2 /* user level */,
                           2 /* English */, DWZ_OFFLINE, argv[2]);
    if (!form) {
        fprintf(stderr, "no wizard: %s\n", dwz_last_error());
        return 1;
    }
    if (automatic) {
        dwz_form_show(form);
        dwz_process_events(200);
        ok = dwz_form_result(form) == -1; /* still open */
        printf("form shown, %s\n", ok ? "open" : "closed early");
    } else {
        ok = dwz_form_exec(form); /* offline, OK writes every value through setValue */
    }
    dwz_form_destroy(form);
    return ok ? 0 : 2;
}
