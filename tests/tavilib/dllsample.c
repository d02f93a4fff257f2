/* SPDX-License-Identifier: MIT */

/* The shared object of tst_tavidll. */

#include <stddef.h>

#define SHOWN __attribute__((visibility("default")))

SHOWN int sampleWord = 7;
SHOWN int sampleTwice(int value);
SHOWN void sampleTellUnload(int *flag);
int sampleHidden(void);

static int *unload_flag = NULL;

int sampleTwice(int value)
{
    return 2 * value;
}

/* *flag is counted up when the object is unloaded. */
void sampleTellUnload(int *flag)
{
    unload_flag = flag;
}

int sampleHidden(void)
{
    return 1;
}

__attribute__((destructor)) static void unloading(void)
{
    if (unload_flag)
        ++*unload_flag;
}
