#include <gtest/gtest.h>

#include <vector>

#include "aamva/engine.h"

namespace orvane {
namespace {

std::vector<int32_t> fieldsFor(const AamvaElementTable& table, const char (&id)[4]) {
    std::vector<int32_t> ids;
    for (int32_t index = 0; index < table.count; ++index) {
        const int32_t value = lookupPair(elementKey(id), table.pairs, table.count, &index);
        if (value < 0) break;
        ids.push_back(value);
    }
    return ids;
}

TEST(AamvaVersionTable, RowsAndLookup) {
    const auto rows = aamvaVersionTable();
    ASSERT_EQ(rows.size(), 31u);
    EXPECT_EQ(rows.front().formatNumber, 17u);
    EXPECT_EQ(rows.back().formatNumber, 47u);
    for (uint32_t format = 17; format <= 47; ++format) {
        SCOPED_TRACE(format);
        const AamvaVersionRow* row = findAamvaVersionRow(format);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row, &rows[format - 17]);  // one row per format, in order
    }
    EXPECT_EQ(findAamvaVersionRow(16), nullptr);
    EXPECT_EQ(findAamvaVersionRow(48), nullptr);
    const AamvaVersionRow& f20 = *findAamvaVersionRow(20);
    EXPECT_EQ(f20.headerLength, 16u);
    EXPECT_EQ(f20.recordSeparatorPos, 1u);
    EXPECT_EQ(f20.versionLength, 1u);
    const AamvaVersionRow& f25 = *findAamvaVersionRow(25);
    EXPECT_EQ(f25.versionOffset, 9u);
    const AamvaVersionRow& f42 = *findAamvaVersionRow(42);
    EXPECT_EQ(f42.minVersion, 7u);
    EXPECT_EQ(f42.expectedVersion, 99u);
    const AamvaVersionRow& f45 = *findAamvaVersionRow(45);
    EXPECT_EQ(f45.minVersion, 3u);
    const AamvaVersionRow& f47 = *findAamvaVersionRow(47);
    EXPECT_EQ(f47.expectedVersion, 12u);
    EXPECT_EQ(f47.entriesLength, 0u);
}

TEST(AamvaElementTables, CountsAndRepeats) {
    EXPECT_EQ(kAamvaTableA.count, 51);
    EXPECT_EQ(kAamvaTableB.count, 36);
    EXPECT_EQ(kAamvaTableC.count, 68);
    EXPECT_EQ(kAamvaTableD.count, 82);
    EXPECT_EQ(kAamvaTableE.count, 48);
    EXPECT_EQ(fieldsFor(kAamvaTableC, "DBB"), (std::vector<int32_t>{78, 11}));
    EXPECT_EQ(fieldsFor(kAamvaTableC, "DAQ"), (std::vector<int32_t>{6, 55}));
    EXPECT_EQ(fieldsFor(kAamvaTableD, "DAU"), (std::vector<int32_t>{54, 14}));
    EXPECT_EQ(fieldsFor(kAamvaTableD, "DCB"), (std::vector<int32_t>{8}));
    EXPECT_EQ(fieldsFor(kAamvaTableE, "DBB"), (std::vector<int32_t>{78}));
    EXPECT_TRUE(fieldsFor(kAamvaTableE, "DDK").empty());
    EXPECT_EQ(fieldsFor(kAamvaTableB, "DAQ"), (std::vector<int32_t>{55}));
    EXPECT_EQ(fieldsFor(kAamvaTableA, "DBS"), (std::vector<int32_t>{51}));
    EXPECT_EQ(fieldsFor(kAamvaTableC, "DDL"), (std::vector<int32_t>{126}));
    EXPECT_EQ(kAamvaTableE.pairs[47].key, elementKey("DDJ"));
    EXPECT_EQ(kAamvaTableB.pairs[35].key, elementKey("DAA"));
}

}  // namespace
}  // namespace orvane
