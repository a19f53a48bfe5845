// Every answer of the C interface under the name the Java result object gives it, in
// the Java binding's order. Shared by the command-line tool, the sample tests and the
// fuzzer, so that a new getter is listed once.
#pragma once

#include "orvane_parser.h"

namespace orvane_tools {

using TextGetter = int (*)(SVT_ParserHandle*, char*, int);
using FlagGetter = int (*)(SVT_ParserHandle*, int*);

struct TextAnswer {
    const char* name;
    TextGetter getter;
};

struct FlagAnswer {
    const char* name;
    FlagGetter getter;
};

inline constexpr TextAnswer kTextAnswers[] = {
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

inline constexpr FlagAnswer kFlagAnswers[] = {
    {"isLimitedDurationDocument", SVT_getLimitedDurationDocument},
    {"isOrganDonor", SVT_getOrganDonor},
    {"isVeteran", SVT_getVeteran},
};

}  // namespace orvane_tools
