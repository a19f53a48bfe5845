// Writes the seed corpus of the fuzzer: the bundled samples, the test data, and, when
// the folder exists, the inputs of other parsers' test suites (read where they lie).
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "../tests/peer_inputs.h"

namespace fs = std::filesystem;

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: fuzz_seeds CORPUS_DIRECTORY\n");
        return 2;
    }
    const fs::path corpus = argv[1];
    fs::create_directories(corpus);
    int written = 0;
    auto write = [&](const std::string& bytes) {
        std::ofstream(corpus / ("seed-" + std::to_string(written++)), std::ios::binary) << bytes;
    };
    const fs::path source = ORVANE_SOURCE_DIR;
    for (const fs::path& folder : {source / "samples", source / "tests" / "data"}) {
        if (!fs::is_directory(folder)) continue;
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            if (!entry.is_regular_file() || entry.path().extension() == ".expected") continue;
            std::ifstream in(entry.path(), std::ios::binary);
            write(std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()));
        }
    }
    for (const auto& input : orvane::testing::readPeerInputs(orvane::testing::peerFolder())) {
        if (!input.bytes.empty()) write(input.bytes);
    }
    std::printf("%d seeds in %s\n", written, corpus.c_str());
    return 0;
}
