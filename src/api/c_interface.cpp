// The exported getters and checks: each one names the worker that answers it.
#include <cstring>

#include "api/answers.h"
#include "api/result_json.h"
#include "engine/check_digits.h"
#include "engine/elements.h"
#include "engine/format_names.h"
#include "engine/repairs.h"
#include "fields/text.h"
#include "engine/validation.h"
#include "fields/address.h"
#include "fields/codes.h"
#include "fields/countries.h"
#include "fields/dates.h"
#include "fields/names.h"
#include "fields/physical.h"

using namespace orvane;

extern "C" {

SVT_API int SVT_getAamvaVersion(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getAamvaVersion); }

// Names.
SVT_API int SVT_getFirstName(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getFirstName); }
SVT_API int SVT_getMiddleName(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getMiddleName); }
SVT_API int SVT_getLastName(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getLastName); }
SVT_API int SVT_getNameSuffix(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getNameSuffix); }
SVT_API int SVT_getNamePrefix(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getNamePrefix); }
SVT_API int SVT_getFullName(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getFullName); }

// Country, jurisdiction and issuer.
SVT_API int SVT_getJurisdictionCode(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getJurisdictionCode); }
SVT_API int SVT_getCountry(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getCountry); }
SVT_API int SVT_getCountryCode(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getCountryCode); }
SVT_API int SVT_getIIN(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getIIN); }
SVT_API int SVT_getIssuedBy(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getIssuedBy); }

// Address and licence number.
SVT_API int SVT_getAddress1(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getAddress1); }
SVT_API int SVT_getAddress2(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getAddress2); }
SVT_API int SVT_getCity(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getCity); }
SVT_API int SVT_getPostalCode(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getPostalCode); }
SVT_API int SVT_getLicenseNumber(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getLicenseNumber); }

// Dates.
SVT_API int SVT_getExpirationDate(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getExpirationDate); }
SVT_API int SVT_getBirthdate(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getBirthdate); }
SVT_API int SVT_getIssueDate(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getIssueDate); }
SVT_API int SVT_getCardRevisionDate(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getCardRevisionDate); }
SVT_API int SVT_getHAZMATExpDate(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getHAZMATExpDate); }

// Physical description.
SVT_API int SVT_getGender(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getGender); }
SVT_API int SVT_getEyeColor(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getEyeColor); }
SVT_API int SVT_getHairColor(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getHairColor); }
SVT_API int SVT_getRace(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getRace); }
SVT_API int SVT_getHeight(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getHeight); }
SVT_API int SVT_getWeightKG(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getWeightKG); }
SVT_API int SVT_getWeightLBS(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getWeightLBS); }

// Licence codes and document type.
SVT_API int SVT_getClassificationCode(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getClassificationCode); }
SVT_API int SVT_getVehicleClassCode(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getVehicleClassCode); }
SVT_API int SVT_getVehicleClassCodeDescription(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getVehicleClassCodeDescription); }
SVT_API int SVT_getRestrictionCode(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getRestrictionCode); }
SVT_API int SVT_getRestrictionCodeDescription(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getRestrictionCodeDescription); }
SVT_API int SVT_getEndorsementsCode(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getEndorsementsCode); }
SVT_API int SVT_getEndorsementCodeDescription(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getEndorsementCodeDescription); }
SVT_API int SVT_getComplianceType(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getComplianceType); }
SVT_API int SVT_getDocumentType(SVT_ParserHandle* h, char* b, int c) { return answerText(h, b, c, getDocumentType); }

// Flags.
SVT_API int SVT_getLimitedDurationDocument(SVT_ParserHandle* h, int* v) { return answerFlag(h, v, getLimitedDurationDocument); }
SVT_API int SVT_getOrganDonor(SVT_ParserHandle* h, int* v) { return answerFlag(h, v, getOrganDonor); }
SVT_API int SVT_getVeteran(SVT_ParserHandle* h, int* v) { return answerFlag(h, v, getVeteran); }

// Validity checks.
SVT_API int SVT_validateDocumentId(SVT_ParserHandle* h, int* status) {
    return answerCheck(h, status, [](ParserHandle& p) { return validateDocumentId(&p.record, p.inputCopy, p.inputCopyCapacity); });
}
SVT_API int SVT_validateBarcode(SVT_ParserHandle* h, int columns, int rows, int errorCorrectionLevel, int* status) {
    return answerCheck(h, status, [=](ParserHandle& p) { return validateBarcode(&p.record, columns, rows, errorCorrectionLevel); });
}
SVT_API int SVT_validateJurisdictionCode(SVT_ParserHandle* h, int* status) {
    return answerCheck(h, status, [](ParserHandle& p) { return validateJurisdictionCode(&p.record); });
}

}  // extern "C"

