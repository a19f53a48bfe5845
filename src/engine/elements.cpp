#include "engine/elements.h"

#include <iterator>
#include <iterator>

#include "aamva/elements.h"
#include "documents/national_zones.h"
#include "documents/zone_fields.h"

namespace orvane {
namespace {

struct FieldName {
    FieldId id;
    const char* name;
};

// The slots every reader shares, under the names the record gives them.
constexpr FieldName kFieldNames[] = {
    {field::iin, "iin"},
    {field::fullName, "fullName"},
    {field::address1, "address1"},
    {field::city, "city"},
    {field::jurisdictionCode, "jurisdictionCode"},
    {field::postalCode, "postalCode"},
    {field::licenseNumber, "licenseNumber"},
    {field::licenseClassification, "licenseClassification"},
    {field::restrictionCodeAlt, "restrictionCodeAlt"},
    {field::endorsementsCodeAlt, "endorsementsCodeAlt"},
    {field::expirationDate, "expirationDate"},
    {field::birthdate, "birthdate"},
    {field::gender, "gender"},
    {field::issueDate, "issueDate"},
    {field::height, "height"},
    {field::weightPounds, "weightPounds"},
    {field::eyeColor, "eyeColor"},
    {field::hairColor, "hairColor"},
    {field::socialSecurityNumber, "socialSecurityNumber"},
    {field::permitClassification, "permitClassification"},
    {field::permitExpirationDate, "permitExpirationDate"},
    {field::permitIdentifier, "permitIdentifier"},
    {field::permitIssueDate, "permitIssueDate"},
    {field::permitRestrictionCode, "permitRestrictionCode"},
    {field::permitEndorsementCode, "permitEndorsementCode"},
    {field::lastName, "lastName"},
    {field::firstName, "firstName"},
    {field::middleName, "middleName"},
    {field::nameSuffix, "nameSuffix"},
    {field::namePrefix, "namePrefix"},
    {field::address2Alt, "address2Alt"},
    {field::residenceAddress1, "residenceAddress1"},
    {field::residenceAddress2, "residenceAddress2"},
    {field::residenceCity, "residenceCity"},
    {field::residenceJurisdictionCode, "residenceJurisdictionCode"},
    {field::residencePostalCode, "residencePostalCode"},
    {field::heightCentimeters, "heightCentimeters"},
    {field::weightKilograms, "weightKilograms"},
    {field::issueTimestamp, "issueTimestamp"},
    {field::duplicateCount, "duplicateCount"},
    {field::organDonor, "organDonor"},
    {field::nonResident, "nonResident"},
    {field::uniqueCustomerId, "uniqueCustomerId"},
    {field::birthdateAlt2, "birthdateAlt2"},
    {field::socialSecurityNumberAlt, "socialSecurityNumberAlt"},
    {field::aliasLastName, "aliasLastName"},
    {field::aliasFirstName, "aliasFirstName"},
    {field::aliasMiddleName, "aliasMiddleName"},
    {field::aliasSuffix, "aliasSuffix"},
    {field::vehicleClassJurisdiction, "vehicleClassJurisdiction"},
    {field::givenNames, "givenNames"},
    {field::heightAlt, "heightAlt"},
    {field::licenseNumberAlt, "licenseNumberAlt"},
    {field::country, "country"},
    {field::federalVehicleCodes, "federalVehicleCodes"},
    {field::address2, "address2"},
    {field::placeOfBirth, "placeOfBirth"},
    {field::auditInformation, "auditInformation"},
    {field::inventoryControlNumber, "inventoryControlNumber"},
    {field::aliasFamilyName, "aliasFamilyName"},
    {field::aliasGivenName, "aliasGivenName"},
    {field::aliasSuffixName, "aliasSuffixName"},
    {field::weightRange, "weightRange"},
    {field::race, "race"},
    {field::vehicleClassCode, "vehicleClassCode"},
    {field::endorsementsCode, "endorsementsCode"},
    {field::restrictionCode, "restrictionCode"},
    {field::vehicleClassCodeDescription, "vehicleClassCodeDescription"},
    {field::endorsementCodeDescription, "endorsementCodeDescription"},
    {field::restrictionCodeDescription, "restrictionCodeDescription"},
    {field::documentDiscriminator, "documentDiscriminator"},
    {field::countryCodeAlt, "countryCodeAlt"},
    {field::lastNameTruncation, "lastNameTruncation"},
    {field::firstNameTruncation, "firstNameTruncation"},
    {field::middleNameTruncation, "middleNameTruncation"},
    {field::birthdateAlt, "birthdateAlt"},
    {field::complianceType, "complianceType"},
    {field::cardRevisionDate, "cardRevisionDate"},
    {field::HAZMATExpDate, "HAZMATExpDate"},
    {field::limitedDurationDocument, "limitedDurationDocument"},
    {field::under18Until, "under18Until"},
    {field::under19Until, "under19Until"},
    {field::under21Until, "under21Until"},
    {field::standardName, "standardName"},
    {field::documentType, "documentType"},
    {field::licenseNumberAlt3, "licenseNumberAlt3"},
    {field::licenseNumberAlt2, "licenseNumberAlt2"},
    {field::countryCode, "countryCode"},
    {field::veteran, "veteran"},
    {field::mrzCountryCode, "mrzCountryCode"},
    {field::aamvaVersion, "aamvaVersion"},
};
static_assert(std::size(kFieldNames) == 91);

// The names by slot, for the walks that name every filled slot.
struct NamesById {
    const char* names[kFieldCount];
};

constexpr NamesById makeNamesById() {
    NamesById table{};
    for (const FieldName& row : kFieldNames) {
        if (row.id < kFieldCount && table.names[row.id] == nullptr) table.names[row.id] = row.name;
    }
    return table;
}

constexpr NamesById kNamesById = makeNamesById();

// "field" and the number of a slot a family keeps for itself. Constant, so that the id a
// visitor is handed stays readable after the walk, as the other families' ids do.
struct OwnNames {
    char names[kFieldCount][9];
};

constexpr OwnNames makeOwnNames() {
    OwnNames table{};
    for (FieldId id = 0; id < kFieldCount; ++id) {
        char* name = table.names[id];
        const char prefix[] = "field";
        int at = 0;
        for (; prefix[at] != '\0'; ++at) name[at] = prefix[at];
        if (id >= 100) name[at++] = static_cast<char>('0' + id / 100);
        if (id >= 10) name[at++] = static_cast<char>('0' + id / 10 % 10);
        name[at] = static_cast<char>('0' + id % 10);
    }
    return table;
}

constexpr OwnNames kOwnNames = makeOwnNames();
static_assert(kOwnNames.names[7][5] == '7' && kOwnNames.names[139][7] == '9' && kOwnNames.names[99][7] == '\0');

// The national formats whose text is AAMVA element lines.
bool readsElementLines(uint32_t formatId) { return formatId == 56 || formatId == 57 || formatId == 60; }

struct Filled {
    const char* at;
    FieldId id;
};

// The filled slots in the order their values were stored, which is the order the
// reader met them in its text.
void visitStoredFields(const ParsedRecord* record, ElementVisitor visit, void* context) {
    Filled filled[kFieldCount];
    int32_t count = 0;
    for (FieldId id = 0; id < kFieldCount; ++id) {
        if (spanUsable(record->fields[id])) filled[count++] = Filled{record->fields[id].data, id};
    }
    // Insertion sort: stable, no allocation, and quick on slots mostly stored in order.
    for (int32_t i = 1; i < count; ++i) {
        const Filled next = filled[i];
        int32_t at = i;
        for (; at > 0 && next.at < filled[at - 1].at; --at) filled[at] = filled[at - 1];
        filled[at] = next;
    }
    for (int32_t i = 0; i < count; ++i) {
        const char* name = fieldName(filled[i].id);
        if (name == nullptr) name = kOwnNames.names[filled[i].id];
        if (!visit(context, makeSpan(name), record->fields[filled[i].id])) return;
    }
}

}  // namespace

const char* fieldName(FieldId id) {
    return id < kFieldCount ? kNamesById.names[id] : nullptr;
}

void visitElements(const ParsedRecord* record, TextSpan text, ElementVisitor visit, void* context) {
    if (record == nullptr || visit == nullptr || record->formatId == kNoFormatId) return;
    if (record->formatGroup == 0 || readsElementLines(record->formatId)) {
        visitAamvaElements(text, visit, context);
    } else if (const NationalZone layout = nationalZoneOfFormat(record->formatId); layout != NationalZone::None) {
        visitNationalZoneElements(layout, text, visit, context);
    } else if (record->formatGroup == 5) {
        visitZoneElements(text, visit, context);
    } else {
        visitStoredFields(record, visit, context);
    }
}

}  // namespace orvane
