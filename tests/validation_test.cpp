#include "engine/validation.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;

// A record filled with the given slots.
struct Licence {
    RecordWithBuffer r{1024};
    Licence(std::initializer_list<std::pair<FieldId, const char*>> slots) {
        for (const auto& [id, value] : slots) setFieldLiteral(r.get(), id, value);
    }
    int32_t documentId() {
        char scratch[256];
        return validateDocumentId(r.get(), scratch, sizeof scratch);
    }
};

TEST(MatchPattern, Operations) {
    struct Case {
        const char* text;
        const char* pattern;
        bool matches;
    };
    const Case cases[] = {
        {"12345678", "\x88", true},
        {"1234567", "\x88", false},
        {"123456789", "\x88", false},     // the whole text must be consumed
        {"1234-56789", "\x84\xA1\x85", true},
        {"123456789", "\x84\xA1\x85", true},
        {"1234--56789", "\x84\xA1\x85", false},
        {"A123", "\x91\x83", true},
        {"1123", "\x91\x83", false},
        {"AB12CD3X9ZQ", "\xBB", true},    // letters or digits
        {"AB12-D3X9ZQ", "\xBB", false},
        {"S12345678", "S\x88", true},
        {"T12345678", "S\x88", false},
        {"0012345678", "00\x88", true},
        {"12*", "\x82\xA2", true},
        {"12", "\x82\xA2", true},
        {"A1", "\xA3\x81", true},         // optional letter
        {"1", "\xA3\x81", true},
        {"12", "\xA4\x81", true},         // optional digit
        {"12", "\x80\xA0\xA7\xC5\x82", true},  // n = 0, unknown optional and high bytes skipped
        {"123 456 789", "\x83 \x83 \x83", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(matchPattern(makeSpan(c.text), c.pattern), c.matches);
    }
}

TEST(PhoneticCode, ClassesAndRefusals) {
    struct Case {
        const char* name;
        const char* code;  // null: no code
    };
    const Case cases[] = {
        {"SMITH", "S530"},   {"smith", "S530"},     {"ROBERT", "R163"}, {"ASHCRAFT", "A261"},
        {"PFISTER", "P236"}, {"TYMCZAK", "T522"},   {"LEE", "L000"},    {"BOYD", "B300"},
        {"GUTIERREZ", "G362"}, {"O'BRIEN", nullptr}, {"SMITH-JONES", nullptr}, {"VAN DYKE", nullptr},
        {"WASHINGTON-X", "W252"},  // stops after three digits before reaching the hyphen
        {"1SMITH", nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        char code[4];
        const bool ok = phoneticCode(makeSpan(c.name), code);
        ASSERT_EQ(ok, c.code != nullptr);
        if (ok) EXPECT_EQ(std::string(code, 4), c.code);
    }
}

TEST(DocumentIdCheck, PatternsByJurisdictionAndDocument) {
    struct Case {
        const char* jurisdiction;
        const char* type;
        const char* number;
        int32_t expected;
    };
    const Case cases[] = {
        {"TX", "DL", "12345678", kCheckValid},
        {"TX", "DL", "123456789", kCheckInvalid},
        {"TX", "CAC", "12345678", kCheckNotCheckable},
        {"PR", "DL", "1234567", kCheckValid},
        {"ZZ", "DL", "1234567", kCheckNotCheckable},      // no rules for the jurisdiction
        {"TEX", "DL", "12345678", kCheckNotCheckable},    // not a two-letter code
        {"MI", "DL", "A 123 456 789 012", kCheckValid},
        {"MI", "DL", "A123456789012", kCheckValid},
        {"MI", "DL", "A 123 456 789 0", kCheckInvalid},  // identity cards only
        {"MI", "ID", "A 123 456 789 0", kCheckValid},
        {"AB", "DL", "123456-789", kCheckValid},
        {"AB", "DL", "1234-56789", kCheckInvalid},        // that form is for identity cards
        {"AB", "ID", "1234-56789", kCheckValid},
        {"WA", "DL", "DOEJOHN123A4", kCheckValid},
        {"WA", "DL", "DOE**JO12*AB", kCheckValid},
        {"NH", "ID", "AB12CD34EF5", kCheckValid},
        {"OR", "ID", "1234", kCheckValid},                // one digit and up to six optional ones
        {"OR", "DL", "1234", kCheckValid},
        {"OR", "DL", "12345", kCheckInvalid},
        {"ON", "DL", "A1234-56789-01234", kCheckValid},
        {"MA", "DL", "S12345678", kCheckValid},
        {"LA", "DL", "001234567", kCheckValid},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.jurisdiction) + " " + c.number);
        Licence l{{field::jurisdictionCode, c.jurisdiction}, {field::documentType, c.type}, {field::licenseNumber, c.number}};
        EXPECT_EQ(l.documentId(), c.expected);
    }
}

