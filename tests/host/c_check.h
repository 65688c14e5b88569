/* Checks for the tests written in plain C: each CHECK counts a pass or reports a
 * failure; check_summary() prints the totals and gives the exit code. */
#ifndef DRIVEWIZ_TESTS_C_CHECK_H
#define DRIVEWIZ_TESTS_C_CHECK_H

#include <stdio.h>

static int check_passed = 0;
static int check_failed = 0;

#define CHECK(cond)                                                                         \
    do {                                                                                    \
        if (cond) {                                                                         \
            ++check_passed;                                                                 \
        } else {                                                                            \
            ++check_failed;                                                                 \
            fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #cond);       \
        }                                                                                   \
    } while (0)

static int check_summary(void)
{
    printf("%d passed, %d failed\n", check_passed, check_failed);
    return check_failed == 0 ? 0 : 1;
}

#endif /* DRIVEWIZ_TESTS_C_CHECK_H */
