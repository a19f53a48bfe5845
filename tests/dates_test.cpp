#include "fields/dates.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;

std::string formatted(const DateValue& date) {
    char buffer[10];
    if (formatDate(&date, buffer, 10) != 10) return "(none)";
    return std::string(buffer, 10);
}

TEST(ReadDate, ReadingsAndTheirBounds) {
    struct Case {
        const char* stored;
        const char* expected;  // MM/DD/YYYY, or nullptr when not a date
    };
    const Case cases[] = {
        {"20240229", "02/29/2024"},
        {"20230231", "02/31/2023"},  // no month-length test
        {"01152020", "01/15/2020"},  // month first
        {"12011990", "12/01/1990"},  // year first would be month 19
        {"11111111", "11/11/1111"},  // year first wins
        {"01011799", nullptr},       // month first, but before 1800
        {"01011800", "01/01/1800"},
        {"20240101XYZ", "01/01/2024"},
        {"2024010", nullptr},
        {"99991231", "12/31/9999"},
        {"00000101", "01/01/0000"},  // year first has no lower bound
        {"20241301", nullptr},
        {"20240100", nullptr},
        {"20240132", nullptr},
        {"ABCD0101", "01/01/0000"},  // a group of letters reads as 0
        {"2024 1 7", "01/07/2024"},  // groups skip leading blanks
        {"2024+1+7", "01/07/2024"},
        {"20-40101", "01/01/0020"},  // a group stops at its first non-digit
        {"-0010101", "01/01/-001"},
        {"0A151999", nullptr},       // month 0
        {"1 151999", "01/15/1999"},
        {"        ", nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.stored);
        DateValue date{-1, -1, -1, -1, -1, -1};
        const int32_t status = readDate(makeSpan(c.stored), &date);
        if (c.expected == nullptr) {
            EXPECT_EQ(status, -1);
            continue;
        }
        ASSERT_EQ(status, kOk);
        EXPECT_EQ(formatted(date), c.expected);
        EXPECT_EQ(date.hour, 0);
        EXPECT_EQ(date.minute, 0);
        EXPECT_EQ(date.second, 0);
    }
}

TEST(ReadDate, GroupsAreCutOutAndNeverReadPastTheirEnd) {
    // A group is read as its own text: the digits of the next group do not join it.
    const char text[] = {'2', '0', '2', '4', '1', '\0', '0', '5'};
    DateValue date{};
    ASSERT_EQ(readDate(TextSpan{text, 8}, &date), kOk);
    EXPECT_EQ(date.year, 2024);
    EXPECT_EQ(date.month, 1);
    EXPECT_EQ(date.day, 5);
    EXPECT_EQ(readDate(TextSpan{nullptr, 8}, &date), -1);
    EXPECT_EQ(readDate(makeSpan("20240101"), nullptr), kErrInvalidArgument);
}

TEST(FormatDate, RoomAndPadding) {
    const DateValue date{987, 3, 4, 0, 0, 0};
    char buffer[12] = "xxxxxxxxxxx";
    EXPECT_EQ(formatDate(&date, buffer, 9), 0);
    EXPECT_EQ(buffer[0], 'x');
    EXPECT_EQ(formatDate(&date, buffer, 10), 10);
    EXPECT_EQ(std::string(buffer, 11), "03/04/0987x");
    EXPECT_EQ(formatDate(nullptr, buffer, 10), 0);
}

// Stores each date text in the given slot and asks the worker for it.
struct DateWorkerCase {
    const char* name;
    int32_t (*worker)(const ParsedRecord*, char*, int32_t);
    FieldId slot;
};
constexpr DateWorkerCase kDateWorkers[] = {
    {"expiration", getExpirationDate, field::expirationDate},
    {"birth", getBirthdate, field::birthdate},
    {"birth, second choice", getBirthdate, field::birthdateAlt},
    {"issue", getIssueDate, field::issueDate},
    {"card revision", getCardRevisionDate, field::cardRevisionDate},
    {"HAZMAT expiry", getHAZMATExpDate, field::HAZMATExpDate},
};

TEST(DateWorkers, AnswerTheirSlotAsMonthDayYear) {
    for (const DateWorkerCase& c : kDateWorkers) {
        SCOPED_TRACE(c.name);
        RecordWithBuffer r;
        char buffer[16];
        EXPECT_EQ(c.worker(r.get(), buffer, sizeof buffer), kErrNoAnswer);
        setFieldLiteral(r.get(), c.slot, "01011799");
        EXPECT_EQ(c.worker(r.get(), buffer, sizeof buffer), kErrNoAnswer);
        setFieldLiteral(r.get(), c.slot, "19991231");
        EXPECT_EQ(c.worker(r.get(), buffer, 10), kErrNoAnswer);  // no room for the terminator
        EXPECT_EQ(c.worker(r.get(), buffer, 1), kErrNoAnswer);
        ASSERT_EQ(c.worker(r.get(), buffer, 11), kOk);
        EXPECT_STREQ(buffer, "12/31/1999");
        EXPECT_EQ(c.worker(r.get(), buffer, 0), kErrInvalidArgument);
        EXPECT_EQ(c.worker(r.get(), nullptr, 11), kErrInvalidArgument);
        EXPECT_EQ(c.worker(nullptr, buffer, 11), kErrInvalidArgument);
    }
}

