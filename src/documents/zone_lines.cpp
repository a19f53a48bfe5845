#include "documents/zone_lines.h"

#include <cstring>

#include "documents/mrz.h"
#include "documents/mrz_check_digits.h"
#include "documents/national_zones.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr int32_t kMostJunkOnLine = 20;     // characters cut after or before a line of the zone
constexpr int32_t kMostFillersLost = 8;     // fillers put back at the end of a name line
constexpr int32_t kMostOtherCharacters = 8; // punctuation a zone line may carry besides blanks

// The lines of a layout as they are found; a layout can also come on one line.
struct Shape {
    int32_t lineCount;
    int32_t lengths[3];
    int32_t nameLine;  // the line that ends with the names, which may lose fillers; or -1
};

constexpr Shape kShapes[] = {
    {2, {44, 44, 0}, 0}, {3, {30, 30, 30}, 2}, {2, {36, 36, 0}, 0}, {3, {9, 30, 30}, 2},
    {1, {88, 0, 0}, -1}, {1, {90, 0, 0}, -1}, {1, {72, 0, 0}, -1}, {1, {30, 0, 0}, -1},
};

struct Line {
    int32_t from;
    int32_t to;
    int32_t zoneCharacters;  // -1 for a line that is no zone line
    char last;               // its last zone character, capitalised
};

// What a byte is in a zone line: the zone character it stands for (letters capitalised;
// "?", which OCR writes for a character it could not read, keeps that place as a filler),
// a blank, or another character.
constexpr char kBlankByte = 0;
constexpr char kOtherByte = 1;

struct ByteMeanings {
    char of[256];
};

constexpr ByteMeanings meaningsOfBytes() {
    ByteMeanings m{};
    for (int c = 0; c < 256; ++c) {
        char meaning = kOtherByte;
        if (isAsciiSpace(c)) meaning = kBlankByte;
        if (isAsciiUpper(c) || isAsciiDigit(c) || c == '<') meaning = static_cast<char>(c);
        if (isAsciiLower(c)) meaning = static_cast<char>(c - 'a' + 'A');
        if (c == '?') meaning = '<';
        m.of[c] = meaning;
    }
    return m;
}

constexpr ByteMeanings kMeanings = meaningsOfBytes();

char meaningOf(char c) { return kMeanings.of[static_cast<unsigned char>(c)]; }
bool holdsAPlace(char meaning) { return meaning != kBlankByte && meaning != kOtherByte; }

// The line from index from up to its line break or the end of the text.
Line measureLine(TextSpan text, int32_t from) {
    Line line{from, from, 0, '\0'};
    int32_t others = 0;
    int32_t i = from;
    for (; i < text.length; ++i) {
        const char c = text.data[i];
        if (c == '\n' || c == '\r') break;
        const char meaning = meaningOf(c);
        if (holdsAPlace(meaning)) {
            ++line.zoneCharacters;
            line.last = meaning;
        } else if (meaning == kOtherByte) {
            ++others;
        }
    }
    line.to = i;
    if (others > kMostOtherCharacters) line.zoneCharacters = -1;
    return line;
}

// At most n zone characters of the line after the first skip ones; returns how many.
int32_t copyZoneCharacters(TextSpan text, const Line& line, int32_t skip, char* out, int32_t n) {
    int32_t copied = 0;
    for (int32_t i = line.from; i < line.to && copied < n; ++i) {
        const char meaning = meaningOf(text.data[i]);
        if (!holdsAPlace(meaning)) continue;
        if (skip > 0) {
            --skip;
        } else {
            out[copied++] = meaning;
        }
    }
    return copied;
}

struct Candidate {
    FoundZone zone;
    int32_t exactLines;
    bool found;
};

// The lines joined as the shape has them, and the layout they make.
ZoneKind joinLines(TextSpan text, const Line* lines, const Shape& shape, bool junkBefore, char* joined) {
    int32_t at = 0;
    for (int32_t i = 0; i < shape.lineCount; ++i) {
        const int32_t extra = lines[i].zoneCharacters - shape.lengths[i];
        int32_t n = copyZoneCharacters(text, lines[i], junkBefore && extra > 0 ? extra : 0, joined + at, shape.lengths[i]);
        while (n < shape.lengths[i]) joined[at + n++] = '<';
        at += n;
    }
    return zoneKindOf(joined, at);
}

// How many of the zone's check digits hold.
int32_t digitsHolding(const char* zone, int32_t length, ZoneKind kind) {
    if (kind == ZoneKind::FrenchIdentityCard || kind == ZoneKind::FrenchDrivingLicence) {
        NationalZoneCheck check{};
        const NationalZone layout =
            kind == ZoneKind::FrenchIdentityCard ? NationalZone::FrenchIdentityCard : NationalZone::FrenchDrivingLicence;
        checkNationalZoneDigits(layout, TextSpan{zone, length}, &check);
        return check.checkedDigits - check.failureCount;
    }
    MrzCheckReport report{};
    checkMrzDigits(zone, length, &report);
    return report.checkedDigits - report.failureCount;
}

