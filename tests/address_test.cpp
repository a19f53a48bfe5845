#include "fields/address.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "engine/status.h"
#include "fields/names.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;

using Worker = int32_t (*)(const ParsedRecord*, char*, int32_t);

struct Record {
    RecordWithBuffer r{1024};
    Record(std::initializer_list<std::pair<FieldId, const char*>> slots) {
        for (const auto& [id, value] : slots) setFieldLiteral(r.get(), id, value);
    }
    // The answer, or "<status>" when there is none.
    std::string ask(Worker worker, int32_t capacity = 128) {
        char buffer[256];
        const int32_t status = worker(r.get(), buffer, capacity);
        return status == kOk ? std::string(buffer) : "<" + std::to_string(status) + ">";
    }
};

TEST(AddressLines, TrimTidyAndPriority) {
    Record r{{field::jurisdictionCode, "TX"},
             {field::address1, " -\t12  MAIN\x01ST, "},
             {field::residenceAddress1, "99 OTHER RD"},
             {field::address2Alt, "APT 4"},
             {field::residenceCity, "  SAN  ANTONIO "}};
    EXPECT_EQ(r.ask(getAddress1), "12 MAIN ST");
    EXPECT_EQ(r.ask(getAddress2), "APT 4");
    EXPECT_EQ(r.ask(getCity), "SAN ANTONIO");
    Record empty{{field::jurisdictionCode, "TX"}};
    EXPECT_EQ(empty.ask(getAddress1), "<-26>");
    EXPECT_EQ(empty.ask(getCity), "<-26>");
    EXPECT_EQ(empty.ask(getAddress1, 0), "<-21>");
}

TEST(AddressLines, CanadianOneLineAddresses) {
    struct Case {
        const char* jurisdiction;
        const char* line1;
        const char* line2;  // stored second line, or null
        const char* address1;
        const char* address2;
    };
    const Case cases[] = {
        {"AB", "123 MAIN ST$CALGARY AB T2P 1J9", nullptr, "123 MAIN ST", "CALGARY AB T2P 1J9"},
        {"ON", "12 KING ST W,TORONTO,ON,M5H1A1", nullptr, "12 KING ST W", "TORONTO,ON,M5H1A1"},
        {"QC", "5 RUE ST-PAUL$$MONTREAL$QC", nullptr, "5 RUE ST-PAUL", "MONTREAL QC"},
        {"AB", "123 MAIN ST$CALGARY", "UNIT 5", "123 MAIN ST", "UNIT 5"},  // a stored second line wins
        {"AB", "123 MAIN ST", nullptr, "123 MAIN ST", "<-26>"},            // nothing to split
        {"TX", "123 MAIN ST$DALLAS", nullptr, "123 MAIN ST$DALLAS", "<-26>"},  // US rows keep the line
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.line1);
        Record r{{field::jurisdictionCode, c.jurisdiction}, {field::address1, c.line1}};
        if (c.line2 != nullptr) setFieldLiteral(r.r.get(), field::address2, c.line2);
        EXPECT_EQ(r.ask(getAddress1), c.address1);
        EXPECT_EQ(r.ask(getAddress2), c.address2);
    }
}

TEST(LicenseNumber, GenericCopyAndRoom) {
    Record r{{field::jurisdictionCode, "TX"}, {field::licenseNumberAlt, " 12345678"}};
    EXPECT_EQ(r.ask(getLicenseNumber), " 12345678");  // as it stands
    EXPECT_EQ(r.ask(getLicenseNumber, 5), " 12");      // room is capacity - 1
    EXPECT_EQ(r.ask(getLicenseNumber, 2), "<-26>");
    setFieldLiteral(r.r.get(), field::licenseNumber, "87654321");
    EXPECT_EQ(r.ask(getLicenseNumber), "87654321");
    Record none{{field::jurisdictionCode, "TX"}};
    EXPECT_EQ(none.ask(getLicenseNumber), "<-26>");
}

TEST(LicenseNumber, JurisdictionsThatPrintGroups) {
    struct Case {
        const char* jurisdiction;
        const char* stored;
        const char* answer;
    };
    const Case cases[] = {
        {"WI", "S530-4605-6800-00", "S5304605680000"},
        {"FL", "S530-460-56-800-0", "S530460568000"},
        {"NY", "123 456 789", "123456789"},
        {"MI", "A 123 456 789 012", "A123456789012"},
        {"NJ", "A1234 56789 01234", "A12345678901234"},
        {"MD", "A-123-456-789-012", "A123456789012"},
        {"IL", "A123-4567-8901", "A12345678901"},
        {"CA", " A1234567 ", "A1234567"},
        {"ON", "A1234 - 56789 - 01234", "A1234-56789-01234"},  // the hyphens belong to the number
        {"NF", "---", "---"},                                    // nothing but separators: as stored
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.jurisdiction);
        Record r{{field::jurisdictionCode, c.jurisdiction}, {field::licenseNumber, c.stored}};
        EXPECT_EQ(r.ask(getLicenseNumber), c.answer);
    }
    Record tight{{field::jurisdictionCode, "NY"}, {field::licenseNumber, "123 456 789"}};
    EXPECT_EQ(tight.ask(getLicenseNumber, 5), "1234");  // the hook's room is capacity - 1
    EXPECT_EQ(tight.ask(getLicenseNumber, 1), "<-26>");
    // Every row that carries a licence-number hook answers through it.
    int hooked = 0;
    for (const NameRule& rule : nameRuleTable()) hooked += rule.licenseNumberHook != nullptr ? 1 : 0;
    EXPECT_EQ(hooked, 22);
}

