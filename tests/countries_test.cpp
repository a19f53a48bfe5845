#include "fields/countries.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "api/handle.h"
#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;
using testing::span;

std::string str(const char* text) { return text != nullptr ? std::string(text) : std::string("(null)"); }

// ---- Lookups ----

TEST(IinLookup, ReadsOnlyTheFirstSixCharacters) {
    struct Case {
        TextSpan iin;
        const char* code;
    };
    const Case cases[] = {
        {makeSpan("636015"), "TX"},
        {makeSpan("6360152"), "TX"},    // the seventh character is never read
        {makeSpan("636015XYZ"), "TX"},
        {makeSpan("63601"), nullptr},   // too short
        {makeSpan(" 63601"), nullptr},  // reads as 63601
        {makeSpan("+63601"), nullptr},
        {makeSpan("-63601"), nullptr},
        {makeSpan("63601X"), nullptr},  // reading stops at the X
        {makeSpan("636015", 5), nullptr},  // nothing beyond the span is read
        {makeSpan("990876"), "AB"},
        {makeSpan("604432"), "AB"},
        {makeSpan("604426"), "PE"},
        {makeSpan("636062"), "VI"},
        {makeSpan("ABCDEF"), nullptr},
        {makeSpan(nullptr, 6), nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::text(c.iin));
        EXPECT_EQ(str(jurisdictionCodeForIin(c.iin)), str(c.code));
        EXPECT_EQ(isKnownIin(c.iin), c.code != nullptr ? 1 : 0);
    }
}

TEST(IinLookup, FromJurisdictionCodeIsCaseSensitive) {
    struct Case {
        TextSpan code;
        const char* iin;
    };
    const Case cases[] = {
        {makeSpan("AB"), "604432"},  // the table row, not the second Alberta number
        {makeSpan("TX"), "636015"},
        {makeSpan("NU"), "604433"},
        {makeSpan("VA"), "636000"},
        {makeSpan("TXX", 2), "636015"},
        {makeSpan("tx"), nullptr},
        {makeSpan("Tx"), nullptr},
        {makeSpan("TXX"), nullptr},
        {makeSpan("T"), nullptr},
        {makeSpan("WK"), nullptr},  // a jurisdiction without an IIN
        {makeSpan(nullptr, 2), nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::text(c.code));
        EXPECT_EQ(str(iinForJurisdictionCode(c.code)), str(c.iin));
    }
}

TEST(JurisdictionLookup, CountryAndNameAreCaseSensitive) {
    struct Case {
        const char* code;
        const char* country;
        const char* name;
    };
    const Case cases[] = {
        {"TX", "United States", "Texas"},
        {"DS", "United States", "The U.S. Department of State"},
        {"GM", "Guam", "Guam"},
        {"AB", "Canada", "Alberta"},
        {"CU", "Mexico", "Coahuila de Zaragoza"},
        {"tx", nullptr, nullptr},
        {"TXS", nullptr, nullptr},
        {"ZZ", nullptr, nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.code);
        EXPECT_EQ(str(countryForJurisdictionCode(makeSpan(c.code))), str(c.country));
        EXPECT_EQ(str(jurisdictionNameForCode(makeSpan(c.code))), str(c.name));
    }
    EXPECT_EQ(countryForJurisdictionCode(makeSpan(nullptr, 2)), nullptr);
}

TEST(CountryLookup, NameForAlpha3IgnoresCase) {
    struct Case {
        const char* code;
        const char* name;
    };
    const Case cases[] = {
        {"USA", "UNITED STATES"},  // the first of its six rows
        {"usa", "UNITED STATES"},
        {"uSa", "UNITED STATES"},
        {"VAT", "VATICAN"},
        {"CCK", "COCOS"},
        {"UTO", "UTOPIA"},
        {"ZWE", "ZIMBABWE"},
        {"US", nullptr},  // a name of the table, but no code
        {"USAA", nullptr},
        {"XXX", nullptr},
        {"", nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.code);
        EXPECT_EQ(str(countryNameForAlpha3(makeSpan(c.code))), str(c.name));
    }
    EXPECT_EQ(countryNameForAlpha3(makeSpan(nullptr, 3)), nullptr);
}