// Whether the lines make a zone of the shape, and whether it is better than the best so far:
// more lines of their exact length, then the longer zone; of equals, the first found.
void tryShape(TextSpan text, const Line* lines, const Shape& shape, Candidate* best) {
    int32_t exact = 0;
    for (int32_t i = 0; i < shape.lineCount; ++i) {
        const int32_t have = lines[i].zoneCharacters;
        const int32_t want = shape.lengths[i];
        if (have < 0) return;
        if (have == want) {
            ++exact;
        } else if (have > want) {
            if (shape.lineCount == 1 || have - want > kMostJunkOnLine) return;
        } else if (i != shape.nameLine || want - have > kMostFillersLost || lines[i].last != '<') {
            return;
        }
    }
    if (exact == 0) return;
    const int32_t length = shape.lengths[0] + shape.lengths[1] + shape.lengths[2];
    if (best->found && (exact < best->exactLines || (exact == best->exactLines && length <= best->zone.length))) {
        return;
    }
    // Junk after a line is what OCR adds most; junk before it wins only where the layout
    // then reads, or more of its check digits hold.
    char joined[kLongestZoneText];
    ZoneKind kind = joinLines(text, lines, shape, false, joined);
    if (exact < shape.lineCount) {
        char before[kLongestZoneText];
        const ZoneKind kindBefore = joinLines(text, lines, shape, true, before);
        if (kindBefore != ZoneKind::None &&
            (kind == ZoneKind::None || digitsHolding(before, length, kindBefore) > digitsHolding(joined, length, kind))) {
            std::memcpy(joined, before, static_cast<size_t>(length));
            kind = kindBefore;
        }
    }
    if (kind == ZoneKind::None || std::memchr(joined, '<', static_cast<size_t>(length)) == nullptr) return;
    std::memcpy(best->zone.text, joined, static_cast<size_t>(length));
    best->zone.length = length;
    best->zone.kind = kind;
    best->exactLines = exact;
    best->found = true;
}

int32_t lineLengthsOf(ZoneKind kind, int32_t* lengths) {
    switch (kind) {
        case ZoneKind::Passport:
        case ZoneKind::VisaLong:
            lengths[0] = lengths[1] = 44;
            return 2;
        case ZoneKind::Td1:
            lengths[0] = lengths[1] = lengths[2] = 30;
            return 3;
        case ZoneKind::Td2:
        case ZoneKind::VisaShort:
        case ZoneKind::FrenchIdentityCard:
            lengths[0] = lengths[1] = 36;
            return 2;
        case ZoneKind::SwissDrivingLicence:
            lengths[0] = 9;
            lengths[1] = lengths[2] = 30;
            return 3;
        case ZoneKind::FrenchDrivingLicence:
            lengths[0] = 30;
            return 1;
        case ZoneKind::None:
            break;
    }
    return 0;
}

// A text that is a zone's lines and nothing else, as a clean scan or writeZoneLines gives
// it: capitals, digits and fillers in lines of the layout's lengths, each ended by a line
// feed (the last one may have none), or the whole zone on one line. The search below finds
// the same zone in it, at several times the cost.
bool readBareLines(TextSpan text, FoundZone* zone) {
    int32_t lengths[3] = {};
    int32_t lines = 0;
    int32_t n = 0;
    int32_t lineStart = 0;
    for (int32_t i = 0; i < text.length; ++i) {
        const char c = text.data[i];
        if (c == '\n') {
            if (n == lineStart || lines == 3) return false;
            lengths[lines++] = n - lineStart;
            lineStart = n;
            continue;
        }
        if (n == kLongestZoneText || meaningOf(c) != c) return false;
        zone->text[n++] = c;
    }
    if (n > lineStart) {
        if (lines == 3) return false;
        lengths[lines++] = n - lineStart;
    }
    zone->length = n;
    zone->kind = zoneKindOf(zone->text, n);
    int32_t expected[3] = {};
    const int32_t expectedLines = lineLengthsOf(zone->kind, expected);
    if (expectedLines == 0 || std::memchr(zone->text, '<', static_cast<size_t>(n)) == nullptr) return false;
    if (lines == 1) return true;
    return lines == expectedLines && lengths[0] == expected[0] && lengths[1] == expected[1] && lengths[2] == expected[2];
}

bool lettersAt(const char* zone, int32_t at, const char* word, bool lookAlikes) {
    for (int32_t i = 0; word[i] != '\0'; ++i) {
        if ((lookAlikes ? letterLookAlike(zone[at + i]) : zone[at + i]) != word[i]) return false;
    }
    return true;
}

