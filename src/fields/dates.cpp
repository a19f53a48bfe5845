#include "fields/dates.h"

#include <cstring>

#include "fields/answer.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr int32_t kStoredDateLength = 8;
constexpr int32_t kFormattedDateLength = 10;  // MM/DD/YYYY

// Each group of a stored date is read as strtol reads it standing alone.
int32_t readGroup(const char* text, int32_t length) {
    return static_cast<int32_t>(readLeadingInteger(TextSpan{text, length}));
}

// The day is deliberately not held to its month's length: February 31 reads.
bool dayAndMonthInRange(int32_t day, int32_t month) {
    return day >= 1 && day <= 31 && month >= 1 && month <= 12;
}

// Year-first reading, YYYYMMDD: no lower bound on the year.
bool readYearFirst(const char* text, DateValue* out) {
    const int32_t year = readGroup(text, 4);
    const int32_t month = readGroup(text + 4, 2);
    const int32_t day = readGroup(text + 6, 2);
    if (!dayAndMonthInRange(day, month) || year > 9999) return false;
    *out = DateValue{year, month, day, 0, 0, 0};
    return true;
}

// Month-first reading, MMDDYYYY, limited to years 1800..9999.
bool readMonthFirst(const char* text, DateValue* out) {
    const int32_t month = readGroup(text, 2);
    const int32_t day = readGroup(text + 2, 2);
    const int32_t year = readGroup(text + 4, 4);
    if (!dayAndMonthInRange(day, month) || year < 1800 || year > 9999) return false;
    *out = DateValue{year, month, day, 0, 0, 0};
    return true;
}

// Eight digits that read year first, as the readers store dates, are answered with their
// own digits moved into place: what reading and formatting them would give.
bool answerYearFirstDigits(TextSpan stored, char* buffer, int32_t room) {
    if (room < kFormattedDateLength || stored.length < kStoredDateLength) return false;
    const char* t = stored.data;
    if (!allDigits(t, kStoredDateLength)) return false;
    const int32_t month = (t[4] - '0') * 10 + (t[5] - '0');
    const int32_t day = (t[6] - '0') * 10 + (t[7] - '0');
    if (!dayAndMonthInRange(day, month)) return false;
    const char text[kFormattedDateLength] = {t[4], t[5], '/', t[6], t[7], '/', t[0], t[1], t[2], t[3]};
    std::memcpy(buffer, text, kFormattedDateLength);
    buffer[kFormattedDateLength] = '\0';
    return true;
}

// Answers the date stored in the first filled of the slots as MM/DD/YYYY.
int32_t answerStoredDate(const ParsedRecord* record, const FieldId* ids, int32_t count,
                         char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    TextSpan stored;
    if (firstFilledField(record, ids, count, &stored) != kOk) return kErrNoAnswer;
    if (answerYearFirstDigits(stored, buffer, capacity - 1)) return kOk;
    DateValue date;
    if (readDate(stored, &date) != kOk) return kErrNoAnswer;
    const int32_t written = formatDate(&date, buffer, capacity - 1);
    if (written == 0) return kErrNoAnswer;
    buffer[written] = '\0';
    return kOk;
}

int32_t answerStoredDate(const ParsedRecord* record, FieldId id, char* buffer, int32_t capacity) {
    return answerStoredDate(record, &id, 1, buffer, capacity);
}

constexpr FieldId kBirthdateSlots[] = {field::birthdate, field::birthdateAlt};

// Days from 1 March of year 0 to the date, in the proleptic Gregorian calendar. Counting
// from March puts the leap day at the end of each counted year.
constexpr int64_t daysFromMarchOfYearZero(int64_t year, int64_t month, int64_t day) {
    const int64_t y = month <= 2 ? year - 1 : year;
    const int64_t era = y / 400;  // years handled here are never negative
    const int64_t yearOfEra = y - era * 400;
    const int64_t dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
    const int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra;
}

constexpr int64_t kFirstDay = daysFromMarchOfYearZero(1000, 1, 1);
constexpr int64_t kLastDayNumber = daysFromMarchOfYearZero(9999, 12, 31) - kFirstDay + 1;
static_assert(daysFromMarchOfYearZero(1000, 3, 1) - kFirstDay + 1 == 60);

}  // namespace

int32_t readDate(TextSpan text, DateValue* out) {
    if (out == nullptr) return kErrInvalidArgument;
    if (text.data == nullptr || text.length < kStoredDateLength) return -1;
    if (allDigits(text.data, kStoredDateLength)) {
        // Eight digits, as the readers store dates: the groups read as digits, year first.
        auto digits = [&text](int32_t at, int32_t n) {
            int32_t value = 0;
            for (int32_t i = at; i < at + n; ++i) value = value * 10 + (text.data[i] - '0');
            return value;
        };
        if (dayAndMonthInRange(digits(6, 2), digits(4, 2))) {
            *out = DateValue{digits(0, 4), digits(4, 2), digits(6, 2), 0, 0, 0};
            return kOk;
        }
        const int32_t year = digits(4, 4);
        if (!dayAndMonthInRange(digits(2, 2), digits(0, 2)) || year < 1800) return -1;
        *out = DateValue{year, digits(0, 2), digits(2, 2), 0, 0, 0};
        return kOk;
    }
    // Both readings are tried in this order, so year first wins when both would fit.
    if (readYearFirst(text.data, out)) return kOk;
    if (readMonthFirst(text.data, out)) return kOk;
    return -1;
}

