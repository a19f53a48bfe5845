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
        {"12345678", "\x88", true}, {"1234567", "\x88", false},
        {"123456789", "\x88", false},  // the whole text must be consumed
        {"1234-56789", "\x84\xA1\x85", true}, {"123456789", "\x84\xA1\x85", true},
        {"1234--56789", "\x84\xA1\x85", false},
        {"A123", "\x91\x83", true}, {"1123", "\x91\x83", false},
        {"AB12CD3X9ZQ", "\xBB", true}, {"AB12-D3X9ZQ", "\xBB", false},
        {"S12345678", "S\x88", true}, {"T12345678", "S\x88", false},
        {"12*", "\x82\xA2", true}, {"12", "\x82\xA2", true},
        {"A1", "\xA3\x81", true}, {"1", "\xA3\x81", true}, {"12", "\xA4\x81", true},
        {"12", "\x80\xA0\xA7\xC5\x82", true},  // n = 0, unknown optional and high bytes skipped
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
        {"SMITH", "S530"}, {"smith", "S530"}, {"ASHCRAFT", "A261"}, {"PFISTER", "P236"},
        {"TYMCZAK", "T522"},  // Y is no vowel
        {"LEE", "L000"}, {"O'BRIEN", nullptr}, {"VAN DYKE", nullptr}, {"1SMITH", nullptr},
        {"WASHINGTON-X", "W252"},  // stops after three digits before reaching the hyphen
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        char code[4];
        const bool ok = phoneticCode(makeSpan(c.name), code);
        ASSERT_EQ(ok, c.code != nullptr);
        if (ok) {
            EXPECT_EQ(std::string(code, 4), c.code);
        }
    }
}

