#include "documents/hc.h"

#include <cstring>

#include <iterator>

#include "documents/segment_engine.h"
#include "engine/status.h"
#include "fields/dates.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr const char* kDocumentHc = "HC";
constexpr const char* kCountryCanada = "CAN";

// ---- Shared date handling

int32_t numberAt(TextSpan text, int32_t from, int32_t length) {
    return static_cast<int32_t>(readLeadingInteger(TextSpan{text.data + from, length}));
}

// Stores the date only when it can be one; otherwise the field stays empty.
void storeCheckedDate(ParsedRecord* record, FieldId id, int32_t year, int32_t month, int32_t day) {
    if (day < 1 || day > 31 || month < 1 || month > 12 || year < 0 || year > 9999) return;
    const DateValue date{year, month, day, 0, 0, 0};
    setFieldDate(record, id, &date);
}

// ---- Format 48: fixed positions after "@" and "HC"

struct Positions {
    FieldId id;
    int32_t from;
    int32_t to;  // last position, inclusive
};
constexpr Positions kJurisdiction48{field::jurisdictionCode, 1, 2};
constexpr Positions kLicence48{field::licenseNumber, 20, 29};
constexpr Positions kName48{field::fullName, 30, 57};
constexpr Positions kBirth48{field::birthdate, 58, 65};
constexpr Positions kGender48{field::gender, 66, 66};
constexpr Positions kIssue48{field::issueDate, 67, 74};
constexpr Positions kExpiry48{field::expirationDate, 75, 82};

// The field's text, or a null span when the segment does not reach its last position.
TextSpan fieldAt(TextSpan segment, const Positions& at) {
    if (segment.length <= at.to) return TextSpan{nullptr, 0};
    return TextSpan{segment.data + at.from, at.to - at.from + 1};
}

template <const Positions& At>
void storeAsIsAt(SegmentEngine& e, TextSpan segment) {
    const TextSpan value = fieldAt(segment, At);
    if (value.data != nullptr) setFieldMapped(e.record, At.id, value, nullptr, nullptr, '\0');
}

void storeYearFirstDate(ParsedRecord* record, FieldId id, TextSpan date) {
    if (date.data == nullptr) return;
    storeCheckedDate(record, id, numberAt(date, 0, 4), numberAt(date, 4, 2), numberAt(date, 6, 2));
}

template <const Positions& At>
void storeDateAt(SegmentEngine& e, TextSpan segment) {
    storeYearFirstDate(e.record, At.id, fieldAt(segment, At));
}

void storeExpiryThenBirth48(SegmentEngine& e, TextSpan segment) {
    storeDateAt<kExpiry48>(e, segment);
    storeDateAt<kBirth48>(e, segment);
}

// Names come as parts joined by "/"; the name workers split on "$" instead.
void storeSlashedName(ParsedRecord* record, TextSpan name) {
    trimSet(&name, " ");
    if (name.length > 0) setFieldFromSpan(record, field::fullName, name, "/", nullptr, '$');
}

void storeName48(SegmentEngine& e, TextSpan segment) {
    const TextSpan name = fieldAt(segment, kName48);
    if (name.data != nullptr) storeSlashedName(e.record, name);
}

int32_t locateWholeInput(SegmentEngine&, const char* input, int32_t length, TextSpan* first,
                         TextSpan*, TextSpan*) {
    if (length < 1) return kErrPayloadTooShort;
    if (input == nullptr) return kErrNullInput;
    *first = TextSpan{input, length};
    return kOk;
}

int32_t checkHcHead(SegmentEngine&, TextSpan first) {
    if (first.data == nullptr || first.length < 6) return kErrFraming;
    if (first.data[0] != '@' || first.data[4] != 'H' || first.data[5] != 'C') return kErrFraming;
    return kOk;
}

// ---- Format 49: stripe tracks opened by "%B"

constexpr int32_t kCardNumberEnd = 18;      // the "^" after "%B" and 16 characters
constexpr int32_t kLongestNameRun = 26;
constexpr int32_t kNumberBlockLength = 16;
constexpr int32_t kNameStepMinimum = 20;    // "%B", 16, "^", one name character
constexpr int32_t kDateStepMinimum = 36;    // and "^" with the 16 digits
constexpr int32_t kIssueSegmentMinimum = 50;
constexpr int32_t kIssueAfterCaretMinimum = 30;
constexpr int32_t kIssueDateOffset = 24;    // from the "^" after the name
constexpr Positions kLicence49{field::licenseNumber, 8, 17};
constexpr Positions kIin49{field::iin, 2, 7};

