#include "aamva/variants.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "aamva/variant_steps.h"
#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;
using testing::slotText;

// A ten-byte directory record: type, offset and length as four digits each.
std::string dir(const char* type, int offset, int length) {
    char record[16];
    std::snprintf(record, sizeof record, "%s%04d%04d", type, offset, length);
    return record;
}

const std::string kElementsA = "DAAJOHN Q DOE\nDAQ12345\nDAJAZ\nDBB19800115";  // Table A ids

// Standard headers: "@", LF, RS, CR, "ANSI ", IIN 636026, version, then the rest.
TEST(AamvaVariants, EarlyAnsiLayouts) {
    // Formats 17 and 19: header of 19 bytes, version 01 at 15, entries at 17.
    const std::string f17 = "@\n\x1e\rANSI 6360260101" + dir("DL", 29, 50) + "DL" + kElementsA + "\r";
    // Format 18: "ANSI" without the blank, header of 18; the offset counts one past the element.
    const std::string f18 = "@\n\x1e\rANSI6360260101" + dir("DL", 31, 40) + "DL" + kElementsA + "\r";
    // Format 19: the offset reaches past the subfile's "DLDAA"; start backs off onto its "L".
    const std::string f19 = "@\n\x1e\rANSI 6360260101" + dir("DL", 35, 41) + "DL" + kElementsA + "\r";
    testing::runReaderCases({
        {"17 accepted", parseAamvaFormat17, f17, kOk,
         {{field::fullName, "JOHN Q DOE"}, {field::iin, "636026"}, {field::standardName, "AAMVA DL/ID 2000"}}},
        {"17 record separator 6 passes", parseAamvaFormat17, std::string(f17).replace(2, 1, "6"), kOk, {}},
        {"17 wrong record separator", parseAamvaFormat17, std::string(f17).replace(2, 1, "X"), kErrRecordSeparator, {}},
        {"17 no ANSI", parseAamvaFormat17, std::string(f17).replace(4, 4, "ANSX"), kErrNoAnsi, {}},
        {"18 accepted", parseAamvaFormat18, f18, kOk,
         {{field::fullName, "JOHN Q DOE"}, {field::jurisdictionCode, "AZ"}, {field::iin, "636026"}}},
        {"18 no ANSI", parseAamvaFormat18, std::string(f18).replace(4, 4, "AN5I"), kErrNoAnsi, {}},
        {"18 directory too short", parseAamvaFormat18, "@\n\x1e\rANSI6360260101DL00", kErrDirectory, {}},
        {"19 accepted", parseAamvaFormat19, f19, kOk, {{field::fullName, "JOHN Q DOE"}, {field::birthdate, "19800115"}}},
        {"19 too short", parseAamvaFormat19, f19.substr(0, 19), kErrPayloadTooShort, {}},
    });
}