TEST(PostalCode, StoredCodes) {
    struct Case {
        const char* jurisdiction;
        const char* stored;
        int32_t capacity;
        const char* answer;
    };
    const Case cases[] = {
        {"TX", "12345-6789", 64, "12345-6789"},
        {"TX", "90210", 64, "90210-0000"},
        {"TX", "1234", 64, "12340-0000"},  // filled on the right, deliberately
        {"TX", "123456789012", 64, "12345-6789"},
        {"TX", "90210", 10, "<-18>"},
        {"TX", "  ", 64, "<-26>"},
        {"GM", "96910", 64, "96910-0000"},
        {"AB", "T2P  1J9", 64, "T2P 1J9"},
        {"AB", "T2P,,1J9", 64, "T2P,1J9"},
        {"", "ABC  12", 64, "ABC 12"},  // no jurisdiction: the fallback row has no hook
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.jurisdiction) + " " + c.stored);
        Record r{{field::jurisdictionCode, c.jurisdiction}, {field::residencePostalCode, c.stored}};
        EXPECT_EQ(r.ask(getPostalCode, c.capacity), c.answer);
    }
}

TEST(PostalCode, DerivedFromTheAddressLine) {
    struct Case {
        const char* jurisdiction;
        const char* city;
        const char* address;
        const char* answer;
    };
    const Case cases[] = {
        {"IL", "SPRINGFIELD", "12 ELM ST SPRINGFIELD IL 62701", "62701-0000"},
        {"NY", "NEW YORK", "1 PARK AVE NEW YORK NY  10016 ", "10016-0000"},
        {"QC", "MONTREAL", "12 RUE PRINCIPALE MONTREAL QC H2X  1Y4", "H2X 1Y4"},
        {"IL", "SPRINGFIELD", "12 ELM ST SPRINGFIELD IL 62701-1234", "<-26>"},  // a dash is no word character
        {"IL", "CHICAGO", "12 ELM ST SPRINGFIELD IL 62701", "<-26>"},
        {"IL", "SPRINGFIELD", "12 ELM ST SPRINGFIELD 62701", "<-26>"},
        {"IL", "SPRINGFIELD", "12 ELM ST SPRINGFIELD IL", "<-26>"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.address);
        Record r{{field::jurisdictionCode, c.jurisdiction}, {field::city, c.city}, {field::address1, c.address}};
        EXPECT_EQ(r.ask(getPostalCode), c.answer);
    }
    Record noCity{{field::jurisdictionCode, "IL"}, {field::address1, "12 ELM ST SPRINGFIELD IL 62701"}};
    EXPECT_EQ(noCity.ask(getPostalCode), "<-26>");
    Record r{{field::jurisdictionCode, "IL"}, {field::city, "SPRINGFIELD"}, {field::address1, "SPRINGFIELD IL 62701"}};
    EXPECT_EQ(r.ask(getPostalCode, 1), "<-26>");
}

TEST(AddressGetters, ThroughTheHandle) {
    testing::HandlePtr h = testing::parsedHandle();
    setFieldLiteral(&h->record, field::jurisdictionCode, "TX");
    setFieldLiteral(&h->record, field::address1, "12 MAIN ST");
    setFieldLiteral(&h->record, field::city, "AUSTIN");
    setFieldLiteral(&h->record, field::postalCode, "787010000");
    setFieldLiteral(&h->record, field::licenseNumber, "12345678");
    char buffer[64];
    ASSERT_EQ(SVT_getAddress1(h.get(), buffer, sizeof buffer), kOk);
    EXPECT_STREQ(buffer, "12 MAIN ST");
    ASSERT_EQ(SVT_getCity(h.get(), buffer, sizeof buffer), kOk);
    EXPECT_STREQ(buffer, "AUSTIN");
    ASSERT_EQ(SVT_getPostalCode(h.get(), buffer, sizeof buffer), kOk);
    EXPECT_STREQ(buffer, "78701-0000");
    ASSERT_EQ(SVT_getLicenseNumber(h.get(), buffer, sizeof buffer), kOk);
    EXPECT_STREQ(buffer, "12345678");
    EXPECT_EQ(SVT_getAddress2(h.get(), buffer, sizeof buffer), kErrNoAnswer);
    int status = 0;
    EXPECT_EQ(SVT_validateDocumentId(h.get(), &status), kOk);
    EXPECT_EQ(status, kCheckNotCheckable);  // no name, so the document type is UNKNOWN
    setFieldLiteral(&h->record, field::documentType, "DL");
    EXPECT_EQ(SVT_validateDocumentId(h.get(), &status), kOk);
    EXPECT_EQ(status, kCheckValid);
    EXPECT_EQ(SVT_validateBarcode(h.get(), 39, 15, 5, &status), kErrInvalidArgument);
    EXPECT_EQ(status, kCheckValid);  // left as it was
    EXPECT_EQ(SVT_validateJurisdictionCode(h.get(), &status), kOk);
    EXPECT_EQ(status, kCheckNotCheckable);  // no IIN
    EXPECT_EQ(SVT_validateJurisdictionCode(h.get(), nullptr), kErrInvalidArgument);
    testing::HandlePtr fresh(SVT_create());
    EXPECT_EQ(SVT_validateDocumentId(fresh.get(), &status), kErrInvalidArgument);  // no scratch buffer yet
}

}  // namespace
}  // namespace orvane