bool isNameCharacter(int c) {
    return isAsciiAlnum(c) || isAsciiSpace(c) || charInSet(static_cast<char>(c), "$',-./\\_");
}

// Length of the run of name characters at from, at most limit and within the text.
int32_t nameRunLength(TextSpan text, int32_t from, int32_t limit) {
    int32_t n = 0;
    while (n < limit && from + n < text.length &&
           isNameCharacter(static_cast<unsigned char>(text.data[from + n]))) {
        ++n;
    }
    return n;
}

// Where a card block's name lies: "%B", 16 characters, "^", the name, "^".
struct CardName {
    int32_t start;
    int32_t length;
    bool closed;  // the run of 1 to 26 name characters is followed by "^"
};

bool isCardHead(TextSpan segment, int32_t p) {
    return segment.data[p] == '%' && p + kCardNumberEnd < segment.length &&
           segment.data[p + 1] == 'B' && segment.data[p + kCardNumberEnd] == '^';
}

CardName cardNameAt(TextSpan segment, int32_t p) {
    const int32_t start = p + kCardNumberEnd + 1;
    const int32_t run = nameRunLength(segment, start, kLongestNameRun);
    const int32_t end = start + run;
    return CardName{start, run, run >= 1 && end < segment.length && segment.data[end] == '^'};
}

// The 16 digits after the name: characters 4 to 6 are "799".
bool hasNumberBlock(TextSpan segment, int32_t caret) {
    if (segment.length - caret < kNumberBlockLength + 1) return false;
    if (!digitsAt(segment, caret + 1, kNumberBlockLength)) return false;
    const char* block = segment.data + caret + 1;
    return block[4] == '7' && block[5] == '9' && block[6] == '9';
}

// Position of the "^" that closes the name of the first whole card block, or -1.
int32_t findCardBlock(TextSpan segment) {
    for (int32_t p = 0; segment.length - p >= kDateStepMinimum; ++p) {
        if (!isCardHead(segment, p)) continue;
        const CardName name = cardNameAt(segment, p);
        if (!name.closed) continue;
        const int32_t caret = name.start + name.length;
        if (hasNumberBlock(segment, caret)) return caret;
    }
    return -1;
}

// Two-digit years below 31 are this century's.
int32_t expandedYearAt(TextSpan text, int32_t from) {
    const int32_t year = numberAt(text, from, 2);
    return year < 31 ? 2000 + year : 1900 + year;
}

// The expiry deliberately takes the birth day as its day.
void storeNumberBlock(SegmentEngine& e, TextSpan segment) {
    const int32_t caret = findCardBlock(segment);
    if (caret < 0) return;
    const TextSpan block{segment.data + caret + 1, kNumberBlockLength};
    const int32_t birthDay = numberAt(block, 14, 2);
    storeCheckedDate(e.record, field::expirationDate, expandedYearAt(block, 0), numberAt(block, 2, 2),
                     birthDay);
    storeCheckedDate(e.record, field::birthdate, numberAt(block, 8, 4), numberAt(block, 12, 2), birthDay);
    const char gender[2] = {block.data[7], '\0'};
    setFieldLiteral(e.record, field::gender, gender);
}

void storeIssueDate49(SegmentEngine& e, TextSpan segment) {
    const int32_t caret = findCardBlock(segment);
    if (caret < 0 || segment.length < kIssueSegmentMinimum ||
        segment.length - caret < kIssueAfterCaretMinimum) {
        return;
    }
    const TextSpan date{segment.data + caret + kIssueDateOffset, 6};
    storeCheckedDate(e.record, field::issueDate, expandedYearAt(date, 0), numberAt(date, 2, 2),
                     numberAt(date, 4, 2));
}

// The last closed name wins; a card block whose name is not closed forgets it.
void storeName49(SegmentEngine& e, TextSpan segment) {
    TextSpan kept{nullptr, 0};
    for (int32_t p = 0; segment.length - p >= kNameStepMinimum; ++p) {
        if (!isCardHead(segment, p)) continue;
        const CardName name = cardNameAt(segment, p);
        kept = name.closed ? TextSpan{segment.data + name.start, name.length} : TextSpan{nullptr, 0};
    }
    if (kept.data == nullptr) return;
    trimIf(&kept, isWhiteSpace);
    if (kept.length > 0) setFieldFromSpan(e.record, field::fullName, kept, "/", nullptr, '$');
}

