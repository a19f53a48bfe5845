#include "fields/codes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;
using testing::ask;
using testing::Slot;
using testing::Worker;


TEST(Codes, ClassRestrictionAndEndorsementCodes) {
    testing::runWorkerCases({
        {"class first choice", getVehicleClassCode,
         {{field::licenseClassification, "A"}, {field::vehicleClassJurisdiction, "B"}, {field::vehicleClassCode, "C"}},
         64, "C"},
        {"class second choice", getVehicleClassCode,
         {{field::licenseClassification, "A"}, {field::vehicleClassJurisdiction, "B"}}, 64, "B"},
        {"class last choice", getVehicleClassCode, {{field::licenseClassification, " D\tM "}}, 64, "D M"},
        {"class keeps runs", getVehicleClassCode, {{field::vehicleClassCode, "B  C"}}, 64, "B  C"},
        {"class cut", getVehicleClassCode, {{field::vehicleClassCode, "CDL-A"}}, 3, "CD"},
        {"class empty", getVehicleClassCode, {}, 64, "#-26"},
        {"class blanks only", getVehicleClassCode, {{field::vehicleClassCode, "  "}}, 64, "#-26"},
        {"classification forwards", getClassificationCode, {{field::vehicleClassJurisdiction, "B"}}, 64, "B"},
        {"restriction collapses", getRestrictionCode, {{field::restrictionCode, "B  C"}}, 64, "B C"},
        {"restriction collapses mixed", getRestrictionCode, {{field::restrictionCode, "B \t\x01 C"}}, 64, "B C"},
        {"restriction second choice", getRestrictionCode, {{field::restrictionCodeAlt, "~NONE~"}}, 64, "NONE"},
        {"restriction first wins", getRestrictionCode,
         {{field::restrictionCodeAlt, "X"}, {field::restrictionCode, "Y"}}, 64, "Y"},
        {"endorsement keeps runs", getEndorsementsCode, {{field::endorsementsCode, "B  C"}}, 64, "B  C"},
        {"endorsement second choice", getEndorsementsCode, {{field::endorsementsCodeAlt, "H"}}, 64, "H"},
        {"endorsement empty", getEndorsementsCode, {}, 64, "#-26"},
    });
}

TEST(Codes, DescriptionsAndComplianceType) {
    testing::runWorkerCases({
        {"class description", getVehicleClassCodeDescription,
         {{field::vehicleClassCodeDescription, " CLASS C  CAR "}}, 64, "CLASS C  CAR"},
        {"restriction description", getRestrictionCodeDescription,
         {{field::restrictionCodeDescription, "CORRECTIVE\nLENSES"}}, 64, "CORRECTIVE LENSES"},
        {"endorsement description", getEndorsementCodeDescription,
         {{field::endorsementCodeDescription, "HAZMAT"}}, 64, "HAZMAT"},
        {"descriptions are not derived", getEndorsementCodeDescription, {{field::endorsementsCode, "H"}}, 64,
         "#-26"},
        {"compliance F", getComplianceType, {{field::complianceType, "F"}}, 64, "F"},
        {"compliance N", getComplianceType, {{field::complianceType, "N"}}, 2, "N"},
        {"compliance FF", getComplianceType, {{field::complianceType, "FF"}}, 64, "#-26"},
        {"compliance tilde", getComplianceType, {{field::complianceType, "~"}}, 64, "#-26"},
        {"compliance blank", getComplianceType, {{field::complianceType, " "}}, 64, "#-26"},
        {"compliance capacity 1", getComplianceType, {{field::complianceType, "F"}}, 1, "#-26"},
        {"compliance empty", getComplianceType, {}, 64, "#-26"},
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
        {"nothing", getDocumentType, {}, 64, "UNKNOWN"},
        {"cut, still 0", getDocumentType, {}, 4, "UNK"},
        {"nothing fits, still 0", getDocumentType, {}, 1, ""},
        {"stored type cut", getDocumentType, storedType, 2, "I"},
        {"stored type, no room", getDocumentType, storedType, 1, ""},
    });
}

TEST(Codes, ArgumentChecks) {
    const Worker workers[] = {getVehicleClassCode, getClassificationCode, getRestrictionCode,
                              getEndorsementsCode, getVehicleClassCodeDescription,
                              getRestrictionCodeDescription, getEndorsementCodeDescription,
                              getComplianceType, getDocumentType};
    RecordWithBuffer r;
    ParsedRecord bare{};
    char buffer[16];
    for (Worker worker : workers) {
        EXPECT_EQ(worker(nullptr, buffer, 16), kErrInvalidArgument);
        EXPECT_EQ(worker(&bare, buffer, 16), kErrInvalidArgument);
        EXPECT_EQ(worker(r.get(), nullptr, 16), kErrInvalidArgument);
        EXPECT_EQ(worker(r.get(), buffer, 0), kErrInvalidArgument);
    }
    // Flag values are covered through the exported getters.
    int32_t value = 0;
    for (auto flag : {getLimitedDurationDocument, getOrganDonor, getVeteran}) {
        EXPECT_EQ(flag(r.get(), nullptr), kErrInvalidArgument);
        EXPECT_EQ(flag(nullptr, &value), kErrInvalidArgument);
        EXPECT_EQ(flag(&bare, &value), kErrInvalidArgument);
    }
}

}  // namespace
}  // namespace orvane
