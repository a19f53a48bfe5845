// Mexican licences, in two shapes.
//
// The AAMVA-like barcode: AAMVA element identifiers without the AAMVA header, one
// element per line, with the country named in full in "DCG" ("MEXICO", also with its
// accent). That name in text that does not open with the AAMVA "@" tells the layout
// apart; state licences in AAMVA form stay with the AAMVA readers.
//
//   DAQ  licence number     DCS  both surnames    DAC  first name   DAD  further given names
//   DBB  birth date         DBD  issue date       DBA  expiry date  (DDMMYYYY, day first)
//   DBC  sex, "H" (hombre) or "M" (mujer)          DBJ  CURP, the population registry key
//   DAG  street             DAI  municipality     DAJ  state, two letters   DAK  postal code
//   DCA  licence type       DCG  "MEXICO"
//
// The Latin-1 text: labelled lines, "LABEL: value", names with their accents (folded to
// ASCII and upper-cased before the reader sees them). The first two lines name the
// country and the document, and tell the layout apart:
//
//   ESTADOS UNIDOS MEXICANOS
//   LICENCIA DE CONDUCIR              (or LICENCIA PARA CONDUCIR)
//   NUMERO: licence number            CURP: population registry key
//   APELLIDO PATERNO: first surname   APELLIDO MATERNO: second surname
//   NOMBRE: given names               SEXO: H or M
//   FECHA DE NACIMIENTO, EXPEDICION, VIGENCIA: birth, issue, expiry, DD/MM/YYYY
//   DOMICILIO: street                 MUNICIPIO: municipality
//   ESTADO: state, two letters        CP: postal code          TIPO: licence type
#include <cstring>
#include <iterator>

#include "documents/national.h"
#include "documents/national_fields.h"
#include "engine/status.h"
#include "fields/dates.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr const char* kCountry = "United Mexican States";
constexpr const char* kCountryCode = "MEX";

// "H" or "HOMBRE" is a man and "M" or "MUJER" a woman: stored as "M" and "F", because
// a stored "M" would read as male.
const char* sexCode(TextSpan value) {
    if (equalsWordIgnoringCase(value, "H") || equalsWordIgnoringCase(value, "HOMBRE")) return "M";
    if (equalsWordIgnoringCase(value, "M") || equalsWordIgnoringCase(value, "MUJER")) return "F";
    return nullptr;
}

void storeSex(ParsedRecord* record, FieldId id, TextSpan value) {
    if (const char* code = sexCode(value)) setFieldLiteral(record, id, code);
}

constexpr ElementRule kMexicoElements[] = {
    {"DAQ", field::licenseNumber, storeElementText},
    {"DCS", field::lastName, storeElementText},
    {"DAC", field::firstName, storeElementText},
    {"DAD", field::middleName, storeElementText},
    {"DBB", field::birthdate, storeDayFirstDate},
    {"DBD", field::issueDate, storeDayFirstDate},
    {"DBA", field::expirationDate, storeDayFirstDate},
    {"DBC", field::gender, storeSex},
    {"DBJ", field::uniqueCustomerId, storeElementText},
    {"DAG", field::address1, storeElementText},
    {"DAI", field::city, storeElementText},
    {"DAJ", field::jurisdictionCode, storeElementText},
    {"DAK", field::postalCode, storeElementText},
    {"DCA", field::vehicleClassJurisdiction, storeElementText},
    {"DCG", field::country, ignoreElement},
};
static_assert(std::size(kMexicoElements) == 15);

constexpr ElementLayout kMexicoLayout{kMexicoElements, "MEXICO", countryNameInHeaderlessText, kCountry,
                                      kCountryCode};

// The labelled text. Values are collected first, because the surname is the two
// labelled surnames joined.
enum Label : int32_t {
    kNumber, kSurname1, kSurname2, kGivenNames, kBirth, kSex, kRegistryKey, kStreet,
    kMunicipality, kState, kPostalCode, kLicenceType, kIssue, kExpiry, kLabelCount
};

constexpr const char* kLabels[] = {
    "NUMERO", "APELLIDO PATERNO", "APELLIDO MATERNO", "NOMBRE", "FECHA DE NACIMIENTO", "SEXO",
    "CURP", "DOMICILIO", "MUNICIPIO", "ESTADO", "CP", "TIPO", "EXPEDICION", "VIGENCIA",
};
static_assert(std::size(kLabels) == kLabelCount);

constexpr const char* kNationLine = "ESTADOS UNIDOS MEXICANOS";
constexpr const char* kDocumentLines[] = {"LICENCIA DE CONDUCIR", "LICENCIA PARA CONDUCIR"};
constexpr const char* kLineEnds = "\r\n";

