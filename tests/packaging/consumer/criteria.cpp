// SPDX-License-Identifier: MIT
// Prints the criteria sets that are found, one name a line.
#include <tavilib/calcheckcriteria.h>

#include <cstdio>

int main()
{
    for (const std::string &name : calcheckCriteriaNames())
        std::puts(name.c_str());
    return calcheckCriteriaFor(DELTAE_CIE76) && calcheckCriteriaFor(DELTAE_CIE2000) ? 0 : 1;
}
