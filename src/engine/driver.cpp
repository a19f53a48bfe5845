#include "engine/driver.h"

#include <bit>
#include <cctype>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "aamva/engine.h"
#include "engine/framers.h"
#include "engine/status.h"
#include "fields/countries.h"
#include "fields/names.h"

namespace orvane {
namespace {

inline constexpr int32_t kNoScore = -9999;

int32_t checkDriverArguments(const void* data, int32_t dataLength, const ParseBuffers& buffers,
                             const ParsedRecord* record) {
    if (data == nullptr) return kErrNullInput;
    if (dataLength < 1) return kErrEmptyInput;
    if (buffers.scratch == nullptr || buffers.scratchCapacity < 1 || buffers.framings == nullptr || record == nullptr) {
        return kErrInvalidArgument;
    }
    if (record->workBuffer == nullptr || record->workCapacity < 1) return kErrNoWorkBuffer;
    return kOk;
}

// The C library's upper-case mapping, asked of std::toupper once per parse for each byte
// value that a text holds.
struct UpperCase {
    unsigned char table[256];
    uint64_t known[4];
    uint64_t unlikeAscii[4];  // known bytes that the mapping does not treat as ASCII does

    unsigned char map(unsigned char c) {
        if ((known[c >> 6] >> (c & 63) & 1) == 0) {
            table[c] = static_cast<unsigned char>(std::toupper(c));
            known[c >> 6] |= uint64_t{1} << (c & 63);
        }
        return table[c];
    }
};

// Whether the mapping changes only a-z, to A-Z, for every byte the facts hold; asks
// std::toupper about each byte not asked before.
bool mapsLikeAscii(UpperCase& upper, const TextFacts& facts) {
    uint64_t unlike = 0;
    for (int word = 0; word < 4; ++word) {
        for (uint64_t bits = facts.bytes[word] & ~upper.known[word]; bits != 0; bits &= bits - 1) {
            const int c = word * 64 + std::countr_zero(bits);
            upper.table[c] = static_cast<unsigned char>(std::toupper(c));
            const int plain = c - (static_cast<unsigned>(c - 'a') < 26u ? 'a' - 'A' : 0);
            if (upper.table[c] != plain) upper.unlikeAscii[word] |= uint64_t{1} << (c & 63);
        }
        upper.known[word] |= facts.bytes[word];
        unlike |= facts.bytes[word] & upper.unlikeAscii[word];
    }
    return unlike == 0;
}

// Flips a-z to A-Z eight bytes at a time; other bytes, high ones included, stay.
void asciiUpperCase(char* text, int32_t length) {
    constexpr uint64_t kOnes = 0x0101010101010101ull;
    constexpr uint64_t kHigh = 0x8080808080808080ull;
    int32_t i = 0;
    for (; i + 8 <= length; i += 8) {
        uint64_t word;
        std::memcpy(&word, text + i, 8);
        const uint64_t low = word & ~kHigh;
        const uint64_t fromA = low + (0x80 - 'a') * kOnes;      // high bit: byte >= 'a'
        const uint64_t pastZ = low + (0x80 - 'z' - 1) * kOnes;  // high bit: byte > 'z'
        const uint64_t lower = fromA & ~pastZ & ~word & kHigh;  // 'a'..'z', below 0x80
        word ^= lower >> 2;                                      // 0x80 >> 2 is the case bit
        std::memcpy(text + i, &word, 8);
    }
    for (; i < length; ++i) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (c >= 'a' && c <= 'z') text[i] = static_cast<char>(c - 32);
    }
}

// Upper-cases a framed text in place, as the readers expect it, and brings its facts up
// to date. True when the mapping was the ASCII one for every byte of the text.
bool upperCaseText(UpperCase& upper, char* text, int32_t length, TextFacts* facts) {
    if (mapsLikeAscii(upper, *facts)) {
        // The bits of a-z move down to A-Z, 32 places in the word of bytes 64 to 127.
        constexpr uint64_t kLower = ((uint64_t{1} << 26) - 1) << ('a' - 64);
        if ((facts->bytes[1] & kLower) == 0) return true;  // nothing to change
        asciiUpperCase(text, length);
        facts->bytes[1] = (facts->bytes[1] & ~kLower) | ((facts->bytes[1] & kLower) >> 32);
        return true;
    }
    for (int32_t i = 0; i < length; ++i) text[i] = static_cast<char>(upper.map(static_cast<unsigned char>(text[i])));
    gatherTextFacts(text, length, facts);
    return false;
}

// A text that several rows read: framed once per parse, when the first of them needs it.
struct SharedText {
    bool made;
    int32_t status;  // the framer's
    char* text;
    int32_t length;
    bool asciiUpperCase;
    TextFacts facts;
};

struct ParseRun {
    const char* data;
    int32_t dataLength;
    char* scratch;
    // What framers may fill: the scratch buffer less one byte, so an input as long as the
    // buffer deliberately loses its last byte.
    int32_t room;
    char* framings;
    int32_t framingCapacity;
    UpperCase upper;
    SharedText barcode;
    SharedText zone;
    SharedText raw;      // the caller's bytes as the pass-through framer copies them
    int32_t recordRow;   // the row whose whole reading the record holds, or -1
    int32_t lastRun;     // the last row whose reader ran, or -1
    bool recordIsReset;  // no setter has stored a value since the last reset
};

// The caller's bytes as the pass-through framer copies them: their facts, gathered when
// a row first needs them unless the barcode framing found them already.
int32_t rawLength(const ParseRun& run) { return run.dataLength < run.room ? run.dataLength : run.room; }

// Frames the caller's bytes into a shared text's place, the first time it is asked for;
// false when it was made already.
bool frameOnce(ParseRun& run, SharedText& s, Framer framer, char* place) {
    if (s.made) return false;
    s.made = true;
    s.text = place;
    s.length = 0;
    s.status = framer(run.data, run.dataLength, s.text, run.room, &s.length);
    return true;
}

SharedText& sharedBarcode(ParseRun& run) {
    SharedText& s = run.barcode;
    if (!frameOnce(run, s, frameBarcodeText, run.framings)) return s;
    gatherTextFacts(s.text, s.length, &s.facts);
    // A framing that changed nothing has the caller's bytes and so their facts.
    if (!run.raw.made && run.room >= 1 && s.length == rawLength(run) &&
        std::memcmp(s.text, run.data, static_cast<size_t>(s.length)) == 0) {
        run.raw.made = true;
        run.raw.status = kOk;
        run.raw.length = s.length;
        run.raw.facts = s.facts;
        run.raw.facts.text = run.data;
    }
    s.asciiUpperCase = upperCaseText(run.upper, s.text, s.length, &s.facts);
    return s;
}

SharedText& sharedZone(ParseRun& run) {
    SharedText& s = run.zone;
    if (!frameOnce(run, s, frameMrz, run.framings + run.framingCapacity) || s.status != kOk) return s;
    gatherTextFacts(s.text, s.length, &s.facts);
    s.asciiUpperCase = upperCaseText(run.upper, s.text, s.length, &s.facts);
    return s;
}

SharedText& sharedRaw(ParseRun& run) {
    SharedText& s = run.raw;
    if (s.made) return s;
    s.made = true;
    s.status = run.room < 1 ? kErrInvalidArgument : kOk;
    s.length = rawLength(run);
    gatherTextFacts(run.data, s.status == kOk ? s.length : 0, &s.facts);
    return s;
}

// The facts a row's quick check judges: those of its own text, or of the text its own
// is made from (the caller's bytes before the Latin-1 fold or the zone framing, the
// barcode framing before the strict replacement); null when the row's framer refuses
// the input.
const TextFacts* factsForRow(ParseRun& run, Framer framer) {
    SharedText* shared = nullptr;
    if (framer == frameBarcodeText || framer == frameBarcodeTextStrict) shared = &sharedBarcode(run);
    if (framer == framePassThrough || framer == frameLatin1 || framer == frameMrz) shared = &sharedRaw(run);
    if (shared == nullptr || shared->status != kOk) return nullptr;
    return &shared->facts;
}

char* copyToScratch(ParseRun& run, const char* text, int32_t length) {
    std::memcpy(run.scratch, text, static_cast<size_t>(length));
    return run.scratch;
}

// frameBarcodeTextStrict's text: from the barcode framing when its upper-casing was the
// ASCII one (then the two steps commute), else framed anew.
char* strictTextForRow(ParseRun& run, int32_t* length) {
    const SharedText& barcode = sharedBarcode(run);
    if (!barcode.asciiUpperCase) return nullptr;
    char* text = copyToScratch(run, barcode.text, barcode.length + 1);
    int32_t i = 0;
#if defined(__SSE2__)
    // Sixteen bytes at a time: bytes outside 0x20..0x7A, but for LF, CR and RS, become blanks.
    const __m128i flip = _mm_set1_epi8(static_cast<char>(0x80));
    for (; i + 16 <= barcode.length; i += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
        const __m128i ordered = _mm_xor_si128(bytes, flip);  // unsigned order as signed
        const __m128i outside = _mm_or_si128(_mm_cmplt_epi8(ordered, _mm_set1_epi8(static_cast<char>(0x20 ^ 0x80))),
                                             _mm_cmpgt_epi8(ordered, _mm_set1_epi8(static_cast<char>(0x7A ^ 0x80))));
        const __m128i kept = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n')),
                                                       _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\r'))),
                                          _mm_cmpeq_epi8(bytes, _mm_set1_epi8(0x1E)));
        const __m128i blank = _mm_andnot_si128(kept, outside);
        const __m128i result = _mm_or_si128(_mm_andnot_si128(blank, bytes), _mm_and_si128(blank, _mm_set1_epi8(' ')));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(text + i), result);
    }
