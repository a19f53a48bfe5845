#include "engine/format.h"

#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace orvane {

void gatherTextFacts(const char* text, int32_t length, TextFacts* facts) {
    facts->text = text;
    facts->length = length;
    // One byte per value marked, then packed to bits: a store per byte of text instead
    // of a read-modify-write of the bitmap.
    unsigned char seen[256] = {};
    const unsigned char* p = reinterpret_cast<const unsigned char*>(text);
    int32_t i = 0;
    for (; i + 4 <= length; i += 4) {
        seen[p[i]] = 1;
        seen[p[i + 1]] = 1;
        seen[p[i + 2]] = 1;
        seen[p[i + 3]] = 1;
    }
    for (; i < length; ++i) seen[p[i]] = 1;
    for (int word = 0; word < 4; ++word) {
        uint64_t bits = 0;
#if defined(__SSE2__)
        // Sixteen marks at a time: each marked byte, shifted to the top, gives its bit.
        for (int group = 0; group < 4; ++group) {
            const __m128i marks = _mm_loadu_si128(reinterpret_cast<const __m128i*>(seen + word * 64 + group * 16));
            bits |= static_cast<uint64_t>(static_cast<uint32_t>(_mm_movemask_epi8(_mm_slli_epi16(marks, 7))))
                    << (group * 16);
        }
#else
        for (int group = 0; group < 8; ++group) {
            uint64_t eight;
            std::memcpy(&eight, seen + word * 64 + group * 8, 8);
            // Gathers the low bit of each of the eight bytes into one byte, first byte lowest.
            bits |= ((eight * 0x0102040810204080ull) >> 56) << (group * 8);
        }
#endif
        facts->bytes[word] = bits;
    }
}

}  // namespace orvane
