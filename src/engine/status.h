// Status codes shared by every unit. The ones a caller can see are defined by the
// public header; the rest are the refusal codes of the format readers.
#pragma once

#include <cstdint>

#include "orvane_parser.h"

namespace orvane {

inline constexpr int32_t kOk = SVT_OK;

// Refusals of the format readers (negative, small, passed through by SVT_parse).
inline constexpr int32_t kErrPayloadTooShort = -1;    // payload shorter than a header field needs
inline constexpr int32_t kErrNoAtSign = -2;           // first byte is not "@"
inline constexpr int32_t kErrRecordSeparator = -3;    // wrong record separator
inline constexpr int32_t kErrNoAnsi = -4;             // "ANSI" missing
inline constexpr int32_t kErrNoAamva = -5;            // "AAMVA"/"AAMVA36" missing
inline constexpr int32_t kErrNoAamvaAt4 = -6;         // "AAMVA" missing (format 25)
inline constexpr int32_t kErrVersion = -7;            // version not numeric, or not accepted
inline constexpr int32_t kErrEntries = -8;            // number of entries not numeric
inline constexpr int32_t kErrDirectory = -9;          // subfile directory unusable
inline constexpr int32_t kErrSubfileLength = -10;     // subfile length unusable
inline constexpr int32_t kErrJurisdictionIsNc = -12;  // jurisdiction is NC where it must not be
inline constexpr int32_t kErrJurisdictionNotNc = -13; // jurisdiction is not NC where it must be
inline constexpr int32_t kErrCacVariant = -14;        // Common Access Card variant marker wrong
inline constexpr int32_t kErrTrackBoundary = -11;     // stripe tracks not separated by "?;" where needed
inline constexpr int32_t kErrBadDigit = -11;          // a number holds a character outside its digits
inline constexpr int32_t kErrFraming = -20;           // framing of the input does not fit
inline constexpr int32_t kErrUnknownFormat = -22;     // format number not in the version table

// Statuses of the C interface.
inline constexpr int32_t kErrNullInput = SVT_ERR_NULL_INPUT;
inline constexpr int32_t kErrNoneFilled = SVT_ERR_NONE_FILLED;
inline constexpr int32_t kErrEmptyInput = SVT_ERR_EMPTY_INPUT;
inline constexpr int32_t kErrBufferTooSmall = SVT_ERR_BUFFER_TOO_SMALL;
inline constexpr int32_t kErrInvalidArgument = SVT_ERR_INVALID_ARGUMENT;
inline constexpr int32_t kErrNoWorkBuffer = SVT_ERR_NO_WORK_BUFFER;
inline constexpr int32_t kErrNotRecognised = SVT_ERR_NOT_RECOGNISED;
inline constexpr int32_t kErrNoAnswer = SVT_ERR_NO_ANSWER;
inline constexpr int32_t kErrJava = SVT_ERR_JAVA;

// Results of the three validity checks.
inline constexpr int32_t kCheckNotCheckable = SVT_CHECK_NOT_CHECKABLE;
inline constexpr int32_t kCheckValid = SVT_CHECK_VALID;
inline constexpr int32_t kCheckInvalid = SVT_CHECK_INVALID;

}  // namespace orvane