#endif
    for (; i < barcode.length; ++i) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (c == '\n' || c == '\r' || c == 0x1E) continue;
        // The range ends at "z" on purpose: braces, bar and tilde become spaces too.
        if (c < 0x20 || c > 0x7A) text[i] = ' ';
    }
    *length = barcode.length;
    return text;
}

// Frames the input into the scratch buffer with the row's own framer, upper-cased unless
// the framer passes the bytes through; null when the framer refuses.
char* frameIntoScratch(ParseRun& run, Framer framer, int32_t* length) {
    int32_t n = 0;
    if (framer(run.data, run.dataLength, run.scratch, run.room, &n) != kOk) return nullptr;
    if (n < 0) n = 0;
    if (n > run.room) n = run.room;
    *length = n;
    if (framer != framePassThrough) {
        for (int32_t i = 0; i < n; ++i) run.scratch[i] = static_cast<char>(run.upper.map(static_cast<unsigned char>(run.scratch[i])));
    }
    return run.scratch;
}

// The text a row's reader is given: a shared framing as it stands for a reader that only
// reads it, a copy in the scratch buffer for one that rewrites it; null when the row's
// framer refuses the input.
char* textForRow(ParseRun& run, const FormatDescriptor& row, int32_t* length) {
    SharedText* shared = nullptr;
    if (row.framer == frameBarcodeText) shared = &sharedBarcode(run);
    if (row.framer == frameMrz) shared = &sharedZone(run);
    if (shared != nullptr) {
        if (shared->status != kOk) return nullptr;
        *length = shared->length;
        return row.writesText ? copyToScratch(run, shared->text, shared->length + 1) : shared->text;
    }
    if (row.framer == framePassThrough) {
        const SharedText& raw = sharedRaw(run);
        if (raw.status != kOk) return nullptr;
        *length = raw.length;
        return copyToScratch(run, run.data, raw.length);
    }
    if (row.framer == frameBarcodeTextStrict) {
        if (char* text = strictTextForRow(run, length)) return text;
    }
    return frameIntoScratch(run, row.framer, length);
}

