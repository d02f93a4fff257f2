// SPDX-License-Identifier: MIT
// Runs a fuzz target over every file of the folders and files that are named on the command line.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace {

bool replay(const std::filesystem::path &path)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file.is_open() || file.bad()) {
        std::fprintf(stderr, "%s: cannot be read\n", path.c_str());
        return false;
    }
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size());
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const int before = count;
        std::error_code error;
        if (std::filesystem::is_directory(argv[i], error)) {
            for (const auto &entry : std::filesystem::directory_iterator(argv[i])) {
                if (!entry.is_regular_file())
                    continue;
                if (!replay(entry.path()))
                    return 1;
                ++count;
            }
        } else {
            if (!replay(argv[i]))
                return 1;
            ++count;
        }
        if (count == before) {
            std::fprintf(stderr, "%s: no file in this folder\n", argv[i]);
            return 1;
        }
    }
    std::printf("%d inputs replayed\n", count);
    return count > 0 ? 0 : 1;
}
