// The exported date, physical-description, licence-code and flag getters, on a handle
// whose record is filled by hand after one parse.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "api/handle.h"
#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::HandlePtr;

using testing::parsedHandle;

using Getter = int (*)(SVT_ParserHandle*, char*, int);

TEST(DerivedGetters, AnswerThroughTheHandle) {
    HandlePtr h = parsedHandle();
    ParsedRecord* record = &h->record;
    setFieldLiteral(record, field::expirationDate, "99991231");
    setFieldLiteral(record, field::birthdateAlt, "07041980");
    setFieldLiteral(record, field::issueDate, "20200115");
    setFieldLiteral(record, field::cardRevisionDate, "20160301");
    setFieldLiteral(record, field::HAZMATExpDate, "20251130");
    setFieldLiteral(record, field::gender, "2");
    setFieldLiteral(record, field::eyeColor, "HAZ");
    setFieldLiteral(record, field::hairColor, "BLN");
    setFieldLiteral(record, field::race, "W");
    setFieldLiteral(record, field::height, "602");
    setFieldLiteral(record, field::weightPounds, "180");
    setFieldLiteral(record, field::vehicleClassJurisdiction, "C");
    setFieldLiteral(record, field::vehicleClassCodeDescription, "CAR");
    setFieldLiteral(record, field::restrictionCodeAlt, "B  E");
    setFieldLiteral(record, field::restrictionCodeDescription, "LENSES");
    setFieldLiteral(record, field::endorsementsCode, "H  N");
    setFieldLiteral(record, field::endorsementCodeDescription, "HAZMAT");
    setFieldLiteral(record, field::complianceType, "F");
    struct Case {
        const char* name;
        Getter getter;
        const char* expected;
    };
    const Case cases[] = {
        {"expiration", SVT_getExpirationDate, "12/31/9999"},
        {"birth", SVT_getBirthdate, "07/04/1980"},
        {"issue", SVT_getIssueDate, "01/15/2020"},
        {"card revision", SVT_getCardRevisionDate, "03/01/2016"},
        {"HAZMAT", SVT_getHAZMATExpDate, "11/30/2025"},
        {"gender", SVT_getGender, "Female"},
        {"eyes", SVT_getEyeColor, "Hazel"},
        {"hair", SVT_getHairColor, "Blond"},
        {"race", SVT_getRace, "W"},
        {"height", SVT_getHeight, "6'02\""},
        {"kilograms", SVT_getWeightKG, "82"},
        {"pounds", SVT_getWeightLBS, "180"},
        {"classification", SVT_getClassificationCode, "C"},
        {"vehicle class", SVT_getVehicleClassCode, "C"},
        {"class description", SVT_getVehicleClassCodeDescription, "CAR"},
        {"restrictions", SVT_getRestrictionCode, "B E"},
        {"restriction description", SVT_getRestrictionCodeDescription, "LENSES"},
        {"endorsements", SVT_getEndorsementsCode, "H  N"},
        {"endorsement description", SVT_getEndorsementCodeDescription, "HAZMAT"},
        {"compliance", SVT_getComplianceType, "F"},
        {"document type", SVT_getDocumentType, "UNKNOWN"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        char buffer[32];
        ASSERT_EQ(c.getter(h.get(), buffer, sizeof buffer), kOk);
        EXPECT_STREQ(buffer, c.expected);
        EXPECT_EQ(c.getter(nullptr, buffer, sizeof buffer), kErrInvalidArgument);
        EXPECT_EQ(c.getter(h.get(), buffer, 0), kErrInvalidArgument);
    }
}

TEST(DerivedGetters, RefuseAFreshHandle) {
    HandlePtr h(SVT_create());
    char buffer[32];
    int value = 5;
    EXPECT_EQ(SVT_getBirthdate(h.get(), buffer, sizeof buffer), kErrInvalidArgument);
    EXPECT_EQ(SVT_getGender(h.get(), buffer, sizeof buffer), kErrInvalidArgument);
    EXPECT_EQ(SVT_getDocumentType(h.get(), buffer, sizeof buffer), kErrInvalidArgument);
    EXPECT_EQ(SVT_getOrganDonor(h.get(), &value), kErrInvalidArgument);
    EXPECT_EQ(value, 5);
}

TEST(DerivedGetters, ClassificationAndVehicleClassAlwaysAgree) {
    const char* const slotValues[] = {nullptr, "A", " B\x7F", "~", "CLASS D M"};
    const FieldId slots[] = {field::vehicleClassCode, field::vehicleClassJurisdiction,
                             field::licenseClassification};
    for (FieldId slot : slots) {
        for (const char* value : slotValues) {
            for (int capacity : {1, 2, 32}) {
                SCOPED_TRACE(std::to_string(slot) + " " + (value ? value : "(empty)") + " " +
                             std::to_string(capacity));
                HandlePtr h = parsedHandle();
                if (value != nullptr) setFieldLiteral(&h->record, slot, value);
                char classification[32] = "unset";
                char vehicleClass[32] = "unset";
                EXPECT_EQ(SVT_getClassificationCode(h.get(), classification, capacity),
                          SVT_getVehicleClassCode(h.get(), vehicleClass, capacity));
                EXPECT_STREQ(classification, vehicleClass);
            }
        }
    }
}

TEST(DerivedGetters, FlagsAnswerOneOnlyForTheTextOne) {
    using FlagGetter = int (*)(SVT_ParserHandle*, int*);
    struct Flag {
        FlagGetter getter;
        FieldId slot;
    };
    const Flag flags[] = {{SVT_getLimitedDurationDocument, field::limitedDurationDocument},
                          {SVT_getOrganDonor, field::organDonor},
                          {SVT_getVeteran, field::veteran}};
    struct Case {
        const char* stored;
        int status;
        int value;
    };
    const Case cases[] = {{"1", kOk, 1},   {"0", kOk, 0},   {"Y", kOk, 0},   {"10", kOk, 0},
                          {"11", kOk, 0},  {"1 ", kOk, 0},  {"YES", kOk, 0}, {nullptr, kErrNoAnswer, 7}};
    for (const Flag& flag : flags) {
        for (const Case& c : cases) {
            SCOPED_TRACE(std::to_string(flag.slot) + " " + (c.stored ? c.stored : "(empty)"));
            HandlePtr h = parsedHandle();
            if (c.stored != nullptr) setFieldLiteral(&h->record, flag.slot, c.stored);
            int value = 7;
            EXPECT_EQ(flag.getter(h.get(), &value), c.status);
            EXPECT_EQ(value, c.value);
        }
        HandlePtr h = parsedHandle();
        int value = 0;
        EXPECT_EQ(flag.getter(nullptr, &value), kErrInvalidArgument);
        EXPECT_EQ(flag.getter(h.get(), nullptr), kErrInvalidArgument);
    }
}

}  // namespace
}  // namespace orvane
