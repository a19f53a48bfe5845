#include "aamva/repairs.h"

#include <cstring>

#include "aamva/engine.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr char kCanonicalSeparators[] = "\n\x1e\r";
constexpr int32_t kMarkerWindow = 12;  // how far after "@" the header word may stand

// Where the barcode's "@" stands: the first byte that is no blank or control byte.
int32_t atSignOf(TextSpan text) {
    int32_t at = 0;
    while (at < text.length && static_cast<unsigned char>(text.data[at]) <= ' ') ++at;
    return at < text.length && text.data[at] == '@' ? at : -1;
}

// The header word "ANSI " or "AAMVA" within the window after "@", or -1.
int32_t markerAfter(TextSpan text, int32_t atSign) {
    const int32_t end = atSign + 1 + kMarkerWindow < text.length ? atSign + 1 + kMarkerWindow : text.length;
    const TextSpan window{text.data + atSign + 1, end - atSign - 1};
    const int32_t ansi = spanFind(window, makeSpan("ANSI"));
    const int32_t aamva = spanFind(window, makeSpan("AAMVA"));
    if (ansi < 0 && aamva < 0) return -1;
    const int32_t first = ansi < 0 ? aamva : aamva < 0 ? ansi : (ansi < aamva ? ansi : aamva);
    return atSign + 1 + first;
}

// Keyboard wedges type the three separators as other bytes ("a", "c", "6", blanks,
// doubled line feeds) or drop them, so a few of any bytes may stand there.
constexpr int32_t kMostSeparatorBytes = 5;

bool digitsFollow(TextSpan text, int32_t at, int32_t count) { return digitsAt(text, at, count); }

// Copies in with its bytes [from, to) replaced by the replacement; -1 when it does not fit.
int32_t splice(TextSpan in, int32_t from, int32_t to, const char* replacement, char* out, int32_t room) {
    const int32_t inserted = static_cast<int32_t>(std::strlen(replacement));
    const int64_t length = static_cast<int64_t>(in.length) - (to - from) + inserted;
    if (length > room) return -1;
    std::memcpy(out, in.data, static_cast<size_t>(from));
    std::memcpy(out + from, replacement, static_cast<size_t>(inserted));
    std::memcpy(out + from + inserted, in.data + to, static_cast<size_t>(in.length - to));
    return static_cast<int32_t>(length);
}

struct DamagedWord {
    const char* damaged;
    const char* whole;
};

// Header words a letter short, or "ANSI" that lost its blank; each must be followed by
// the six digits of the issuer number.
constexpr DamagedWord kDamagedWords[] = {
    {"ANSI", "ANSI "}, {"NSI ", "ANSI "}, {"ASI ", "ANSI "}, {"ANI ", "ANSI "}, {"ANS ", "ANSI "},
    {"AMVA ", "AAMVA"}, {"AMVA", "AAMVA"}, {"AAVA", "AAMVA"}, {"AAMA", "AAMVA"}, {"AAMV", "AAMVA"},
    {"AAMVA ", "AAMVA"},
};

bool isElementIdAt(const char* at) {
    return isAsciiUpper(static_cast<unsigned char>(at[0])) && isAsciiUpper(static_cast<unsigned char>(at[1])) &&
           isAsciiAlnum(static_cast<unsigned char>(at[2]));
}

// Where the elements start: after the header word, the digits behind it and the
// directory's entries; -1 for text without an AAMVA header.
int32_t elementsStart(TextSpan text) {
    const int32_t atSign = atSignOf(text);
    if (atSign < 0) return -1;
    int32_t at = markerAfter(text, atSign);
    if (at < 0) return -1;
    at += text.data[at + 1] == 'N' ? 4 : 5;
    while (at < text.length && (isAsciiDigit(static_cast<unsigned char>(text.data[at])) || text.data[at] == ' ')) ++at;
    while (at + 10 <= text.length && isAsciiUpper(static_cast<unsigned char>(text.data[at])) &&
           isAsciiAlnum(static_cast<unsigned char>(text.data[at + 1])) && allDigits(text.data + at + 2, 8)) {
        at += 10;
    }
    return at;
}

