#include "fields/codes.h"

#include "fields/answer.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr FieldId kVehicleClassSlots[] = {field::vehicleClassCode, field::vehicleClassJurisdiction,
                                          field::licenseClassification};
constexpr FieldId kRestrictionSlots[] = {field::restrictionCode, field::restrictionCodeAlt};
constexpr FieldId kEndorsementSlots[] = {field::endorsementsCode, field::endorsementsCodeAlt};
constexpr FieldId kNameSlots[] = {field::fullName, field::firstName, field::lastName};
constexpr FieldId kAddressSlots[] = {field::address1, field::residenceAddress1, field::address2,
                                     field::address2Alt, field::residenceAddress2};

// Only the text "1" is yes; deliberately, Y, YES or "1 " all count as no.
int32_t readFlag(const ParsedRecord* record, FieldId id, int32_t* value) {
    if (int32_t status = checkAnswerArgs(record, value, 1)) return status;
    TextSpan flag;
    if (readField(record, id, &flag) != kOk) return kErrNoAnswer;
    *value = (flag.length == 1 && flag.data[0] == '1') ? 1 : 0;
    return kOk;
}

bool anyFilled(const ParsedRecord* record, const FieldId* ids, int32_t count) {
    TextSpan unused;
    return firstFilledField(record, ids, count, &unused) == kOk;
}

template <size_t N>
bool anyFilled(const ParsedRecord* record, const FieldId (&ids)[N]) {
    return anyFilled(record, ids, static_cast<int32_t>(N));
}

// The document type read from which fields are present.
const char* documentTypeByPresence(const ParsedRecord* record) {
    if (!anyFilled(record, kNameSlots) || !anyFilled(record, kAddressSlots)) return "UNKNOWN";
    if (fieldMissing(record, field::licenseNumber) == 0 &&
        fieldMissing(record, field::birthdateAlt) == 0) {
        return "DL";
    }
    return "UNKNOWN";
}

}  // namespace

int32_t getAamvaVersion(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerSlot(record, field::aamvaVersion, answerAsIs, buffer, capacity);
}

int32_t getVehicleClassCode(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerFirstFilled(record, kVehicleClassSlots, answerPrintable, buffer, capacity);
}

int32_t getClassificationCode(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return getVehicleClassCode(record, buffer, capacity);
}

int32_t getRestrictionCode(const ParsedRecord* record, char* buffer, int32_t capacity) {
    // Only restrictions collapse white space; class and endorsement codes keep it on purpose.
    return answerFirstFilled(record, kRestrictionSlots, answerPrintableCollapsed, buffer, capacity);
}

int32_t getEndorsementsCode(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerFirstFilled(record, kEndorsementSlots, answerPrintable, buffer, capacity);
}

int32_t getVehicleClassCodeDescription(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerSlot(record, field::vehicleClassCodeDescription, answerPrintable, buffer, capacity);
}

int32_t getRestrictionCodeDescription(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerSlot(record, field::restrictionCodeDescription, answerPrintable, buffer, capacity);
}

int32_t getEndorsementCodeDescription(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerSlot(record, field::endorsementCodeDescription, answerPrintable, buffer, capacity);
}

int32_t getComplianceType(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    TextSpan type;
    if (readField(record, field::complianceType, &type) != kOk) return kErrNoAnswer;
    if (type.length != 1 || !isPrintableCode(static_cast<unsigned char>(type.data[0]))) {
        return kErrNoAnswer;
    }
    return answerAsIs(type, buffer, capacity);
}

int32_t getLimitedDurationDocument(const ParsedRecord* record, int32_t* value) {
    return readFlag(record, field::limitedDurationDocument, value);
}

int32_t getOrganDonor(const ParsedRecord* record, int32_t* value) {
    return readFlag(record, field::organDonor, value);
}

int32_t getVeteran(const ParsedRecord* record, int32_t* value) {
    return readFlag(record, field::veteran, value);
}

int32_t getDocumentType(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    TextSpan stored;
    if (readField(record, field::documentType, &stored) == kOk &&
        answerPrintable(stored, buffer, capacity) == kOk) {
        return kOk;
    }
    // Deliberately 0 even when the buffer cannot hold the text; it still ends terminated.
    buffer[0] = '\0';
    copyLiteralZ(buffer, capacity, documentTypeByPresence(record));
    return kOk;
}

}  // namespace orvane
