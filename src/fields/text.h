// Small span and character operations shared by every reader and field worker. Spans
// are narrowed by moving their pointer and length, never by writing into the text.
#pragma once

#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "engine/record.h"

namespace orvane {

// Character classes of the "C" locale, safe for any byte value.
constexpr int isAsciiDigit(int c) { return c >= '0' && c <= '9'; }
constexpr int isAsciiUpper(int c) { return c >= 'A' && c <= 'Z'; }
constexpr int isAsciiLower(int c) { return c >= 'a' && c <= 'z'; }
constexpr int isAsciiAlpha(int c) { return isAsciiUpper(c) || isAsciiLower(c); }
constexpr int isAsciiAlnum(int c) { return isAsciiAlpha(c) || isAsciiDigit(c); }
constexpr int isAsciiSpace(int c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr int isAsciiHexDigit(int c) {
    return isAsciiDigit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}
constexpr char toAsciiUpper(char c) {
    return isAsciiLower(static_cast<unsigned char>(c)) ? static_cast<char>(c - 'a' + 'A') : c;
}

// Predicates of the field workers. The printable range deliberately stops at 125 and
// leaves out the blank and the tilde.
inline int isPrintableCode(int c) { return c >= 33 && c <= 125; }
inline int isNotPrintableCode(int c) { return !isPrintableCode(c); }
inline int isBlankOrNul(int c) { return c == 0 || c == ' ' || (c >= 9 && c <= 13); }
inline int isDigitOrPoint(int c) { return isAsciiDigit(c) || c == '.'; }
inline int isWordChar(int c) { return isAsciiAlnum(c) || c == '_' || isAsciiSpace(c); }
inline int isWhiteSpace(int c) { return isAsciiSpace(c); }

// Delimiter and edge sets used across the field workers.
inline constexpr const char* kWordDelimiters = " ,$@\t\n\r";
inline constexpr const char* kTokenEdgeSet = " ,$@\\/-^\t\n\r";
inline constexpr const char* kGivenNameDelimiters = " ,$@";
inline constexpr const char* kPartDelimiters = ",$@";
inline constexpr const char* kBlank = " ";

// Characters that the city, name and address fields of a licence stripe's first track
// carry. Letters and blanks everywhere; the city adds the punctuation of place names,
// the name adds "$" between its parts, the address adds digits, "$" between its lines
// and the punctuation of street addresses. None holds "^" or "?": they end the fields.
// One bit per class in a table of the 256 byte values: the searches test every byte.
inline constexpr uint8_t kStripeCityClass = 1;
inline constexpr uint8_t kStripeNameClass = 2;
inline constexpr uint8_t kStripeAddressClass = 4;
struct StripeCharClasses {
    uint8_t of[256];
};
constexpr StripeCharClasses makeStripeCharClasses() {
    StripeCharClasses t{};
    for (int c = 0; c < 256; ++c) {
        const bool letter = isAsciiAlpha(c);
        auto among = [c](const char* set) {
            for (const char* p = set; *p != '\0'; ++p) {
                if (*p == c) return true;
            }
            return false;
        };
        if (letter || among(" \t.-'/")) t.of[c] |= kStripeCityClass;
        if (letter || among(" $,.-'")) t.of[c] |= kStripeNameClass;
        if (letter || isAsciiDigit(c) || among(" \t$,.-'#/")) t.of[c] |= kStripeAddressClass;
    }
    return t;
}
inline constexpr StripeCharClasses kStripeCharClasses = makeStripeCharClasses();
inline int stripeCharHas(int c, uint8_t stripeClass) {
    return c >= 0 && c < 256 && (kStripeCharClasses.of[c] & stripeClass) != 0;
}
inline int isStripeCityChar(int c) { return stripeCharHas(c, kStripeCityClass); }        // letters, blank, tab, . - ' /
inline int isStripeNameChar(int c) { return stripeCharHas(c, kStripeNameClass); }        // letters, blank, $ , . - '
inline int isStripeAddressChar(int c) { return stripeCharHas(c, kStripeAddressClass); }  // letters, digits, blank, tab, $ , . - ' # /
// Read as a blank when a stripe's city or address is stored: a slash or tab between two
// words of a city, "$" between two address lines.
inline constexpr const char* kStripeCityReplaceChars = "/\t";
inline constexpr const char* kStripeAddressReplaceChars = "$\t";

// Flags of nextToken/splitTokens and spanCompare.
inline constexpr int kSkipEmptyTokens = 1;
inline constexpr int kIgnoreCase = 1;

// Inline, so that a trim with a known predicate costs no call per character.
inline void trimLeadingIf(TextSpan* span, CharTest test) {
    if (span == nullptr || span->data == nullptr || test == nullptr) return;
    while (span->length > 0 && test(static_cast<unsigned char>(span->data[0]))) {
        ++span->data;
        --span->length;
    }
}
inline void trimTrailingIf(TextSpan* span, CharTest test) {
    if (span == nullptr || span->data == nullptr || test == nullptr) return;
    while (span->length > 0 && test(static_cast<unsigned char>(span->data[span->length - 1]))) --span->length;
}
inline void trimIf(TextSpan* span, CharTest test) {
    trimLeadingIf(span, test);
    trimTrailingIf(span, test);
}
inline void trimLeadingSet(TextSpan* span, const char* set) {
    if (span == nullptr || span->data == nullptr || set == nullptr) return;
    while (span->length > 0 && charInSet(span->data[0], set)) {
        ++span->data;
        --span->length;
    }
}
inline void trimTrailingSet(TextSpan* span, const char* set) {
    if (span == nullptr || span->data == nullptr || set == nullptr) return;
    while (span->length > 0 && charInSet(span->data[span->length - 1], set)) --span->length;
}
inline void trimSet(TextSpan* span, const char* set) {
    trimLeadingSet(span, set);
    trimTrailingSet(span, set);
}

// 0 when every character passes (also for an empty span), 1 otherwise, -1 for a null
// span or test. Inline, so that a known test is written into the loop.
inline int32_t allChars(TextSpan span, CharTest test) {
    if (span.data == nullptr || test == nullptr) return -1;
    for (int32_t i = 0; i < span.length; ++i) {
        if (!test(static_cast<unsigned char>(span.data[i]))) return 1;
    }
    return 0;
}

// Whether the n bytes at text are all decimal digits (the caller knows they are there).
inline bool allDigits(const char* text, int32_t n) {
    for (int32_t i = 0; i < n; ++i) {
        if (!isAsciiDigit(static_cast<unsigned char>(text[i]))) return false;
    }
    return true;
}
// Whether the span holds n decimal digits from index from on.
inline bool digitsAt(TextSpan span, int32_t from, int32_t n) {
    return span.data != nullptr && from >= 0 && n >= 0 && from + n <= span.length && allDigits(span.data + from, n);
}
// How many bytes from index at pass the test, counting at most limit.
inline int32_t runLength(TextSpan span, int32_t at, CharTest test, int32_t limit) {
    int32_t n = 0;
    while (at + n < span.length && n < limit && test(static_cast<unsigned char>(span.data[at + n]))) ++n;
    return n;
}

// Index of the first byte equal to a or b in text[0, length), or length; sixteen bytes
// at a time where the target has SSE2, else eight.
inline int32_t findEitherByte(const char* text, int32_t length, char a, char b) {
    int32_t i = 0;
#if defined(__SSE2__)
    const __m128i repeatedA = _mm_set1_epi8(a);
    const __m128i repeatedB = _mm_set1_epi8(b);
    for (; i + 16 <= length; i += 16) {
        const __m128i chunk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
        const int hits = _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(chunk, repeatedA), _mm_cmpeq_epi8(chunk, repeatedB)));
        if (hits != 0) return i + __builtin_ctz(static_cast<unsigned>(hits));
    }
#endif
    constexpr uint64_t kOnes = 0x0101010101010101ull;
    constexpr uint64_t kHigh = 0x8080808080808080ull;
    const uint64_t repeatedA8 = kOnes * static_cast<unsigned char>(a);
    const uint64_t repeatedB8 = kOnes * static_cast<unsigned char>(b);
    for (; i + 8 <= length; i += 8) {
        uint64_t word;
        std::memcpy(&word, text + i, 8);
        const uint64_t xa = word ^ repeatedA8;
        const uint64_t xb = word ^ repeatedB8;
        const uint64_t hit = ((xa - kOnes) & ~xa & kHigh) | ((xb - kOnes) & ~xb & kHigh);
        if (hit != 0) break;  // the byte loop below finds which one
    }
    for (; i < length; ++i) {
        if (text[i] == a || text[i] == b) return i;
    }
    return length;
}

