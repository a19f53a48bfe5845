// The physical description: gender, eye and hair colour, race, height and weight,
// turned from the stored document codes into readable text.
#pragma once

#include <cstdint>

#include "engine/record.h"

namespace orvane {

inline constexpr int32_t kGenderMale = 0;
inline constexpr int32_t kGenderFemale = 1;

// 0 with male or female in result; -21 for bad arguments; -26 when the gender slot is
// empty or names neither.
int32_t genderCode(const ParsedRecord* record, int32_t* result);

// "Male" or "Female"; -18 when the capacity is below 5 or 7 respectively.
int32_t getGender(const ParsedRecord* record, char* buffer, int32_t capacity);
// The colour's name, or the stored code as it stands when the table has no name for it.
int32_t getEyeColor(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t getHairColor(const ParsedRecord* record, char* buffer, int32_t capacity);
// The race text as stored, with unprintable characters turned into blanks.
int32_t getRace(const ParsedRecord* record, char* buffer, int32_t capacity);
// A ready height text, or feet and inches (5'10"), or centimetres (175cm); -18 when the
// last two do not fit.
int32_t getHeight(const ParsedRecord* record, char* buffer, int32_t capacity);
// Kilograms from pounds, stored kilograms, or a kilogram range; -21 when capacity < 4.
int32_t getWeightKG(const ParsedRecord* record, char* buffer, int32_t capacity);
// Stored pounds, pounds from kilograms, or a pound range; -21 when capacity < 4.
int32_t getWeightLBS(const ParsedRecord* record, char* buffer, int32_t capacity);

}  // namespace orvane
