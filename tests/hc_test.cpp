#include "documents/hc.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;
using testing::slotText;

// "@", jurisdiction, "HC", 14 unread, licence (10), name (28), birth, gender, issue, expiry.
const std::string kFixed = "@ON HC" + std::string("..............") + "1234567890" +
                           "SAMPLE/JORDAN               " + "19850715" + "M" + "20210301" + "20260715";

TEST(HcFormats, FixedPositionsAfterTheHead) {
    std::string badMonth = kFixed;
    badMonth.replace(62, 2, "13");
    std::string blankName = kFixed;
    blankName.replace(30, 28, std::string(28, ' '));
    ASSERT_EQ(kFixed.size(), 83u);
    testing::runReaderCases({
        {"60 characters: no dates yet", parseHcFormat48, kFixed.substr(0, 60), kOk,
         {{field::jurisdictionCode, "ON"}, {field::licenseNumber, "1234567890"}, {field::fullName, "SAMPLE$JORDAN"},
          {field::birthdate, ""}}},
        {"66 characters reach the birth date", parseHcFormat48, kFixed.substr(0, 66), kOk,
         {{field::birthdate, "19850715"}, {field::gender, ""}}},
        {"month 13 is no date", parseHcFormat48, badMonth, kOk, {{field::birthdate, ""}, {field::issueDate, "20210301"}}},
        {"blank name not stored", parseHcFormat48, blankName, kOk, {{field::fullName, ""}}},
        {"head alone", parseHcFormat48, "@ONXHC", kOk, {{field::jurisdictionCode, "ON"}, {field::documentType, "HC"}}},
        {"no HC", parseHcFormat48, "@ONXHD" + kFixed.substr(6), kErrFraming, {}},
        {"no at sign", parseHcFormat48, "ON HC" + kFixed, kErrFraming, {}},
        {"too short for the head", parseHcFormat48, "@ON H", kErrFraming, {}},
        {"empty", parseHcFormat48, "", kErrPayloadTooShort, {}},
    });
}

// "%B", card number, "^", name, "^", 16 digits (expiry YYMM, 799, gender, birth), 7
// unread, issue YYMMDD; then tracks 2 and 3 opened by "?;".
std::string stripe(const std::string& name, const std::string& block, const std::string& tail = "") {
    return "%B6360281234567890^" + name + "^" + block + "ABCDEFG210315" + tail +
           "?;6360281234567890=2503799119800715?;0123456789?";
}

TEST(HcFormats, StripeTracksWithTheCardBlock) {
    const std::string card = stripe("SAMPLE/JORDAN Q", "2503799119800715");
    testing::runReaderCases({
        {"expiry year 30", parseHcFormat49, stripe("SAMPLE", "3003799219800715"), kOk,
         {{field::expirationDate, "20300315"}, {field::gender, "2"}}},
        {"expiry year 31", parseHcFormat49, stripe("SAMPLE", "3103799219800715"), kOk,
         {{field::expirationDate, "19310315"}}},
        {"birth day 00 keeps both dates out", parseHcFormat49, stripe("SAMPLE", "2503799119800700"), kOk,
         {{field::expirationDate, ""}, {field::birthdate, ""}, {field::gender, "1"}, {field::issueDate, "20210315"}}},
        {"no 799", parseHcFormat49, stripe("SAMPLE", "2503798119800715"), kOk,
         {{field::fullName, "SAMPLE"}, {field::birthdate, ""}, {field::gender, ""}, {field::issueDate, ""}}},
        {"name longer than 26", parseHcFormat49, stripe(std::string(27, 'N'), "2503799119800715"), kOk,
         {{field::fullName, ""}, {field::birthdate, ""}}},
        {"an open card block forgets the name", parseHcFormat49,
         stripe("SAMPLE", "2503799119800715", "%B1111111111111111^OPEN"), kOk,
         {{field::fullName, ""}, {field::birthdate, "19800715"}}},
        {"two tracks leave a three-character first track", parseHcFormat49,
         "%B6360281234567890^SAMPLE^2503799119800715?;0123456789?", kOk,
         {{field::licenseNumber, ""}, {field::fullName, ""}, {field::documentType, "HC"}}},
        {"letters in the IIN", parseHcFormat49, "%B63602X1234567890^SAMPLE^2503799119800715" + card.substr(44), kOk,
         {{field::iin, ""}, {field::licenseNumber, "1234567890"}}},
        {"not a card track", parseHcFormat49, "%A" + card.substr(2), kErrFraming, {}},
        {"no digit after %B", parseHcFormat49, "%BX" + card.substr(3), kErrFraming, {}},
        {"no track boundary", parseHcFormat49, "%B6360281234567890^SAMPLE^?", kErrTrackBoundary, {}},
        {"three shortest tracks", parseHcFormat49, "%B1?;2?;3", kOk, {{field::documentType, "HC"}}},
        {"a first part of 5 cannot be cut", parseHcFormat49, "%B123?;XY", kErrTrackBoundary, {}},
        {"too short", parseHcFormat49, "%B1?;2?;", kErrPayloadTooShort, {}},
    });
}

TEST(HcFormats, KeywordLines) {
    const std::string all = "\n\nCNAM123456789\nCPRN  JORDAN \nCNOMSAMPLE\nCEXP2024-02\nCDTN1985-07-15\nCSEXM";
    testing::runReaderCases({
        {"every keyword", parseHcFormat50, all, kOk,
         {{field::firstName, "JORDAN"}, {field::expirationDate, "20240229"}, {field::countryCode, "CAN"}}},
        {"February 2023", parseHcFormat50, "CNOMSAMPLE\nCEXP2023/02", kOk, {{field::expirationDate, "20230228"}}},
        {"February 2100 is not leap", parseHcFormat50, "CNOMSAMPLE\nCEXP2100-02", kOk,
         {{field::expirationDate, "21000228"}}},
        {"CNOM alone", parseHcFormat50, "CNOMSAMPLE", kErrFraming, {{field::lastName, "SAMPLE"}, {field::countryCode, ""}}},
        {"CNOM and CPRN", parseHcFormat50, "CNOMSAMPLE\nCPRNJORDAN", kOk, {{field::countryCode, "CAN"}}},
        {"month 13 does not count", parseHcFormat50, "CNOMSAMPLE\nCEXP2024-13", kErrFraming,
         {{field::expirationDate, ""}}},
        {"short expiry does not count", parseHcFormat50, "CNOMSAMPLE\nCEXP2024-2", kErrFraming, {}},
        {"letters in a birth date", parseHcFormat50, "CNOMSAMPLE\nCDTN1985-07-1X", kErrFraming,
         {{field::birthdate, ""}}},
        {"empty values and short lines ignored", parseHcFormat50, "CNOM   \nCPRN\nCSEXF\nXNOMSAMPLE", kErrFraming,
         {{field::gender, "F"}, {field::lastName, ""}}},
        {"nothing", parseHcFormat50, "", kErrFraming, {}},
    });
}

TEST(HcFormats, NullInputs) {
    RecordWithBuffer r;
    EXPECT_EQ(parseHcFormat48(nullptr, 10, r.get(), nullptr), kErrNullInput);
    EXPECT_EQ(parseHcFormat49(nullptr, 10, r.get(), nullptr), kErrNullInput);
    EXPECT_EQ(parseHcFormat50(nullptr, 10, r.get(), nullptr), kErrInvalidArgument);
}

}  // namespace
}  // namespace orvane