// Where the element lines start: after an AAMVA header, or at the start of text whose
// lines hold elements without one, as the Guatemalan, Mexican and element-line layouts
// do; -1 for any other text.
int32_t elementLinesStart(TextSpan text) {
    const int32_t afterHeader = elementsStart(text);
    if (afterHeader >= 0) return afterHeader;
    int32_t elementLines = 0;
    TextSpan rest = text;
    TextSpan line;
    while (rest.length > 0 && nextToken(rest, &line, &rest, "\n\r", 0)) {
        trimLeadingIf(&line, isWhiteSpace);
        if (line.length >= 3 && isElementIdAt(line.data) && isKnownElementId(line.data)) ++elementLines;
    }
    return elementLines >= 3 ? 0 : -1;
}

bool isDateElement(const char* id) {
    for (const char* date : {"DBA", "DBB", "DBD", "DDB", "DDC", "DDH", "DDI", "DDJ"}) {
        if (std::memcmp(id, date, 3) == 0) return true;
    }
    return false;
}

// "MM/DD/YYYY", "YYYY/MM/DD" or "YYYY-MM-DD" at value: its eight digits, month or year
// first as written, or false for any other text. Month-first dates with dashes are a
// layout's own and stay.
bool readSeparatedDate(TextSpan value, char digits[8]) {
    if (value.length < 10) return false;
    const char* v = value.data;
    const bool monthFirst = allDigits(v, 2) && allDigits(v + 3, 2) && allDigits(v + 6, 4) && v[2] == '/' && v[5] == '/';
    const bool yearFirst = allDigits(v, 4) && allDigits(v + 5, 2) && allDigits(v + 8, 2) && v[4] == v[7] &&
                           (v[4] == '/' || v[4] == '-');
    if (monthFirst) {
        std::memcpy(digits, v, 2);
        std::memcpy(digits + 2, v + 3, 2);
        std::memcpy(digits + 4, v + 6, 4);
    } else if (yearFirst) {
        std::memcpy(digits, v, 4);
        std::memcpy(digits + 4, v + 5, 2);
        std::memcpy(digits + 6, v + 8, 2);
    }
    return monthFirst || yearFirst;
}

// Finds where elements that lost their separators start. An element id the tables know
// starts one unless it stood before (an element appears once in a subfile, so a repeat
// is part of a value) or the value it would get is empty or opens with a sign that no
// value opens with: "JORDAN" holds "DAN" and "ADAM," holds "DAM", but neither starts one.
struct ElementSplitter {
    TextSpan body;
    uint32_t seen[64];
    int32_t seenCount;

    bool isCandidate(int32_t at) const {
        if (at + 3 > body.length || !isElementIdAt(body.data + at) || !isKnownElementId(body.data + at)) return false;
        const uint32_t key = keyAt(at);
        for (int32_t s = 0; s < seenCount; ++s) {
            if (seen[s] == key) return false;
        }
        return true;
    }
    uint32_t keyAt(int32_t at) const {
        return static_cast<uint32_t>(static_cast<unsigned char>(body.data[at])) << 16 |
               static_cast<uint32_t>(static_cast<unsigned char>(body.data[at + 1])) << 8 |
               static_cast<uint32_t>(static_cast<unsigned char>(body.data[at + 2]));
    }
    bool startsElement(int32_t at) {
        if (body.data[at - 1] == '\n' || !isCandidate(at)) return false;
        // A value is never so long that its end lies further than this.
        constexpr int32_t kLongestValue = 256;
        int32_t next = at + 3;
        while (next < body.length && next - at < kLongestValue && !isCandidate(next)) ++next;
        if (next == at + 3) return false;
        const unsigned char first = static_cast<unsigned char>(body.data[at + 3]);
        if (!isAsciiAlnum(first) && first != ' ') return false;
        if (seenCount < 64) seen[seenCount++] = keyAt(at);
        return true;
    }
};

}  // namespace

int32_t repairHeaderMarker(TextSpan in, char* out, int32_t room) {
    const int32_t atSign = atSignOf(in);
    if (atSign < 0) return -1;
    const int32_t whole = markerAfter(in, atSign);
    if (whole >= 0 && !(in.data[whole + 1] == 'N' && digitsFollow(in, whole + 4, 6))) return -1;
    const int32_t end = atSign + 1 + kMarkerWindow < in.length ? atSign + 1 + kMarkerWindow : in.length;
    for (int32_t at = atSign + 1; at < end; ++at) {
        for (const DamagedWord& word : kDamagedWords) {
            const int32_t n = static_cast<int32_t>(std::strlen(word.damaged));
            if (at + n > in.length || std::memcmp(in.data + at, word.damaged, static_cast<size_t>(n)) != 0) continue;
            if (!digitsFollow(in, at + n, 6)) continue;
            return splice(in, at, at + n, word.whole, out, room);
        }
    }
    return -1;
}