TEST(AamvaVariants, NonStandardAamvaHeaders) {
    // Format 20: "AAMVA36" at 3, the IIN overlapping it from 7 with its A read as 6.
    const std::string f20 = "@\n\rAAMVA360260" "01" + dir("DL", 26, 60) + "DL" + kElementsA + "\r";
    // Formats 21 and 22: "AAMVA36" at 4, IIN from 8, version 0 at 14, entries at 15.
    const std::string head21 = "@\n\x1e\rAAMVA36026001";
    const std::string f21 = head21 + dir("DL", 27, 60) + "DL" + kElementsA + "\r";
    const std::string nc22 = head21 + dir("DL", 31, 60) + "DLDAAJANE ROE\nDBB01-15-1980\nDAIWAKE-FOREST\nDAJNC\r";
    // Format 23: "AAMVA" within 4..10, no version or issuer read, LF alone ends elements.
    const std::string f23 = "@\n\x1e\r.AAMVA6360040101" + dir("DL", 28, 40) +
                            "DLDAAJANE ROE\nDBA12-31-2030\nDAV175\nDAJNC\r";
    // Format 24: "AAMVA" at 4 and a file or record separator.
    const std::string f24 = "@\n\x1e\rAAMVA6360260101" + dir("DL", 29, 60) + "DL" + kElementsA + "\r";
    // Format 25: separators at 1 and 2, "AAMVA" at 4, version 1 at 9.
    const std::string f25 = "@\n\r AAMVA163602" "01" + dir("DL", 27, 60) + "DL" + kElementsA + "\r";
    testing::runReaderCases({
        {"20 accepted", parseAamvaFormat20, f20, kOk,
         {{field::iin, "636026"}, {field::fullName, "JOHN Q DOE"},
          {field::standardName, "NON STANDARD PARTIALLY BASED ON AAMVA DL/ID 2000"}}},
        {"20 no AAMVA36", parseAamvaFormat20, std::string(f20).replace(3, 5, "AAMVX"), kErrNoAamva, {}},
        {"21 accepted", parseAamvaFormat21, f21, kOk, {{field::iin, "636026"}, {field::jurisdictionCode, "AZ"}}},
        {"21 record separator 6", parseAamvaFormat21, std::string(f21).replace(2, 1, "6"), kErrRecordSeparator, {}},
        {"21 North Carolina refused", parseAamvaFormat21, head21 + dir("DL", 27, 60) + "DLDAJNC\r", kErrJurisdictionIsNc,
         {{field::jurisdictionCode, "NC"}}},
        {"22 accepted", parseAamvaFormat22, nc22, kOk,
         {{field::fullName, "JANE ROE"}, {field::birthdate, "19800115"}, {field::city, "WAKE-FOREST"}}},
        {"22 record separator 6", parseAamvaFormat22, std::string(nc22).replace(2, 1, "6"), kErrRecordSeparator, {}},
        {"22 not North Carolina", parseAamvaFormat22, head21 + dir("DL", 31, 60) + "DLDAAJANE ROE\nDAJVA\r",
         kErrJurisdictionNotNc, {}},
        {"23 accepted", parseAamvaFormat23, f23, kOk,
         {{field::fullName, "JANE ROE"}, {field::expirationDate, "20301231"}, {field::heightAlt, "175"},
          {field::heightCentimeters, ""}, {field::iin, ""}}},
        {"23 no AAMVA", parseAamvaFormat23, std::string(f23).replace(5, 5, "ANSI "), kErrNoAamva, {}},
        {"24 accepted", parseAamvaFormat24, f24, kOk, {{field::fullName, "JOHN Q DOE"}}},
        {"24 record separator 6", parseAamvaFormat24, std::string(f24).replace(2, 1, "6"), kErrRecordSeparator, {}},
        {"25 accepted", parseAamvaFormat25, f25, kOk, {{field::fullName, "JOHN Q DOE"}, {field::iin, ""}}},
        {"25 no AAMVA", parseAamvaFormat25, std::string(f25).replace(4, 5, "ANSI "), kErrNoAamvaAt4, {}},
    });
}

const std::string kElementsB = "DCSDOE\nDCTJOHN Q\nDAQ12345\nDAJAB\nDBB19800115";  // Table B ids

