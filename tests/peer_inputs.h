// Reads the inputs gathered from other open-source parsers' test suites (one JSON object
// a line, the input in "input_b64"), when the folder exists. Shared by the robustness
// test and the fuzzer's seed tool; the inputs are read where they lie, never copied.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace orvane::testing {

struct PeerInput {
    std::string file;
    std::string kind;  // aamva, stripe, mrz, ...
    std::string name;
    std::string bytes;
};

// The text of a JSON string member of a one-line object, escapes left as they are.
inline std::string jsonMember(const std::string& line, const std::string& key) {
    const std::string marker = "\"" + key + "\": \"";
    size_t at = line.find(marker);
    if (at == std::string::npos) return std::string();
    at += marker.size();
    std::string value;
    for (size_t i = at; i < line.size() && line[i] != '"'; ++i) {
        if (line[i] == '\\' && i + 1 < line.size()) value.push_back(line[i++]);
        value.push_back(line[i]);
    }
    return value;
}

inline std::string decodeBase64(const std::string& text) {
    auto digit = [](char c) -> int {
        if (c >= 'A' && c <= 'Z') return c - 'A';
        if (c >= 'a' && c <= 'z') return c - 'a' + 26;
        if (c >= '0' && c <= '9') return c - '0' + 52;
        if (c == '+') return 62;
        if (c == '/') return 63;
        return -1;
    };
    std::string bytes;
    unsigned value = 0;
    int bits = 0;
    for (char c : text) {
        const int d = digit(c);
        if (d < 0) continue;
        value = (value << 6) | static_cast<unsigned>(d);
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            bytes.push_back(static_cast<char>((value >> bits) & 0xFF));
        }
    }
    return bytes;
}

inline std::vector<PeerInput> readPeerInputs(const std::filesystem::path& folder) {
    std::vector<PeerInput> inputs;
    if (!std::filesystem::is_directory(folder)) return inputs;
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".jsonl") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    for (const auto& path : files) {
        std::ifstream in(path);
        std::string line;
        while (std::getline(in, line)) {
            PeerInput input{path.filename().string(), jsonMember(line, "kind"), jsonMember(line, "case"),
                            decodeBase64(jsonMember(line, "input_b64"))};
            if (!input.kind.empty()) inputs.push_back(std::move(input));
        }
    }
    return inputs;
}

// The peers' folder beside the project's, where the team keeps it.
inline std::filesystem::path peerFolder() { return std::filesystem::path(ORVANE_SOURCE_DIR) / ".." / "shared" / "peers"; }

}  // namespace orvane::testing