void storeIin49(SegmentEngine& e, TextSpan segment) {
    const TextSpan iin = fieldAt(segment, kIin49);
    if (iin.data != nullptr && allChars(iin, isAsciiDigit) == 0) {
        setFieldMapped(e.record, field::iin, iin, nullptr, nullptr, '\0');
    }
}

bool isTrackBoundary(const char* input, int32_t at) { return input[at] == '?' && input[at + 1] == ';'; }

// Cuts three tracks from the end at each "?;": the separators open the second and the
// third segment.
int32_t locateTracks(SegmentEngine&, const char* input, int32_t length, TextSpan* first,
                     TextSpan* second, TextSpan* third) {
    if (length < 9) return kErrPayloadTooShort;
    if (input == nullptr) return kErrNullInput;
    int32_t cut = length - 3;
    while (!isTrackBoundary(input, cut)) {
        if (--cut <= 3) return kErrTrackBoundary;
    }
    *third = TextSpan{input + cut, length - cut};
    const int32_t firstEnd = cut;
    if (firstEnd < 4) return kErrTrackBoundary;
    int32_t secondStart = firstEnd - 3;
    if (secondStart <= 3) {
        if (firstEnd != 6) return kErrTrackBoundary;
    } else {
        while (secondStart > 3 && !isTrackBoundary(input, secondStart)) --secondStart;
        if (secondStart < 3 || firstEnd - secondStart < 3) return kErrTrackBoundary;
    }
    *first = TextSpan{input, secondStart};
    *second = TextSpan{input + secondStart, firstEnd - secondStart};
    if (third->length < 3) return kErrTrackBoundary;
    return kOk;
}

int32_t checkCardTrack(SegmentEngine&, TextSpan first) {
    if (first.data == nullptr || first.length < 3) return kErrFraming;
    if (first.data[0] != '%' || first.data[1] != 'B' || !isAsciiDigit(static_cast<unsigned char>(first.data[2]))) {
        return kErrFraming;
    }
    return kOk;
}

// ---- Format 50: keyword lines

enum class KeywordValue { Text, MonthEnd, Date };

struct HcKeyword {
    char keyword[5];
    FieldId id;
    KeywordValue value;
};

constexpr HcKeyword kKeywords[] = {
    {"CNAM", field::licenseNumber, KeywordValue::Text},
    {"CPRN", field::firstName, KeywordValue::Text},
    {"CNOM", field::lastName, KeywordValue::Text},
    {"CEXP", field::expirationDate, KeywordValue::MonthEnd},
    {"CDTN", field::birthdate, KeywordValue::Date},
    {"CSEX", field::gender, KeywordValue::Text},
};
static_assert(std::size(kKeywords) == 6);
static_assert([] {
    for (const HcKeyword& k : kKeywords) {
        if (k.keyword[0] != 'C') return false;
    }
    return true;
}());

constexpr int32_t kKeywordLength = 4;
constexpr int32_t kMinimumKeywords = 2;

const HcKeyword* findKeyword(TextSpan word) {
    if (word.length != kKeywordLength) return nullptr;
    for (const HcKeyword& k : kKeywords) {
        if (std::memcmp(word.data, k.keyword, kKeywordLength) == 0) return &k;
    }
    return nullptr;
}

// Year, one separator and month; the card is valid to the month's last day.
bool storeMonthEnd(ParsedRecord* record, FieldId id, TextSpan value) {
    if (value.length != 7 || !digitsAt(value, 0, 4) || !digitsAt(value, 5, 2)) return false;
    const int32_t year = numberAt(value, 0, 4);
    const int32_t month = numberAt(value, 5, 2);
    storeCheckedDate(record, id, year, month, daysInMonth(year, month));
    return fieldMissing(record, id) == 0;
}

bool storeSeparatedDate(ParsedRecord* record, FieldId id, TextSpan value) {
    if (value.length != 10 || !digitsAt(value, 0, 4) || !digitsAt(value, 5, 2) ||
        !digitsAt(value, 8, 2)) {
        return false;
    }
    storeCheckedDate(record, id, numberAt(value, 0, 4), numberAt(value, 5, 2), numberAt(value, 8, 2));
    return fieldMissing(record, id) == 0;
}