TEST(DocumentIdCheck, MissingFieldsAreNotCheckable) {
    Licence noNumber{{field::jurisdictionCode, "TX"}, {field::documentType, "DL"}};
    EXPECT_EQ(noNumber.documentId(), kCheckNotCheckable);
    Licence noJurisdiction{{field::documentType, "DL"}, {field::licenseNumber, "12345678"}};
    EXPECT_EQ(noJurisdiction.documentId(), kCheckNotCheckable);
    Licence l{{field::jurisdictionCode, "TX"}};
    char scratch[8];
    EXPECT_EQ(validateDocumentId(nullptr, scratch, 8), kErrInvalidArgument);
    EXPECT_EQ(validateDocumentId(l.r.get(), nullptr, 8), kErrInvalidArgument);
    EXPECT_EQ(validateDocumentId(l.r.get(), scratch, 0), kErrInvalidArgument);
}

TEST(DocumentIdCheck, Connecticut) {
    struct Case {
        const char* birthdate;
        const char* number;
        int32_t expected;
    };
    const Case cases[] = {
        {"19900315", "151234567", kCheckValid},    // even year: month plus 12
        {"19910315", "031234567", kCheckValid},
        {"19910315", "151234567", kCheckInvalid},
        {"19900315", "15123456X", kCheckInvalid},
        {"19900315", "1512345678", kCheckInvalid},
        {"", "151234567", kCheckInvalid},          // birth date unknown
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.number);
        Licence l{{field::jurisdictionCode, "CT"}, {field::documentType, "DL"}, {field::licenseNumber, c.number},
                  {field::birthdate, c.birthdate}};
        EXPECT_EQ(l.documentId(), c.expected);
    }
}

TEST(DocumentIdCheck, Florida) {
    struct Case {
        const char* lastName;
        const char* number;
        int32_t expected;
    };
    const Case cases[] = {
        {"SMITH", "S530-460-56-800-0", kCheckValid},
        {"SMITH", "S53046056800", kCheckValid},
        {"SMITH", "S530460568000", kCheckValid},
        {"SMITH", "S530-460-56800", kCheckValid},
        {"SMITH", "S530-460-57-800-0", kCheckInvalid},   // not the birth year
        {"SMITH", "S530-460-56-800-01", kCheckInvalid},
        {"SMITH", "S531-460-56-800-0", kCheckInvalid},
        {"SMITH-JONES", "S530-460-56-800-0", kCheckInvalid},
        {"SMITH", "S530", kCheckInvalid},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.number);
        Licence l{{field::jurisdictionCode, "FL"}, {field::documentType, "DL"}, {field::licenseNumber, c.number},
                  {field::birthdate, "19560704"}, {field::lastName, c.lastName}};
        EXPECT_EQ(l.documentId(), c.expected);
    }
}

TEST(DocumentIdCheck, Wisconsin) {
    struct Case {
        const char* lastName;
        const char* gender;
        const char* number;
        int32_t expected;
    };
    const Case cases[] = {
        {"SMITH", "M", "S5304605612345", kCheckValid},
        {"SMITH", "F", "S5304605662345", kCheckValid},
        {"SMITH", "F", "S5304605612345", kCheckInvalid},  // male digit for a woman
        {"SMITH", "M", "S530460561234", kCheckInvalid},   // 13 characters
        {"SMITH", "M", "S530460571234X", kCheckInvalid},
        {"SMITH", "", "S5304605612345", kCheckInvalid},   // gender unknown
        {"DE LA CRUZ", "M", "D4204605612345", kCheckInvalid},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.number);
        Licence l{{field::jurisdictionCode, "WI"}, {field::documentType, "ID"}, {field::licenseNumber, c.number},
                  {field::birthdate, "19560704"}, {field::lastName, c.lastName}, {field::gender, c.gender}};
        EXPECT_EQ(l.documentId(), c.expected);
    }
}

