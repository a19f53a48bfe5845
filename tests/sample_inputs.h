// The bundled samples (samples/*.txt), read byte for byte in name order.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace orvane::testing {

inline std::vector<std::filesystem::path> samplePaths() {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(ORVANE_SOURCE_DIR) / "samples")) {
        if (entry.path().extension() == ".txt") paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

inline std::string readBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline std::vector<std::string> sampleInputs() {
    std::vector<std::string> inputs;
    for (const auto& path : samplePaths()) inputs.push_back(readBytes(path));
    return inputs;
}

}  // namespace orvane::testing