// Stores one keyword's value; true when the keyword counts towards recognition.
bool storeKeywordValue(ParsedRecord* record, const HcKeyword& k, TextSpan value) {
    switch (k.value) {
        case KeywordValue::MonthEnd:
            return storeMonthEnd(record, k.id, value);
        case KeywordValue::Date:
            return storeSeparatedDate(record, k.id, value);
        case KeywordValue::Text:
            break;
    }
    setFieldMapped(record, k.id, value, nullptr, nullptr, '\0');
    return true;
}

}  // namespace

// "@", three bytes and "HC", as the caller's bytes stand.
bool mayReadHcFormat48(const TextFacts& f) { return f.length >= 6 && f.at(0) == '@' && f.at(4) == 'H' && f.at(5) == 'C'; }

int32_t parseHcFormat48(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    SegmentEngine e;
    initSegmentEngine(e, record, clock);
    e.locate = locateWholeInput;
    e.check = checkHcHead;
    e.dispatch = dispatchFieldSteps;
    e.fieldFirst = storeAsIsAt<kLicence48>;
    e.fieldSteps[0] = storeName48;
    e.fieldSteps[1] = storeAsIsAt<kGender48>;
    e.fieldSteps[2] = storeExpiryThenBirth48;
    e.fieldSteps[3] = storeDateAt<kIssue48>;
    e.fieldLast = storeAsIsAt<kJurisdiction48>;
    return runSegmentEngine(e, text, length);
}

// A card track "%B" and a digit, then tracks after "?;".
bool mayReadHcFormat49(const TextFacts& f) {
    return f.length >= 9 && f.startsWith("%B") && isAsciiDigit(static_cast<unsigned char>(f.at(2))) && f.find("?;") >= 0;
}

int32_t parseHcFormat49(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    SegmentEngine e;
    initSegmentEngine(e, record, clock);
    e.locate = locateTracks;
    e.check = checkCardTrack;
    e.dispatch = dispatchFieldSteps;
    e.fieldFirst = storeAsIsAt<kLicence49>;
    e.fieldSteps[0] = storeName49;
    e.fieldSteps[2] = storeNumberBlock;
    e.fieldSteps[3] = storeIssueDate49;
    e.fieldLast = storeIin49;
    return runSegmentEngine(e, text, length);
}

// At least two lines that open with a keyword: every line but the first follows a line feed.
bool mayReadHcFormat50(const TextFacts& f) {
    if (!f.has('\n') || !f.has('C')) return false;
    int32_t keywords = f.length > kKeywordLength && findKeyword(TextSpan{f.text, kKeywordLength}) != nullptr ? 1 : 0;
    for (int32_t at = 0; keywords < kMinimumKeywords; ++at) {
        at += findEitherByte(f.text + at, f.length - at, '\n', '\n');
        if (f.length - at <= kKeywordLength + 1) return false;
        // Every keyword opens with "C".
        if (f.text[at + 1] == 'C' && findKeyword(TextSpan{f.text + at + 1, kKeywordLength}) != nullptr) ++keywords;
    }
    return true;
}

int32_t parseHcFormat50(char* text, int32_t length, ParsedRecord* record, const ParseClock*) {
    if (text == nullptr || length < 0) return kErrInvalidArgument;
    int32_t counted = 0;
    TextSpan line;
    TextSpan rest{text, length};
    while (nextToken(rest, &line, &rest, "\n", kSkipEmptyTokens)) {
        if (line.length <= kKeywordLength) continue;
        TextSpan value{line.data + kKeywordLength, line.length - kKeywordLength};
        trimSet(&value, " ");
        const HcKeyword* k = findKeyword(TextSpan{line.data, kKeywordLength});
        if (value.length < 1 || k == nullptr) continue;
        if (storeKeywordValue(record, *k, value)) ++counted;
    }
    // Fields stored so far stay even when too few keywords were found.
    if (counted < kMinimumKeywords) return kErrFraming;
    setFieldLiteral(record, field::documentType, kDocumentHc);
    setFieldLiteral(record, field::countryCode, kCountryCanada);
    return kOk;
}

}  // namespace orvane