// The best reading so far, set aside before a later reader resets the record, so that it
// can be put back instead of read again. The record's work buffer and slots stay where
// they are, so its values are copied back to the same places; a reading that used more
// of the work buffer than is kept here is read again.
inline constexpr int32_t kKeptBytes = 2048;
struct KeptReading {
    bool held;
    ParsedRecord record;
    char bytes[kKeptBytes];
};

void keepReading(KeptReading& kept, const ParsedRecord* record) {
    kept.held = record->workUsed <= kKeptBytes;
    if (!kept.held) return;
    kept.record = *record;
    std::memcpy(kept.bytes, record->workBuffer, static_cast<size_t>(record->workUsed));
}

void putBackReading(const KeptReading& kept, ParsedRecord* record) {
    resetRecord(record);
    *record = kept.record;
    std::memcpy(record->workBuffer, kept.bytes, static_cast<size_t>(kept.record.workUsed));
}

// Runs a row's reader on a fresh record.
int32_t runRow(ParseRun& run, std::span<const FormatDescriptor> rows, int32_t r, ParsedRecord* record,
               const ParseClock* clock, char** text, int32_t* length) {
    const FormatDescriptor& row = rows[static_cast<size_t>(r)];
    *text = textForRow(run, row, length);
    if (*text == nullptr) return kErrFraming;
    // A record that no value reached since its last reset still is a reset record.
    if (record->workUsed != 0 || !run.recordIsReset) resetRecord(record);
    run.recordIsReset = true;
    run.recordRow = -1;
    run.lastRun = r;
    const int32_t status = row.parser(*text, *length, record, clock);
    run.recordIsReset = false;
    return status;
}

