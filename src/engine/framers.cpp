#include "engine/framers.h"

#include <cstring>

#include "engine/record.h"
#include "engine/status.h"
#include "fields/text.h"

namespace orvane {
namespace {

bool isPlainText(unsigned char c) { return c >= 0x20 && c <= 0x7E; }

int32_t refuseBadCopyArguments(const char* input, int32_t inputLength, const char* out,
                               int32_t outCapacity) {
    if (input == nullptr || out == nullptr || inputLength < 1 || outCapacity < 1) {
        return kErrInvalidArgument;
    }
    return kOk;
}

// A header restored to commercial at, LF, RS, CR from the forms readers deliver it in;
// then every CR LF (and CR CR LF) becomes one LF.
struct Replacement {
    const char* pattern;
    int32_t patternLength;
    const char* replacement;
    int32_t replacementLength;
};
constexpr Replacement kBarcodeReplacements[] = {
    {"@\r\r\n\r\r\n", 7, "@\n\x1e\r", 4},
    {"@\r\n\x1e\r\n", 6, "@\n\x1e\r", 4},
    {"@\n \n", 4, "@\n\x1e\r", 4},
    {"@\n\n", 3, "@\n\x1e\r", 4},
    {"@\n\r", 3, "@\n\x1e\r", 4},
    {"@\x1e*>-\x1e", 6, "@*\x1e-", 4},
    {"@\x1e*", 3, "@*", 2},
    {"\r\r\n", 3, "\n", 1},
    {"\r\n", 2, "\n", 1},
};

int32_t copyPrintableTail(const char* input, int32_t inputLength, char* out, int32_t limit) {
    int32_t start = 0;
    while (start < inputLength && !isPlainText(static_cast<unsigned char>(input[start]))) ++start;
    int32_t n = inputLength - start;
    if (n > limit) n = limit;
    std::memcpy(out, input + start, static_cast<size_t>(n));
    return n;
}

bool containsSpelledLineBreak(const char* text, int32_t n) {
    if (std::memchr(text, '[', static_cast<size_t>(n)) == nullptr) return false;
    const TextSpan all{text, n};
    return spanFind(all, makeSpan("[0D]")) >= 0 || spanFind(all, makeSpan("[0A]")) >= 0;
}

// The places of one byte in a text, when there are few.
struct ByteStops {
    char byte;
    int32_t count;  // above kMaxStops: too many to list
    int32_t at[8];
};
inline constexpr int32_t kMaxStops = 8;

ByteStops findStops(const char* text, int32_t n, char c) {
    ByteStops stops{c, 0, {}};
    for (int32_t at = findEitherByte(text, n, c, c); at < n; at += 1 + findEitherByte(text + at + 1, n - at - 1, c, c)) {
        if (stops.count == kMaxStops) {
            stops.count = kMaxStops + 1;
            break;
        }
        stops.at[stops.count++] = at;
    }
    return stops;
}

// Whether the pattern may stand in the text: at one of the stops, or anywhere when
// they were too many to list.
bool occursAtStops(const char* text, int32_t n, const ByteStops& stops, const Replacement& r) {
    if (stops.count > kMaxStops) return true;
    for (int32_t i = 0; i < stops.count; ++i) {
        const int32_t at = stops.at[i];
        if (n - at >= r.patternLength && std::memcmp(text + at, r.pattern, static_cast<size_t>(r.patternLength)) == 0) return true;
    }
    return false;
}

int32_t hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return c - 'a' + 10;
}

// The spelled-out form: control and high bytes are noise, and "[1E]" style brackets
// stand for the byte they name.
int32_t decodeBracketedBytes(char* text, int32_t n) {
    int32_t kept = 0;
    for (int32_t i = 0; i < n; ++i) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (c >= 0x20 && c < 0x80) text[kept++] = text[i];
    }
    n = kept;
    if (n <= 3) return n;
    for (int32_t p = 0; p <= n - 4; ++p) {
        if (text[p] == '[' && isAsciiHexDigit(static_cast<unsigned char>(text[p + 1])) &&
            isAsciiHexDigit(static_cast<unsigned char>(text[p + 2])) && text[p + 3] == ']') {
            text[p] = static_cast<char>(hexValue(text[p + 1]) * 16 + hexValue(text[p + 2]));
            text[p + 1] = text[p + 2] = text[p + 3] = '\0';
        }
    }
    return n;
}

bool isTrackByte(char c) { return c != '\n' && c != '\0' && c != ';'; }

// A stripe artefact between two tracks, "?*" STX and three track bytes, is turned back
// into the track boundary "?;"; kept exactly as readers produce it.
void repairTrackBoundaries(char* text, int32_t n) {
    if (n <= 6) return;
    for (int32_t p = 0; p <= n - 7; ++p) {
        const void* mark = std::memchr(text + p, '?', static_cast<size_t>(n - 6 - p));
        if (mark == nullptr) return;
        p = static_cast<int32_t>(static_cast<const char*>(mark) - text);
        if (text[p + 1] == '*' && text[p + 2] == '\x02' && isTrackByte(text[p + 3]) && isTrackByte(text[p + 4]) &&
            isTrackByte(text[p + 5])) {
            text[p + 1] = ';';
            text[p + 2] = text[p + 3] = text[p + 4] = text[p + 5] = '\0';
        }
    }
}