TEST(DocumentIdCheck, PatternsAndDedicatedChecks) {
    struct Case {
        const char* jurisdiction;
        const char* type;
        const char* number;
        int32_t expected;
        const char* birthdate = "19560704";
        const char* lastName = "SMITH";
        const char* gender = "M";
    };
    const Case cases[] = {
        {"TX", "DL", "12345678", kCheckValid},
        {"TX", "DL", "123456789", kCheckInvalid},
        {"TX", "CAC", "12345678", kCheckNotCheckable},
        {"ZZ", "DL", "1234567", kCheckNotCheckable},    // no rules for the jurisdiction
        {"TEX", "DL", "12345678", kCheckNotCheckable},  // not a two-letter code
        {"MI", "DL", "A 123 456 789 012", kCheckValid},
        {"MI", "DL", "A 123 456 789 0", kCheckInvalid},  // identity cards only
        {"MI", "ID", "A 123 456 789 0", kCheckValid},
        {"AB", "DL", "123456-789", kCheckValid},
        {"AB", "DL", "1234-56789", kCheckInvalid},  // that form is for identity cards
        {"AB", "ID", "1234-56789", kCheckValid},
        {"WA", "DL", "DOE**JO12*AB", kCheckValid},
        {"OR", "DL", "1234", kCheckValid},  // one digit and up to six optional ones
        {"OR", "DL", "12345", kCheckInvalid},
        {"ON", "DL", "A1234-56789-01234", kCheckValid},
        {"LA", "DL", "001234567", kCheckValid},
        // Connecticut: the birth month, plus 12 in even years, opens the number.
        {"CT", "DL", "151234567", kCheckValid, "19900315"},
        {"CT", "DL", "031234567", kCheckValid, "19910315"},
        {"CT", "DL", "151234567", kCheckInvalid, "19910315"},
        {"CT", "DL", "15123456X", kCheckInvalid, "19900315"},
        {"CT", "DL", "1512345678", kCheckInvalid, "19900315"},
        {"CT", "DL", "151234567", kCheckInvalid, ""},  // birth date unknown
        // Florida and Wisconsin: the phonetic code of the surname, then the birth year.
        {"FL", "DL", "S530-460-56-800-0", kCheckValid},
        {"FL", "DL", "S53046056800", kCheckValid},
        {"FL", "DL", "S530-460-56800", kCheckValid},
        {"FL", "DL", "S530-460-57-800-0", kCheckInvalid},  // not the birth year
        {"FL", "DL", "S530-460-56-800-01", kCheckInvalid},
        {"FL", "DL", "S531-460-56-800-0", kCheckInvalid},
        {"FL", "DL", "S530-460-56-800-0", kCheckInvalid, "19560704", "SMITH-JONES"},
        {"FL", "DL", "S530", kCheckInvalid},
        {"WI", "ID", "S5304605612345", kCheckValid},
        {"WI", "ID", "S5304605662345", kCheckValid, "19560704", "SMITH", "F"},
        {"WI", "ID", "S5304605612345", kCheckInvalid, "19560704", "SMITH", "F"},  // male digit for a woman
        {"WI", "ID", "S530460561234", kCheckInvalid},  // 13 characters
        {"WI", "ID", "S530460571234X", kCheckInvalid},
        {"WI", "ID", "S5304605612345", kCheckInvalid, "19560704", "SMITH", ""},  // gender unknown
        {"WI", "ID", "D4204605612345", kCheckInvalid, "19560704", "DE LA CRUZ"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.jurisdiction) + " " + c.number);
        Licence l{{field::jurisdictionCode, c.jurisdiction}, {field::documentType, c.type},
                  {field::licenseNumber, c.number}, {field::birthdate, c.birthdate},
                  {field::lastName, c.lastName}, {field::gender, c.gender}};
        EXPECT_EQ(l.documentId(), c.expected);
    }
    Licence noNumber{{field::jurisdictionCode, "TX"}, {field::documentType, "DL"}};
    EXPECT_EQ(noNumber.documentId(), kCheckNotCheckable);
    Licence noJurisdiction{{field::documentType, "DL"}, {field::licenseNumber, "12345678"}};
    EXPECT_EQ(noJurisdiction.documentId(), kCheckNotCheckable);
    char scratch[8];
    EXPECT_EQ(validateDocumentId(noNumber.r.get(), nullptr, 8), kErrInvalidArgument);
    EXPECT_EQ(validateDocumentId(noNumber.r.get(), scratch, 0), kErrInvalidArgument);
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
        {"AB", 20, 15, 5, kCheckValid},       {"AB", 20, 15, 4, kCheckInvalid},
        {"PR", 20, 15, 5, kCheckNotCheckable}, {"", 20, 15, 5, kCheckNotCheckable},
        {"AB", 2, 15, 5, kErrInvalidArgument}, {"AB", 20, 91, 5, kErrInvalidArgument},
        {"AB", 20, 15, 9, kErrInvalidArgument}, {"AB", 20, 15, -1, kErrInvalidArgument},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.jurisdiction);
        Licence l{{field::jurisdictionCode, c.jurisdiction}};
        EXPECT_EQ(validateBarcode(l.r.get(), c.columns, c.rows, c.level), c.expected);
    }
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
        {"", "636015", kCheckValid},  // the jurisdiction then comes from the IIN itself
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.iin);
        Licence l{{field::jurisdictionCode, c.jurisdiction}, {field::iin, c.iin}};
        EXPECT_EQ(validateJurisdictionCode(l.r.get()), c.expected);
    }
}

TEST(ValidationTables, CountsAndSpotRows) {
    EXPECT_EQ(documentIdRules().size(), 137u);
    EXPECT_EQ(barcodeSizes().size(), 72u);
    const auto ab = documentIdRulesFor(makeSpan("AB"));
    ASSERT_EQ(ab.rules.size(), 3u);
    EXPECT_EQ(ab.rules[0].documents, kIdCard);
    EXPECT_EQ(documentIdRulesFor(makeSpan("FL")).rules[0].check, checkFlorida);
    EXPECT_FALSE(documentIdRulesFor(makeSpan("ab")).known);  // case matters
    const auto ks = barcodeSizesFor(makeSpan("KS"));
    ASSERT_EQ(ks.sizes.size(), 5u);
    EXPECT_EQ(ks.sizes[4].columns, 24);
    EXPECT_FALSE(barcodeSizesFor(makeSpan("PR")).known);
}

}  // namespace
}  // namespace orvane