// The AAMVA version of a row's text as its reader left it (readers may rewrite their text
// in place), read before the scoring derivers overwrite the scratch buffer.
struct HeaderVersion {
    bool found;
    char digits[2];
};

HeaderVersion readHeaderVersion(const char* text, int32_t length) {
    TextSpan version;
    if (findAamvaHeader(text, length, &version) != kOk) return HeaderVersion{false, {}};
    return HeaderVersion{true, {version.data[0], version.data[1]}};
}

// Adds the AAMVA version to the winner's record.
void storeAamvaVersion(const HeaderVersion& version, ParsedRecord* record) {
    if (version.found) setField(record, field::aamvaVersion, TextSpan{version.digits, 2});
}

// Whether a derived text equals the expected code; the scratch buffer receives it.
int32_t deriveAndCompare(TextDeriver derive, const ParsedRecord* record, char* scratch, int32_t room,
                         const char* expected, bool* equal) {
    const int32_t status = derive(record, scratch, room);
    *equal = status == kOk && std::strcmp(scratch, expected) == 0;
    return status;
}

// A row that names the country or jurisdiction its records must yield gains when the
// record agrees, loses much when it disagrees, and loses when the names are missing.
int32_t scoreAdjustment(const FormatDescriptor& row, const ParsedRecord* record, char* scratch, int32_t room) {
    int32_t adjustment = 0;
    bool equal = false;
    // The first name's status depends on the record and the room only, so it is asked once.
    int32_t firstName = kErrNoAnswer;
    bool firstNameAsked = false;
    auto firstNameStatus = [&]() {
        if (!firstNameAsked) firstName = getFirstName(record, scratch, room);
        firstNameAsked = true;
        return firstName;
    };
    if (row.expectedCountry != nullptr) {
        if (deriveAndCompare(getCountryCode, record, scratch, room, row.expectedCountry, &equal) == kOk) {
            adjustment += equal ? 100 : -1000;
        }
        if (firstNameStatus() != kOk) adjustment -= 100;
    }
    if (row.expectedJurisdiction != nullptr) {
        if (deriveAndCompare(getJurisdictionCode, record, scratch, room, row.expectedJurisdiction, &equal) == kOk) {
            adjustment += equal ? 50 : -500;
        }
        if (firstNameStatus() != kOk || getLastName(record, scratch, room) != kOk) {
            adjustment -= 50;
        }
    }
    return adjustment;
}