TEST(AamvaVariants, Editions2003And2005) {
    // Header of 21: jurisdiction version at 17, entries at 19.
    auto header21 = [](const char* version) { return std::string("@\n\x1e\rANSI 636026") + version + "0001"; };
    // Header of 19: entries at 17.
    auto header19 = [](const char* version) { return std::string("@\n\x1e\rANSI 636026") + version + "01"; };
    const std::string f26 = "@\n\r ANSI6360260101DL03400500" "DLDAAJOHN Q DOE\nDAQ12345\r";
    const std::string f27 = header21("01") + dir("DL", 31, 60) + "DL" + kElementsB + "\r";
    const std::string f28 = header19("01") + dir("ID", 29, 60) + "ID" + kElementsB + "\r";
    const std::string f29 = header21("02") + dir("DL", 31, 60) + "DL" + kElementsB + "\r";
    const std::string f30 = header19("02") + dir("DL", 29, 60) + "DL" + kElementsB + "\r";
    const std::string f31 = header21("03") + dir("DL", 31, 60) + "DL" + kElementsB + "\r";
    // Format 32: separators at 1 and 2, header of 20, entries at 18; offset one past the element.
    const std::string f32 = "@\n\r ANSI636026030001" + dir("DL", 33, 60) + "DL" + kElementsB + "\r";
    // Formats 33 and 34 read from a fixed offset, whatever the directory says.
    const std::string f33 = header21("03") + "DL0027" + "DL" + kElementsB + "\r";
    const std::string f34 = header21("03") + "DL00320060" + "X" + "DL" + kElementsB + "\r";
    // Format 35: CR and LF end elements; the IIN follows "ANSI" wherever it stands.
    const std::string f35 = "@\n\x1e\r ANSI 636001 XXX" "DL00300060" "DLDCSDOE\r\nDCTJOHN\r\nDAQ77\r\n";
    // Format 36: an "SL" directory record whose offset counts from the record itself; the
    // data starts 12 bytes after that point.
    const std::string f36 = header21("03") + "SL00000060" + "DL" + kElementsB + "\r";
    testing::runReaderCases({
        {"26 accepted", parseAamvaFormat26, f26, kOk,
         {{field::fullName, "JOHN Q DOE"}, {field::standardName, "PARTIALLY AAMVA DL/ID 2000"}}},
        {"26 version 2", parseAamvaFormat26, std::string(f26).replace(14, 2, "02"), kErrVersion, {}},
        {"27 accepted", parseAamvaFormat27, f27, kOk,
         {{field::givenNames, "JOHN Q"}, {field::licenseNumberAlt, "12345"},
          {field::standardName, "AAMVA DL/ID 2003"}}},
        {"27 version 3", parseAamvaFormat27, header21("03") + dir("DL", 31, 60) + "DL" + kElementsB, kErrVersion, {}},
        {"28 reads the type only", parseAamvaFormat28, f28, kOk,
         {{field::documentType, "ID"}, {field::iin, "636026"}, {field::lastName, ""}, {field::standardName, "AAMVA DL/ID 2005"}}},
        {"28 no commercial at", parseAamvaFormat28, "X" + f28.substr(1), kErrNoAtSign, {}},
        {"29 accepted", parseAamvaFormat29, f29, kOk, {{field::lastName, "DOE"}}},
        {"29 file separator", parseAamvaFormat29, std::string(f29).replace(2, 1, "\x1c"), kErrRecordSeparator, {}},
        {"30 accepted", parseAamvaFormat30, f30, kOk, {{field::lastName, "DOE"}}},
        {"30 version 3", parseAamvaFormat30, header19("03") + dir("DL", 29, 60) + "DL" + kElementsB, kErrVersion, {}},
        {"31 accepted", parseAamvaFormat31, f31, kOk, {{field::lastName, "DOE"}, {field::standardName, "AAMVA DL/ID 2005"}}},
        {"31 too short", parseAamvaFormat31, header21("03"), kErrPayloadTooShort, {}},
        {"32 accepted", parseAamvaFormat32, f32, kOk, {{field::lastName, "DOE"}, {field::jurisdictionCode, "AB"}}},
        {"32 directory not numeric", parseAamvaFormat32, "@\n\r ANSI636026030001DL00X30060DLDCSDOE", kErrDirectory, {}},
        {"33 fixed at 27", parseAamvaFormat33, f33, kOk, {{field::lastName, "DOE"}, {field::givenNames, "JOHN Q"}}},
        {"33 shorter than its offset", parseAamvaFormat33, header21("03") + "DL", kErrInvalidArgument, {}},
        {"34 fixed at 32", parseAamvaFormat34, f34, kOk, {{field::lastName, "DOE"}}},
        {"34 directory too short", parseAamvaFormat34, header21("03") + "D", kErrDirectory, {}},
        {"35 accepted", parseAamvaFormat35, f35, kOk,
         {{field::iin, "636001"}, {field::lastName, "DOE"}, {field::givenNames, "JOHN"}, {field::licenseNumberAlt, "77"}}},
        {"35 no commercial at", parseAamvaFormat35, "#" + f35.substr(1), kErrNoAtSign, {}},
        {"36 accepted", parseAamvaFormat36, f36, kOk,
         {{field::documentType, "DL"}, {field::lastName, "DOE"}, {field::jurisdictionCode, "AB"}}},
        {"36 length not numeric", parseAamvaFormat36, header21("03") + "SL0000006X" + "0123456789AB" + kElementsB,
         kErrSubfileLength, {}},
        {"36 offset beyond the payload", parseAamvaFormat36, header21("03") + "SL09990060" + "0123456789AB",
         kErrDirectory, {}},
    });
}

TEST(AamvaVariants, NumberedDirectoriesOfIdentityCards) {
    // The formats that read a numbered directory take the document type from its record.
    // Without "DLDAA" to search for, the offsets point at the elements themselves.
    const std::string f18 = "@\n\x1e\rANSI6360260101" + dir("ID", 31, 40) + "ID" + kElementsA + "\r";
    const std::string f19 = "@\n\x1e\rANSI 6360260101" + dir("ID", 32, 41) + "ID" + kElementsA + "\r";
    const std::string nc22 = "@\n\x1e\rAAMVA36026001" + dir("ID", 28, 60) + "IDDAAJANE ROE\nDAJNC\r";
    const std::string f26 = "@\n\r ANSI6360260101ID03100500" "IDDAAJOHN Q DOE\nDAQ12345\r";
    const std::string f32 = "@\n\r ANSI636026030001" + dir("ID", 33, 60) + "ID" + kElementsB + "\r";
    testing::runReaderCases({
        {"18", parseAamvaFormat18, f18, kOk, {{field::documentType, "ID"}, {field::fullName, "JOHN Q DOE"}}},
        {"19", parseAamvaFormat19, f19, kOk, {{field::documentType, "ID"}, {field::fullName, "JOHN Q DOE"}}},
        {"22", parseAamvaFormat22, nc22, kOk, {{field::documentType, "ID"}, {field::fullName, "JANE ROE"}}},
        {"26", parseAamvaFormat26, f26, kOk, {{field::documentType, "ID"}, {field::fullName, "JOHN Q DOE"}}},
        {"32", parseAamvaFormat32, f32, kOk, {{field::documentType, "ID"}, {field::lastName, "DOE"}}},
    });
}

