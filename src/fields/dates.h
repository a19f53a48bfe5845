// Stored dates read back and answered as MM/DD/YYYY, and the calendar helpers the
// readers use to build dates of their own.
#pragma once

#include <cstdint>

#include "engine/record.h"

namespace orvane {

// Reads the first eight characters of a stored date, year first (YYYYMMDD) or else
// month first (MMDDYYYY, years 1800..9999). 0, -1 when the text is not a date, -21
// for a null out.
int32_t readDate(TextSpan text, DateValue* out);
// Writes MM/DD/YYYY without terminator: 10, or 0 when room is below 10.
int32_t formatDate(const DateValue* value, char* buffer, int32_t room);

// The birth date of the record: 0; -21 for a null record, a record without work
// buffer or a null out; -26 when none is stored or it does not read.
int32_t birthdateValue(const ParsedRecord* record, DateValue* out);

// The date answers: 0; -21 for bad arguments; -26 when the date is missing, does not
// read, or the capacity is below 11.
int32_t getExpirationDate(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t getBirthdate(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t getIssueDate(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t getCardRevisionDate(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t getHAZMATExpDate(const ParsedRecord* record, char* buffer, int32_t capacity);

// Age and expiry on a given day, read from the birth and expiry answers: 0; -21 for bad
// arguments; -26 when the date is missing or no calendar date, or a birth lies after the day.
// Whole years from the birth date to the day.
int32_t ageOn(const ParsedRecord* record, const DateValue& day, int32_t* years);
// 1 when the expiry date lies before the day, else 0; 12/31/9999 never expires.
int32_t expiredOn(const ParsedRecord* record, const DateValue& day, int32_t* expired);

// Gregorian calendar, extended backwards (proleptic).
bool isLeapYear(int32_t year);
// 28 to 31, or 0 for a month outside 1..12.
int32_t daysInMonth(int32_t year, int32_t month);
// Day 1-31, month 1-12, year 1000-9999; the day is not compared with the month.
bool isPlausibleDate(const DateValue& date);
// The date of a day number counted from 1 January 1000 as day 1. 0, or -21 for a null
// out or a day number outside 1 January 1000 .. 31 December 9999.
int32_t dateFromDayNumber(int64_t dayNumber, DateValue* out);

}  // namespace orvane