// A failed parse leaves the record as the last reader whose framer took the input left
// it; a row refused by its quick check never ran, so that reader runs now.
void leaveLastReadersRecord(ParseRun& run, std::span<const FormatDescriptor> rows, ParsedRecord* record,
                            const ParseClock* clock) {
    for (int32_t r = static_cast<int32_t>(rows.size()) - 1; r > run.lastRun; --r) {
        char* text = nullptr;
        int32_t length = 0;
        runRow(run, rows, r, record, clock, &text, &length);
        if (text != nullptr) return;
    }
}

}  // namespace

int32_t parseBestFormatOf(std::span<const FormatDescriptor> rows, const void* data, int32_t dataLength,
                          const ParseBuffers& buffers, ParsedRecord* record, const ParseClock* clock,
                          ParseOutcome* outcome) {
    if (outcome != nullptr) *outcome = ParseOutcome{-1, kNoScore, nullptr, 0};
    if (int32_t status = checkDriverArguments(data, dataLength, buffers, record)) return status;
    ParseRun run{};
    run.data = static_cast<const char*>(data);
    run.dataLength = dataLength;
    run.scratch = buffers.scratch;
    run.room = buffers.scratchCapacity - 1;
    run.framings = buffers.framings;
    run.framingCapacity = buffers.scratchCapacity;
    run.recordRow = -1;
    run.lastRun = -1;
    int32_t bestRow = -1;
    int32_t bestScore = kNoScore;
    HeaderVersion bestVersion{false, {}};
    KeptReading kept;
    kept.held = false;
    // Rows of one framing stand together, so the facts of the last framing asked are kept.
    Framer factsFramer = nullptr;
    const TextFacts* framerFacts = nullptr;
    for (int32_t r = 0; r < static_cast<int32_t>(rows.size()); ++r) {
        const FormatDescriptor& row = rows[static_cast<size_t>(r)];
        if (row.mayRead != nullptr || row.readsAsEarlierRow != nullptr) {
            if (row.framer != factsFramer) {
                factsFramer = row.framer;
                framerFacts = factsForRow(run, row.framer);
            }
            const TextFacts* facts = framerFacts;
            if (facts == nullptr) continue;
            if (row.mayRead != nullptr && !row.mayRead(*facts)) continue;
            if (row.readsAsEarlierRow != nullptr && row.readsAsEarlierRow(*facts)) continue;
        }
        char* text = nullptr;
        int32_t length = 0;
        if (run.recordRow == bestRow && bestRow >= 0) keepReading(kept, record);
        if (runRow(run, rows, r, record, clock, &text, &length) != kOk) continue;
        int32_t score = countFilledFields(record);
        if (score == 0) continue;
        run.recordRow = r;
        const HeaderVersion version = readHeaderVersion(text, length);
        // The scoring derivers write into the scratch buffer, which no later row reads.
        score += scoreAdjustment(row, record, run.scratch, run.room);
        if (score > bestScore) {
            bestRow = r;
            bestScore = score;
            bestVersion = version;
        }
    }
    if (bestRow < 0) {
        leaveLastReadersRecord(run, rows, record, clock);
        return kErrNotRecognised;
    }
    if (run.recordRow != bestRow && kept.held) {
        putBackReading(kept, record);
    } else if (run.recordRow != bestRow) {
        char* text = nullptr;
        int32_t length = 0;
        if (int32_t final = runRow(run, rows, bestRow, record, clock, &text, &length)) return final;
        bestVersion = readHeaderVersion(text, length);
    }
    storeAamvaVersion(bestVersion, record);
    const FormatDescriptor& best = rows[static_cast<size_t>(bestRow)];
    record->formatGroup = best.formatGroup;
    record->formatId = best.formatId;
    sanitizeWorkBuffer(record);
    rememberNameRule(record);
    if (outcome != nullptr) {
        *outcome = ParseOutcome{bestRow, bestScore, nullptr, 0};
        outcome->text = textForRow(run, best, &outcome->length);
    }
    return kOk;
}

int32_t parseBestFormat(const void* data, int32_t dataLength, const ParseBuffers& buffers, ParsedRecord* record,
                        const ParseClock* clock, ParseOutcome* outcome) {
    return parseBestFormatOf(formatRegistry(), data, dataLength, buffers, record, clock, outcome);
}

}  // namespace orvane
