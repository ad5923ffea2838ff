// Replays files through a fuzz target without libFuzzer: each argument is a
// file or a directory of files, run once each. Ordinary builds use this to run
// the seed corpus (and any saved crash input) as a test.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

void replayFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    // An allocation of exactly the input's size, so an overread is caught.
    std::unique_ptr<uint8_t[]> data(new uint8_t[bytes.size() ? bytes.size() : 1]);
    std::copy(bytes.begin(), bytes.end(), data.get());
    LLVMFuzzerTestOneInput(data.get(), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
    size_t runs = 0;
    for (int i = 1; i < argc; ++i) {
        std::filesystem::path path(argv[i]);
        std::vector<std::filesystem::path> files;
        if (std::filesystem::is_directory(path)) {
            for (auto& entry : std::filesystem::directory_iterator(path)) {
                files.push_back(entry.path());
            }
            std::sort(files.begin(), files.end());
        } else {
            files.push_back(path);
        }
        for (auto& file : files) {
            replayFile(file);
            ++runs;
        }
    }
    std::fprintf(stderr, "replayed %zu inputs\n", runs);
    return runs > 0 ? 0 : 1;
}