int32_t repairHeaderSeparators(TextSpan in, char* out, int32_t room) {
    const int32_t atSign = atSignOf(in);
    if (atSign < 0) return -1;
    const int32_t marker = markerAfter(in, atSign);
    if (marker < 0) return -1;
    const TextSpan between{in.data + atSign + 1, marker - atSign - 1};
    if (spanEquals(between, kCanonicalSeparators) == 0 && atSign == 0) return -1;
    if (between.length > kMostSeparatorBytes) return -1;
    const int32_t length = splice(TextSpan{in.data + atSign, in.length - atSign}, 1, marker - atSign, kCanonicalSeparators,
                                  out, room);
    return length;
}

// Whether some line starts with a blank, found from one line break to the next.
bool hasIndentedLine(TextSpan text) {
    for (const char* at = text.data; at != nullptr;) {
        at = static_cast<const char*>(std::memchr(at, '\n', static_cast<size_t>(text.data + text.length - at)));
        if (at == nullptr || ++at == text.data + text.length) return false;
        if (*at == ' ' || *at == '\t') return true;
    }
    return false;
}

int32_t repairLineIndents(TextSpan in, char* out, int32_t room) {
    if (!hasIndentedLine(in) || elementLinesStart(in) < 0) return -1;
    int32_t n = 0;
    bool removed = false;
    for (int32_t i = 0; i < in.length;) {
        if (n >= room) return -1;
        out[n++] = in.data[i++];
        if (out[n - 1] != '\n') continue;
        int32_t blanks = 0;
        while (i + blanks < in.length && (in.data[i + blanks] == ' ' || in.data[i + blanks] == '\t')) ++blanks;
        if (blanks > 0 && i + blanks + 3 <= in.length && isElementIdAt(in.data + i + blanks)) {
            i += blanks;
            removed = true;
        }
    }
    // The header word may stand indented too: the separators' repair takes those blanks.
    return removed ? n : -1;
}

int32_t repairElementSeparators(TextSpan in, char* out, int32_t room) {
    const int32_t start = elementsStart(in);
    if (start < 0 || in.length - start < 16) return -1;
    const TextSpan body{in.data + start, in.length - start};
    int32_t breaks = 0;
    for (int32_t i = 0; i < body.length && breaks < 3; ++i) breaks += (body.data[i] == '\n' || body.data[i] == '\r') ? 1 : 0;
    if (breaks >= 3) return -1;
    if (start > room) return -1;
    std::memcpy(out, in.data, static_cast<size_t>(start));
    int32_t n = start;
    ElementSplitter splitter{body, {}, 0};
    int32_t inserted = 0;
    for (int32_t i = 0; i < body.length; ++i) {
        if (i > 0 && splitter.startsElement(i)) {
            if (n >= room) return -1;
            out[n++] = '\n';
            ++inserted;
        }
        if (n >= room) return -1;
        out[n++] = body.data[i];
    }
    return inserted >= 3 ? n : -1;
}

int32_t repairSlashDates(TextSpan in, char* out, int32_t room) {
    const int32_t start = elementLinesStart(in);
    if (start < 0 || start > room) return -1;
    std::memcpy(out, in.data, static_cast<size_t>(start));
    int32_t n = start;
    bool repaired = false;
    for (int32_t at = start; at < in.length;) {
        const bool lineStart = at == start || in.data[at - 1] == '\n' || in.data[at - 1] == '\r' || in.data[at - 1] == 0x1E ||
                               (at >= start + 2 && (std::memcmp(in.data + at - 2, "DL", 2) == 0 ||
                                                    std::memcmp(in.data + at - 2, "ID", 2) == 0));
        char digits[8];
        if (lineStart && at + 13 <= in.length && isDateElement(in.data + at) &&
            readSeparatedDate(TextSpan{in.data + at + 3, in.length - at - 3}, digits)) {
            if (n + 11 > room) return -1;
            std::memcpy(out + n, in.data + at, 3);
            std::memcpy(out + n + 3, digits, 8);
            n += 11;
            at += 13;
            repaired = true;
            continue;
        }
        if (n >= room) return -1;
        out[n++] = in.data[at++];
    }
    return repaired ? n : -1;
}

}  // namespace orvane