// Index of the first byte equal to a, b or c in text[0, length), or length.
inline int32_t findAnyOfThree(const char* text, int32_t length, char a, char b, char c) {
    int32_t i = 0;
#if defined(__SSE2__)
    const __m128i repeatedA = _mm_set1_epi8(a);
    const __m128i repeatedB = _mm_set1_epi8(b);
    const __m128i repeatedC = _mm_set1_epi8(c);
    for (; i + 16 <= length; i += 16) {
        const __m128i chunk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
        const __m128i hit = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(chunk, repeatedA), _mm_cmpeq_epi8(chunk, repeatedB)),
                                         _mm_cmpeq_epi8(chunk, repeatedC));
        const int hits = _mm_movemask_epi8(hit);
        if (hits != 0) return i + __builtin_ctz(static_cast<unsigned>(hits));
    }
#endif
    for (; i < length; ++i) {
        if (text[i] == a || text[i] == b || text[i] == c) return i;
    }
    return length;
}

// Index of the last byte equal to a or b in text[0, length), or -1; sixteen bytes at a
// time from the end where the target has SSE2.
inline int32_t findLastEitherByte(const char* text, int32_t length, char a, char b) {
    int32_t end = length;
#if defined(__SSE2__)
    const __m128i repeatedA = _mm_set1_epi8(a);
    const __m128i repeatedB = _mm_set1_epi8(b);
    for (; end >= 16; end -= 16) {
        const __m128i chunk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + end - 16));
        const int hits = _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(chunk, repeatedA), _mm_cmpeq_epi8(chunk, repeatedB)));
        if (hits != 0) return end - 16 + 31 - __builtin_clz(static_cast<unsigned>(hits));
    }
