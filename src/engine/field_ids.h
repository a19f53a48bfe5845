// The slots of a parsed record. Ids not named here (40, 46, 51, 88, 90-99, 101-124,
// 127-137) are free for the format readers' own use; no getter reads them.
#pragma once

#include <cstdint>

namespace orvane {

using FieldId = uint32_t;

inline constexpr FieldId kFieldCount = 140;

namespace field {
inline constexpr FieldId iin = 0;
inline constexpr FieldId fullName = 1;
inline constexpr FieldId address1 = 2;
inline constexpr FieldId city = 3;
inline constexpr FieldId jurisdictionCode = 4;
inline constexpr FieldId postalCode = 5;
inline constexpr FieldId licenseNumber = 6;
inline constexpr FieldId licenseClassification = 7;
inline constexpr FieldId restrictionCodeAlt = 8;
inline constexpr FieldId endorsementsCodeAlt = 9;
inline constexpr FieldId expirationDate = 10;
inline constexpr FieldId birthdate = 11;
inline constexpr FieldId gender = 12;
inline constexpr FieldId issueDate = 13;
inline constexpr FieldId height = 14;
inline constexpr FieldId weightPounds = 15;
inline constexpr FieldId eyeColor = 16;
inline constexpr FieldId hairColor = 17;
inline constexpr FieldId socialSecurityNumber = 18;
inline constexpr FieldId permitClassification = 19;
inline constexpr FieldId permitExpirationDate = 20;
inline constexpr FieldId permitIdentifier = 21;
inline constexpr FieldId permitIssueDate = 22;
inline constexpr FieldId permitRestrictionCode = 23;
inline constexpr FieldId permitEndorsementCode = 24;
inline constexpr FieldId lastName = 25;
inline constexpr FieldId firstName = 26;
inline constexpr FieldId middleName = 27;
inline constexpr FieldId nameSuffix = 28;
inline constexpr FieldId namePrefix = 29;
inline constexpr FieldId address2Alt = 30;
inline constexpr FieldId residenceAddress1 = 31;
inline constexpr FieldId residenceAddress2 = 32;
inline constexpr FieldId residenceCity = 33;
inline constexpr FieldId residenceJurisdictionCode = 34;
inline constexpr FieldId residencePostalCode = 35;
inline constexpr FieldId heightCentimeters = 36;
inline constexpr FieldId weightKilograms = 37;
inline constexpr FieldId issueTimestamp = 38;
inline constexpr FieldId duplicateCount = 39;
inline constexpr FieldId organDonor = 41;
inline constexpr FieldId nonResident = 42;
inline constexpr FieldId uniqueCustomerId = 43;
inline constexpr FieldId birthdateAlt2 = 44;
inline constexpr FieldId socialSecurityNumberAlt = 45;
inline constexpr FieldId aliasLastName = 47;
inline constexpr FieldId aliasFirstName = 48;
inline constexpr FieldId aliasMiddleName = 49;
inline constexpr FieldId aliasSuffix = 50;
inline constexpr FieldId vehicleClassJurisdiction = 52;
inline constexpr FieldId givenNames = 53;
inline constexpr FieldId heightAlt = 54;
inline constexpr FieldId licenseNumberAlt = 55;
inline constexpr FieldId country = 56;
inline constexpr FieldId federalVehicleCodes = 57;
inline constexpr FieldId address2 = 58;
inline constexpr FieldId placeOfBirth = 59;
inline constexpr FieldId auditInformation = 60;
inline constexpr FieldId inventoryControlNumber = 61;
inline constexpr FieldId aliasFamilyName = 62;
inline constexpr FieldId aliasGivenName = 63;
inline constexpr FieldId aliasSuffixName = 64;
inline constexpr FieldId weightRange = 65;
inline constexpr FieldId race = 66;
inline constexpr FieldId vehicleClassCode = 67;
inline constexpr FieldId endorsementsCode = 68;
inline constexpr FieldId restrictionCode = 69;
inline constexpr FieldId vehicleClassCodeDescription = 70;
inline constexpr FieldId endorsementCodeDescription = 71;
inline constexpr FieldId restrictionCodeDescription = 72;
inline constexpr FieldId documentDiscriminator = 73;
inline constexpr FieldId countryCodeAlt = 74;
inline constexpr FieldId lastNameTruncation = 75;
inline constexpr FieldId firstNameTruncation = 76;
inline constexpr FieldId middleNameTruncation = 77;
inline constexpr FieldId birthdateAlt = 78;
inline constexpr FieldId complianceType = 79;
inline constexpr FieldId cardRevisionDate = 80;
inline constexpr FieldId HAZMATExpDate = 81;
inline constexpr FieldId limitedDurationDocument = 82;
inline constexpr FieldId under18Until = 83;
inline constexpr FieldId under19Until = 84;
inline constexpr FieldId under21Until = 85;
inline constexpr FieldId standardName = 86;
inline constexpr FieldId documentType = 87;
inline constexpr FieldId licenseNumberAlt3 = 89;
inline constexpr FieldId licenseNumberAlt2 = 100;
inline constexpr FieldId countryCode = 125;
inline constexpr FieldId veteran = 126;
inline constexpr FieldId mrzCountryCode = 138;
inline constexpr FieldId aamvaVersion = 139;
}  // namespace field

}  // namespace orvane
