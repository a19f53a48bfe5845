// What a parse gives beyond the fields: the format and its name, the field count, the raw
// elements, check digits, age and expiry, the JSON object, the repairs and the version,
// each with the argument checks every exported function shares.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "../tools/json_text.h"
#include "api/json.h"
#include "engine/format_names.h"
#include "fields/dates.h"
#include "orvane_parser.h"
#include "sample_inputs.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::HandlePtr;
using Lines = std::vector<std::string>;

std::string sample(const char* name) {
    return testing::readBytes(std::filesystem::path(ORVANE_SOURCE_DIR) / "samples" / (std::string(name) + ".txt"));
}

std::string testData(const char* path) {
    return testing::readBytes(std::filesystem::path(ORVANE_SOURCE_DIR) / "tests" / "data" / path);
}

int parseInto(SVT_ParserHandle* h, const std::string& input, bool lenient = false) {
    const int length = static_cast<int>(input.size());
    return lenient ? SVT_parseLenient(h, input.data(), length) : SVT_parse(h, input.data(), length);
}

HandlePtr parsed(const std::string& input, bool lenient = false) {
    HandlePtr h(SVT_create());
    EXPECT_EQ(parseInto(h.get(), input, lenient), SVT_OK) << input.substr(0, 40);
    return h;
}

// An AAMVA barcode of the Arizona issuer: each subfile is a type ("DL", "ZA") and its
// element lines; the directory's offsets and lengths are computed.
std::string barcode(const std::vector<std::pair<std::string, std::string>>& subfiles, const char* version = "08") {
    char count[3];
    std::snprintf(count, sizeof count, "%02zu", subfiles.size());
    const std::string header = std::string("@\n\x1e\rANSI 636026") + version + "00" + count;
    size_t offset = header.size() + 10 * subfiles.size();
    std::string directory;
    std::string bodies;
    for (const auto& [type, elements] : subfiles) {
        const std::string body = type + elements + "\r";
        char entry[16];
        std::snprintf(entry, sizeof entry, "%s%04zu%04zu", type.c_str(), offset, body.size());
        directory += entry;
        bodies += body;
        offset += body.size();
    }
    return header + directory + bodies;
}

std::string formatName(SVT_ParserHandle* h) {
    char name[128];
    const int status = SVT_getFormatName(h, name, sizeof name);
    return status == SVT_OK ? std::string(name) : "#" + std::to_string(status);
}

TEST(Results, FormatOfEachFamily) {
    const struct {
        const char* input;
        int group;
        int id;
        const char* name;
    } cases[] = {
        {"aamva-2013-arizona", 0, 42, "AAMVA DL/ID 2013 (version 08)"},
        {"aamva-2020-florida", 0, 42, "AAMVA DL/ID 2020 (version 10)"},
        {"aamva-2000-new-york", 0, 17, "AAMVA DL/ID 2000 (version 01)"},
        {"stripe-sentinel", 1, 0, "Magnetic stripe, tracks 1 and 2 from one sentinel"},
        {"stripe-track2-only", 1, 14, "Magnetic stripe, track 2 only"},
        {"hc-keywords", 2, 50, "HC card, keyword lines"},
        {"cac-v1", 3, 51, "Common Access Card 1"},
        {"national-south-africa", 4, 59, "South African identity document"},
        {"mrz-passport", 5, 64, "Passport zone (TD3)"},
        {"mrz-id-card", 5, 65, "Identity card zone (TD1)"},
        {"mrz-td2", 5, 66, "Identity card zone (TD2)"},
        {"mrz-visa-a", 5, 67, "Visa zone (MRV-A or MRV-B)"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.input);
        HandlePtr h = parsed(sample(c.input));
        int group = -1;
        int id = -1;
        ASSERT_EQ(SVT_getFormat(h.get(), &group, &id), SVT_OK);
        EXPECT_EQ(group, c.group);
        EXPECT_EQ(id, c.id);
        EXPECT_EQ(formatName(h.get()), c.name);
    }
}

