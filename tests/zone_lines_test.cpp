// Finding a zone's lines in what OCR apps hand over, and the repair that keeps them alone.
#include "documents/zone_lines.h"

#include "documents/zone_ocr.h"

#include <gtest/gtest.h>

#include <string>

#include "sample_inputs.h"
#include "test_support.h"

namespace orvane {
namespace {

const std::string kFirst = "P<UTOERIKSSON<<ANNA<MARIA<<<<<<<<<<<<<<<<<<<";
const std::string kSecond = "L898902C36UTO7408122F1204159ZE184226B<<<<<10";
const std::string kPassport = kFirst + "\n" + kSecond;
const std::string kCard = "I<UTOD231458907<<<<<<<<<<<<<<<\n7408122F1204159UTO<<<<<<<<<<<6\nERIKSSON<<ANNA<MARIA<<<<<<<<<<";
const std::string kMisreadCard = "1<UTOD231458907<<<<<<<<<<<<<<<\n7408122F1204159UTO<<<<<<<<<<<9\nERIKSSON<<ANNA<MARIA<<<<<<<<<<";
const std::string kSwissLicence = "ABC123D<<\nFACHE123456789001<<850315<<<<<\nMUSTER<<PETRA<ANNA<<<<<<<<<<<<";
const std::string kFrenchLicence = "D1FRA12AB345675310615EXEMPLE<3";

TEST(ZoneLines, FoundAmongWhatOcrGives) {
    const struct {
        const char* name;
        std::string input;
        std::string zone;  // its lines as written, "" when none is found
        bool repaired;     // whether the framing alone would not make the zone
    } cases[] = {
        {"a clean zone needs no repair", kPassport, kPassport, false},
        {"CR LF lines and blank lines", kFirst + "\r\n" + kSecond + "\r\n\r\n", kPassport, false},
        {"blanks inside and lower case", "  p<uto eriksson<<ANNA<MARIA<<<<<<<<< <<<<<<<<<<\n" + kSecond, kPassport,
         false},
        {"other lines around it", "Scan 12:03\n" + kPassport + "\nOK\n", kPassport, true},
        {"junk after a line", kFirst + "extrachars\n" + kSecond, kPassport, true},
        {"junk before a line", "4 " + kFirst + "\n" + kSecond, kPassport, true},
        {"junk before the second line", kFirst + "\n|l " + kSecond, kPassport, true},
        {"fillers lost at the end of the names", kFirst.substr(0, 38) + "\n" + kSecond, kPassport, true},
        {"an unread character keeps its place", kFirst + "\nL898902C36UTO74081?2F1204159ZE184226B<<<<<10",
         kFirst + "\nL898902C36UTO74081<2F1204159ZE184226B<<<<<10", true},
        {"the zone on one line among others", "MRZ:\n" + kFirst + kSecond + "\n--\n", kPassport, true},
        {"a rule of dashes between its lines", kFirst + "\n-----\n" + kSecond, kPassport, false},
        {"three lines of a card, under a title", "ID card\n" + kCard, kCard, true},
        {"a Swiss licence", "x\n" + kSwissLicence, kSwissLicence, true},
        {"a French licence", kFrenchLicence + "\n", kFrenchLicence, false},
        {"the best of two: the whole card", kCard + "\n" + kFrenchLicence, kCard, true},
        {"an opening misread, and digits that do not hold", "x\n" + kMisreadCard, kMisreadCard, false},
        {"no line of its exact length", kFirst.substr(0, 40) + "\n" + kSecond + "<<", "", false},
        {"both lines too long", kFirst + "xx\n" + kSecond + "yy", "", false},
        {"too much junk after a line", kFirst + "and twenty-one more chars\n" + kSecond, "", false},
        {"a line of punctuation", kFirst + "\n" + kSecond.substr(0, 20) + ",.;:!,.;:!" + kSecond.substr(20), "",
         false},
        {"no filler anywhere", std::string("PA") + std::string(42, 'B') + "\n" + std::string(44, '1'), "", false},
        {"no layout opens so", "X" + kPassport.substr(1), "", false},
        {"a barcode's line of thirty", "DCFRA123456789012345678901234<", "", false},
        {"nothing", "\n\n  \n", "", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        FoundZone zone{};
        const bool found = findZone(testing::span(c.input), &zone);
        EXPECT_EQ(found, !c.zone.empty());
        char out[128];
        if (found) {
            const int32_t n = writeZoneLines(zone, out, sizeof out);
            ASSERT_GT(n, 0);
            EXPECT_EQ(std::string(out, static_cast<size_t>(n)), c.zone);
        }
        EXPECT_EQ(repairZoneLines(testing::span(c.input), out, sizeof out) >= 0, c.repaired);
    }
}

TEST(ZoneLines, NoZoneInTheOtherFamiliesSamples) {
    char out[256];
    for (const auto& path : testing::samplePaths()) {
        if (path.filename().string().rfind("mrz-", 0) == 0) continue;
        SCOPED_TRACE(path.filename().string());
        const std::string sample = testing::readBytes(path);
        FoundZone zone{};
        EXPECT_FALSE(findZone(testing::span(sample), &zone));
        EXPECT_EQ(repairZoneLines(testing::span(sample), out, sizeof out), -1);
    }
}

TEST(ZoneLines, WritingNeedsItsRoom) {
    FoundZone zone{};
    ASSERT_TRUE(findZone(testing::span(kCard), &zone));
    char out[128];
    EXPECT_EQ(writeZoneLines(zone, out, 92), 92);
    EXPECT_EQ(writeZoneLines(zone, out, 91), -1);
    zone.length = 89;  // no longer the layout its kind names
    EXPECT_EQ(writeZoneLines(zone, out, sizeof out), -1);
}

TEST(ZoneLines, OpeningLettersMisreadAsDigits) {
    const struct {
        std::string zone;
        ZoneKind kind;
    } cases[] = {
        {"1D" + std::string(88, '<'), ZoneKind::Td1},
        {"1DFRA" + std::string(67, '<'), ZoneKind::FrenchIdentityCard},
        {"DIFRA" + std::string(25, '<'), ZoneKind::FrenchDrivingLicence},  // its second place is a digit
        {"1V" + std::string(88, '<'), ZoneKind::None},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.zone);
        EXPECT_EQ(zoneKindOf(c.zone.data(), static_cast<int32_t>(c.zone.size())), c.kind);
    }
}

}  // namespace
}  // namespace orvane
