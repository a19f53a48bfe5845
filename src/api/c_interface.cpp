// The exported getters and checks: each one names the worker that answers it.
#include "api/answers.h"
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