ZoneKind kindOf(const char* zone, int32_t length, bool lookAlikes) {
    if (zone == nullptr || length < 2) return ZoneKind::None;
    const auto letter = [lookAlikes](char c) { return lookAlikes ? letterLookAlike(c) : c; };
    const char first = letter(zone[0]);
    const char second = letter(zone[1]);
    switch (length) {
        case 88:
            return first == 'P' ? ZoneKind::Passport : first == 'V' ? ZoneKind::VisaLong : ZoneKind::None;
        case 90:
            return isMrzCardType(first, second) ? ZoneKind::Td1 : ZoneKind::None;
        case 72:
            if (first == 'V') return ZoneKind::VisaShort;
            if (lettersAt(zone, 0, "IDFRA", lookAlikes)) return ZoneKind::FrenchIdentityCard;
            return isMrzCardType(first, second) ? ZoneKind::Td2 : ZoneKind::None;
        case 69:
            return letter(zone[9]) == 'F' && lettersAt(zone, 11, "CHE", lookAlikes) ? ZoneKind::SwissDrivingLicence
                                                                                     : ZoneKind::None;
        case 30: {
            const char place = lookAlikes ? digitLookAlike(zone[1]) : zone[1];
            if (first == 'D' && isAsciiDigit(static_cast<unsigned char>(place)) && lettersAt(zone, 2, "FRA", lookAlikes)) {
                return ZoneKind::FrenchDrivingLicence;
            }
            return ZoneKind::None;
        }
        default:
            return ZoneKind::None;
    }
}

}  // namespace

char letterLookAlike(char c) {
    switch (c) {
        case '0': return 'O';
        case '1': return 'I';
        case '2': return 'Z';
        case '5': return 'S';
        case '6': return 'G';
        case '8': return 'B';
        default: return c;
    }
}

char digitLookAlike(char c) {
    switch (c) {
        case 'O':
        case 'D':
        case 'Q': return '0';
        case 'I':
        case 'L': return '1';
        case 'Z': return '2';
        case 'S': return '5';
        case 'G': return '6';
        case 'B': return '8';
        default: return c;
    }
}

ZoneKind zoneKindOf(const char* zone, int32_t length) { return kindOf(zone, length, true); }

bool opensAsWritten(const FoundZone& zone) { return kindOf(zone.text, zone.length, false) == zone.kind; }

bool findZone(TextSpan text, FoundZone* zone) {
    if (text.data == nullptr || text.length < 1 || zone == nullptr) return false;
    // Every layout has fillers somewhere: most texts of the other families end here.
    if (std::memchr(text.data, '<', static_cast<size_t>(text.length)) == nullptr) return false;
    if (readBareLines(text, zone)) return true;
    Line window[3]{};
    int32_t held = 0;
    Candidate best{};
    for (int32_t from = 0; from <= text.length;) {
        const Line line = measureLine(text, from);
        from = line.to + 1;
        if (line.zoneCharacters == 0) continue;  // blank lines and rules of dashes stand between lines
        if (held == 3) {
            window[0] = window[1];
            window[1] = window[2];
            --held;
        }
        window[held++] = line;
        if (line.zoneCharacters < 0) continue;
        for (const Shape& shape : kShapes) {
            if (held >= shape.lineCount) tryShape(text, window + held - shape.lineCount, shape, &best);
        }
    }
    if (!best.found) return false;
    *zone = best.zone;
    return true;
}

int32_t writeZoneLines(const FoundZone& zone, char* out, int32_t room) {
    int32_t lengths[3] = {};
    const int32_t lines = lineLengthsOf(zone.kind, lengths);
    if (lines == 0 || out == nullptr || lengths[0] + lengths[1] + lengths[2] != zone.length ||
        zone.length + lines - 1 > room) {
        return -1;
    }
    int32_t n = 0;
    int32_t at = 0;
    for (int32_t i = 0; i < lines; ++i) {
        if (i > 0) out[n++] = '\n';
        std::memcpy(out + n, zone.text + at, static_cast<size_t>(lengths[i]));
        n += lengths[i];
        at += lengths[i];
    }
    return n;
}

bool holdsTheZoneAlone(TextSpan text, const FoundZone& zone) {
    int32_t n = 0;
    for (int32_t i = 0; i < text.length; ++i) {
        // The framing drops a "?" as it drops blanks.
        const char meaning = meaningOf(text.data[i]);
        if (!holdsAPlace(meaning) || text.data[i] == '?') continue;
        if (n == zone.length || meaning != zone.text[n]) return false;
        ++n;
    }
    return n == zone.length;
}

}  // namespace orvane
