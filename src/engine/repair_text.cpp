// Repairs of damage that any text can suffer on its way from the scanner: the wrong
// character encoding, a symbology identifier in front, stray bytes, other line breaks.
#include <cstring>

#include "engine/repairs.h"
#include "fields/text.h"

namespace orvane {
namespace {

bool isContinuation(unsigned char c) { return (c & 0xC0) == 0x80; }

// The length of the UTF-8 sequence at text (2 to 4), or 0 when none stands there.
int32_t utf8SequenceAt(TextSpan text, int32_t at) {
    const unsigned char lead = static_cast<unsigned char>(text.data[at]);
    const int32_t length = lead >= 0xC2 && lead <= 0xDF ? 2 : lead >= 0xE0 && lead <= 0xEF ? 3 : lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
    if (length == 0 || at + length > text.length) return 0;
    for (int32_t i = 1; i < length; ++i) {
        if (!isContinuation(static_cast<unsigned char>(text.data[at + i]))) return 0;
    }
    return length;
}

// Whether the text is UTF-8 with at least one character beyond ASCII (or a byte-order mark).
bool isUtf8BeyondAscii(TextSpan text) {
    bool beyond = false;
    for (int32_t at = 0; at < text.length;) {
        if (static_cast<unsigned char>(text.data[at]) < 0x80) {
            ++at;
            continue;
        }
        const int32_t length = utf8SequenceAt(text, at);
        if (length == 0) return false;
        beyond = true;
        at += length;
    }
    return beyond;
}

// An AAMVA barcode: "@" among the first bytes and its header word soon after.
bool looksLikeAamva(TextSpan text) {
    const TextSpan head{text.data, text.length < 64 ? text.length : 64};
    const int32_t at = spanFind(TextSpan{head.data, head.length < 16 ? head.length : 16}, makeSpan("@"));
    return at >= 0 && (spanFind(head, makeSpan("ANSI")) > at || spanFind(head, makeSpan("AAMVA")) > at);
}

bool isHigh(char c) { return static_cast<unsigned char>(c) >= 0x80; }

}  // namespace

// Cards hold Latin-1; apps hand over UTF-8. A byte-order mark goes, characters beyond
// Latin-1 become "?".
int32_t repairUtf8ToLatin1(TextSpan in, char* out, int32_t room) {
    if (!isUtf8BeyondAscii(in)) return -1;
    int32_t n = 0;
    int32_t at = 0;
    if (in.length >= 3 && std::memcmp(in.data, "\xEF\xBB\xBF", 3) == 0) at = 3;
    for (; at < in.length && n < room; ++n) {
        const unsigned char lead = static_cast<unsigned char>(in.data[at]);
        if (lead < 0x80) {
            out[n] = in.data[at++];
            continue;
        }
        const int32_t length = utf8SequenceAt(in, at);
        const bool latin1 = length == 2 && lead <= 0xC3;
        out[n] = latin1 ? static_cast<char>(((lead & 0x03) << 6) | (static_cast<unsigned char>(in.data[at + 1]) & 0x3F)) : '?';
        at += length;
    }
    return n;
}

// Scanners set to report it put the symbology identifier ("]L2" for PDF417) in front.
int32_t repairSymbologyIdentifier(TextSpan in, char* out, int32_t room) {
    int32_t at = 0;
    while (at < in.length && static_cast<unsigned char>(in.data[at]) <= ' ') ++at;
    if (in.length - at < 4 || in.data[at] != ']' || !isAsciiAlpha(static_cast<unsigned char>(in.data[at + 1])) ||
        !isAsciiAlnum(static_cast<unsigned char>(in.data[at + 2]))) {
        return -1;
    }
    const int32_t n = in.length - at - 3;
    if (n > room) return -1;
    std::memcpy(out, in.data + at + 3, static_cast<size_t>(n));
    return n;
}

// Readers and apps put bytes from 0x80 up into AAMVA text, which holds ASCII: control
// bytes 0x80-0x9F anywhere, other high bytes in the header and inside element ids (among
// a line's first three other characters). Those go; a value's Latin-1 letters stay.
int32_t repairStrayHighBytes(TextSpan in, char* out, int32_t room) {
    const TextSpan head{in.data, in.length < 64 ? in.length : 64};
    int32_t headerEnd = spanFind(head, makeSpan("ANSI"));
    if (headerEnd < 0) headerEnd = spanFind(head, makeSpan("AAMVA"));
    int32_t n = 0;
    int32_t lineChars = 0;  // the line's characters so far, high ones left out
    bool dropped = false;
    for (int32_t i = 0; i < in.length && n < room; ++i) {
        const char c = in.data[i];
        if (c == '\n' || c == '\r') lineChars = -1;
        if (isHigh(c)) {
            const bool control = static_cast<unsigned char>(c) < 0xA0;
            if (control || i < headerEnd || lineChars < 3) {
                dropped = true;
                continue;
            }
        } else {
            ++lineChars;
        }
        out[n++] = c;
    }
    if (!dropped || !looksLikeAamva(TextSpan{out, n})) return -1;
    return n;
}

// Text fields and browsers turn line feeds into carriage returns or CR LF pairs; lines
// that end in CR alone, or mostly in CR LF, end in LF again.
int32_t repairLineBreaks(TextSpan in, char* out, int32_t room) {
    // The AAMVA header's one CR and a subfile's closing CR are no line breaks to repair;
    // stripes and labelled text have line breaks of their own, which their readers know.
    int32_t crs = 0;
    for (const char* at = in.data; crs < 3; ++at, ++crs) {
        at = static_cast<const char*>(std::memchr(at, '\r', static_cast<size_t>(in.data + in.length - at)));
        if (at == nullptr) return -1;
    }
    // CRs are few where this is asked, so they are found with memchr, and the LFs are
    // counted only until they outnumber them.
    const char* end = in.data + in.length;
    const auto next = [end](const char* at, char c) {
        return static_cast<const char*>(std::memchr(at, c, static_cast<size_t>(end - at)));
    };
    int32_t pairs = 0;
    crs = 0;
    for (const char* at = next(in.data, '\r'); at != nullptr; at = next(at + 1, '\r')) {
        ++crs;
        if (at + 1 < end && at[1] == '\n') ++pairs;
    }
    int32_t lfs = 0;
    for (const char* at = next(in.data, '\n'); at != nullptr && lfs <= crs; at = next(at + 1, '\n')) ++lfs;
    if ((lfs > crs && pairs < 3) || !looksLikeAamva(in)) return -1;
    int32_t n = 0;
    for (int32_t i = 0; i < in.length && n < room; ++i) {
        if (in.data[i] == '\r' && i + 1 < in.length && in.data[i + 1] == '\n') continue;
        out[n++] = in.data[i] == '\r' ? '\n' : in.data[i];
    }
    return n;
}

}  // namespace orvane
