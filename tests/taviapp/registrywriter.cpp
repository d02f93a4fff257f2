// SPDX-License-Identifier: MIT

/// The other process of the reliability tests.
///
///     registrywriter script PATH SEED FIRST   makes the changes of the script from number FIRST on, without end
///     registrywriter keys PATH SECTION COUNT  puts COUNT keys into a section, then ends
///
/// One byte goes to standard output when the store is open and one after each change. The second form waits for a
/// byte on standard input before it opens the store, so that several can be started off together.

#include "taviapp/taviregistry.h"
#include "tests/taviapp/registryscript.h"

#include <cstdlib>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

bool tell()
{
    return ::write(STDOUT_FILENO, ".", 1) == 1;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 5)
        return 2;
    const std::string_view form = argv[1];
    char go = 0;
    if (form == "keys" && !(tell() && ::read(STDIN_FILENO, &go, 1) == 1))
        return 1;
    TaviRegistry registry(std::string{argv[2]});
    if (!tell())
        return 1;
    if (form == "script") {
        const uint64_t seed = std::strtoull(argv[3], nullptr, 10);
        for (uint64_t number = std::strtoull(argv[4], nullptr, 10);; ++number) {
            registryscript::make(registry, registryscript::changeAt(seed, number));
            if (!tell())
                return 1;
        }
    }
    if (form == "keys") {
        const int count = std::atoi(argv[4]);
        for (int i = 0; i < count; ++i) {
            registry.putlong(argv[3], std::to_string(i).c_str(), i);
            if (!tell())
                return 1;
        }
        return 0;
    }
    return 2;
}