TEST(Results, AamvaRowsThatReadSeveralVersionsNameTheEditionOfTheHeader) {
    const struct {
        uint32_t formatId;
        const char* version;  // as the header gave it, or null
        const char* name;
    } cases[] = {
        {42, "08", "AAMVA DL/ID 2013 (version 08)"},
        {42, "07", "AAMVA DL/ID 2012 (version 07)"},
        {42, "10", "AAMVA DL/ID 2020 (version 10)"},
        {42, "11", "AAMVA DL/ID (version 11)"},  // no edition known yet
        {42, "00", "AAMVA DL/ID (version 00)"},
        {42, nullptr, "AAMVA DL/ID 2012 or later (version 07 on)"},
        {42, "8", "AAMVA DL/ID 2012 or later (version 07 on)"},
        {35, "80", "AAMVA DL/ID 2005 elements, Alberta, CR LF lines"},  // a misread header names no edition
        {43, "08", "AAMVA DL/ID 2013 (version 08), short header"},
        {45, "09", "AAMVA DL/ID 2016 (version 09), Canada, line-feed header"},
        {35, "03", "AAMVA DL/ID 2005 (version 03), Alberta, CR LF lines"},
        {37, "08", "AAMVA DL/ID 2009 (version 04)"},  // a row of one version keeps its name
        {64, "08", "Passport zone (TD3)"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.formatId) + " " + (c.version != nullptr ? c.version : "-"));
        testing::RecordWithBuffer r;
        r.record.formatId = c.formatId;
        if (c.version != nullptr) setFieldLiteral(r.get(), field::aamvaVersion, c.version);
        char name[128];
        ASSERT_EQ(answerFormatName(r.get(), name, sizeof name), kOk);
        EXPECT_STREQ(name, c.name);
    }
    testing::RecordWithBuffer none;
    none.record.formatId = kNoFormatId;
    char name[8];
    EXPECT_EQ(answerFormatName(none.get(), name, sizeof name), kErrNoAnswer);
    none.record.formatId = 99;
    EXPECT_EQ(answerFormatName(none.get(), name, sizeof name), kErrNoAnswer);
}

TEST(Results, FormatNameIsCutLikeEveryTextAnswer) {
    HandlePtr h = parsed(sample("aamva-2013-arizona"));
    char name[8];
    std::memset(name, 'x', sizeof name);
    ASSERT_EQ(SVT_getFormatName(h.get(), name, 6), SVT_OK);
    EXPECT_STREQ(name, "AAMVA");
    EXPECT_EQ(name[6], 'x');
    EXPECT_EQ(SVT_getFormatName(h.get(), name, 1), SVT_ERR_NO_ANSWER);
}

TEST(Results, FieldCountTellsAThinReadingFromAFullOne) {
    int full = 0;
    ASSERT_EQ(SVT_getFieldCount(parsed(sample("aamva-2013-arizona")).get(), &full), SVT_OK);
    EXPECT_EQ(full, 35);
    // Four elements, and what the header and the subfile add (issuer, version, type, ...).
    int thin = 0;
    HandlePtr h = parsed(barcode({{"DL", "DCSSAMPLE\nDACJORDAN\nDAQD12345678\nDAJAZ"}}));
    ASSERT_EQ(SVT_getFieldCount(h.get(), &thin), SVT_OK);
    EXPECT_EQ(thin, 9);
}

// Every element of a handle as "id=value" lines, through SVT_getElementAt.
std::vector<std::string> elementsOf(SVT_ParserHandle* h) {
    int count = -1;
    EXPECT_EQ(SVT_getElementCount(h, &count), SVT_OK);
    std::vector<std::string> all;
    for (int i = 0; i < count; ++i) {
        char id[64];
        char value[256];
        EXPECT_EQ(SVT_getElementAt(h, i, id, sizeof id, value, sizeof value), SVT_OK) << i;
        all.push_back(std::string(id) + "=" + value);
    }
    char id[8];
    char value[8];
    EXPECT_EQ(SVT_getElementAt(h, count, id, sizeof id, value, sizeof value), SVT_ERR_NO_ANSWER);
    return all;
}

