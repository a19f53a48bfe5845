// What holds for every registry row, and the row-order facts that decide ties.
#include "engine/registry.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>

#include "engine/format_names.h"
#include "engine/framers.h"

namespace orvane {
namespace {

// The family of a format number; each family also keeps the rows of the same numbers.
uint32_t familyOf(size_t formatId) {
    if (formatId <= 16) return kGroupStripe;
    if (formatId <= 47) return kGroupAamva;
    if (formatId <= 50) return kGroupRegional;
    if (formatId <= 55) return kGroupCommonAccessCard;
    if (formatId <= 63) return kGroupNational;
    return kGroupMrz;
}

// Null, or exactly n upper-case letters.
bool codeOrNull(const char* code, size_t n) {
    if (code == nullptr) return true;
    if (std::strlen(code) != n) return false;
    for (size_t i = 0; i < n; ++i) {
        if (code[i] < 'A' || code[i] > 'Z') return false;
    }
    return true;
}

TEST(Registry, EveryRowHoldsTogether) {
    const auto rows = formatRegistry();
    ASSERT_EQ(rows.size(), 68u);
    bool seen[68] = {};
    for (size_t i = 0; i < rows.size(); ++i) {
        const FormatDescriptor& row = rows[i];
        SCOPED_TRACE("row " + std::to_string(i) + ", format " + std::to_string(row.formatId));
        ASSERT_LT(row.formatId, 68u);
        EXPECT_FALSE(seen[row.formatId]);
        seen[row.formatId] = true;
        EXPECT_EQ(row.formatGroup, familyOf(row.formatId));
        EXPECT_EQ(row.formatGroup, familyOf(i));
        EXPECT_NE(row.parser, nullptr);
        const Framer framer = row.framer;
        EXPECT_TRUE(framer == frameBarcodeText || framer == frameBarcodeTextStrict || framer == framePassThrough ||
                    framer == frameLatin1 || framer == frameMrz);
        EXPECT_EQ(framer == frameMrz, row.formatGroup == kGroupMrz);  // the zones and only they
        EXPECT_TRUE(codeOrNull(row.expectedCountry, 3));
        EXPECT_TRUE(codeOrNull(row.expectedJurisdiction, 2));
    }
}

TEST(Registry, RowsReadingAsAnEarlierOneHaveOne) {
    // A row skipped for reading as an earlier one can only be so when an earlier row has
    // its framing and its expectations, and so its score.
    const auto rows = formatRegistry();
    for (size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].readsAsEarlierRow == nullptr) continue;
        SCOPED_TRACE("format " + std::to_string(rows[i].formatId));
        bool found = false;
        for (size_t e = 0; e < i; ++e) {
            found = found || (rows[e].framer == rows[i].framer && rows[e].expectedCountry == rows[i].expectedCountry &&
                              rows[e].expectedJurisdiction == rows[i].expectedJurisdiction);
        }
        EXPECT_TRUE(found);
    }
}

TEST(Registry, RowOrder) {
    // Of two rows with the same score the earlier wins, so the order is behaviour: these
    // rows stand out of format order, and all others follow it.
    const struct {
        size_t row;
        uint32_t formatId;
    } outOfOrder[] = {{6, 9}, {7, 11}, {8, 3}, {17, 40}, {37, 45}, {53, 54}, {54, 53}};
    const auto rows = formatRegistry();
    ASSERT_EQ(rows.size(), 68u);
    size_t next = 0;
    int64_t previous = -1;
    for (size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE("row " + std::to_string(i));
        if (next < std::size(outOfOrder) && outOfOrder[next].row == i) {
            EXPECT_EQ(rows[i].formatId, outOfOrder[next++].formatId);
        } else {
            EXPECT_GT(rows[i].formatId, previous);
            previous = rows[i].formatId;
        }
    }
}

TEST(Registry, LenientRowsFollowTheStrictOnes) {
    // The strict parse keeps its 68 rows; the lenient one tries them, then its own, which
    // are numbered from 100, named, and checked quickly like the others.
    const auto strict = formatRegistry();
    const auto lenient = lenientRegistry();
    const auto own = lenientOnlyRows();
    ASSERT_EQ(strict.size(), 68u);
    ASSERT_EQ(lenient.size(), strict.size() + own.size());
    EXPECT_EQ(lenient.data(), strict.data());
    EXPECT_EQ(own.data(), lenient.data() + strict.size());
    uint32_t previous = 99;
    for (const FormatDescriptor& row : own) {
        SCOPED_TRACE("format " + std::to_string(row.formatId));
        EXPECT_GT(row.formatId, previous);
        previous = row.formatId;
        EXPECT_NE(row.parser, nullptr);
        EXPECT_NE(row.mayRead, nullptr);
        EXPECT_EQ(row.formatGroup, kGroupMrz);
        EXPECT_EQ(row.framer, frameMrz);
        const FormatName* name = findFormatName(row.formatId);
        ASSERT_NE(name, nullptr);
        EXPECT_GT(std::strlen(name->name), 10u);
    }
}

}  // namespace
}  // namespace orvane
