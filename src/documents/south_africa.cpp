// South African identity documents: fields separated by "|", recognised only by the
// fixed digit run that opens the last field.
//
// The text is cut with splitTokens, so the ninth field ends at the next "|" like every
// other field. The name field is cut once with nextToken: the first name is the first
// word and the middle name everything after the first blank, trimmed.
#include <iterator>

#include "documents/national.h"
#include "documents/national_fields.h"
#include "engine/status.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr int32_t kFieldsUsed = 9;
constexpr int32_t kSurnameField = 0;
constexpr int32_t kNamesField = 1;
constexpr int32_t kGenderField = 2;
constexpr int32_t kIdNumberField = 4;
constexpr int32_t kBirthField = 5;
constexpr int32_t kIssueField = 8;

// The fixed digit run of the last field is the format's marker, deliberately.
constexpr char kMarker[] = "1234567890";
constexpr int32_t kMarkerLength = 10;

constexpr const char* kMonths[] = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                   "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
static_assert(std::size(kMonths) == 12);

// 1..12 for a month abbreviation in any case, 0 otherwise.
int32_t monthNumber(const char* letters) {
    for (int32_t i = 0; i < static_cast<int32_t>(std::size(kMonths)); ++i) {
        if (spanCompare(TextSpan{letters, 3}, TextSpan{kMonths[i], 3}, kIgnoreCase) == 0) return i + 1;
    }
    return 0;
}

int32_t skipWhiteSpace(TextSpan text, int32_t pos) {
    while (pos < text.length && isWhiteSpace(static_cast<unsigned char>(text.data[pos]))) ++pos;
    return pos;
}

// "5 MAR 1990", "05mar1990": one or two digits of day, three letters of month, exactly
// four digits of year and nothing after, white space optional between them.
bool readDayMonthNameYear(TextSpan text, DateValue* out) {
    int32_t pos = 0;
    int32_t day = 0;
    while (pos < text.length && pos < 2 && isAsciiDigit(static_cast<unsigned char>(text.data[pos]))) {
        day = day * 10 + (text.data[pos++] - '0');
    }
    if (pos == 0 || pos == text.length) return false;
    pos = skipWhiteSpace(text, pos);
    if (text.length - pos < 3 || allChars(TextSpan{text.data + pos, 3}, isAsciiAlpha) != 0) return false;
    const char* letters = text.data + pos;
    pos = skipWhiteSpace(text, pos + 3);
    const TextSpan year{text.data + pos, text.length - pos};
    if (year.length != 4 || allChars(year, isAsciiDigit) != 0) return false;
    const int32_t month = monthNumber(letters);
    if (month == 0) return false;
    *out = DateValue{(year.data[0] - '0') * 1000 + (year.data[1] - '0') * 100 +
                         (year.data[2] - '0') * 10 + (year.data[3] - '0'),
                     month, day, 0, 0, 0};
    return true;
}

void storeText(ParsedRecord* record, FieldId id, TextSpan value) {
    if (spanUsable(value)) setFieldMapped(record, id, value, nullptr, nullptr, '\0');
}

void storeDate(ParsedRecord* record, FieldId id, TextSpan value) {
    DateValue date;
    if (readDayMonthNameYear(value, &date)) setFieldDateText(record, id, date);
}

void storeNames(ParsedRecord* record, TextSpan names) {
    TextSpan first;
    TextSpan rest;
    if (!nextToken(names, &first, &rest, kBlank, 0)) return;
    storeText(record, field::firstName, first);
    trimSet(&rest, kBlank);
    storeText(record, field::middleName, rest);
}

bool hasMarker(TextSpan text) {
    int32_t last = -1;
    for (int32_t i = 0; i < text.length; ++i) {
        if (text.data[i] == '|') last = i;
    }
    if (last < 0) return false;
    const TextSpan after{text.data + last + 1, text.length - last - 1};
    return after.length > kMarkerLength - 1 &&
           spanEquals(TextSpan{after.data, kMarkerLength}, kMarker) == 0;
}

}  // namespace

// Nine fields between "|".
bool mayReadSouthAfricaIdentity(const TextFacts& f) { return f.has('|'); }

int32_t parseSouthAfricaIdentity(char* text, int32_t length, ParsedRecord* record, const ParseClock*) {
    const TextSpan whole{text, length};
    TextSpan fields[kFieldsUsed];
    if (splitTokens(whole, fields, kFieldsUsed, "|", 0) < kFieldsUsed) return kErrNotRecognised;
    TextSpan surname = fields[kSurnameField];
    trimSet(&surname, kBlank);
    storeText(record, field::lastName, surname);
    storeNames(record, fields[kNamesField]);
    storeText(record, field::gender, fields[kGenderField]);
    storeText(record, field::licenseNumber, fields[kIdNumberField]);
    storeDate(record, field::birthdate, fields[kBirthField]);
    storeDate(record, field::issueDate, fields[kIssueField]);
    if (hasMarker(whole)) {
        setFieldLiteral(record, field::country, "Republic of South Africa");
        setFieldLiteral(record, field::countryCode, "ZAF");
        setFieldLiteral(record, field::documentType, "ID");
    }
    // Fields stored before a missing marker stay in the record.
    return fieldMissing(record, field::countryCode) == 0 ? kOk : kErrNotRecognised;
}

int32_t checkSouthAfricanIdNumber(const ParsedRecord* record) {
    TextSpan number;
    if (readField(record, field::licenseNumber, &number) != kOk || number.length != 13 || !allDigits(number.data, 13)) {
        return kCheckNotCheckable;
    }
    // Luhn: from the right, every second digit doubled, the check digit included as the first.
    int32_t sum = 0;
    for (int32_t i = 0; i < 13; ++i) {
        int32_t digit = number.data[12 - i] - '0';
        if (i % 2 == 1) digit = digit * 2 > 9 ? digit * 2 - 9 : digit * 2;
        sum += digit;
    }
    return sum % 10 == 0 ? kCheckValid : kCheckInvalid;
}

}  // namespace orvane