#endif
    while (end > 0) {
        --end;
        if (text[end] == a || text[end] == b) return end;
    }
    return -1;
}

// Cuts the first token of span at a delimiter; rest is what follows that delimiter.
// Returns 1 when a token was cut, 0 when the span held none.
inline int32_t nextToken(TextSpan span, TextSpan* token, TextSpan* rest, const char* delimiters,
                  int flags) {
    if (token == nullptr || rest == nullptr) return 0;
    *token = TextSpan{span.data, 0};
    *rest = TextSpan{span.data, 0};
    if (span.data == nullptr || span.length < 1) return 0;
    const char* set = delimiters != nullptr ? delimiters : "";
    const int32_t count = set[0] == '\0' ? 0 : set[1] == '\0' ? 1 : set[2] == '\0' ? 2 : 3;
    // Membership of each byte value as a bit, for the byte loops; NUL is never a member.
    uint64_t members[4] = {};
    if ((flags & kSkipEmptyTokens) || count > 2) {
        for (const char* p = set; *p != '\0'; ++p) {
            const unsigned char c = static_cast<unsigned char>(*p);
            members[c >> 6] |= uint64_t{1} << (c & 63);
        }
    }
    auto isDelimiter = [&members](char c) {
        const unsigned char b = static_cast<unsigned char>(c);
        return (members[b >> 6] >> (b & 63) & 1) != 0;
    };
    int32_t start = 0;
    if (flags & kSkipEmptyTokens) {
        while (start < span.length && isDelimiter(span.data[start])) ++start;
        if (start == span.length) {
            *rest = TextSpan{span.data + start, 0};
            return 0;
        }
    }
    int32_t end = start;
    if (count == 1 || count == 2) {
        // One or two delimiters, the usual case of barcode elements and lines.
        end = start + findEitherByte(span.data + start, span.length - start, set[0], set[count - 1]);
    } else if (count > 2) {
        while (end < span.length && !isDelimiter(span.data[end])) ++end;
    } else {
        end = span.length;
    }
    *token = TextSpan{span.data + start, end - start};
    const int32_t next = end < span.length ? end + 1 : end;
    *rest = TextSpan{span.data + next, span.length - next};
    return 1;
}

// Repeated nextToken until max tokens or the end of the span; returns the count stored.
// Inline, so that a literal delimiter string is read where the call is written.
inline int32_t splitTokens(TextSpan span, TextSpan* tokens, int32_t max, const char* delimiters, int flags) {
    if (tokens == nullptr || span.data == nullptr || span.length < 1 || max < 0) return 0;
    // The cuts of repeated nextToken calls, with the delimiter set made a bitmap once.
    uint64_t members[4] = {};
    for (const char* p = delimiters; p != nullptr && *p != '\0'; ++p) {
        const unsigned char c = static_cast<unsigned char>(*p);
        members[c >> 6] |= uint64_t{1} << (c & 63);
    }
    auto isDelimiter = [&members](char c) {
        const unsigned char b = static_cast<unsigned char>(c);
        return (members[b >> 6] >> (b & 63) & 1) != 0;
    };
    const bool skipEmpty = (flags & kSkipEmptyTokens) != 0;
    const char* data = span.data;
    const int32_t n = span.length;
    // Up to three delimiters, as most callers have, are searched for as bytes.
    int32_t kinds = 0;
    char kind[3] = {};
    for (const char* p = delimiters; p != nullptr && *p != '\0' && kinds <= 3; ++p) {
        if (kinds < 3) kind[kinds] = *p;
        ++kinds;
    }
    int32_t count = 0;
    int32_t at = 0;
    while (count < max && at < n) {
        int32_t start = at;
        if (skipEmpty) {
            while (start < n && isDelimiter(data[start])) ++start;
            if (start == n) break;
        }
        int32_t end = start;
        if (kinds >= 1 && kinds <= 3) {
            end = start + findAnyOfThree(data + start, n - start, kind[0], kinds > 1 ? kind[1] : kind[0],
                                         kinds > 2 ? kind[2] : kind[0]);
        } else {
            while (end < n && !isDelimiter(data[end])) ++end;
        }
        at = end < n ? end + 1 : end;
        if (skipEmpty && end == start) continue;
        tokens[count++] = TextSpan{data + start, end - start};
    }
    return count;
}