int32_t formatDate(const DateValue* value, char* buffer, int32_t room) {
    if (value == nullptr || buffer == nullptr || room < kFormattedDateLength) return 0;
    const DateValue& d = *value;
    if (d.month >= 0 && d.month <= 99 && d.day >= 0 && d.day <= 99 && d.year >= 0 && d.year <= 9999) {
        const char text[kFormattedDateLength] = {
            static_cast<char>('0' + d.month / 10),     static_cast<char>('0' + d.month % 10), '/',
            static_cast<char>('0' + d.day / 10),       static_cast<char>('0' + d.day % 10),   '/',
            static_cast<char>('0' + d.year / 1000),    static_cast<char>('0' + d.year / 100 % 10),
            static_cast<char>('0' + d.year / 10 % 10), static_cast<char>('0' + d.year % 10)};
        std::memcpy(buffer, text, kFormattedDateLength);
        return kFormattedDateLength;
    }
    // A component too wide for its place leaves zeros there rather than stray bytes.
    for (int32_t i = 0; i < kFormattedDateLength; ++i) buffer[i] = '0';
    formatInt(value->month, buffer, 2, 1);
    buffer[2] = '/';
    formatInt(value->day, buffer + 3, 2, 1);
    buffer[5] = '/';
    formatInt(value->year, buffer + 6, 4, 1);
    return kFormattedDateLength;
}

int32_t birthdateValue(const ParsedRecord* record, DateValue* out) {
    if (record == nullptr || record->workBuffer == nullptr || out == nullptr) {
        return kErrInvalidArgument;
    }
    TextSpan stored;
    if (firstFilledField(record, kBirthdateSlots, &stored) != kOk) return kErrNoAnswer;
    return readDate(stored, out) == kOk ? kOk : kErrNoAnswer;
}

int32_t getExpirationDate(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerStoredDate(record, field::expirationDate, buffer, capacity);
}

int32_t getBirthdate(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerStoredDate(record, kBirthdateSlots, 2, buffer, capacity);
}

int32_t getIssueDate(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerStoredDate(record, field::issueDate, buffer, capacity);
}

int32_t getCardRevisionDate(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerStoredDate(record, field::cardRevisionDate, buffer, capacity);
}

int32_t getHAZMATExpDate(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerStoredDate(record, field::HAZMATExpDate, buffer, capacity);
}

bool isLeapYear(int32_t year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int32_t daysInMonth(int32_t year, int32_t month) {
    constexpr int32_t kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12) return 0;
    if (month == 2 && isLeapYear(year)) return 29;
    return kDays[month - 1];
}

bool isPlausibleDate(const DateValue& date) {
    return date.day >= 1 && date.day <= 31 && date.month >= 1 && date.month <= 12 &&
           date.year >= 1000 && date.year <= 9999;
}

int32_t dateFromDayNumber(int64_t dayNumber, DateValue* out) {
    // Past 9999 the year no longer fits the four digits a stored date has.
    if (out == nullptr || dayNumber < 1 || dayNumber > kLastDayNumber) return kErrInvalidArgument;
    const int64_t days = kFirstDay + dayNumber - 1;
    const int64_t era = days / 146097;
    const int64_t dayOfEra = days - era * 146097;
    const int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    const int64_t day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
    const int64_t month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    const int64_t year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
    *out = DateValue{static_cast<int32_t>(year), static_cast<int32_t>(month),
                     static_cast<int32_t>(day), 0, 0, 0};
    return kOk;
}

namespace {

// The date an answer gives, read back from its MM/DD/YYYY; false for no calendar date.
bool answeredDate(TextDeriver derive, const ParsedRecord* record, DateValue* out) {
    char text[16];
    if (derive(record, text, sizeof text) != kOk || std::strlen(text) != kFormattedDateLength) return false;
    if (!allDigits(text, 2) || !allDigits(text + 3, 2) || !allDigits(text + 6, 4)) return false;
    const int32_t month = (text[0] - '0') * 10 + (text[1] - '0');
    const int32_t day = (text[3] - '0') * 10 + (text[4] - '0');
    const int32_t year = static_cast<int32_t>(readLeadingInteger(TextSpan{text + 6, 4}));
    if (year < 1 || day < 1 || day > daysInMonth(year, month)) return false;
    *out = DateValue{year, month, day, 0, 0, 0};
    return true;
}

int32_t compareDays(const DateValue& a, const DateValue& b) {
    if (a.year != b.year) return a.year < b.year ? -1 : 1;
    if (a.month != b.month) return a.month < b.month ? -1 : 1;
    if (a.day != b.day) return a.day < b.day ? -1 : 1;
    return 0;
}

}  // namespace

int32_t ageOn(const ParsedRecord* record, const DateValue& day, int32_t* years) {
    if (record == nullptr || record->workBuffer == nullptr || years == nullptr) return kErrInvalidArgument;
    DateValue birth{};
    if (!answeredDate(getBirthdate, record, &birth) || compareDays(birth, day) > 0) return kErrNoAnswer;
    const bool birthdayToCome = day.month < birth.month || (day.month == birth.month && day.day < birth.day);
    *years = day.year - birth.year - (birthdayToCome ? 1 : 0);
    return kOk;
}

int32_t expiredOn(const ParsedRecord* record, const DateValue& day, int32_t* expired) {
    if (record == nullptr || record->workBuffer == nullptr || expired == nullptr) return kErrInvalidArgument;
    DateValue expiry{};
    if (!answeredDate(getExpirationDate, record, &expiry)) return kErrNoAnswer;
    *expired = compareDays(expiry, day) < 0 ? 1 : 0;
    return kOk;
}

}  // namespace orvane
