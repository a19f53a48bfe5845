// Panamanian licences: twelve fields separated by "|", recognised by the "|CIP|" that
// follows the licence number (the CIP, the personal identity number, is the number the
// licence is issued under). Fields 4 to 7 hold the card's other particulars and are not
// read. Names use "_" between words.
//
// Field 2 is cut once with nextToken: the first name is its first "_"-separated word
// and the middle name all the rest of the field, its "_" written as blanks.
#include "documents/national.h"
#include "documents/national_fields.h"
#include "engine/status.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr char kMarker[] = "|CIP|";
constexpr int32_t kMarkerLength = 5;
constexpr int32_t kMinimumFromMarker = 8;
constexpr int32_t kPanamaFieldCount = 12;
constexpr int32_t kLicenceField = 0;
constexpr int32_t kNamesField = 2;
constexpr int32_t kSurnamesField = 3;
constexpr int32_t kBirthField = 8;
constexpr int32_t kExpiryField = 9;
constexpr int32_t kIssueField = 10;
constexpr int32_t kClassField = 11;

int isUnderscore(int c) { return c == '_'; }

void storeText(ParsedRecord* record, FieldId id, TextSpan value) {
    if (spanUsable(value)) setFieldMapped(record, id, value, nullptr, nullptr, '\0');
}

void storeWords(ParsedRecord* record, FieldId id, TextSpan value) {
    if (spanUsable(value)) setFieldMapped(record, id, value, isUnderscore, nullptr, ' ');
}

bool storeDate(ParsedRecord* record, FieldId id, TextSpan value) {
    DateValue date;
    return readSlashedDate(value, &date) && setFieldDateText(record, id, date) != nullptr;
}

void storeNames(ParsedRecord* record, TextSpan names) {
    TextSpan first;
    TextSpan rest;
    if (!nextToken(names, &first, &rest, "_", 0)) return;
    storeText(record, field::firstName, first);
    storeWords(record, field::middleName, rest);
}

bool hasMarker(TextSpan text) {
    const int32_t at = spanFind(text, TextSpan{kMarker, kMarkerLength});
    return at >= 0 && text.length - at >= kMinimumFromMarker;
}

}  // namespace

bool mayReadPanamaLicence(const TextFacts& f) { return f.length >= kMarkerLength && f.has('|') && f.find(kMarker) >= 0; }

int32_t parsePanamaLicence(char* text, int32_t length, ParsedRecord* record, const ParseClock*) {
    const TextSpan whole{text, length};
    if (length < kMarkerLength || !hasMarker(whole)) return kErrNotRecognised;
    TextSpan fields[kPanamaFieldCount];
    if (splitTokens(whole, fields, kPanamaFieldCount, "|", 0) < kPanamaFieldCount) return kErrNotRecognised;
    storeText(record, field::licenseNumber, fields[kLicenceField]);
    storeNames(record, fields[kNamesField]);
    storeWords(record, field::lastName, fields[kSurnamesField]);
    // Deliberately a chain: a date that does not read also leaves every later one out.
    if (storeDate(record, field::birthdate, fields[kBirthField]) &&
        storeDate(record, field::expirationDate, fields[kExpiryField])) {
        storeDate(record, field::issueDate, fields[kIssueField]);
    }
    storeText(record, field::licenseClassification, fields[kClassField]);
    setFieldLiteral(record, field::country, "Republic of Panama");
    setFieldLiteral(record, field::countryCode, "PAN");
    setFieldLiteral(record, field::documentType, "DL");
    return kOk;
}

}  // namespace orvane
