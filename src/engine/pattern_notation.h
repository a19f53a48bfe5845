// Document-number patterns are written in a readable notation (described above the rule
// table in validation_tables.cpp) and turned into matchPattern's bytes while compiling.
#pragma once

#include <string_view>

namespace orvane {

// The longest pattern (23 bytes) and its terminating NUL.
inline constexpr int kPatternCapacity = 24;

struct CompiledPattern {
    char bytes[kPatternCapacity];
    bool ok;  // false: the notation is malformed and bytes are not to be used
};

constexpr CompiledPattern compilePattern(std::string_view notation) {
    CompiledPattern out{};
    int used = 0;
    auto put = [&](int byte) {
        if (used + 1 >= kPatternCapacity) return false;
        out.bytes[used++] = static_cast<char>(byte);
        return true;
    };
    size_t i = 0;
    while (i < notation.size()) {
        const char c = notation[i];
        if (c == '\'') {
            const size_t close = notation.find('\'', i + 1);
            if (close == std::string_view::npos || close == i + 1) return out;
            for (size_t k = i + 1; k < close; ++k) {
                if (notation[k] < 0x20 || notation[k] > 0x7E || !put(notation[k])) return out;
            }
            i = close + 1;
        } else if (i + 1 < notation.size() && notation[i + 1] == '?') {
            const int op = c == '-' ? 0xA1 : c == '*' ? 0xA2 : c == 'L' ? 0xA3 : c == 'D' ? 0xA4 : 0;
            if (op == 0 || !put(op)) return out;
            i += 2;
        } else {
            const int run = c == 'D' ? 0x80 : c == 'L' ? 0x90 : c == 'A' ? 0xB0 : 0;
            size_t k = i + 1;
            int n = 0;
            while (k < notation.size() && notation[k] >= '0' && notation[k] <= '9' && n <= 15) {
                n = n * 10 + (notation[k++] - '0');
            }
            // The count lives in the low four bits of the byte.
            if (run == 0 || n < 1 || n > 15 || notation[i + 1] == '0' || !put(run | n)) return out;
            i = k;
        }
        if (i == notation.size()) break;
        if (notation[i] != ' ' || i + 1 == notation.size()) return out;
        ++i;
    }
    out.ok = used > 0;
    return out;
}

// Not constexpr: reaching it while compiling a pattern stops the build.
inline void malformedPatternNotation() {}

// A table row's pattern: written as its notation, holding the bytes.
struct NumberPattern {
    char bytes[kPatternCapacity] = {};

    constexpr NumberPattern() = default;
    // Implicit, so that a row shows the notation itself.
    consteval NumberPattern(const char* notation) {
        const CompiledPattern compiled = compilePattern(notation);
        if (!compiled.ok) malformedPatternNotation();
        for (int i = 0; i < kPatternCapacity; ++i) bytes[i] = compiled.bytes[i];
    }
};

}  // namespace orvane
