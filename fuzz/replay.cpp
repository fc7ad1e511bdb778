// Runs a fuzz target on every file of some folders, in place of a fuzzer.
//
// usage: NAME_fuzzer FOLDER...
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size);

int main(int argc, char** argv) try {
    size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string bytes(std::istreambuf_iterator<char>(file), {});
            // A copy of just that size: reading one byte too far is seen.
            const std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
            // The last name printed is that of the file that ended the program.
            std::printf("%s\n", entry.path().filename().string().c_str());
            std::fflush(stdout);
            LLVMFuzzerTestOneInput(data.data(), data.size());
            ++count;
        }
    }
    std::printf("%zu passed, 0 failed\n", count);
    return count > 0 ? 0 : 1;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