// ---- What was read, beyond the fields.

namespace {

TextSpan keptText(const ParserHandle& h) { return TextSpan{h.keptText, h.keptLength}; }

// Copies a span as a text answer: NUL-terminated, cut to capacity - 1. As with the field
// getters, a value of which no character fits is no answer (an empty value is one).
int32_t answerSpan(TextSpan value, char* buffer, int32_t capacity) {
    if (buffer == nullptr || capacity < 1) return kErrInvalidArgument;
    const int32_t n = value.length < capacity - 1 ? value.length : capacity - 1;
    if (n > 0) std::memcpy(buffer, value.data, static_cast<size_t>(n));
    buffer[n < 0 ? 0 : n] = '\0';
    return n < 1 && value.length > 0 ? kErrNoAnswer : kOk;
}

// Where an element's id and value are answered. A walk may hand out a value it built in a
// buffer of its own (a card number joined from two places), so the answer is written while
// the walk is at that element.
struct ElementAnswer {
    char* id;  // null: the id is not wanted
    int32_t idCapacity;
    char* value;
    int32_t valueCapacity;
    int32_t status;
};

void answerElement(TextSpan id, TextSpan value, ElementAnswer* answer) {
    const int32_t idStatus = answer->id != nullptr ? answerSpan(id, answer->id, answer->idCapacity) : kOk;
    const int32_t valueStatus = answerSpan(value, answer->value, answer->valueCapacity);
    answer->status = idStatus != kOk ? idStatus : valueStatus;
}

struct ElementSearch {
    int32_t index;   // the element wanted
    const char* id;  // or, when not null, the first element of this id
    int32_t seen;
    ElementAnswer* answer;
    bool found;
};

bool findElement(void* context, TextSpan id, TextSpan value) {
    ElementSearch& s = *static_cast<ElementSearch*>(context);
    const bool wanted = s.id != nullptr ? spanEquals(id, s.id) == 0 : s.seen == s.index;
    ++s.seen;
    if (!wanted) return true;
    answerElement(id, value, s.answer);
    s.found = true;
    return false;
}

// Answers the element the search wants; -26 when the document has none such.
int32_t searchElement(const ParserHandle& h, int32_t index, const char* id, ElementAnswer* answer) {
    ElementSearch search{index, id, 0, answer, false};
    visitElements(&h.record, keptText(h), findElement, &search);
    return search.found ? answer->status : kErrNoAnswer;
}

// Whether a span stays readable after the walk: one into the winner's text or the record.
bool outlivesWalk(const ParserHandle& h, TextSpan value) {
    const auto within = [&](const char* from, int32_t length) {
        return from != nullptr && value.data >= from && value.data + value.length <= from + length;
    };
    return value.length == 0 || within(h.keptText, h.keptLength) ||
           within(h.record.workBuffer, h.record.workCapacity);
}

struct ListWalk {
    const ParserHandle* handle;
    ElementList* list;
};

// Lists an element; one whose value does not outlive the walk is listed without it (a null
// value), to be answered by a walk of its own.
bool listElement(void* context, TextSpan id, TextSpan value) {
    ListWalk& walk = *static_cast<ListWalk*>(context);
    ElementList& list = *walk.list;
    if (list.count < kListedElements) {
        list.ids[list.count] = id;
        list.values[list.count] = outlivesWalk(*walk.handle, value) ? value : TextSpan{nullptr, 0};
    }
    ++list.count;
    return true;
}

const ElementList& elementList(ParserHandle& h) {
    if (!h.elements.listed) {
        h.elements.count = 0;
        ListWalk walk{&h, &h.elements};
        visitElements(&h.record, keptText(h), listElement, &walk);
        h.elements.listed = true;
    }
    return h.elements;
}

DateValue parseDay(const ParserHandle& h) {
    return DateValue{h.clock.parseYear, h.clock.parseMonth, h.clock.parseDay, 0, 0, 0};
}

}  // namespace

