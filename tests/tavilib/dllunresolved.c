/* SPDX-License-Identifier: MIT */

/* A shared object that needs a function which nobody has. */

int sampleNowhere(void);
__attribute__((visibility("default"))) int sampleCaller(void);

int sampleCaller(void)
{
    return sampleNowhere();
}
