// The workers that answer the country, jurisdiction and issuer getters from the record
// and the reference tables.
#include "fields/countries.h"

#include "fields/answer.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr FieldId kJurisdictionSlots[] = {field::jurisdictionCode, field::residenceJurisdictionCode};
constexpr FieldId kCountryCodeSlots[] = {field::countryCode, field::countryCodeAlt};

// Scratch buffers of the chained derivations; a text cut to fit is simply not found.
constexpr int32_t kJurisdictionScratch = 16;
constexpr int32_t kCountryScratch = 64;
constexpr int32_t kIinScratch = 32;

// A table answer: -26 when the lookup found nothing or nothing could be written.
int32_t answerFound(const char* found, char* buffer, int32_t capacity) {
    return found != nullptr ? answerLiteral(found, buffer, capacity) : kErrNoAnswer;
}

int32_t jurisdictionFromIin(const ParsedRecord* record, char* buffer, int32_t capacity) {
    TextSpan iin;
    if (readField(record, field::iin, &iin) != kOk) return kErrNoAnswer;
    return answerFound(jurisdictionCodeForIin(iin), buffer, capacity);
}

int32_t countryFromJurisdiction(const ParsedRecord* record, char* buffer, int32_t capacity) {
    char code[kJurisdictionScratch];
    if (getJurisdictionCode(record, code, kJurisdictionScratch) != kOk) return kErrNoAnswer;
    return answerFound(countryForJurisdictionCode(makeSpan(code)), buffer, capacity);
}

// The IIN of the jurisdiction slot as read, or null.
const char* iinOfJurisdiction(const ParsedRecord* record) {
    TextSpan code;
    if (firstFilledField(record, kJurisdictionSlots, &code) != kOk) return nullptr;
    return iinForJurisdictionCode(code);
}

}  // namespace

int32_t getJurisdictionCode(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    TextSpan code;
    if (firstFilledField(record, kJurisdictionSlots, &code) == kOk) {
        return answerPrintable(code, buffer, capacity);
    }
    return jurisdictionFromIin(record, buffer, capacity);
}

int32_t getCountry(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    TextSpan value;
    if (readField(record, field::country, &value) == kOk) {
        return answerPrintable(value, buffer, capacity);
    }
    // An unknown alpha-3 is no answer; the jurisdiction is not asked then.
    if (firstFilledField(record, kCountryCodeSlots, &value) == kOk) {
        return answerFound(countryNameForAlpha3(value), buffer, capacity);
    }
    // Deliberately answered in the jurisdiction table's mixed case, not the capitals
    // of the country table.
    return countryFromJurisdiction(record, buffer, capacity);
}

int32_t getCountryCode(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    TextSpan code;
    if (readField(record, field::countryCode, &code) == kOk) {
        return answerAsIs(code, buffer, capacity);
    }
    // Without a country or country code read, the country is the jurisdiction's, a name
    // of the jurisdiction table whose code is known beforehand; only a code of exactly
    // two characters names a jurisdiction.
    TextSpan read;
    if (readField(record, field::country, &read) != kOk && firstFilledField(record, kCountryCodeSlots, &read) != kOk) {
        TextSpan jurisdiction;
        const char* fromIin = nullptr;
        if (firstFilledField(record, kJurisdictionSlots, &jurisdiction) == kOk) {
            trimIf(&jurisdiction, isNotPrintableCode);
        } else {
            TextSpan iin;
            if (readField(record, field::iin, &iin) != kOk || (fromIin = jurisdictionCodeForIin(iin)) == nullptr) {
                return kErrNoAnswer;
            }
            jurisdiction = makeSpan(fromIin);
        }
        if (jurisdiction.length != 2 || countryForJurisdictionCode(jurisdiction) == nullptr) return kErrNoAnswer;
        const char* alpha3 = countryCodeOfJurisdiction(jurisdiction);
        return alpha3 != nullptr ? answerLiteral(alpha3, buffer, capacity) : kErrNoAnswer;
    }
    char country[kCountryScratch];
    if (getCountry(record, country, kCountryScratch) != kOk) return kErrNoAnswer;
    if (const char* alpha3 = alpha3ForCountryName(country)) {
        return answerLiteral(alpha3, buffer, capacity);
    }
    // A country slot may hold the code itself; accepted only in capitals.
    if (isCountryAlpha3(country)) return answerLiteral(country, buffer, capacity);
    return kErrNoAnswer;
}

int32_t getIIN(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    TextSpan iin;
    if (readField(record, field::iin, &iin) != kOk) {
        return answerFound(iinOfJurisdiction(record), buffer, capacity);
    }
    if (isKnownIin(iin)) return answerAsIs(iin, buffer, capacity);
    // An unknown number gives way to the jurisdiction's, and is answered as read
    // when the jurisdiction has none.
    if (const char* fromJurisdiction = iinOfJurisdiction(record)) {
        return answerLiteral(fromJurisdiction, buffer, capacity);
    }
    return answerAsIs(iin, buffer, capacity);
}

int32_t getIssuedBy(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    char iin[kIinScratch] = {};
    if (getIIN(record, iin, kIinScratch) != kOk) return kErrNoAnswer;
    return answerFound(jurisdictionCodeForIin(makeSpan(iin)), buffer, capacity);
}

}  // namespace orvane