extern "C" {

SVT_API int SVT_getFormat(SVT_ParserHandle* h, int* formatGroup, int* formatId) {
    if (formatGroup == nullptr || formatId == nullptr) return kErrInvalidArgument;
    if (int32_t status = checkParsed(h)) return status;
    *formatGroup = static_cast<int>(h->record.formatGroup);
    *formatId = static_cast<int>(h->record.formatId);
    return kOk;
}

SVT_API int SVT_getFormatName(SVT_ParserHandle* h, char* b, int c) {
    if (b == nullptr || c < 1) return kErrInvalidArgument;
    if (int32_t status = checkParsed(h)) return status;
    return answerFormatName(&h->record, b, c);
}

SVT_API int SVT_getFieldCount(SVT_ParserHandle* h, int* count) {
    if (count == nullptr) return kErrInvalidArgument;
    if (int32_t status = checkParsed(h)) return status;
    *count = countFilledFields(&h->record);
    return kOk;
}

SVT_API int SVT_getElementCount(SVT_ParserHandle* h, int* count) {
    if (count == nullptr) return kErrInvalidArgument;
    if (int32_t status = checkParsed(h)) return status;
    *count = elementList(*h).count;
    return kOk;
}

SVT_API int SVT_getElementAt(SVT_ParserHandle* h, int index, char* id, int idCapacity, char* value, int valueCapacity) {
    if (index < 0 || id == nullptr || idCapacity < 1 || value == nullptr || valueCapacity < 1) return kErrInvalidArgument;
    if (int32_t status = checkParsed(h)) return status;
    const ElementList& list = elementList(*h);
    if (index >= list.count) return kErrNoAnswer;
    ElementAnswer answer{id, idCapacity, value, valueCapacity, kOk};
    if (index >= kListedElements || list.values[index].data == nullptr) return searchElement(*h, index, nullptr, &answer);
    answerElement(list.ids[index], list.values[index], &answer);
    return answer.status;
}

SVT_API int SVT_getElement(SVT_ParserHandle* h, const char* id, char* value, int capacity) {
    if (id == nullptr || value == nullptr || capacity < 1) return kErrInvalidArgument;
    if (int32_t status = checkParsed(h)) return status;
    ElementAnswer answer{nullptr, 0, value, capacity, kOk};
    return searchElement(*h, -1, id, &answer);
}

SVT_API int SVT_validateCheckDigits(SVT_ParserHandle* h, int* status) {
    if (status == nullptr) return kErrInvalidArgument;
    if (int32_t parsed = checkParsed(h)) return parsed;
    *status = checkDocumentDigits(&h->record, keptText(*h)).verdict;
    return kOk;
}

SVT_API int SVT_getCheckDigitFailures(SVT_ParserHandle* h, char* b, int c) {
    if (b == nullptr || c < 1) return kErrInvalidArgument;
    if (int32_t status = checkParsed(h)) return status;
    const CheckDigitReport report = checkDocumentDigits(&h->record, keptText(*h));
    if (report.failureCount == 0) return kErrNoAnswer;
    TextSpan names[5];
    for (int32_t i = 0; i < report.failureCount; ++i) names[i] = makeSpan(report.failures[i]);
    if (joinSpansZ(b, c, names, report.failureCount, ",", nullptr, nullptr, '\0') < 1) return kErrNoAnswer;
    return kOk;
}

SVT_API int SVT_getAge(SVT_ParserHandle* h, int* years) {
    if (years == nullptr) return kErrInvalidArgument;
    if (int32_t status = checkParsed(h)) return status;
    int32_t age = 0;
    if (int32_t status = ageOn(&h->record, parseDay(*h), &age)) return status;
    *years = age;
    return kOk;
}

SVT_API int SVT_isExpired(SVT_ParserHandle* h, int* expired) {
    if (expired == nullptr) return kErrInvalidArgument;
    if (int32_t status = checkParsed(h)) return status;
    int32_t value = 0;
    if (int32_t status = expiredOn(&h->record, parseDay(*h), &value)) return status;
    *expired = value;
    return kOk;
}

SVT_API int SVT_getResultJson(SVT_ParserHandle* h, char* b, int c, int* length) {
    return writeResultJson(h, b, c, length);
}

SVT_API int SVT_getRepairs(SVT_ParserHandle* h, char* b, int c) {
    if (b == nullptr || c < 1) return kErrInvalidArgument;
    if (h == nullptr || h->record.workBuffer == nullptr) return kErrInvalidArgument;
    return writeRepairNames(h->repairs, b, c);
}

SVT_API int SVT_getVersionText(char* b, int c) {
    if (b == nullptr || c < 1) return kErrInvalidArgument;
    const size_t n = std::strlen(kVersionText);
    if (n + 1 > static_cast<size_t>(c)) {
        b[0] = '\0';
        return kErrNoAnswer;
    }
    std::memcpy(b, kVersionText, n + 1);
    return kOk;
}

}  // extern "C"