const std::string kElementsD = "DCSDOE\nDACJOHN\nDAQ12345\nDAS-R1\nDCBR2\nDAU070 IN\nDAJTX";  // Table D ids

TEST(AamvaVariants, Editions2009To2011) {
    const std::string f37 = "@\n\x1e\rANSI 636015040001" + dir("DL", 31, 80) + "DL" + kElementsD + "\r";
    const std::string f38 = "@\n\x1e\rANSI636015040001" + dir("DL", 30, 80) + "DL" + kElementsD + "\r";
    const std::string f39 = "@\n\x1e\rANSI 636015050001" + dir("DL", 31, 80) + "DL" + kElementsD + "\r";
    // Format 40: header of 19 whose version is read at 13, from the last digits of the IIN.
    const std::string f40 = "@\n\x1e\rANSI 636005" "00" "01" + dir("DL", 29, 80) + "DL" + kElementsD + "\r";
    const std::string f41 = "@\n\x1e\rANSI 636015060001" + dir("DL", 31, 80) + "DLDCSDOE\nDBB01151980\nDDKX\r";
    testing::runReaderCases({
        // The table-driven loop keeps the DAS value (earlier in the table) for FieldId 8.
        {"37 accepted", parseAamvaFormat37, f37, kOk,
         {{field::restrictionCodeAlt, "-R1"}, {field::heightAlt, "070 IN"}, {field::height, "070 IN"},
          {field::standardName, "AAMVA DL/ID 2009"}}},
        {"37 version 3", parseAamvaFormat37, std::string(f37).replace(15, 2, "03"), kErrVersion, {}},
        {"38 accepted", parseAamvaFormat38, f38, kOk, {{field::lastName, "DOE"}, {field::firstName, "JOHN"}}},
        {"38 header too short", parseAamvaFormat38, f38.substr(0, 20), kErrPayloadTooShort, {}},
        {"39 accepted", parseAamvaFormat39, f39, kOk,
         {{field::restrictionCodeAlt, "-R1"}, {field::standardName, "AAMVA DL/ID 2010"}}},
        {"39 version 4", parseAamvaFormat39, std::string(f39).replace(15, 2, "04"), kErrVersion, {}},
        // Without the table-driven loop the later element in the data wins.
        {"40 accepted", parseAamvaFormat40, f40, kOk,
         {{field::restrictionCodeAlt, "R2"}, {field::iin, "636005"}, {field::standardName, "AAMVA DL/ID 2010"}}},
        {"40 entries not numeric", parseAamvaFormat40, std::string(f40).replace(17, 2, "X1"), kErrEntries, {}},
        {"41 accepted", parseAamvaFormat41, f41, kOk,
         {{field::birthdateAlt, "01151980"}, {field::birthdate, ""}, {field::organDonor, ""},
          {field::standardName, "AAMVA DL/ID 2011"}}},
        {"41 version 5", parseAamvaFormat41, std::string(f41).replace(15, 2, "05"), kErrVersion, {}},
    });
}

const std::string kElementsC = "DCSDOE\nDACJOHN\nDAQ12345\nDBB01151980\nDAJON\nDCGCAN\nDDK1";  // Table C ids

