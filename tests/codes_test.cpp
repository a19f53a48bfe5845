#include "fields/codes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;
using testing::Slot;

TEST(Codes, ClassRestrictionAndEndorsementCodes) {
    testing::runWorkerCases({
        {"class first choice", getVehicleClassCode,
         {{field::licenseClassification, "A"}, {field::vehicleClassJurisdiction, "B"}, {field::vehicleClassCode, "C"}},
         64, "C"},
        {"class second choice", getVehicleClassCode,
         {{field::licenseClassification, "A"}, {field::vehicleClassJurisdiction, "B"}}, 64, "B"},
        {"class last choice", getVehicleClassCode, {{field::licenseClassification, " D\tM "}}, 64, "D M"},
        {"class keeps runs", getVehicleClassCode, {{field::vehicleClassCode, "B  C"}}, 64, "B  C"},
        {"class blanks only", getVehicleClassCode, {{field::vehicleClassCode, "  "}}, 64, "#-26"},
        {"classification forwards", getClassificationCode, {{field::vehicleClassJurisdiction, "B"}}, 64, "B"},
        {"restriction collapses", getRestrictionCode, {{field::restrictionCode, "B \t\x01 C"}}, 64, "B C"},
        {"restriction second choice", getRestrictionCode, {{field::restrictionCodeAlt, "~NONE~"}}, 64, "NONE"},
        {"restriction first wins", getRestrictionCode,
         {{field::restrictionCodeAlt, "X"}, {field::restrictionCode, "Y"}}, 64, "Y"},
        {"endorsement keeps runs", getEndorsementsCode, {{field::endorsementsCode, "B  C"}}, 64, "B  C"},
        {"endorsement second choice", getEndorsementsCode, {{field::endorsementsCodeAlt, "H"}}, 64, "H"},
        {"class description", getVehicleClassCodeDescription,
         {{field::vehicleClassCodeDescription, " CLASS C  CAR "}}, 64, "CLASS C  CAR"},
        {"restriction description", getRestrictionCodeDescription,
         {{field::restrictionCodeDescription, "CORRECTIVE\nLENSES"}}, 64, "CORRECTIVE LENSES"},
        {"descriptions are not derived", getEndorsementCodeDescription, {{field::endorsementsCode, "H"}}, 64,
         "#-26"},
        {"compliance N", getComplianceType, {{field::complianceType, "N"}}, 2, "N"},
        {"compliance FF", getComplianceType, {{field::complianceType, "FF"}}, 64, "#-26"},
        {"compliance tilde", getComplianceType, {{field::complianceType, "~"}}, 64, "#-26"},
        {"compliance blank", getComplianceType, {{field::complianceType, " "}}, 64, "#-26"},
    });
}

TEST(Codes, DocumentType) {
    const std::vector<Slot> dl = {{field::lastName, "DOE"},
                                  {field::residenceAddress2, "APT 1"},
                                  {field::licenseNumber, "D123"},
                                  {field::birthdateAlt, "19800101"}};
    std::vector<Slot> dlWithoutAddress = dl;
    dlWithoutAddress.erase(dlWithoutAddress.begin() + 1);
    std::vector<Slot> dlWithoutName(dl.begin() + 1, dl.end());
    std::vector<Slot> storedType = dl;
    storedType.push_back({field::documentType, " ID "});
    std::vector<Slot> blankType = dl;
    blankType.push_back({field::documentType, "  "});
    testing::runWorkerCases({
        {"stored wins", getDocumentType, storedType, 64, "ID"},
        {"blank stored type falls back", getDocumentType, blankType, 64, "DL"},
        {"name, address, number and birth date", getDocumentType, dl, 64, "DL"},
        {"first name is a name", getDocumentType,
         {{field::firstName, "J"}, {field::address2Alt, "X"}, {field::licenseNumber, "1"}, {field::birthdateAlt, "1"}},
         64, "DL"},
        {"only the first birth date", getDocumentType,
         {{field::fullName, "J D"}, {field::address1, "X"}, {field::licenseNumber, "1"}, {field::birthdate, "1"}},
         64, "UNKNOWN"},
        {"no address", getDocumentType, dlWithoutAddress, 64, "UNKNOWN"},
        {"no name", getDocumentType, dlWithoutName, 64, "UNKNOWN"},
        // Still 0 when the text does not fit.
        {"cut", getDocumentType, {}, 4, "UNK"},
        {"nothing fits", getDocumentType, {}, 1, ""},
        {"stored type cut", getDocumentType, storedType, 2, "I"},
    });
}

TEST(Codes, FlagsAreOneOnlyForTheTextOne) {
    struct Case {
        const char* stored;  // null: slot left empty
        int32_t status;
        int32_t value;
    };
    const Case cases[] = {{"1", kOk, 1}, {"0", kOk, 0}, {"Y", kOk, 0}, {"YES", kOk, 0},
                          {"10", kOk, 0}, {"1 ", kOk, 0}, {nullptr, kErrNoAnswer, 7}};
    const std::pair<int32_t (*)(const ParsedRecord*, int32_t*), FieldId> flags[] = {
        {getLimitedDurationDocument, field::limitedDurationDocument},
        {getOrganDonor, field::organDonor},
        {getVeteran, field::veteran}};
    for (const auto& [flag, slot] : flags) {
        for (const Case& c : cases) {
            SCOPED_TRACE(std::to_string(slot) + " " + (c.stored ? c.stored : "(empty)"));
            RecordWithBuffer r;
            if (c.stored != nullptr) setFieldLiteral(r.get(), slot, c.stored);
            int32_t value = 7;
            EXPECT_EQ(flag(r.get(), &value), c.status);
            EXPECT_EQ(value, c.value);
        }
    }
}

}  // namespace
}  // namespace orvane