// Drops NUL bytes and turns the escapes \n and \r into the line breaks they name. The
// text between such bytes moves as whole runs: scanners that pad with NULs deliver long
// texts full of them.
int32_t compactEscapes(char* text, int32_t n) {
    int32_t kept = 0;
    int32_t i = 0;
    while (true) {
        const int32_t stop = i + findEitherByte(text + i, n - i, '\0', '\\');
        if (kept != i) std::memmove(text + kept, text + i, static_cast<size_t>(stop - i));
        kept += stop - i;
        if (stop == n) return kept;
        i = stop + 1;
        if (text[stop] == '\0') continue;
        if (i < n && (text[i] == 'n' || text[i] == 'r')) {
            text[kept++] = text[i] == 'n' ? '\n' : '\r';
            ++i;
        } else {
            text[kept++] = '\\';
        }
    }
}

int32_t trimLineBreaksAndBlanks(char* text, int32_t n) {
    TextSpan trimmed{text, n};
    trimSet(&trimmed, " \r\n");
    std::memmove(text, trimmed.data, static_cast<size_t>(trimmed.length));
    return trimmed.length;
}

}  // namespace

int32_t framePassThrough(const char* input, int32_t inputLength, char* out, int32_t outCapacity,
                         int32_t* outLength) {
    if (int32_t status = refuseBadCopyArguments(input, inputLength, out, outCapacity)) return status;
    const int32_t n = inputLength < outCapacity ? inputLength : outCapacity;
    std::memcpy(out, input, static_cast<size_t>(n));
    if (outLength != nullptr) *outLength = n;
    return kOk;
}

int32_t frameLatin1(const char* input, int32_t inputLength, char* out, int32_t outCapacity,
                    int32_t* outLength) {
    if (int32_t status = refuseBadCopyArguments(input, inputLength, out, outCapacity)) return status;
    const int32_t n = inputLength < outCapacity ? inputLength : outCapacity;
    for (int32_t i = 0; i < n; ++i) {
        out[i] = static_cast<char>(foldLatin1(static_cast<unsigned char>(input[i])));
    }
    if (outLength != nullptr) *outLength = n;
    return kOk;
}

int32_t frameMrz(const char* input, int32_t inputLength, char* out, int32_t outCapacity,
                 int32_t* outLength) {
    if (input == nullptr || out == nullptr || outLength == nullptr || inputLength < 1 ||
        outCapacity < 2) {
        return kErrInvalidArgument;
    }
    const int32_t examined = inputLength < outCapacity - 1 ? inputLength : outCapacity - 1;
    int32_t kept = 0;
    for (int32_t i = 0; i < examined; ++i) {
        const char c = input[i];
        if (isAsciiUpper(c) || isAsciiDigit(c) || c == '<') {
            out[kept++] = c;
        } else if (isAsciiLower(c)) {
            out[kept++] = toAsciiUpper(c);
        }
    }
    out[kept] = '\0';
    *outLength = kept;
    return kOk;
}

int32_t frameBarcodeText(const char* input, int32_t inputLength, char* out, int32_t outCapacity,
                         int32_t* outLength) {
    if (outLength != nullptr) *outLength = 0;
    if (out == nullptr || outCapacity < 1) return kOk;
    out[0] = '\0';
    if (input == nullptr || inputLength < 1) return kOk;
    const int32_t limit = outCapacity - 1;
    int32_t n = copyPrintableTail(input, inputLength, out, limit);
    if (containsSpelledLineBreak(out, n)) n = decodeBracketedBytes(out, n);
    repairTrackBoundaries(out, n);
    n = compactEscapes(out, n);
    n = trimLineBreaksAndBlanks(out, n);
    out[n] = '\0';
    // A pattern can only stand where its first byte does: the places of "@" and of CR are
    // found once (again after a replacement changed the text), and a pattern found at
    // none of them is passed over. Texts with many of either take every pass.
    ByteStops stops = findStops(out, n, '@');
    for (const Replacement& r : kBarcodeReplacements) {
        if (r.pattern[0] != stops.byte) stops = findStops(out, n, r.pattern[0]);
        if (!occursAtStops(out, n, stops, r)) continue;
        n = replaceAll(out, n, limit, TextSpan{r.pattern, r.patternLength},
                       TextSpan{r.replacement, r.replacementLength});
        out[n] = '\0';
        stops = findStops(out, n, r.pattern[0]);
    }
    if (outLength != nullptr) *outLength = n;
    return kOk;
}

int32_t frameBarcodeTextStrict(const char* input, int32_t inputLength, char* out,
                               int32_t outCapacity, int32_t* outLength) {
    int32_t n = 0;
    const int32_t status = frameBarcodeText(input, inputLength, out, outCapacity, &n);
    if (outLength != nullptr) *outLength = n;
    if (status != kOk || n < 1) return status;
    for (int32_t i = 0; i < n; ++i) {
        const unsigned char c = static_cast<unsigned char>(out[i]);
        if (c == '\n' || c == '\r' || c == 0x1E) continue;
        // The range ends at "z" on purpose: braces, bar and tilde become spaces too.
        if (c < 0x20 || c > 0x7A) out[i] = ' ';
    }
    return kOk;
}

}  // namespace orvane