// The next line that is not blank, trimmed.
bool nextLine(TextSpan* rest, TextSpan* line) {
    while (rest->length > 0 && nextToken(*rest, line, rest, kLineEnds, kSkipEmptyTokens)) {
        trimIf(line, isWhiteSpace);
        if (line->length > 0) return true;
    }
    return false;
}

bool recognisesHeading(TextSpan* rest) {
    TextSpan nation;
    TextSpan document;
    return nextLine(rest, &nation) && spanEquals(nation, kNationLine) == 0 &&
           nextLine(rest, &document) && spanInList(document, kDocumentLines, static_cast<int32_t>(std::size(kDocumentLines)));
}

// Files the value of a "LABEL: value" line under its label; other lines are passed over.
void collectLabelled(TextSpan line, TextSpan* values) {
    TextSpan label;
    TextSpan value;
    if (spanFind(line, makeSpan(":")) < 0 || !nextToken(line, &label, &value, ":", 0)) return;
    trimIf(&label, isWhiteSpace);
    trimIf(&value, isWhiteSpace);
    for (int32_t i = 0; i < kLabelCount; ++i) {
        if (spanEquals(label, kLabels[i]) == 0) values[i] = value;
    }
}

void storeText(ParsedRecord* record, FieldId id, TextSpan value) {
    if (spanUsable(value)) setFieldMapped(record, id, value, nullptr, nullptr, '\0');
}

void storeDate(ParsedRecord* record, FieldId id, TextSpan value) {
    DateValue date;
    if (readSlashedDate(value, &date) && isPlausibleDate(date) &&
        date.day <= daysInMonth(date.year, date.month)) {
        setFieldDate(record, id, &date);
    }
}

// The first given name, and the others as the middle name.
void storeGivenNames(ParsedRecord* record, TextSpan names) {
    TextSpan first;
    TextSpan rest;
    if (!nextToken(names, &first, &rest, kBlank, kSkipEmptyTokens)) return;
    storeText(record, field::firstName, first);
    trimSet(&rest, kBlank);
    storeText(record, field::middleName, rest);
}

void storeLabelled(ParsedRecord* record, const TextSpan* values) {
    storeText(record, field::licenseNumber, values[kNumber]);
    const TextSpan surnames[] = {values[kSurname1], values[kSurname2]};
    setFieldJoined(record, field::lastName, surnames, 2, kBlank, nullptr, nullptr, '\0');
    storeGivenNames(record, values[kGivenNames]);
    storeDate(record, field::birthdate, values[kBirth]);
    storeSex(record, field::gender, values[kSex]);
    storeText(record, field::uniqueCustomerId, values[kRegistryKey]);
    storeText(record, field::address1, values[kStreet]);
    storeText(record, field::city, values[kMunicipality]);
    storeText(record, field::jurisdictionCode, values[kState]);
    storeText(record, field::postalCode, values[kPostalCode]);
    storeText(record, field::vehicleClassJurisdiction, values[kLicenceType]);
    storeDate(record, field::issueDate, values[kIssue]);
    storeDate(record, field::expirationDate, values[kExpiry]);
}

}  // namespace

bool mayReadMexicoElements(const TextFacts& f) { return mayReadCountryElements(f, kMexicoLayout.marker); }

// The heading's first line is as long as the nation's name once folded and trimmed;
// the caller's bytes are checked before the fold, in which A0 and B7 become blanks.
bool mayReadMexicoLatin1Text(const TextFacts& f) {
    auto blank = [](char c) {
        const unsigned char b = static_cast<unsigned char>(c);
        return isWhiteSpace(b) || b == 0xA0 || b == 0xB7;
    };
    int32_t start = 0;
    while (start < f.length && blank(f.text[start])) ++start;
    int32_t end = start + findEitherByte(f.text + start, f.length - start, '\n', '\r');
    while (end > start && blank(f.text[end - 1])) --end;
    return end - start == static_cast<int32_t>(std::strlen(kNationLine));
}

int32_t parseMexicoElements(char* text, int32_t length, ParsedRecord* record, const ParseClock*) {
    return readElementLayout(text, length, record, kMexicoLayout);
}

int32_t parseMexicoLatin1Text(char* text, int32_t length, ParsedRecord* record, const ParseClock*) {
    TextSpan rest{text, length};
    if (text == nullptr || length < 1 || !recognisesHeading(&rest)) return kErrNotRecognised;
    TextSpan values[kLabelCount] = {};
    TextSpan line;
    while (nextLine(&rest, &line)) collectLabelled(line, values);
    storeLabelled(record, values);
    setFieldLiteral(record, field::country, kCountry);
    setFieldLiteral(record, field::countryCode, kCountryCode);
    setFieldLiteral(record, field::documentType, "DL");
    return kOk;
}

}  // namespace orvane
