/* The host interface used from plain C, as a host program would: a table is created,
 * loaded, given callbacks, switched online, written and pushed to from a thread. */

#include "drivewiz/host_api.h"

#include "c_check.h"

#include <pthread.h>
#include <stdio.h>
#include <string.h>


static char lastWrite[64];
static uint32_t lastAddress;
static int refuse;
static int subscriptions;

static int32_t getValue(char *buffer, int32_t size, uint32_t wizardId, uint32_t address,
                        uint8_t *status)
{
    static const char value[] = "1234";
    (void)wizardId;
    (void)address;
    *status = 0;
    if (buffer && size > 0) {
        strncpy(buffer, value, (size_t)size - 1);
        buffer[size - 1] = '\0';
    }
    return (int32_t)strlen(value);
}

static char setValue(const char *value, uint32_t wizardId, uint32_t address, int32_t reserved)
{
    (void)wizardId;
    (void)reserved;
    strncpy(lastWrite, value, sizeof lastWrite - 1);
    lastAddress = address;
    return refuse ? 'V' : 0;
}

static void subscribe(uint32_t wizardId, uint32_t address, int32_t cycleMs)
{
    (void)wizardId;
    (void)address;
    subscriptions += cycleMs > 0 ? 1 : -1;
}

static uintptr_t window;

static void *pushFromThread(void *arg)
{
    int i;
    (void)arg;
    for (i = 0; i < 1000; ++i)
        dwz_post_message(window, DWZ_MSG_TOOL, 0x01088000u, 1);
    dwz_post_message(window, DWZ_MSG_ONLINE_MODE, DWZ_OFFLINE, 0);
    return NULL;
}

int main(int argc, char **argv)
{
    dwz_callbacks callbacks;
    dwz_table *table;
    char value[32];
    pthread_t thread;
    int rows;

    CHECK(dwz_init(&argc, argv) == 1);
    table = dwz_table_create();
    CHECK(table != NULL);
    rows = dwz_table_load(table, DRIVEWIZ_SAMPLE_DIR "/Parameter.csv");
    CHECK(rows > 250);
    CHECK(dwz_table_value(table, "A34", value, sizeof value) >= 0);
    CHECK(dwz_table_value(table, "Z99", value, sizeof value) == -1);

    memset(&callbacks, 0, sizeof callbacks);
    callbacks.get_para_value = getValue;
    callbacks.set_para_value = setValue;
    callbacks.subscribe = subscribe;
    dwz_table_set_callbacks(table, &callbacks);
    dwz_table_set_wizard_id(table, 7, "CTest");

    CHECK(dwz_table_write(table, "A34", "250") == 0);
    CHECK(strcmp(lastWrite, "250") == 0);
    CHECK(lastAddress == 0x01088000u);
    refuse = 1;
    CHECK(dwz_table_write(table, "A34", "260") == 'V');
    refuse = 0;
    CHECK(dwz_table_refresh(table, "A34") == 1);
    CHECK(dwz_table_value(table, "A34", value, sizeof value) == 4 && strcmp(value, "1234") == 0);

    dwz_table_set_online(table, DWZ_READBACK);
    CHECK(dwz_table_write(table, "A34", "1") == -1 && strcmp(lastWrite, "260") == 0);
    dwz_table_set_online(table, DWZ_ONLINE);
    CHECK(dwz_table_online(table) == DWZ_ONLINE);

    window = dwz_table_window(table);
    CHECK(window != 0);
    pthread_create(&thread, NULL, pushFromThread, NULL);
    pthread_join(thread, NULL);
    dwz_process_events(50);
    CHECK(dwz_table_online(table) == DWZ_OFFLINE);

    dwz_table_destroy(table);
    CHECK(dwz_post_message(window, DWZ_MSG_TOOL, 1, 1) == 0);
    dwz_table_destroy(NULL);

    return check_summary();
}
