#include "fields/address.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/status.h"
#include "fields/names.h"
#include "test_support.h"

namespace orvane {
namespace {

constexpr FieldId kJur = field::jurisdictionCode;

TEST(AddressLines, TrimTidyAndPriority) {
    const std::vector<testing::Slot> record = {{kJur, "TX"},
                                               {field::address1, " -\t12  MAIN\x01ST, "},
                                               {field::residenceAddress1, "99 OTHER RD"},
                                               {field::address2Alt, "APT 4"},
                                               {field::residenceCity, "  SAN  ANTONIO "}};
    testing::runWorkerCases({
        {"first line", getAddress1, record, 128, "12 MAIN ST"},
        {"second line, second choice", getAddress2, record, 128, "APT 4"},
        {"city, second choice", getCity, record, 128, "SAN ANTONIO"},
    });
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
        {"AB", "123 MAIN ST", nullptr, "123 MAIN ST", "#-26"},              // nothing to split
        {"TX", "123 MAIN ST$DALLAS", nullptr, "123 MAIN ST$DALLAS", "#-26"},  // US rows keep the line
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.line1);
        std::vector<testing::Slot> slots = {{kJur, c.jurisdiction}, {field::address1, c.line1}};
        if (c.line2 != nullptr) slots.push_back({field::address2, c.line2});
        EXPECT_EQ(testing::ask(getAddress1, slots, 128), c.address1);
        EXPECT_EQ(testing::ask(getAddress2, slots, 128), c.address2);
    }
}

TEST(LicenseNumber, GenericCopyAndHooks) {
    const std::vector<testing::Slot> alt = {{kJur, "TX"}, {field::licenseNumberAlt, " 12345678"}};
    testing::runWorkerCases({
        {"as it stands", getLicenseNumber, alt, 128, " 12345678"},
        {"room is capacity - 1", getLicenseNumber, alt, 5, " 12"},
        {"first slot wins", getLicenseNumber,
         {{kJur, "TX"}, {field::licenseNumberAlt, "1"}, {field::licenseNumber, "2"}}, 128, "2"},
        // Rows whose cards print the number in groups drop the separators.
        {"WI", getLicenseNumber, {{kJur, "WI"}, {field::licenseNumber, "S530-4605-6800-00"}}, 128, "S5304605680000"},
        {"MI", getLicenseNumber, {{kJur, "MI"}, {field::licenseNumber, "A 123 456 789 012"}}, 128, "A123456789012"},
        {"CA", getLicenseNumber, {{kJur, "CA"}, {field::licenseNumber, " A1234567 "}}, 128, "A1234567"},
        {"hook room", getLicenseNumber, {{kJur, "NY"}, {field::licenseNumber, "123 456 789"}}, 5, "1234"},
        // Ontario's hyphens belong to the number.
        {"ON", getLicenseNumber, {{kJur, "ON"}, {field::licenseNumber, "A1234 - 56789 - 01234"}}, 128,
         "A1234-56789-01234"},
        {"nothing but separators", getLicenseNumber, {{kJur, "NF"}, {field::licenseNumber, "---"}}, 128, "---"},
    });
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
        {"TX", "90210", 10, "#-18"},
        {"TX", "  ", 64, "#-26"},
        {"AB", "T2P  1J9", 64, "T2P 1J9"},
        {"AB", "T2P,,1J9", 64, "T2P,1J9"},
        {"", "ABC  12", 64, "ABC 12"},  // no jurisdiction: the fallback row has no hook
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.jurisdiction) + " " + c.stored);
        const std::vector<testing::Slot> slots = {{kJur, c.jurisdiction}, {field::residencePostalCode, c.stored}};
        EXPECT_EQ(testing::ask(getPostalCode, slots, c.capacity), c.answer);
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
        {"NY", "NEW YORK", "1 PARK AVE NEW YORK NY  10016 ", "10016-0000"},
        {"QC", "MONTREAL", "12 RUE PRINCIPALE MONTREAL QC H2X  1Y4", "H2X 1Y4"},
        {"IL", "SPRINGFIELD", "12 ELM ST SPRINGFIELD IL 62701-1234", "#-26"},  // a dash is no word character
        {"IL", "CHICAGO", "12 ELM ST SPRINGFIELD IL 62701", "#-26"},
        {"IL", "SPRINGFIELD", "12 ELM ST SPRINGFIELD 62701", "#-26"},
        {"IL", "SPRINGFIELD", "12 ELM ST SPRINGFIELD IL", "#-26"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.address);
        const std::vector<testing::Slot> slots = {
            {kJur, c.jurisdiction}, {field::city, c.city}, {field::address1, c.address}};
        EXPECT_EQ(testing::ask(getPostalCode, slots, 128), c.answer);
    }
}

}  // namespace
}  // namespace orvane