// Drops, in place and in order, every token equal to one of the words.
int32_t removeWords(TextSpan* tokens, int32_t count, const char* const* words,
                    int32_t wordCount);

// 0 when equal; otherwise the length difference, or -1/1 by the first differing byte.
inline int32_t spanEquals(TextSpan span, const char* text) {
    if (span.data == nullptr || text == nullptr) {
        return (span.data == nullptr && text == nullptr) ? 0 : 1;
    }
    const int32_t n = static_cast<int32_t>(std::strlen(text));
    if (n != span.length) return span.length - n;
    for (int32_t i = 0; i < n; ++i) {
        // Signed comparison of the differing bytes, as the callers expect.
        if (span.data[i] != text[i]) return static_cast<signed char>(span.data[i]) < static_cast<signed char>(text[i]) ? -1 : 1;
    }
    return 0;
}
int32_t spanCompare(TextSpan a, TextSpan b, int flags);
// Whether the span is one of the words (exact comparison).
bool spanInList(TextSpan span, const char* const* words, int32_t wordCount);
// First occurrence of the pattern in text[from, length), or -1: candidates are found by
// the pattern's first byte and the rest compared in place.
inline int32_t findFrom(const char* text, int32_t length, int32_t from, TextSpan pattern) {
    const int32_t rest = pattern.length - 1;
    const char first = pattern.data[0];
    while (length - from >= pattern.length) {
        const int32_t window = length - from - rest;
        const int32_t at = from + findEitherByte(text + from, window, first, first);
        if (at - from == window) return -1;
        int32_t same = 0;
        while (same < rest && text[at + 1 + same] == pattern.data[1 + same]) ++same;
        if (same == rest) return at;
        from = at + 1;
    }
    return -1;
}

// Index of the first occurrence of needle in haystack, or -1.
inline int32_t spanFind(TextSpan haystack, TextSpan needle) {
    if (!spanUsable(haystack) || !spanUsable(needle)) return -1;
    return findFrom(haystack.data, haystack.length, 0, needle);
}

// Replaces every occurrence of pattern in buffer[0, used), left to right, stopping at
// the first replacement that would make the text longer than capacity.
int32_t replaceAll(char* buffer, int32_t used, int32_t capacity, TextSpan pattern,
                   TextSpan replacement);

// Reads a decimal number as the C library's strtol does in base 10: leading white
// space, an optional sign, then digits up to the first other character; no digits read
// as 0. Stops accumulating digits past 18 of them rather than overflow.
inline int64_t readLeadingInteger(TextSpan text) {
    if (text.data == nullptr) return 0;
    int32_t i = 0;
    while (i < text.length && isAsciiSpace(static_cast<unsigned char>(text.data[i]))) ++i;
    bool negative = false;
    if (i < text.length && (text.data[i] == '+' || text.data[i] == '-')) negative = text.data[i++] == '-';
    int64_t value = 0;
    for (int32_t digits = 0; i < text.length && isAsciiDigit(static_cast<unsigned char>(text.data[i])); ++i) {
        if (++digits <= 18) value = value * 10 + (text.data[i] - '0');
    }
    return negative ? -value : value;
}

// The ASCII stand-in for a Latin-1 byte 0xA0..0xFF, or the byte itself.
unsigned char foldLatin1(unsigned char byte);

// Reads base-32 digits 0-9 and A-V; "=" ends the number. 0, -11 for another
// character, -21 for a null or empty span.
int32_t decodeBase32Hex(TextSpan span, uint64_t* out);

}  // namespace orvane
