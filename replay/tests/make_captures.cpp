// Writes random captures, and a file with their names.
//
//     make_captures FOLDER FIRST_SEED CAPTURES MESSAGES
//
// Makes the folder, with captures of MESSAGES messages each, and FOLDER/list. What was in it before
// is removed.
#include "replay/tests/random_capture.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

int main(int argc, char** argv) {
    if (argc != 5) {
        std::fputs("usage: make_captures FOLDER FIRST_SEED CAPTURES MESSAGES\n", stderr);
        return 2;
    }
    const std::filesystem::path folder = std::filesystem::absolute(argv[1]);
    const uint64_t seed = std::strtoull(argv[2], nullptr, 10);
    const uint64_t captures = std::strtoull(argv[3], nullptr, 10);
    const auto messages = static_cast<size_t>(std::strtoull(argv[4], nullptr, 10));
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    std::ofstream list(folder / "list");
    for (uint64_t i = 0; i < captures; ++i) {
        const std::filesystem::path file = folder / (std::to_string(seed + i) + ".pcapng");
        std::ofstream(file, std::ios::binary) << replay::randomCapture(seed + i, messages);
        list << file.string() << '\n';
    }
    list.close();
    if (!list) {
        std::fprintf(stderr, "make_captures: %s cannot be written\n", folder.c_str());
        return 1;
    }
    std::printf("seeds %llu to %llu, %llu messages each\n", static_cast<unsigned long long>(seed),
                static_cast<unsigned long long>(seed + captures - 1),
                static_cast<unsigned long long>(messages));
    return 0;
}
