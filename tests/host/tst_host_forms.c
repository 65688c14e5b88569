/* Wizard forms through the host interface, from plain C: a form is loaded from a .ui
 * file, shows the host's values, follows the host's online switch and pushes, and
 * cancels its subscriptions when it goes. */

#include "drivewiz/host_api.h"

#include "c_check.h"

#include <stdio.h>
#include <string.h>


#define ADR_A01 0x01004000u
#define ADR_A34 0x01088000u
#define ADR_A80 0x01140000u

static char hostA80[16] = "42";
static int writes;
static int subscriptions;

static int32_t fill(char *buffer, int32_t size, const char *value)
{
    if (buffer && size > 0) {
        strncpy(buffer, value, (size_t)size - 1);
        buffer[size - 1] = '\0';
    }
    return (int32_t)strlen(value);
}

static int32_t getValue(char *buffer, int32_t size, uint32_t wizardId, uint32_t address,
                        uint8_t *status)
{
    (void)wizardId;
    *status = 0;
    switch (address) {
    case ADR_A80:
        return fill(buffer, size, hostA80);
    case ADR_A01:
        return fill(buffer, size, "Host name");
    case ADR_A34:
        return fill(buffer, size, "1");
    default:
        return fill(buffer, size, "1: intern 100 Ohm");
    }
}

static char setValue(const char *value, uint32_t wizardId, uint32_t address, int32_t reserved)
{
    (void)value;
    (void)wizardId;
    (void)address;
    (void)reserved;
    ++writes;
    return 0;
}

static void subscribe(uint32_t wizardId, uint32_t address, int32_t cycleMs)
{
    (void)wizardId;
    (void)address;
    subscriptions += cycleMs > 0 ? 1 : -1;
}

static int valueIs(dwz_table *table, const char *coordinate, const char *expected)
{
    char value[64];
    return dwz_table_value(table, coordinate, value, sizeof value) >= 0 &&
           strcmp(value, expected) == 0;
}

static int failsWith(dwz_form *form, const char *part)
{
    return form == NULL && strstr(dwz_last_error(), part) != NULL;
}

static void badForms(const dwz_callbacks *cb)
{
    const char *params = DRIVEWIZ_SAMPLE_DIR "/Parameter.csv";
    CHECK(failsWith(dwz_form_create(NULL, cb, 1, 2, 0, DWZ_OFFLINE, params), "no form file"));
    CHECK(failsWith(dwz_form_create(TEST_FORMS "/Missing.ui", cb, 1, 2, 0, DWZ_OFFLINE, params),
                    "Missing.ui"));
    CHECK(failsWith(dwz_form_create(params, cb, 1, 2, 0, DWZ_OFFLINE, params), "is no form"));
    CHECK(failsWith(dwz_form_create(TEST_FORMS "/NoTable.ui", cb, 1, 2, 0, DWZ_OFFLINE, params),
                    "TParaTable"));
    CHECK(failsWith(dwz_form_create(TEST_FORMS "/SmallWizard.ui", cb, 1, 2, 0, 3, params),
                    "online mode 3"));
}

/* Without callbacks the form shows the description file's values. */
static void withoutHost(void)
{
    dwz_form *form = dwz_form_create(TEST_FORMS "/SmallWizard.ui", NULL, 1, 2, 2, DWZ_READBACK,
                                     DRIVEWIZ_SAMPLE_DIR "/Parameter.csv");
    CHECK(form != NULL && dwz_last_error()[0] == '\0');
    CHECK(valueIs(dwz_form_table(form), "A80", "1"));
    CHECK(dwz_table_online(dwz_form_table(form)) == DWZ_READBACK);
    dwz_form_destroy(form);
}

static void onlineWithHost(dwz_form *form)
{
    const uintptr_t window = dwz_form_window(form);
    dwz_table *table = dwz_form_table(form);

    CHECK(window != 0 && window == dwz_table_window(table));
    CHECK(dwz_post_message(window, DWZ_MSG_ONLINE_MODE, DWZ_ONLINE, 0) == 1);
    dwz_process_events(50);
    CHECK(dwz_table_online(table) == DWZ_ONLINE);
    CHECK(subscriptions == 4);

    strcpy(hostA80, "77");
    CHECK(dwz_post_message(window, DWZ_MSG_TOOL, ADR_A80, 1) == 1);
    dwz_process_events(50);
    CHECK(valueIs(table, "A80", "77"));
    CHECK(writes == 0);
}

int main(int argc, char **argv)
{
    dwz_callbacks cb;
    dwz_form *form;
    uintptr_t window;

    CHECK(dwz_init(&argc, argv) == 1);
    memset(&cb, 0, sizeof cb);
    cb.get_para_value = getValue;
    cb.set_para_value = setValue;
    cb.subscribe = subscribe;

    badForms(&cb);
    withoutHost();

    form = dwz_form_create(TEST_FORMS "/SmallWizard.ui", &cb, 7, 2, 0, DWZ_OFFLINE,
                           DRIVEWIZ_SAMPLE_DIR "/Parameter.csv");
    CHECK(form != NULL);
    if (!form) {
        fprintf(stderr, "dwz_form_create: %s\n", dwz_last_error());
        return 1;
    }
    CHECK(valueIs(dwz_form_table(form), "A80", "42"));
    CHECK(valueIs(dwz_form_table(form), "A01", "Host name"));
    CHECK(dwz_form_result(form) == -1);
    CHECK(dwz_form_show(form) == 1);
    dwz_process_events(50);
    CHECK(subscriptions == 0);

    onlineWithHost(form);

    window = dwz_form_window(form);
    dwz_form_destroy(form);
    CHECK(subscriptions == 0);
    CHECK(dwz_post_message(window, DWZ_MSG_TOOL, ADR_A80, 1) == 0);
    dwz_form_destroy(NULL);
    CHECK(dwz_form_result(NULL) == -1 && dwz_form_window(NULL) == 0);
    CHECK(dwz_form_table(NULL) == NULL && dwz_form_show(NULL) == 0);

    return check_summary();
}
