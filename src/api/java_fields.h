// Every answer of the C interface under the name of its field in the Java result
// object, in the order the Java binding fills them. The binding, the command-line tool
// and the tests share this list, so that a getter is named once.
#pragma once

#include <cstddef>

#include "orvane_parser.h"

namespace orvane {

using JavaTextGetter = int (*)(SVT_ParserHandle*, char*, int);
using JavaFlagGetter = int (*)(SVT_ParserHandle*, int*);

struct JavaTextField {
    const char* name;
    JavaTextGetter getter;
};

struct JavaFlagField {
    const char* name;
    JavaFlagGetter getter;
};

// The first 35 are filled before the flags, the two vehicle class fields after them, and
// the AAMVA version last, after the checks.
inline constexpr JavaTextField kJavaTextFields[] = {
    {"firstName", SVT_getFirstName},
    {"lastName", SVT_getLastName},
    {"documentType", SVT_getDocumentType},
    {"countryCode", SVT_getCountryCode},
    {"country", SVT_getCountry},
    {"jurisdictionCode", SVT_getJurisdictionCode},
    {"iin", SVT_getIIN},
    {"middleName", SVT_getMiddleName},
    {"nameSuffix", SVT_getNameSuffix},
    {"namePrefix", SVT_getNamePrefix},
    {"fullName", SVT_getFullName},
    {"address1", SVT_getAddress1},
    {"address2", SVT_getAddress2},
    {"city", SVT_getCity},
    {"licenseNumber", SVT_getLicenseNumber},
    {"classificationCode", SVT_getClassificationCode},
    {"restrictionCode", SVT_getRestrictionCode},
    {"restrictionCodeDescription", SVT_getRestrictionCodeDescription},
    {"endorsementsCode", SVT_getEndorsementsCode},
    {"endorsementCodeDescription", SVT_getEndorsementCodeDescription},
    {"expirationDate", SVT_getExpirationDate},
    {"HAZMATExpDate", SVT_getHAZMATExpDate},
    {"birthdate", SVT_getBirthdate},
    {"cardRevisionDate", SVT_getCardRevisionDate},
    {"gender", SVT_getGender},
    {"issueDate", SVT_getIssueDate},
    {"issuedBy", SVT_getIssuedBy},
    {"postalCode", SVT_getPostalCode},
    {"eyeColor", SVT_getEyeColor},
    {"race", SVT_getRace},
    {"hairColor", SVT_getHairColor},
    {"height", SVT_getHeight},
    {"weightKG", SVT_getWeightKG},
    {"weightLBS", SVT_getWeightLBS},
    {"complianceType", SVT_getComplianceType},
    {"vehicleClassCode", SVT_getVehicleClassCode},
    {"vehicleClassCodeDescription", SVT_getVehicleClassCodeDescription},
    {"aamvaVersion", SVT_getAamvaVersion},
};
inline constexpr size_t kJavaTextFieldCount = sizeof kJavaTextFields / sizeof kJavaTextFields[0];
inline constexpr size_t kJavaFieldsBeforeFlags = 35;
inline constexpr size_t kJavaFieldsBeforeChecks = 37;
static_assert(kJavaTextFieldCount == 38);

inline constexpr JavaFlagField kJavaFlagFields[] = {
    {"isLimitedDurationDocument", SVT_getLimitedDurationDocument},
    {"isOrganDonor", SVT_getOrganDonor},
    {"isVeteran", SVT_getVeteran},
};

}  // namespace orvane