TEST(BarcodeCheck, SizesBoundsAndUnknownJurisdictions) {
    struct Case {
        const char* jurisdiction;
        int32_t columns;
        int32_t rows;
        int32_t level;
        int32_t expected;
    };
    const Case cases[] = {
        {"TX", 39, 15, 5, kErrInvalidArgument},  // above 33 columns: never accepted
        {"OH", 33, 15, 8, kCheckInvalid},        // its only entry lists 45 columns
        {"AB", 20, 15, 5, kCheckValid},
        {"AB", 20, 15, 4, kCheckInvalid},
        {"KS", 24, 15, 5, kCheckValid},
        {"PR", 20, 15, 5, kCheckNotCheckable},
        {"AB", 2, 15, 5, kErrInvalidArgument},
        {"AB", 20, 91, 5, kErrInvalidArgument},
        {"AB", 20, 15, 9, kErrInvalidArgument},
        {"AB", 20, 15, -1, kErrInvalidArgument},
        {"", 20, 15, 5, kCheckNotCheckable},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.jurisdiction);
        Licence l{{field::jurisdictionCode, c.jurisdiction}};
        EXPECT_EQ(validateBarcode(l.r.get(), c.columns, c.rows, c.level), c.expected);
    }
    EXPECT_EQ(validateBarcode(nullptr, 20, 15, 5), kErrInvalidArgument);
}

TEST(JurisdictionCheck, IinAgainstJurisdiction) {
    struct Case {
        const char* jurisdiction;
        const char* iin;
        int32_t expected;
    };
    const Case cases[] = {
        {"AZ", "636026", kCheckValid}, {"TX", "636026", kCheckInvalid}, {"AZ", "123456", kCheckInvalid},
        {"AZ", "", kCheckNotCheckable}, {"AB", "990876", kCheckValid},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.iin);
        Licence l{{field::jurisdictionCode, c.jurisdiction}, {field::iin, c.iin}};
        EXPECT_EQ(validateJurisdictionCode(l.r.get()), c.expected);
    }
    Licence iinOnly{{field::iin, "636015"}};  // the jurisdiction then comes from the IIN itself
    EXPECT_EQ(validateJurisdictionCode(iinOnly.r.get()), kCheckValid);
    EXPECT_EQ(validateJurisdictionCode(nullptr), kErrInvalidArgument);
}

TEST(ValidationTables, RowsAndEntries) {
    EXPECT_EQ(documentIdRules().size(), 137u);
    EXPECT_EQ(barcodeSizes().size(), 72u);
    const auto ab = documentIdRulesFor(makeSpan("AB"));
    ASSERT_TRUE(ab.known);
    EXPECT_EQ(ab.rules.size(), 3u);
    EXPECT_EQ(ab.rules[0].documents, kIdCard);
    const auto yt = documentIdRulesFor(makeSpan("YT"));
    ASSERT_EQ(yt.rules.size(), 2u);
    EXPECT_EQ(yt.rules[1].documents, kLicence);
    EXPECT_EQ(documentIdRulesFor(makeSpan("FL")).rules[0].check, checkFlorida);
    EXPECT_FALSE(documentIdRulesFor(makeSpan("ab")).known);  // case matters
    const auto ks = barcodeSizesFor(makeSpan("KS"));
    ASSERT_EQ(ks.sizes.size(), 5u);
    EXPECT_EQ(ks.sizes[4].columns, 24);
    EXPECT_EQ(barcodeSizesFor(makeSpan("OH")).sizes[0].columns, 45);
    EXPECT_FALSE(barcodeSizesFor(makeSpan("PR")).known);
}

}  // namespace
}  // namespace orvane
