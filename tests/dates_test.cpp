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
        {"00000101", "01/01/0000"},  // year first has no lower bound
        {"20240101XYZ", "01/01/2024"},
        {"2024010", nullptr},
        {"20241301", nullptr},
        {"20240132", nullptr},
        {"ABCD0101", "01/01/0000"},  // a group of letters reads as 0
        {"2024 1 7", "01/07/2024"},  // groups skip leading blanks
        {"20-40101", "01/01/0020"},  // a group stops at its first non-digit
        {"-0010101", "01/01/-001"},
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
        EXPECT_TRUE(date.hour == 0 && date.minute == 0 && date.second == 0);
    }
    // A group is read as its own text: the digits of the next group do not join it.
    const char text[] = {'2', '0', '2', '4', '1', '\0', '0', '5'};
    DateValue date{};
    ASSERT_EQ(readDate(TextSpan{text, 8}, &date), kOk);
    EXPECT_EQ(formatted(date), "01/05/2024");
}

TEST(FormatDate, NeedsTenAndWritesNoTerminator) {
    const DateValue date{987, 3, 4, 0, 0, 0};
    char buffer[12] = "xxxxxxxxxxx";
    EXPECT_EQ(formatDate(&date, buffer, 9), 0);
    EXPECT_EQ(buffer[0], 'x');
    EXPECT_EQ(formatDate(&date, buffer, 10), 10);
    EXPECT_EQ(std::string(buffer, 11), "03/04/0987x");
}

TEST(DateWorkers, EachAnswersItsSlot) {
    testing::runWorkerCases({
        {"expiration", getExpirationDate, {{field::expirationDate, "19991231"}}, 11, "12/31/1999"},
        {"birth", getBirthdate, {{field::birthdate, "19991231"}}, 11, "12/31/1999"},
        {"birth, second choice", getBirthdate, {{field::birthdateAlt, "19991231"}}, 11, "12/31/1999"},
        {"issue", getIssueDate, {{field::issueDate, "19991231"}}, 11, "12/31/1999"},
        {"card revision", getCardRevisionDate, {{field::cardRevisionDate, "19991231"}}, 11, "12/31/1999"},
        {"HAZMAT expiry", getHAZMATExpDate, {{field::HAZMATExpDate, "19991231"}}, 11, "12/31/1999"},
        {"no room for the terminator", getIssueDate, {{field::issueDate, "19991231"}}, 10, "#-26"},
        {"not a date", getIssueDate, {{field::issueDate, "01011799"}}, 11, "#-26"},
        {"another slot", getIssueDate, {{field::expirationDate, "19991231"}}, 11, "#-26"},
    });
}

// The workers move the digits of a year-first date into place; what they answer must be
// what reading the stored text and formatting it gives, for every kind of stored text.
TEST(DateWorkers, AnswerWhatReadingAndFormattingGive) {
    const char* const stored[] = {
        "19991231", "00010101", "99991231", "20240229", "20231301", "20230001", "20230100", "20230132",
        "12011990", "01152020", "13011990", "01011799", "1999123",  "1999-12-31", "19991231X", "2O240101",
        "00000000", "99999999", "12319999", " 1991231", "+1991231", "01 51990"};
    for (const char* text : stored) {
        for (int32_t capacity : {10, 11, 12, 64}) {
            SCOPED_TRACE(std::string(text) + " in " + std::to_string(capacity));
            DateValue date{};
            std::string expected = "#-26";
            char formattedDate[16] = {};
            if (readDate(makeSpan(text), &date) == kOk && formatDate(&date, formattedDate, capacity - 1) == 10) {
                expected = std::string(formattedDate, 10);
            }
            EXPECT_EQ(testing::ask(getExpirationDate, {{field::expirationDate, text}}, capacity), expected);
        }
    }
}

TEST(DateWorkers, BirthdatePrefersTheFirstSlotEvenWhenItDoesNotRead) {
    RecordWithBuffer r;
    DateValue date{};
    setFieldLiteral(r.get(), field::birthdateAlt, "19800704");
    ASSERT_EQ(birthdateValue(r.get(), &date), kOk);
    EXPECT_EQ(formatted(date), "07/04/1980");
    setFieldLiteral(r.get(), field::birthdate, "NOTADATE");
    EXPECT_EQ(birthdateValue(r.get(), &date), kErrNoAnswer);
    char buffer[16];
    EXPECT_EQ(getBirthdate(r.get(), buffer, sizeof buffer), kErrNoAnswer);
    ParsedRecord bare{};
    EXPECT_EQ(birthdateValue(&bare, &date), kErrInvalidArgument);
}

TEST(Calendar, BoundsOfMonthsPlausibleDatesAndDayNumbers) {
    EXPECT_EQ(daysInMonth(2024, 0), 0);
    EXPECT_EQ(daysInMonth(2024, 13), 0);
    EXPECT_TRUE(isPlausibleDate({1000, 1, 1, 0, 0, 0}));
    EXPECT_TRUE(isPlausibleDate({9999, 12, 31, 0, 0, 0}));
    EXPECT_TRUE(isPlausibleDate({2023, 2, 31, 0, 0, 0}));  // the day is not compared with the month
    EXPECT_FALSE(isPlausibleDate({999, 1, 1, 0, 0, 0}));
    EXPECT_FALSE(isPlausibleDate({10000, 1, 1, 0, 0, 0}));
    EXPECT_FALSE(isPlausibleDate({2023, 13, 1, 0, 0, 0}));
    EXPECT_FALSE(isPlausibleDate({2023, 1, 0, 0, 0, 0}));
    DateValue date{};
    for (int64_t refused : {int64_t{3287183}, int64_t{0}, int64_t{-5}, INT64_MIN, INT64_MAX}) {
        EXPECT_EQ(dateFromDayNumber(refused, &date), kErrInvalidArgument) << refused;
    }
    EXPECT_EQ(dateFromDayNumber(1, nullptr), kErrInvalidArgument);
}

// An independent day-by-day walk, with its own calendar rules.
struct Walker {
    int32_t year = 1000, month = 1, day = 1;
    bool leap() const { return year % 400 == 0 || (year % 4 == 0 && year % 100 != 0); }
    int32_t lengthOfMonth() const {
        if (month == 2) return leap() ? 29 : 28;
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

TEST(Calendar, DayNumbersAndMonthLengthsAgreeWithADayByDayWalk) {
    constexpr int64_t kLastDay = 3287182;  // 31 December 9999
    Walker walk;
    for (int64_t dayNumber = 1; dayNumber <= kLastDay; ++dayNumber, walk.next()) {
        DateValue date{};
        ASSERT_EQ(dateFromDayNumber(dayNumber, &date), kOk) << dayNumber;
        ASSERT_TRUE(date.year == walk.year && date.month == walk.month && date.day == walk.day)
            << "day " << dayNumber << ": " << formatted(date) << " instead of " << walk.month << "/"
            << walk.day << "/" << walk.year;
        if (walk.day == 1) {
            ASSERT_EQ(daysInMonth(walk.year, walk.month), walk.lengthOfMonth()) << walk.month << "/" << walk.year;
            ASSERT_EQ(isLeapYear(walk.year), walk.leap()) << walk.year;
        }
    }
    EXPECT_EQ(walk.year, 10000);
}

}  // namespace
}  // namespace orvane