TEST(DateWorkers, BirthdatePrefersTheFirstSlotEvenWhenItDoesNotRead) {
    RecordWithBuffer r;
    char buffer[16];
    DateValue date{};
    setFieldLiteral(r.get(), field::birthdateAlt, "19800704");
    ASSERT_EQ(birthdateValue(r.get(), &date), kOk);
    EXPECT_EQ(formatted(date), "07/04/1980");
    setFieldLiteral(r.get(), field::birthdate, "NOTADATE");
    EXPECT_EQ(birthdateValue(r.get(), &date), kErrNoAnswer);
    EXPECT_EQ(getBirthdate(r.get(), buffer, sizeof buffer), kErrNoAnswer);
    EXPECT_EQ(birthdateValue(r.get(), nullptr), kErrInvalidArgument);
    ParsedRecord bare{};
    EXPECT_EQ(birthdateValue(&bare, &date), kErrInvalidArgument);
    EXPECT_EQ(getBirthdate(&bare, buffer, sizeof buffer), kErrInvalidArgument);
}

TEST(Calendar, LeapYearsAndMonthLengths) {
    struct Case {
        int32_t year;
        bool leap;
    };
    const Case cases[] = {{1000, false}, {1600, true}, {1700, false}, {1900, false},
                          {1996, true},  {2000, true}, {2023, false}, {2024, true},
                          {2100, false}, {2400, true}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.year);
        EXPECT_EQ(isLeapYear(c.year), c.leap);
        EXPECT_EQ(daysInMonth(c.year, 2), c.leap ? 29 : 28);
    }
    const int32_t lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int32_t month = 1; month <= 12; ++month) EXPECT_EQ(daysInMonth(2023, month), lengths[month - 1]);
    EXPECT_EQ(daysInMonth(2024, 0), 0);
    EXPECT_EQ(daysInMonth(2024, 13), 0);
    EXPECT_EQ(daysInMonth(2024, -1), 0);
}

TEST(Calendar, PlausibleDatesIgnoreMonthLengths) {
    EXPECT_TRUE(isPlausibleDate({1000, 1, 1, 0, 0, 0}));
    EXPECT_TRUE(isPlausibleDate({9999, 12, 31, 0, 0, 0}));
    EXPECT_TRUE(isPlausibleDate({2023, 2, 31, 0, 0, 0}));
    EXPECT_FALSE(isPlausibleDate({999, 1, 1, 0, 0, 0}));
    EXPECT_FALSE(isPlausibleDate({10000, 1, 1, 0, 0, 0}));
    EXPECT_FALSE(isPlausibleDate({2023, 13, 1, 0, 0, 0}));
    EXPECT_FALSE(isPlausibleDate({2023, 1, 0, 0, 0, 0}));
}

TEST(DayNumbers, KnownDays) {
    struct Case {
        int64_t dayNumber;
        const char* expected;  // MM/DD/YYYY, or nullptr when refused
    };
    const Case cases[] = {
        {1, "01/01/1000"},
        {31, "01/31/1000"},
        {59, "02/28/1000"},
        {60, "03/01/1000"},  // 1000 is not a leap year
        {365, "12/31/1000"},
        {366, "01/01/1001"},
        {219205, "02/29/1600"},
        {328777, "02/28/1900"},
        {328778, "03/01/1900"},  // 1900 has no 29 February
        {365302, "02/29/2000"},
        {3287182, "12/31/9999"},
        {3287183, nullptr},
        {0, nullptr},
        {-5, nullptr},
        {INT64_MIN, nullptr},
        {INT64_MAX, nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.dayNumber);
        DateValue date{};
        const int32_t status = dateFromDayNumber(c.dayNumber, &date);
        if (c.expected == nullptr) {
            EXPECT_EQ(status, kErrInvalidArgument);
            continue;
        }
        ASSERT_EQ(status, kOk);
        EXPECT_EQ(formatted(date), c.expected);
    }
    EXPECT_EQ(dateFromDayNumber(1, nullptr), kErrInvalidArgument);
}

// An independent day-by-day walk, with its own calendar rules.
struct Walker {
    int32_t year = 1000, month = 1, day = 1;
    int32_t lengthOfMonth() const {
        if (month == 2) {
            const bool leap = year % 400 == 0 || (year % 4 == 0 && year % 100 != 0);
            return leap ? 29 : 28;
        }
        return (month == 4 || month == 6 || month == 9 || month == 11) ? 30 : 31;
    }
    void next() {
        if (++day <= lengthOfMonth()) return;
        day = 1;
        if (++month <= 12) return;
        month = 1;
        ++year;
    }
};

TEST(DayNumbers, AgreeWithADayByDayWalkOverTheWholeRange) {
    constexpr int64_t kLastDay = 3287182;  // 31 December 9999
    Walker walk;
    for (int64_t dayNumber = 1; dayNumber <= kLastDay; ++dayNumber, walk.next()) {
        DateValue date{};
        ASSERT_EQ(dateFromDayNumber(dayNumber, &date), kOk) << dayNumber;
        ASSERT_TRUE(date.year == walk.year && date.month == walk.month && date.day == walk.day)
            << "day " << dayNumber << ": " << formatted(date) << " instead of " << walk.month << "/"
            << walk.day << "/" << walk.year;
    }
    EXPECT_EQ(walk.year, 10000);
}

}  // namespace
}  // namespace orvane