TEST(AamvaVariants, Editions2013AndLater) {
    const std::string f42 = "@\n\x1e\rANSI 636012100001" + dir("DL", 31, 80) + "DL" + kElementsC + "\r";
    const std::string f43 = "@\n\x1e\rANSI636012080001" + dir("DL", 30, 80) + "DL" + kElementsC + "\r";
    const std::string f44 = "@\n\x1e\rANSI 6360120701" + dir("DL", 29, 80) + "DL" + kElementsC + "\r";
    // Format 45: every separator a line feed, and a version that is not read.
    const std::string f45 = "@\n\x1e\nANSI 636012XX0001" + dir("DL", 31, 80) + "DLDCSDOE\nDACJOHN\nDCGCAN\nDAJON\n";
    // Format 46: a segment terminator above 63 is read as a line feed; entries may be anything.
    const std::string f46 = "@\n\x1eZANSI 6360121000XX" + dir("DL", 31, 80) + "DL" + kElementsC + "\n";
    // Format 47: header of 17, subfile found by searching for its type again.
    const std::string f47 = "@\n\x1e\rANSI 63602612DLXXDLDAAJOHN Q DOE\nDAQ9\r";
    testing::runReaderCases({
        {"42 version 10", parseAamvaFormat42, f42, kOk,
         {{field::licenseNumber, "12345"}, {field::licenseNumberAlt, "12345"}, {field::birthdateAlt, "01151980"},
          {field::organDonor, "1"}, {field::standardName, "AAMVA DL/ID 2014"}}},
        {"42 text before the commercial at", parseAamvaFormat42, "JUNK" + f42, kOk, {{field::lastName, "DOE"}}},
        {"42 version 6", parseAamvaFormat42, std::string(f42).replace(15, 2, "06"), kErrVersion, {}},
        {"42 no commercial at", parseAamvaFormat42, f42.substr(1), kErrNoAtSign, {{field::standardName, ""}}},
        {"43 version 8", parseAamvaFormat43, f43, kOk, {{field::firstName, "JOHN"}}},
        {"43 version 10", parseAamvaFormat43, std::string(f43).replace(14, 2, "10"), kErrVersion, {}},
        {"44 version 7", parseAamvaFormat44, f44, kOk, {{field::firstName, "JOHN"}}},
        {"44 version 10", parseAamvaFormat44, std::string(f44).replace(15, 2, "10"), kErrVersion, {}},
        {"45 Canadian", parseAamvaFormat45, f45, kOk,
         {{field::iin, "636012"}, {field::lastName, "DOE"}, {field::countryCode, "CAN"}}},
        {"45 not Canadian", parseAamvaFormat45, std::string(f45).replace(f45.find("DCGCAN"), 6, "DCGUSA"),
         kErrNotRecognised, {{field::lastName, "DOE"}}},
        {"46 version 10", parseAamvaFormat46, f46, kOk, {{field::lastName, "DOE"}, {field::organDonor, "1"}}},
        {"46 version 6", parseAamvaFormat46, std::string(f46).replace(15, 2, "06"), kErrVersion, {}},
        {"47 accepted", parseAamvaFormat47, f47, kOk,
         {{field::fullName, "JOHN Q DOE"}, {field::licenseNumber, "9"}, {field::standardName, ""}}},
        {"47 directory is no subfile", parseAamvaFormat47, "@\n\x1e\rANSI 63602612ZZXXDLDAAJOHN\r", kErrDirectory, {}},
    });
}

TEST(AamvaVariantSteps, IssuerAfterAnsiSearchesOn) {
    const std::pair<const char*, const char*> cases[] = {
        {"@ ANSI 636001XXXX", "636001"},
        {"@ ANSI X ANSI  636002 ", "636002"},
        {"@ ANSI 63600", ""},
        {"@ANSI1234", ""},  // nine bytes or fewer store nothing
    };
    for (const auto& [payload, iin] : cases) {
        RecordWithBuffer r(256);
        AamvaParser p{};
        initAamvaParser(p, 35, r.get(), nullptr);
        EXPECT_EQ(storeIssuerAfterAnsi(p, makeSpan(payload)), kOk);
        EXPECT_EQ(slotText(r.record, field::iin), iin) << payload;
    }
}

TEST(AamvaVariantSteps, DelimiterRules) {
    RecordWithBuffer r(256);
    AamvaParser p{};
    initAamvaParser(p, 42, r.get(), nullptr);
    p.dataElementSeparator = '\n';
    const std::string data = "DCSA-B\nDACC";
    p.segmentTerminator = '-';
    runElementStep(p, testing::span(data), kAamvaTableC, Delimiters::BothDash);
    EXPECT_EQ(slotText(r.record, field::lastName), "A-B");  // a dash never ends an element
    runElementStep(p, testing::span(data), kAamvaTableC, Delimiters::Both);
    EXPECT_EQ(slotText(r.record, field::lastName), "A");
    p.segmentTerminator = 'Z';
    runElementStep(p, testing::span(std::string("DCSXZDACY")), kAamvaTableC, Delimiters::BothNewline);
    EXPECT_EQ(p.segmentTerminator, '\n');
    EXPECT_EQ(slotText(r.record, field::lastName), "XZDACY");
    EXPECT_EQ(runElementStep(p, TextSpan{nullptr, 0}, kAamvaTableC, Delimiters::Both), kErrInvalidArgument);
}

}  // namespace
}  // namespace orvane