TEST(Results, ElementsInDocumentOrder) {
    const std::string longNumber = "I<UTOD23145890<7349<<<<<<<<<<<\n7408122F1204159UTO<<<<<<<<<<<6\nERIKSSON<<ANNA<MARIA<<<<<<<<<<\n";
    const struct {
        const char* name;
        std::string input;
        Lines expected;
    } cases[] = {
        {"licence with a jurisdiction subfile",
         barcode({{"DL", "DAQD12345678\nDCSSAMPLE\nDACJORDAN\nDAK85023  \nDAJAZ"}, {"ZA", "ZAAN\nZAB  FIRST  \nZAC"}}),
         {"DAQ=D12345678", "DCS=SAMPLE", "DAC=JORDAN", "DAK=85023", "DAJ=AZ", "ZAA=N", "ZAB=FIRST", "ZAC="}},
        {"three-line card with a twelve-character number", longNumber,
         {"documentCode=I", "issuingState=UTO", "documentNumber=D23145890734", "optionalData1=", "birthDate=740812",
          "sex=F", "expiryDate=120415", "nationality=UTO", "optionalData2=", "names=ERIKSSON<<ANNA<MARIA"}},
        {"passport", sample("mrz-passport"),
         {"documentCode=P", "issuingState=UTO", "names=SAMPLE<<JORDAN<QUINN", "documentNumber=X12345678",
          "nationality=UTO", "birthDate=880704", "sex=F", "expiryDate=300315", "optionalData1=AB1234567"}},
        {"stripe: the stored fields in the order of the text", sample("stripe-sentinel"),
         {"jurisdictionCode=TX", "city=AUSTIN", "fullName=SAMPLE$JORDAN$LEE", "address1=1400 ELM ST", "iin=636015",
          "licenseNumber=12345678", "birthdate=19800115", "expirationDate=20260315", "documentType=DL"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        HandlePtr h = parsed(c.input);
        EXPECT_EQ(elementsOf(h.get()), c.expected);
    }
}

// More elements than the handle lists: those past the list are found by a walk, and the
// next parse, also one that fails, forgets the list.
TEST(Results, ElementsPastTheListAndAfterTheNextParse) {
    std::string elements = "DAQD12345678\nDCSSAMPLE\nDACJORDAN";
    Lines expected = {"DAQ=D12345678", "DCS=SAMPLE", "DAC=JORDAN"};
    for (int i = 0; i < 300; ++i) {
        const std::string id = {'Q', static_cast<char>('A' + i / 26 % 26), static_cast<char>('A' + i % 26)};
        elements += "\n" + id + std::to_string(i);
        expected.push_back(id + "=" + std::to_string(i));
    }
    HandlePtr h = parsed(barcode({{"DL", elements}}));
    EXPECT_EQ(elementsOf(h.get()), expected);
    char value[16];
    EXPECT_EQ(SVT_getElement(h.get(), "QLN", value, sizeof value), SVT_OK);
    EXPECT_STREQ(value, "299");
    ASSERT_EQ(parseInto(h.get(), sample("mrz-passport")), SVT_OK);
    EXPECT_EQ(elementsOf(h.get()).front(), "documentCode=P");
    EXPECT_EQ(parseInto(h.get(), "not a document"), SVT_ERR_NOT_RECOGNISED);
    int count = -1;
    EXPECT_EQ(SVT_getElementCount(h.get(), &count), SVT_ERR_NO_ANSWER);
}

TEST(Results, ElementsOfTheArizonaSample) {
    HandlePtr h = parsed(sample("aamva-2013-arizona"));
    const Lines all = elementsOf(h.get());
    ASSERT_EQ(all.size(), 29u);
    EXPECT_EQ(all.front(), "DAQ=D08954796");
    EXPECT_EQ(all.back(), "ZAA=N");
    const struct {
        const char* id;
        int status;
        const char* value;
    } lookups[] = {
        {"DCF", SVT_OK, "9F2K7Q1Z3804"}, {"DAK", SVT_OK, "850230000"}, {"ZAA", SVT_OK, "N"},
        {"DCK", SVT_OK, "AZ21074D089547960101"}, {"DZZ", SVT_ERR_NO_ANSWER, ""}, {"", SVT_ERR_NO_ANSWER, ""},
        {"dcf", SVT_ERR_NO_ANSWER, ""},
    };
    for (const auto& l : lookups) {
        SCOPED_TRACE(l.id);
        char value[64] = "";
        EXPECT_EQ(SVT_getElement(h.get(), l.id, value, sizeof value), l.status);
        if (l.status == SVT_OK) {
            EXPECT_STREQ(value, l.value);
        }
    }
}

TEST(Results, ElementTextsAreCutToTheirBuffers) {
    HandlePtr h = parsed(sample("aamva-2013-arizona"));
    const struct {
        int idCapacity;
        int valueCapacity;
        int status;
        const char* id;
        const char* value;
    } cases[] = {
        {4, 64, SVT_OK, "DAQ", "D08954796"},
        {3, 4, SVT_OK, "DA", "D08"},
        {2, 2, SVT_OK, "D", "D"},
        {1, 64, SVT_ERR_NO_ANSWER, "", "D08954796"},  // nothing of the id fits
        {4, 1, SVT_ERR_NO_ANSWER, "DAQ", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.idCapacity) + "/" + std::to_string(c.valueCapacity));
        char id[80];
        char value[80];
        std::memset(id, 'x', sizeof id);
        std::memset(value, 'x', sizeof value);
        EXPECT_EQ(SVT_getElementAt(h.get(), 0, id, c.idCapacity, value, c.valueCapacity), c.status);
        EXPECT_STREQ(id, c.id);
        EXPECT_STREQ(value, c.value);
        EXPECT_EQ(id[c.idCapacity], 'x');
        EXPECT_EQ(value[c.valueCapacity], 'x');
    }
    char value[80];
    EXPECT_EQ(SVT_getElement(h.get(), "DAQ", value, 1), SVT_ERR_NO_ANSWER);
    ASSERT_EQ(SVT_getElement(h.get(), "DAQ", value, 5), SVT_OK);
    EXPECT_STREQ(value, "D089");
    // An element that is empty is an answer, however small the buffer.
    HandlePtr zone = parsed(sample("mrz-id-card"));
    EXPECT_EQ(SVT_getElement(zone.get(), "optionalData1", value, 1), SVT_OK);
    EXPECT_STREQ(value, "");
}

std::string failuresOf(SVT_ParserHandle* h, int capacity = 128) {
    char failures[128];
    const int status = SVT_getCheckDigitFailures(h, failures, capacity);
    return status == SVT_OK ? std::string(failures) : "#" + std::to_string(status);
}

TEST(Results, CheckDigits) {
    const std::string longNumber = "I<UTOD23145890<7349<<<<<<<<<<<\n7408122F1204159UTO<<<<<<<<<<<6\nERIKSSON<<ANNA<MARIA<<<<<<<<<<\n";
    std::string longNumberBroken = longNumber;
    longNumberBroken[18] = '8';  // the long number's own check digit
    std::string passportBadBirth = sample("mrz-passport");
    passportBadBirth[44 + 1 + 19] = '4';  // the birth date's check digit
    const std::string southAfrican = sample("national-south-africa");
    std::string southAfricanValid = southAfrican;
    const size_t number = southAfricanValid.find("8807045800085");
    ASSERT_NE(number, std::string::npos);
    southAfricanValid[number + 12] = '3';  // the Luhn digit of 880704580008
    const struct {
        const char* name;
        std::string input;
        int status;
        std::string failures;
    } cases[] = {
        {"passport", sample("mrz-passport"), SVT_CHECK_VALID, "#-26"},
        {"passport with a wrong number digit", testData("mrz/passport-wrong-number-check-digit.txt"), SVT_CHECK_INVALID,
         "documentNumber,composite"},  // the composite covers the number's digit
        {"passport with a wrong birth digit", passportBadBirth, SVT_CHECK_INVALID, "birthDate,composite"},
        {"card with a long number", longNumber, SVT_CHECK_VALID, "#-26"},
        {"card with a long number and a wrong digit", longNumberBroken, SVT_CHECK_INVALID, "documentNumber,composite"},
        {"two-line card", sample("mrz-td2"), SVT_CHECK_VALID, "#-26"},
        {"visa", sample("mrz-visa-b"), SVT_CHECK_VALID, "#-26"},
        {"licence barcode: no check digits", sample("aamva-2013-arizona"), SVT_CHECK_NOT_CHECKABLE, "#-26"},
        {"stripe", sample("stripe-sentinel"), SVT_CHECK_NOT_CHECKABLE, "#-26"},
        {"South African number with its Luhn digit", southAfricanValid, SVT_CHECK_VALID, "#-26"},
        {"South African number with another digit", southAfrican, SVT_CHECK_INVALID, "documentNumber"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        HandlePtr h = parsed(c.input);
        int status = -1;
        ASSERT_EQ(SVT_validateCheckDigits(h.get(), &status), SVT_OK);
        EXPECT_EQ(status, c.status);
        EXPECT_EQ(failuresOf(h.get()), c.failures);
    }
    HandlePtr h = parsed(passportBadBirth);
    EXPECT_EQ(failuresOf(h.get(), 12), "birthDate,c");
}

// The local date, read twice around the body so that a test never straddles midnight.
template <typename Body>
void onOneDay(Body body) {
    for (int attempt = 0; attempt < 3; ++attempt) {
        auto today = [] {
            const std::time_t now = std::time(nullptr);
            std::tm local{};
            localtime_r(&now, &local);
            return DateValue{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, 0, 0, 0};
        };
        const DateValue before = today();
        const bool done = body(before);
        const DateValue after = today();
        if (before.year == after.year && before.month == after.month && before.day == after.day) {
            EXPECT_TRUE(done);
            return;
        }
    }
    FAIL() << "the day changed on every attempt";
}

// MMDDYYYY of a day some years and days from the given one.
std::string shifted(const DateValue& day, int years, int days) {
    DateValue moved{day.year + years, day.month, day.day, 0, 0, 0};
    if (moved.month == 2 && moved.day == 29 && !isLeapYear(moved.year)) moved.day = 28;
    std::tm t{};
    t.tm_year = moved.year - 1900;
    t.tm_mon = moved.month - 1;
    t.tm_mday = moved.day + days;
    t.tm_hour = 12;
    const std::time_t normal = timegm(&t);
    std::tm out{};
    gmtime_r(&normal, &out);
    char text[40];
    std::snprintf(text, sizeof text, "%02d%02d%04d", out.tm_mon + 1, out.tm_mday, out.tm_year + 1900);
    return text;
}

TEST(Results, AgeAndExpiryOnTheDayOfTheParse) {
    onOneDay([](const DateValue& today) {
        const struct {
            const char* name;
            std::string birth;   // MMDDYYYY or "" for none
            std::string expiry;
            int ageStatus;
            int age;
            int expiredStatus;
            int expired;
        } cases[] = {
            {"birthday today", shifted(today, -30, 0), shifted(today, 1, 0), SVT_OK, 30, SVT_OK, 0},
            {"birthday tomorrow", shifted(today, -30, 1), shifted(today, 0, 0), SVT_OK, 29, SVT_OK, 0},
            {"birthday yesterday", shifted(today, -30, -1), shifted(today, 0, -1), SVT_OK, 30, SVT_OK, 1},
            {"born today", shifted(today, 0, 0), "12319999", SVT_OK, 0, SVT_OK, 0},
            {"born tomorrow", shifted(today, 0, 1), "", SVT_ERR_NO_ANSWER, 0, SVT_ERR_NO_ANSWER, 0},
            {"no dates", "", "", SVT_ERR_NO_ANSWER, 0, SVT_ERR_NO_ANSWER, 0},
        };
        for (const auto& c : cases) {
            SCOPED_TRACE(c.name);
            std::string elements = "DCSSAMPLE\nDACJORDAN\nDAQD12345678\nDAJAZ";
            if (!c.birth.empty()) elements += "\nDBB" + c.birth;
            if (!c.expiry.empty()) elements += "\nDBA" + c.expiry;
            HandlePtr h = parsed(barcode({{"DL", elements}}));
            int age = -1;
            int expired = -1;
            EXPECT_EQ(SVT_getAge(h.get(), &age), c.ageStatus);
            EXPECT_EQ(SVT_isExpired(h.get(), &expired), c.expiredStatus);
            EXPECT_EQ(age, c.ageStatus == SVT_OK ? c.age : -1);
            EXPECT_EQ(expired, c.expiredStatus == SVT_OK ? c.expired : -1);
        }
        return true;
    });
}

TEST(Results, AgeAndExpiryOnGivenDays) {
    const struct {
        const char* name;
        const char* stored;  // YYYYMMDD
        DateValue day;
        int32_t ageStatus;
        int32_t age;
        int32_t expired;
    } cases[] = {
        {"leap day, the day before in a common year", "20000229", {2023, 2, 28, 0, 0, 0}, kOk, 22, 1},
        {"leap day, the first of March in a common year", "20000229", {2023, 3, 1, 0, 0, 0}, kOk, 23, 1},
        {"leap day, on a leap day", "20000229", {2024, 2, 29, 0, 0, 0}, kOk, 24, 1},
        {"the last day of the year", "19991231", {2000, 12, 31, 0, 0, 0}, kOk, 1, 1},
        {"the first day of the next", "19991231", {2001, 1, 1, 0, 0, 0}, kOk, 1, 1},
        {"the same day", "20240229", {2024, 2, 29, 0, 0, 0}, kOk, 0, 0},
        {"a day before", "20240301", {2024, 2, 29, 0, 0, 0}, kErrNoAnswer, 0, 0},
        {"never expires", "99991231", {9999, 12, 30, 0, 0, 0}, kErrNoAnswer, 0, 0},
        {"no calendar date", "20230229", {2024, 1, 1, 0, 0, 0}, kErrNoAnswer, 0, kErrNoAnswer},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        testing::RecordWithBuffer r;
        setFieldLiteral(r.get(), field::birthdate, c.stored);
        setFieldLiteral(r.get(), field::expirationDate, c.stored);
        int32_t age = -1;
        EXPECT_EQ(ageOn(r.get(), c.day, &age), c.ageStatus);
        if (c.ageStatus == kOk) {
            EXPECT_EQ(age, c.age);
        }
        int32_t expired = -1;
        if (c.expired == kErrNoAnswer) {
            EXPECT_EQ(expiredOn(r.get(), c.day, &expired), kErrNoAnswer);
        } else {
            EXPECT_EQ(expiredOn(r.get(), c.day, &expired), kOk);
            EXPECT_EQ(expired, c.expired);
        }
    }
}

std::string json(SVT_ParserHandle* h) {
    std::vector<char> buffer(65536);
    int needed = -1;
    const int status = SVT_getResultJson(h, buffer.data(), static_cast<int>(buffer.size()), &needed);
    return status == SVT_OK ? std::string(buffer.data()) : "#" + std::to_string(status);
}

TEST(Results, JsonMembers) {
    HandlePtr h = parsed(sample("mrz-passport"));
    const std::string passport = json(h.get());
    for (const char* member :
         {"{\"status\":0,\"formatGroup\":5,\"formatId\":64,\"formatName\":\"Passport zone (TD3)\"",
          "\"birthdate\":\"07/04/1988\",\"birthdateISO\":\"1988-07-04\"", "\"checkDigits\":\"valid\"",
          "\"elements\":{\"documentCode\":\"P\",", "\"optionalData1\":\"AB1234567\"}}"}) {
        EXPECT_NE(passport.find(member), std::string::npos) << member << " in " << passport;
    }
    HandlePtr bad = parsed(testData("mrz/passport-wrong-number-check-digit.txt"));
    EXPECT_NE(json(bad.get()).find("\"checkDigits\":\"invalid\",\"checkDigitFailures\":[\"documentNumber\",\"composite\"]"),
              std::string::npos);
    // A failed parse gives its status and nothing that an earlier parse left.
    const std::string junk = "no format reads this";
    EXPECT_EQ(parseInto(h.get(), junk), SVT_ERR_NOT_RECOGNISED);
    EXPECT_EQ(json(h.get()), "{\"status\":-25}");
    EXPECT_EQ(parseInto(h.get(), sample("mrz-passport")), SVT_OK);
    EXPECT_EQ(SVT_parse(h.get(), "x", 0), SVT_ERR_INVALID_ARGUMENT);
    EXPECT_EQ(json(h.get()), "{\"status\":-21}");
}

TEST(Results, JsonHoldsEveryElementOfEverySample) {
    for (const auto& path : testing::samplePaths()) {
        SCOPED_TRACE(path.filename().string());
        HandlePtr h = parsed(testing::readBytes(path));
        const std::string text = json(h.get());
        const size_t elements = text.find("\"elements\":{");
        ASSERT_NE(elements, std::string::npos);
        std::vector<std::string> seen;
        int count = 0;
        ASSERT_EQ(SVT_getElementCount(h.get(), &count), SVT_OK);
        for (int i = 0; i < count; ++i) {
            char id[64];
            char value[512];
            ASSERT_EQ(SVT_getElementAt(h.get(), i, id, sizeof id, value, sizeof value), SVT_OK);
            if (std::find(seen.begin(), seen.end(), id) != seen.end()) continue;  // the first value stands
            seen.push_back(id);
            std::string member;
            orvane_tools::appendJsonString(&member, id);
            member += ':';
            orvane_tools::appendJsonString(&member, value);
            EXPECT_NE(text.find(member, elements), std::string::npos) << member;
        }
    }
}

TEST(Results, JsonEscapesEveryByteOfAValue) {
    const std::string input =
        barcode({{"DL", "DCSSAMPLE\nDACJORDAN\nDAQD12345678\nDAJAZ"}, {"ZA", "ZAAQ\"U\\O\x01T\xe9\tE"}});
    HandlePtr h = parsed(input);
    const std::string text = json(h.get());
    EXPECT_NE(text.find("\"ZAA\":\"Q\\\"U\\\\O\\u0001T\\u00e9\\tE\""), std::string::npos) << text;
}

TEST(Results, RepairsOfTheLenientParse) {
    std::string indented = sample("aamva-2013-arizona");
    for (size_t at = indented.find("\nD"); at != std::string::npos; at = indented.find("\nD", at + 3)) {
        indented.insert(at + 1, "  ");
    }
    HandlePtr h(SVT_create());
    char repairs[64];
    int count = 0;
    ASSERT_EQ(parseInto(h.get(), indented), SVT_OK);
    ASSERT_EQ(SVT_getFieldCount(h.get(), &count), SVT_OK);
    EXPECT_LT(count, 10) << "strict reading of indented lines";
    EXPECT_EQ(SVT_getRepairs(h.get(), repairs, sizeof repairs), SVT_ERR_NO_ANSWER);
    ASSERT_EQ(parseInto(h.get(), indented, true), SVT_OK);
    ASSERT_EQ(SVT_getFieldCount(h.get(), &count), SVT_OK);
    EXPECT_EQ(count, 35);
    ASSERT_EQ(SVT_getRepairs(h.get(), repairs, sizeof repairs), SVT_OK);
    EXPECT_STREQ(repairs, "line-indents");
    EXPECT_NE(json(h.get()).find("\"repairs\":[\"line-indents\"]"), std::string::npos);
    // A list cut short would name no repair.
    std::memset(repairs, 'x', sizeof repairs);
    EXPECT_EQ(SVT_getRepairs(h.get(), repairs, 12), SVT_ERR_NO_ANSWER);
    EXPECT_STREQ(repairs, "");
    EXPECT_EQ(repairs[12], 'x');
    // Undamaged text needs no repair, and the next parse forgets the last one's.
    ASSERT_EQ(parseInto(h.get(), sample("aamva-2013-arizona"), true), SVT_OK);
    EXPECT_EQ(SVT_getRepairs(h.get(), repairs, sizeof repairs), SVT_ERR_NO_ANSWER);
}

TEST(Results, VersionText) {
    char text[16];
    ASSERT_EQ(SVT_getVersionText(text, sizeof text), SVT_OK);
    EXPECT_STREQ(text, "v.1.26.0");
    char expected[32];
    std::snprintf(expected, sizeof expected, "v.%d.%d.%d", SVT_getMajorVersion(), SVT_getMinorVersion(),
                  SVT_getBuildVersion());
    EXPECT_STREQ(text, expected);
    ASSERT_EQ(SVT_getVersionText(text, 9), SVT_OK);
    std::memset(text, 'x', sizeof text);
    EXPECT_EQ(SVT_getVersionText(text, 8), SVT_ERR_NO_ANSWER);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(text[8], 'x');
    EXPECT_EQ(SVT_getVersionText(text, 0), SVT_ERR_INVALID_ARGUMENT);
    EXPECT_EQ(SVT_getVersionText(nullptr, 16), SVT_ERR_INVALID_ARGUMENT);
}

// Every new function that answers about a parse, called with good arguments, and what
// it answers for the Arizona sample.
struct Question {
    const char* name;
    std::function<int(SVT_ParserHandle*)> ask;
    int onSample;
};

std::vector<Question> questions() {
    static char text[4096];
    static int a;
    static int b;
    return {
        {"getFormat", [](SVT_ParserHandle* h) { return SVT_getFormat(h, &a, &b); }, SVT_OK},
        {"getFormatName", [](SVT_ParserHandle* h) { return SVT_getFormatName(h, text, sizeof text); }, SVT_OK},
        {"getFieldCount", [](SVT_ParserHandle* h) { return SVT_getFieldCount(h, &a); }, SVT_OK},
        {"getElementCount", [](SVT_ParserHandle* h) { return SVT_getElementCount(h, &a); }, SVT_OK},
        {"getElementAt", [](SVT_ParserHandle* h) { return SVT_getElementAt(h, 0, text, 16, text + 16, 200); }, SVT_OK},
        {"getElement", [](SVT_ParserHandle* h) { return SVT_getElement(h, "DAQ", text, sizeof text); }, SVT_OK},
        {"validateCheckDigits", [](SVT_ParserHandle* h) { return SVT_validateCheckDigits(h, &a); }, SVT_OK},
        {"getCheckDigitFailures", [](SVT_ParserHandle* h) { return SVT_getCheckDigitFailures(h, text, sizeof text); },
         SVT_ERR_NO_ANSWER},
        {"getAge", [](SVT_ParserHandle* h) { return SVT_getAge(h, &a); }, SVT_OK},
        {"isExpired", [](SVT_ParserHandle* h) { return SVT_isExpired(h, &a); }, SVT_OK},
        {"getResultJson", [](SVT_ParserHandle* h) { return SVT_getResultJson(h, text, sizeof text, &a); }, SVT_OK},
        {"getRepairs", [](SVT_ParserHandle* h) { return SVT_getRepairs(h, text, sizeof text); }, SVT_ERR_NO_ANSWER},
    };
}

TEST(Results, EveryQuestionBeforeAndAfterAParse) {
    const std::string good = sample("aamva-2013-arizona");
    const std::string junk = "no format reads this";
    HandlePtr fresh(SVT_create());
    HandlePtr failed(SVT_create());
    EXPECT_EQ(parseInto(failed.get(), junk), SVT_ERR_NOT_RECOGNISED);
    HandlePtr failedAfterGood = parsed(good);
    EXPECT_EQ(parseInto(failedAfterGood.get(), junk, true), SVT_ERR_NOT_RECOGNISED);
    HandlePtr refusedAfterGood = parsed(good);
    EXPECT_EQ(SVT_parse(refusedAfterGood.get(), good.data(), 0), SVT_ERR_INVALID_ARGUMENT);
    HandlePtr nullAfterGood = parsed(good);
    EXPECT_EQ(SVT_parseLenient(nullAfterGood.get(), nullptr, 10), SVT_ERR_NULL_INPUT);
    HandlePtr good1 = parsed(good);
    HandlePtr good2 = parsed(good, true);
    for (const Question& q : questions()) {
        SCOPED_TRACE(q.name);
        EXPECT_EQ(q.ask(nullptr), SVT_ERR_INVALID_ARGUMENT);
        EXPECT_EQ(q.ask(fresh.get()), SVT_ERR_INVALID_ARGUMENT);
        // The JSON object holds the failed status; the other answers are none.
        const int afterFailure = std::strcmp(q.name, "getResultJson") == 0 ? SVT_OK : SVT_ERR_NO_ANSWER;
        for (SVT_ParserHandle* h : {failed.get(), failedAfterGood.get(), refusedAfterGood.get(), nullAfterGood.get()}) {
            EXPECT_EQ(q.ask(h), afterFailure);
        }
        EXPECT_EQ(q.ask(good1.get()), q.onSample);
        EXPECT_EQ(q.ask(good2.get()), q.onSample);
    }
}

TEST(Results, NullPointersAndCapacitiesAreRefusedAndNothingIsWritten) {
    HandlePtr h = parsed(sample("national-south-africa"));
    char text[16];
    int value = 77;
    int other = 77;
    const struct {
        const char* name;
        std::function<int()> call;
    } cases[] = {
        {"getFormat group", [&] { return SVT_getFormat(h.get(), nullptr, &value); }},
        {"getFormat id", [&] { return SVT_getFormat(h.get(), &value, nullptr); }},
        {"getFormatName buffer", [&] { return SVT_getFormatName(h.get(), nullptr, 16); }},
        {"getFormatName capacity", [&] { return SVT_getFormatName(h.get(), text, 0); }},
        {"getFieldCount", [&] { return SVT_getFieldCount(h.get(), nullptr); }},
        {"getElementCount", [&] { return SVT_getElementCount(h.get(), nullptr); }},
        {"getElementAt index", [&] { return SVT_getElementAt(h.get(), -1, text, 8, text + 8, 8); }},
        {"getElementAt id", [&] { return SVT_getElementAt(h.get(), 0, nullptr, 8, text + 8, 8); }},
        {"getElementAt id capacity", [&] { return SVT_getElementAt(h.get(), 0, text, 0, text + 8, 8); }},
        {"getElementAt value", [&] { return SVT_getElementAt(h.get(), 0, text, 8, nullptr, 8); }},
        {"getElementAt value capacity", [&] { return SVT_getElementAt(h.get(), 0, text, 8, text + 8, -3); }},
        {"getElement id", [&] { return SVT_getElement(h.get(), nullptr, text, 16); }},
        {"getElement value", [&] { return SVT_getElement(h.get(), "lastName", nullptr, 16); }},
        {"getElement capacity", [&] { return SVT_getElement(h.get(), "lastName", text, 0); }},
        {"validateCheckDigits", [&] { return SVT_validateCheckDigits(h.get(), nullptr); }},
        {"getCheckDigitFailures buffer", [&] { return SVT_getCheckDigitFailures(h.get(), nullptr, 16); }},
        {"getCheckDigitFailures capacity", [&] { return SVT_getCheckDigitFailures(h.get(), text, 0); }},
        {"getAge", [&] { return SVT_getAge(h.get(), nullptr); }},
        {"isExpired", [&] { return SVT_isExpired(h.get(), nullptr); }},
        {"getResultJson buffer", [&] { return SVT_getResultJson(h.get(), nullptr, 16, &value); }},
        {"getResultJson capacity", [&] { return SVT_getResultJson(h.get(), text, 0, &value); }},
        {"getResultJson length", [&] { return SVT_getResultJson(h.get(), text, 16, nullptr); }},
        {"getRepairs buffer", [&] { return SVT_getRepairs(h.get(), nullptr, 16); }},
        {"getRepairs capacity", [&] { return SVT_getRepairs(h.get(), text, -1); }},
        {"parseLenient handle", [&] { return SVT_parseLenient(nullptr, "ABC", 3); }},
        {"parseLenient length", [&] { return SVT_parseLenient(h.get(), "ABC", 0); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::memset(text, 'x', sizeof text);
        value = other = 77;
        EXPECT_EQ(c.call(), SVT_ERR_INVALID_ARGUMENT);
        EXPECT_EQ(std::string(text, sizeof text), std::string(sizeof text, 'x'));
        EXPECT_EQ(value, 77);
        EXPECT_EQ(other, 77);
    }
}

}  // namespace
}  // namespace orvane