TEST(CountryLookup, Alpha3ForNameIgnoresCaseButNotLength) {
    struct Case {
        const char* name;
        const char* code;
    };
    const Case cases[] = {
        {"UNITED STATES", "USA"},
        {"united states", "USA"},
        {"United States of America", "USA"},
        {"U.S.A.", "USA"},
        {"usa", "USA"},
        {"HOLY SEE", "VAT"},
        {"malvinas", "FLK"},
        {"Keeling Islands", "CCK"},
        {"Cote d'Ivoire", "CIV"},
        {"UTOPIA", "UTO"},
        {"UNITED STATES ", nullptr},
        {"UNITED", nullptr},
        {"GTM", nullptr},
        {"", nullptr},
        {nullptr, nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(str(c.name));
        EXPECT_EQ(str(alpha3ForCountryName(c.name)), str(c.code));
    }
}

TEST(CountryLookup, IsAlpha3IsCaseSensitive) {
    struct Case {
        const char* text;
        int32_t known;
    };
    const Case cases[] = {
        {"USA", 1}, {"GTM", 1}, {"UTO", 1}, {"usa", 0}, {"US", 0}, {"USAA", 0}, {"", 0}, {nullptr, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(str(c.text));
        EXPECT_EQ(isCountryAlpha3(c.text), c.known);
    }
}

// ---- Workers ----

using Worker = int32_t (*)(const ParsedRecord*, char*, int32_t);

struct Slot {
    FieldId id;
    const char* text;  // null: slot left empty
};

struct WorkerCase {
    const char* what;
    Slot slots[3];
    int32_t status;
    const char* answer;  // checked when status is 0
};

void fill(ParsedRecord* record, const Slot (&slots)[3]) {
    for (const Slot& s : slots) {
        if (s.text != nullptr) ASSERT_NE(setFieldLiteral(record, s.id, s.text), nullptr);
    }
}

template <size_t N>
void runCases(Worker worker, const WorkerCase (&cases)[N]) {
    for (const WorkerCase& c : cases) {
        SCOPED_TRACE(c.what);
        RecordWithBuffer record;
        fill(record.get(), c.slots);
        char buffer[64];
        std::memset(buffer, 'X', sizeof buffer);
        ASSERT_EQ(worker(record.get(), buffer, sizeof buffer), c.status);
        if (c.status == kOk) EXPECT_STREQ(buffer, c.answer);
    }
}

constexpr FieldId kIin = field::iin;
constexpr FieldId kJur = field::jurisdictionCode;
constexpr FieldId kResJur = field::residenceJurisdictionCode;
constexpr FieldId kCountry = field::country;
constexpr FieldId kCode = field::countryCode;
constexpr FieldId kCodeAlt = field::countryCodeAlt;

TEST(GetJurisdictionCode, FromTheSlotsElseFromTheIin) {
    const WorkerCase cases[] = {
        {"jurisdiction", {{kJur, "TX"}}, kOk, "TX"},
        {"residence only", {{kResJur, "QC"}}, kOk, "QC"},
        {"jurisdiction before residence", {{kResJur, "NJ"}, {kJur, "NY"}}, kOk, "NY"},
        {"slot before iin", {{kJur, "NY"}, {kIin, "636015"}}, kOk, "NY"},
        {"lower case kept", {{kJur, "tx"}}, kOk, "tx"},
        {"not checked against the table", {{kJur, "Texas"}}, kOk, "Texas"},
        {"ends trimmed", {{kJur, "\x01 TX\x7f~"}}, kOk, "TX"},
        {"inner control becomes blank", {{kJur, "N\x01Y"}}, kOk, "N Y"},
        {"unprintable slot does not fall to iin", {{kJur, " \x01 "}, {kIin, "636015"}}, kErrNoAnswer, nullptr},
        {"iin", {{kIin, "636015"}}, kOk, "TX"},
        {"iin of seven digits", {{kIin, "6360152"}}, kOk, "TX"},
        {"iin too short", {{kIin, "63601"}}, kErrNoAnswer, nullptr},
        {"iin after blank", {{kIin, " 63601"}}, kErrNoAnswer, nullptr},
        {"second Alberta iin", {{kIin, "990876"}}, kOk, "AB"},
        {"unknown iin", {{kIin, "123456"}}, kErrNoAnswer, nullptr},
        {"nothing", {}, kErrNoAnswer, nullptr},
    };
    runCases(getJurisdictionCode, cases);
}

TEST(GetCountry, FromNameElseCodeElseJurisdiction) {
    const WorkerCase cases[] = {
        {"name trimmed", {{kCountry, " United States\n"}}, kOk, "United States"},
        {"name as read", {{kCountry, "Deutschland"}}, kOk, "Deutschland"},
        {"name before code", {{kCountry, "Canada"}, {kCode, "USA"}}, kOk, "Canada"},
        {"code in capitals of the table", {{kCode, "usa"}}, kOk, "UNITED STATES"},
        {"alternative code", {{kCodeAlt, "can"}}, kOk, "CANADA"},
        {"code before alternative", {{kCode, "MEX"}, {kCodeAlt, "CAN"}}, kOk, "MEXICO"},
        {"specimen code", {{kCode, "UTO"}}, kOk, "UTOPIA"},
        {"unknown code stops", {{kCode, "XYZ"}, {kJur, "TX"}}, kErrNoAnswer, nullptr},
        {"code of two letters", {{kCode, "US"}}, kErrNoAnswer, nullptr},
        {"jurisdiction in mixed case", {{kJur, "TX"}}, kOk, "United States"},
        {"jurisdiction trimmed first", {{kJur, " ON\r"}}, kOk, "Canada"},
        {"territory", {{kJur, "GM"}}, kOk, "Guam"},
        {"iin of the state department", {{kIin, "636027"}}, kOk, "United States"},
        {"lower-case jurisdiction", {{kJur, "tx"}}, kErrNoAnswer, nullptr},
        {"nothing", {}, kErrNoAnswer, nullptr},
    };
    runCases(getCountry, cases);
}

TEST(GetCountryCode, AsReadElseThroughTheCountry) {
    const WorkerCase cases[] = {
        {"code as read", {{kCode, " usa "}}, kOk, " usa "},
        {"lower-case name", {{kCountry, "united states"}}, kOk, "USA"},
        {"mixed-case name", {{kCountry, "United States"}}, kOk, "USA"},
        {"name is a code", {{kCountry, "GTM"}}, kOk, "GTM"},
        {"lower-case code as name", {{kCountry, "gtm"}}, kErrNoAnswer, nullptr},
        {"unknown name", {{kCountry, "Atlantis"}}, kErrNoAnswer, nullptr},
        {"alternative code", {{kCodeAlt, "can"}}, kOk, "CAN"},
        {"specimen", {{kCodeAlt, "UTO"}}, kOk, "UTO"},
        {"state", {{kJur, "TX"}}, kOk, "USA"},
        {"territory", {{kJur, "PR"}}, kOk, "PRI"},
        {"territory named otherwise", {{kJur, "FM"}}, kErrNoAnswer, nullptr},
        {"mexican state", {{kJur, "AG"}}, kOk, "MEX"},
        {"second Alberta iin", {{kIin, "990876"}}, kOk, "CAN"},
        {"nothing", {}, kErrNoAnswer, nullptr},
    };
    runCases(getCountryCode, cases);
}

TEST(GetIIN, KnownAsReadElseFromTheJurisdiction) {
    const WorkerCase cases[] = {
        {"known", {{kIin, "636015"}, {kJur, "NY"}}, kOk, "636015"},
        {"known, copied whole", {{kIin, "6360152"}}, kOk, "6360152"},
        {"second Alberta", {{kIin, "990876"}}, kOk, "990876"},
        {"unknown gives way", {{kIin, "123456"}, {kJur, "NY"}}, kOk, "636001"},
        {"unknown, residence", {{kIin, "123456"}, {kResJur, "ON"}}, kOk, "636012"},
        {"unknown kept", {{kIin, "123456"}}, kOk, "123456"},
        {"unknown kept, jurisdiction without iin", {{kIin, "123456"}, {kJur, "WK"}}, kOk, "123456"},
        {"unknown kept, lower-case jurisdiction", {{kIin, "123456"}, {kJur, "ny"}}, kOk, "123456"},
        {"jurisdiction only", {{kJur, "AB"}}, kOk, "604432"},
        {"residence only", {{kResJur, "ON"}}, kOk, "636012"},
        {"lower-case jurisdiction", {{kJur, "tx"}}, kErrNoAnswer, nullptr},
        {"jurisdiction read untrimmed", {{kJur, " TX"}}, kErrNoAnswer, nullptr},
        {"nothing", {}, kErrNoAnswer, nullptr},
    };
    runCases(getIIN, cases);
}

TEST(GetIssuedBy, TheCodeOfTheIin) {
    const WorkerCase cases[] = {
        {"second Alberta", {{kIin, "990876"}}, kOk, "AB"},
        {"iin, not the slot", {{kIin, "636015"}, {kJur, "NY"}}, kOk, "TX"},
        {"unknown iin gives way", {{kIin, "123456"}, {kJur, "NY"}}, kOk, "NY"},
        {"unknown iin alone", {{kIin, "123456"}}, kErrNoAnswer, nullptr},
        {"jurisdiction only", {{kJur, "ON"}}, kOk, "ON"},
        {"jurisdiction without iin", {{kJur, "WK"}}, kErrNoAnswer, nullptr},
        {"nothing", {}, kErrNoAnswer, nullptr},
    };
    runCases(getIssuedBy, cases);
}

struct NamedWorker {
    const char* name;
    Worker worker;
};
constexpr NamedWorker kWorkers[] = {
    {"getJurisdictionCode", getJurisdictionCode}, {"getCountry", getCountry},
    {"getCountryCode", getCountryCode},           {"getIIN", getIIN},
    {"getIssuedBy", getIssuedBy},
};

TEST(CountryWorkers, RefuseBadArguments) {
    RecordWithBuffer record;
    setFieldLiteral(record.get(), kIin, "636015");
    ParsedRecord noBuffer{};
    char buffer[16];
    for (const NamedWorker& w : kWorkers) {
        SCOPED_TRACE(w.name);
        EXPECT_EQ(w.worker(nullptr, buffer, 16), kErrInvalidArgument);
        EXPECT_EQ(w.worker(&noBuffer, buffer, 16), kErrInvalidArgument);
        EXPECT_EQ(w.worker(record.get(), nullptr, 16), kErrInvalidArgument);
        EXPECT_EQ(w.worker(record.get(), buffer, 0), kErrInvalidArgument);
        EXPECT_EQ(w.worker(record.get(), buffer, -1), kErrInvalidArgument);
    }
}

TEST(CountryWorkers, CapacityOneIsNoAnswerAndShortBuffersCut) {
    RecordWithBuffer record;
    setFieldLiteral(record.get(), kIin, "636015");
    setFieldLiteral(record.get(), kCode, "USA");
    struct Cut {
        NamedWorker worker;
        const char* cutToTwo;
    };
    const Cut cuts[] = {
        {kWorkers[0], "T"}, {kWorkers[1], "U"}, {kWorkers[2], "U"}, {kWorkers[3], "6"}, {kWorkers[4], "T"},
    };
    for (const Cut& c : cuts) {
        SCOPED_TRACE(c.worker.name);
        char buffer[4] = {'X', 'X', 'X', 'X'};
        EXPECT_EQ(c.worker.worker(record.get(), buffer, 1), kErrNoAnswer);
        EXPECT_EQ(c.worker.worker(record.get(), buffer, 2), kOk);
        EXPECT_STREQ(buffer, c.cutToTwo);
    }
}

// ---- Through the exported getters ----

using testing::HandlePtr;
using testing::parsedHandle;

using Getter = int (*)(SVT_ParserHandle*, char*, int);
struct NamedGetter {
    const char* name;
    Getter getter;
};
constexpr NamedGetter kGetters[] = {
    {"jurisdictionCode", SVT_getJurisdictionCode}, {"country", SVT_getCountry},
    {"countryCode", SVT_getCountryCode},           {"iin", SVT_getIIN},
    {"issuedBy", SVT_getIssuedBy},
};

TEST(CountryGetters, RefuseBeforeTheFirstParse) {
    HandlePtr h(SVT_create());
    char buffer[16];
    for (const NamedGetter& g : kGetters) {
        SCOPED_TRACE(g.name);
        EXPECT_EQ(g.getter(nullptr, buffer, 16), kErrInvalidArgument);
        EXPECT_EQ(g.getter(h.get(), buffer, 16), kErrInvalidArgument);
    }
}

TEST(CountryGetters, AnswerFromTheRecord) {
    struct Case {
        const char* what;
        Slot slots[3];
        const char* answers[std::size(kGetters)];
    };
    const Case cases[] = {
        {"iin alone", {{kIin, "636015"}}, {"TX", "United States", "USA", "636015", "TX"}},
        {"code and jurisdiction", {{kCode, "can"}, {kJur, "ON"}}, {"ON", "CANADA", "can", "636012", "ON"}},
    };
    for (const Case& c : cases) {
        HandlePtr h = parsedHandle();
        fill(&h->record, c.slots);
        for (size_t i = 0; i < std::size(kGetters); ++i) {
            SCOPED_TRACE(std::string(c.what) + " / " + kGetters[i].name);
            char buffer[32];
            EXPECT_EQ(kGetters[i].getter(h.get(), buffer, sizeof buffer), kOk);
            EXPECT_STREQ(buffer, c.answers[i]);
        }
    }
}

}  // namespace
}  // namespace orvane
